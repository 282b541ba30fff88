#pragma once

#include "ui/site/FrameTest.h"

#include <QDialog>

class QLabel;

namespace wendmark {

class BrowserView;

/// The frame test in a window of its own: it runs as soon as the window is shown, and takes as long as it
/// takes. Closing the window before that ends it.
class frmTestFrame final : public QDialog {
    Q_OBJECT

public:
    /// The references must outlive the dialog; `browser` is the site editor's.
    frmTestFrame(FrameTest test, BrowserView& browser, QWidget* parent = nullptr);

    /// The verdict is there.
    bool frameTestDone() const { return m_done; }

    void done(int result) override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    Q_SLOT void runTest();

    FrameTest m_test;
    BrowserView& m_browser;
    QLabel* m_message; ///< lblMessage
    QLabel* m_reason;
    bool m_done = false;
    bool m_running = false;
    bool m_closing = false;
};

} // namespace wendmark
