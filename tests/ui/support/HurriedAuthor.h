#pragma once

#include "ui/main/frmMain.h"
#include "ui/support/LoopbackServer.h"
#include "ui/support/OutsidePrograms.h"
#include "ui/support/UiFixture.h"

#include <QPointer>
#include <QStringList>
#include <functional>
#include <map>
#include <string>

class QDialog;
class QMessageBox;

namespace wendmark {
class frmBrowser;
class frmFind;
class frmNarEdit;
} // namespace wendmark

namespace wendmark::test {

/// An author at the program, with a tour of five stops on its third one; that one is new and not saved. What
/// the program asks is answered at once, and always the same way. A web server stands by.
class HurriedAuthor final : public QObject {
    Q_OBJECT

public:
    explicit HurriedAuthor(UiFixture::Time time);
    ~HurriedAuthor() override;

    // Ways to give a command. None waits until it has ended, unless the command does. Without their window,
    // or with the window or the button switched off, they do nothing.

    void menu(const char* item) const;
    void button(const char* key) const; ///< Of the main window's toolbar.
    void siteButton(const char* name) const;
    void narrationButton(const char* name) const;
    void findButton(const char* name) const;
    void escape(QWidget* editor) const;             ///< With a dialog open, in that one.
    static void askToClose(const QWidget* asked);   ///< As the window's frame and the end of a session do.
    void typeAddress(const QString& address) const; ///< Into the site editor.
    void typeTitle(const QString& title) const;     ///< Into the narration editor.

    // Their windows, null when they are not open.

    frmBrowser* siteEditor() const;
    frmNarEdit* narrationEditor() const;
    frmFind* findWindow() const;

    /// Opens the window and waits until it is ready; the site editor shows a page of the server.
    void openSiteEditor();
    void openNarrationEditor() const;

    /// Same, with words that stand in four stops of the tour, and others for them.
    void openFindWindow() const;

    /// Whether the site editor's browser shows the page of the frame test.
    bool showsTestPage() const;

    /// How long the server takes for that page from now on, in milliseconds.
    void letPageTake(int delay);

    /// From now on each step of a command is taken for a long one, after which the windows get their turn;
    /// `look` is called in the next one.
    void makeStepsLong(const std::function<void()>& look);

    /// Called once, with the next dialog on screen, before it is answered.
    std::function<void()> onDialog;

    /// What is said to the question whether to quit without saving.
    QString quitAnswer = QStringLiteral("Yes");

    /// Runs the event loop until every command has ended, and the program if it is to end. False when that
    /// never comes.
    bool rest();

    /// All that the author can see of the tour at this moment, in a line.
    std::string glance() const;

    /// What the author has in the end, each part by a name: tour, windows, what was asked, and every file
    /// that lasts.
    std::map<std::string, std::string> belongings() const;

    UiFixture program;
    LoopbackServer server;
    OutsidePrograms outside;
    frmMain window;

private:
    void answerDialogs();
    void answer(QDialog& dialog);
    void answerQuestion(QMessageBox& box);
    void chooseFile(QDialog& dialog) const;
    bool isResting() const;
    bool isLeft() const;
    std::string plain(std::string text) const;
    std::string tour() const;
    void collectFiles(const std::string& folder, std::map<std::string, std::string>& found) const;

    QStringList m_asked;
    QPointer<QDialog> m_answered;
    int m_names = 0; ///< Given to new folders so far.
    int m_testQuestions = 0;
    bool m_closed = false;
    qint64 m_steps = 0;
};

} // namespace wendmark::test
