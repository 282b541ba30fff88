#pragma once

#include <QDialog>
#include <string>

class QCheckBox;

namespace wendmark {

struct Options;

/// Asks before a stop's address is replaced. Either button also stores whether to ask again.
class frmWarnURL final : public QDialog {
    Q_OBJECT

public:
    frmWarnURL(Options& options, const QString& oldAddress, const QString& newAddress,
               QWidget* parent = nullptr);

    /// "1" when the author agrees, else "0".
    const std::string& dialogAnswer() const { return m_dialogAnswer; }

private:
    void answer(bool agreed);

    Options& m_options;
    QCheckBox* m_dontAskAgain; ///< Check1
    std::string m_dialogAnswer = "0";
};

} // namespace wendmark
