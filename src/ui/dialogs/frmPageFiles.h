#pragma once

#include <QDialog>

class QLayout;
class QTreeWidget;

namespace wendmark {

struct PageBundle;

/// Asks whether the files that a page of the author's own shows come into the tour with it, and lists them
/// with the names that they get.
class frmPageFiles final : public QDialog {
    Q_OBJECT

public:
    enum class Answer {
        cancel, ///< Nothing is taken.
        together,
        alone ///< The page as it is, without its files.
    };

    explicit frmPageFiles(const PageBundle& bundle, QWidget* parent = nullptr);

    Answer dialogAnswer() const { return m_answer; }

    QSize sizeHint() const override;

private:
    void fill(const PageBundle& bundle);
    void setupLayout(const PageBundle& bundle);
    void addButton(QLayout& row, const char* name, const QString& caption, Answer answer);

    QTreeWidget* m_list; ///< lstFiles
    Answer m_answer = Answer::cancel;
};

} // namespace wendmark
