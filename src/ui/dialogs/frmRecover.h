#pragma once

#include <QDialog>

namespace wendmark {

struct RecoveryRecord;

/// Asks what is to become of a tour that was being edited when the program ended before its time. Closing the
/// window puts the question off.
class frmRecover final : public QDialog {
    Q_OBJECT

public:
    enum class Choice { notNow, recover, discard };

    explicit frmRecover(const RecoveryRecord& record, QWidget* parent = nullptr);

    Choice choice() const { return m_choice; }

private:
    void choose(Choice choice);

    Choice m_choice = Choice::notNow;
};

} // namespace wendmark
