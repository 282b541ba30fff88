#pragma once

#include "ui/ProgramParts.h"
#include "ui/site/FrameTest.h"

#include <QHash>
#include <QUrl>
#include <QWidget>

class QAction;
class QComboBox;
class QLabel;
class QLayout;
class QPushButton;
class QStringListModel;
class QSplitter;
class QTimer;

namespace wendmark {

class BookmarkPanel;
class BrowserView;
class CommandBar;
class LoadingIndicator;

/// The site editor: browses for the page of the current stop. Not modal. What "Use this Site" accepts goes
/// into the stop that is current then.
class frmBrowser final : public QWidget {
    Q_OBJECT

public:
    /// What `parts` refers to must outlive the window, which deletes itself when it is closed.
    explicit frmBrowser(const ProgramParts& parts, QWidget* parent = nullptr);
    ~frmBrowser() override;

    /// Takes its place, reads the lists and goes to siteEditURL. Call once, before the window is shown.
    void load();

    /// Comes to the front and goes to siteEditURL, unless a frame test is running.
    void showStop();

    /// Does what the toolbar button with this key does. Unknown keys do nothing.
    void runToolBarCommand(const QString& key);

signals:
    void closed();

protected:
    /// While a frame test runs, the window closes when that has ended.
    void closeEvent(QCloseEvent* event) override;
    bool event(QEvent* event) override;

private:
    void setupActions();
    void setupToolBar();
    QLayout* makeAddressRow();
    void setupBrowser();
    void setupConnections();

    void LoadHistory();
    void SaveHistory();
    void saveLists();

    void goToText(const QString& text);
    void refuseAddress(const QString& typed);
    void refuseLongAddress();
    void goTo(const QUrl& address);
    QUrl siteEditAddress();
    void takeOverNavigation(bool ok);
    void recordVisit(const QString& location);
    void runTick();
    void showCaption();
    void showNotice(const QString& text);
    QString location() const;
    QString workingFolder() const;

    void stop();
    void useSite();
    bool storeSite();
    bool maySiteReplace(const std::string& oldAddress, const QUrl& page);
    void finishUse();
    void tellIfNotInTour();

    FrameTest frameTest();
    FrameTest::Result runFrameTest();
    bool goOnTesting(const QUrl& page);
    void StopTesting(const QUrl& page);
    void enableToolBar(bool enabled);
    void reportFrameTest();
    void showFrameTestMessage(const QString& text);
    void showFrameTestDialog();

    void selectLocalFile();
    std::string freeLocalName(const QString& path);
    void launchHtmlEditor();
    void startHtmlEditor(const QString& file);

    ProgramParts m_parts;
    // In the order of the Tab key.
    CommandBar* m_toolBar;        ///< tbToolBar
    LoadingIndicator* m_busy;     ///< picBusy
    QComboBox* m_address;         ///< cboAddress
    QStringListModel* m_history;  ///< Its items.
    std::string m_furtherHistory; ///< What the history file holds beyond the list: written again as it was.
    QPushButton* m_fileButton;    ///< btnSelectFile
    QSplitter* m_panes;
    BrowserView* m_browser; ///< brwWebBrowser
    BookmarkPanel* m_bookmarks;
    QLabel* m_notice;                   ///< What cannot be shown, and why.
    QTimer* m_timer;                    ///< timTimer
    QHash<QString, QAction*> m_actions; ///< By the keys of the toolbar.
    QAction* m_testInWindow = nullptr;
    float m_testStart = 0; ///< Seconds since midnight.
    bool m_testing = false;
    bool m_closeAfterTest = false;
};

} // namespace wendmark
