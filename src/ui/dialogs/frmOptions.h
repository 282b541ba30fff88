#pragma once

#include <QDialog>

class QCheckBox;
class QLineEdit;

namespace wendmark {

struct Options;

/// The program's own settings. OK changes them in memory; the main window stores them when it closes.
class frmOptions final : public QDialog {
    Q_OBJECT

public:
    explicit frmOptions(Options& options, QWidget* parent = nullptr);

private:
    void browse();
    void takeOver();

    Options& m_options;
    QLineEdit* m_htmlEditor;
    QCheckBox* m_warnURLChange;
    QCheckBox* m_closeBrowser;
};

} // namespace wendmark
