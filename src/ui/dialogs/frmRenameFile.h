#pragma once

#include <QDialog>
#include <string>

class QLayout;
class QLineEdit;

namespace wendmark {

/// Asks for another name for a file whose own name is not free in the tour folder. Whether the new name is
/// free is for the caller to find out.
class frmRenameFile final : public QDialog {
    Q_OBJECT

public:
    /// `renameReason` says why the name is not free; it may be empty.
    frmRenameFile(const std::string& takenName, const std::string& renameReason, QWidget* parent = nullptr);

    /// The new name; empty when the author has cancelled.
    const std::string& dialogAnswer() const { return m_dialogAnswer; }

private:
    QLayout* makeButtons();
    void answer();

    QLineEdit* m_name;
    std::string m_dialogAnswer;
};

} // namespace wendmark
