#pragma once

#include <QWidget>

class QWebEngineProfile;

namespace wendmark {

class BrowserView;

/// Shows the program's help, dark in dark windows, or the maker's web site. Not modal.
class frmHelp final : public QWidget {
    Q_OBJECT

public:
    /// Pages may read files of `helpFolder` only.
    frmHelp(QWebEngineProfile& profile, const QString& helpFolder, QWidget* parent = nullptr);

    /// Comes to the front, neither minimised nor maximised, with this page.
    void showPage(const QString& helpStartPage);

protected:
    void changeEvent(QEvent* event) override;

private:
    void takeColours();

    BrowserView* m_browser;
};

} // namespace wendmark
