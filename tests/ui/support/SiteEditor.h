#pragma once

#include "ui/main/frmMain.h"
#include "ui/site/frmBrowser.h"
#include "ui/support/LoopbackServer.h"
#include "ui/support/UiFixture.h"

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTableView>

namespace wendmark {

class BrowserView;

namespace test {

/// The program with a tour of three stops and the site editor on stop 2, whose page is that of new stops. A
/// web server stands by. The clock stands still.
class SiteEditor final {
public:
    SiteEditor();

    /// Opens the editor by the main window's toolbar.
    void edit();

    frmBrowser& editor() const { return *findEditor(); }
    bool isOpen() const { return findEditor() != nullptr; }

    template <typename Control>
    Control& control(const char* name) const {
        return *editor().findChild<Control*>(QLatin1String(name));
    }
    BrowserView& browser() const { return control<BrowserView>("brwWebBrowser"); }
    QComboBox& address() const { return control<QComboBox>("cboAddress"); }
    QTableView& grid() const { return control<QTableView>("grdResearch"); }
    QString notice() const;

    /// Clicks a button of the toolbar, by its key, or another button, by its name.
    void click(const char* button) const;

    /// Types an address, presses Return, and waits until its page is shown.
    void visit(const QString& address) const;

    /// Waits until the browser shows a page at this address, or one that ends with it.
    bool shows(const QString& address) const;

    const std::string& stopURL(int stop) const { return program.model.stops.at(stop).stopURL; }
    QString served(const QString& path) const { return server.address(path); }
    QString local(const QString& name) const;
    QStringList history() const;
    QStringList linesOf(const QString& workingFile) const;
    void write(const QString& workingFile, const QByteArray& bytes) const;

private:
    frmBrowser* findEditor() const;

public:
    UiFixture program;
    LoopbackServer server;
    frmMain window;
};

/// Expects a frmMessage with this caption and text, and closes it.
void onMessageWindow(const QString& caption, const QString& text);

} // namespace test
} // namespace wendmark
