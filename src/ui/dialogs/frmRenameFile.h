#pragma once

#include <QDialog>

class QLineEdit;

namespace wendmark {

struct HandOver;

/// Asks for another name for a file whose own name is not free in the tour folder. Takes the name from
/// dialogAnswer and the reason from renameReason; leaves the new name in dialogAnswer, nothing when the
/// author cancels. Whether the new name is free is for the caller to find out.
class frmRenameFile final : public QDialog {
    Q_OBJECT

public:
    explicit frmRenameFile(HandOver& handOver, QWidget* parent = nullptr);

private:
    void answer();

    HandOver& m_handOver;
    QLineEdit* m_name;
};

} // namespace wendmark
