#pragma once

#include "commands/DocumentListener.h"
#include "ui/ProgramParts.h"

#include <QHash>
#include <QUrl>
#include <QWidget>
#include <cstdint>
#include <string>

class QAction;
class QPushButton;
class QTimer;

namespace wendmark {

class AddressBox;
class BookmarkPanel;
class BrowserView;
class CommandBar;
class LoadingIndicator;
class NoticeBar;
class SiteEntry;
class SitePanes;
class SiteTest;
class SiteUse;
class StopLine;

/// Place of a window on the screen, in twips.
struct Bounds {
    float left = 0;
    float top = 0;
    float width = 0;
    float height = 0;
};

/// The site editor: browses for the page of the current stop. Not modal. What "Use this Site" accepts goes
/// into the stop that was current when the author gave that command.
class frmBrowser final : public QWidget, private DocumentListener {
    Q_OBJECT

public:
    /// What `parts` refers to must outlive the window, which deletes itself when it is closed.
    explicit frmBrowser(const ProgramParts& parts, QWidget* parent = nullptr);
    ~frmBrowser() override;

    /// Takes its place beside the main window, reads the lists and goes to the page of the current stop. Call
    /// once, before the window is shown.
    void load(const Bounds& mainWindowBounds);

    /// Comes to the front and goes to the page of the current stop.
    void showStop();

    /// Closes the window from within a command. Always true.
    bool closeNow();

    /// Address with which the window was opened last.
    const std::string& siteEditURL() const { return m_siteEditURL; }

    /// Address that the author has accepted last since then; empty: none.
    const std::string& siteEditResult() const;

    /// Does what the toolbar button with this key does. Unknown keys do nothing.
    void runToolBarCommand(const QString& key);

signals:
    void closed();

protected:
    /// While a command is under way, the window closes when that has ended; a frame test gives up.
    void closeEvent(QCloseEvent* event) override;
    bool event(QEvent* event) override;

private:
    void setupActions();
    void setupToolBar();
    void setupBrowser();
    void setupConnections();

    void saveLists();
    void takeStop();

    void leaveFor(const QUrl& address);
    void goTo(const QUrl& address);
    QUrl siteEditAddress();
    void takeOverNavigation(bool ok);
    void showLocation();
    void runTick();
    void showCaption();
    QString location() const;
    QString workingFolder() const;

    void browse(const QString& key);
    void enableToolBar(bool enabled);
    void selectLocalFile();
    void launchHtmlEditor();

    void tourChangedNow() override;

    ProgramParts m_parts;
    TourDocument& m_document;
    // In the order of the Tab key.
    CommandBar* m_toolBar;     ///< tbToolBar
    LoadingIndicator* m_busy;  ///< picBusy
    AddressBox* m_address;     ///< cboAddress
    QPushButton* m_fileButton; ///< btnSelectFile
    SitePanes* m_panes;
    BrowserView* m_browser; ///< brwWebBrowser
    BookmarkPanel* m_bookmarks;
    NoticeBar* m_notice; ///< What cannot be shown, and why.
    StopLine* m_stopLine;
    QTimer* m_timer; ///< timTimer
    SiteTest* m_test;
    SiteEntry* m_entry;
    SiteUse* m_use;
    QHash<QString, QAction*> m_actions; ///< By the keys of the toolbar.
    QAction* m_testInWindow = nullptr;
    QAction* m_abandonTest = nullptr;
    std::string m_siteEditURL;
    bool m_closing = false; ///< The lists are written.
};

} // namespace wendmark
