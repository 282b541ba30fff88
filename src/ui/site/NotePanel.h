#pragma once

#include <QWidget>
#include <string>

class QLabel;
class QLineEdit;

namespace wendmark {

struct Bookmark;

/// The panel over the list of bookmarks in which the note of one is written.
class NotePanel final : public QWidget {
    Q_OBJECT

public:
    explicit NotePanel(QWidget* parent = nullptr);

    void showNote(const Bookmark& bookmark);

    /// Gives the field the keyboard, once the panel is on screen.
    void focusNote();

    /// What stands in the field, which began as `given`.
    std::string note(const std::string& given) const;

signals:
    /// Return was pressed in the field: a note is a single line.
    void returnPressed();

    /// The author is done with the note.
    void backWanted();

private:
    QLabel* m_title;
    QLineEdit* m_note;
};

} // namespace wendmark
