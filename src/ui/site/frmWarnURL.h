#pragma once

#include <QDialog>

class QCheckBox;

namespace wendmark {

struct HandOver;
struct Options;

/// Asks before a stop's address is replaced. Leaves "1" in dialogAnswer when the author agrees, else "0".
/// Either button also stores whether to ask again.
class frmWarnURL final : public QDialog {
    Q_OBJECT

public:
    frmWarnURL(HandOver& handOver, Options& options, const QString& oldAddress, const QString& newAddress,
               QWidget* parent = nullptr);

private:
    void answer(bool agreed);

    HandOver& m_handOver;
    Options& m_options;
    QCheckBox* m_dontAskAgain; ///< Check1
};

} // namespace wendmark
