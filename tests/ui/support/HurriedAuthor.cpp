#include "ui/support/HurriedAuthor.h"

#include "base/Names.h"
#include "model/TourFiles.h"
#include "platform/BrowserView.h"
#include "platform/Strings.h"
#include "recovery/RecoveryStore.h"
#include "ui/find/frmFind.h"
#include "ui/narration/frmNarEdit.h"
#include "ui/site/frmBrowser.h"
#include "ui/site/frmTestFrame.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QWindow>
#include <utility>

namespace wendmark::test {

namespace {

constexpr int lookInterval = 5; // Milliseconds between two looks for a dialog.
constexpr qint64 longStep = 1000;
constexpr int mostTestQuestions = 6; // One in half a minute.
constexpr QLatin1String testQuestion("Site testing is still incomplete - do you want to continue");

/// One that is closed may not be deleted yet.
template <typename Window>
Window* openWindow(const QWidget& parent, const char* name) {
    for (Window* const found : parent.findChildren<Window*>(QLatin1String(name))) {
        if (!found->isHidden())
            return found;
    }
    return nullptr;
}

void click(const QWidget* window, const char* name) {
    auto* const button =
        window == nullptr ? nullptr : window->findChild<QAbstractButton*>(QLatin1String(name));
    if (button != nullptr && button->isEnabled())
        QTest::mouseClick(button, Qt::LeftButton);
}

void replaceAll(std::string& text, const std::string& what, const std::string& by) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
}

QString textOfAny(QDialog& dialog) {
    const auto* const label = dialog.findChild<QLabel*>(QStringLiteral("Label1"));
    return dialog.objectName() == QLatin1String("frmMessage") ? label->text().trimmed() : textOf(dialog);
}

} // namespace

HurriedAuthor::HurriedAuthor(UiFixture::Time time)
    : program(std::make_shared<ScratchFolder>(), time), window(program.parts()) {
    program.makeTour(QStringLiteral("other"), 2);
    writeFile(program.scratch / "files/mine.htm", "<title>Mine</title>");
    writeFile(program.scratch / "files/image.gif", "GIF89a");
    letPageTake(0);
    connect(&window, &frmMain::closed, this, [this] { m_closed = true; });
    answerDialogs();
    window.load(program.makeTour(QStringLiteral("walk"), 4));
    window.show();
    program.document.goToStop(2);
    menu("mnuStopsInsert");
}

HurriedAuthor::~HurriedAuthor() = default;

void HurriedAuthor::menu(const char* item) const {
    window.findChild<QAction*>(QLatin1String(item))->trigger();
}

void HurriedAuthor::button(const char* key) const {
    click(window.findChild<QWidget*>(QStringLiteral("tbToolBar")), key);
}

void HurriedAuthor::siteButton(const char* name) const {
    click(siteEditor(), name);
}

void HurriedAuthor::narrationButton(const char* name) const {
    click(narrationEditor(), name);
}

void HurriedAuthor::findButton(const char* name) const {
    click(findWindow(), name);
}

void HurriedAuthor::escape(QWidget* editor) const {
    QWidget* const dialog = QApplication::activeModalWidget();
    QWidget* const target = dialog == nullptr ? editor : dialog;
    if (target == nullptr)
        return;
    QApplication::setActiveWindow(target);
    QTest::keyClick(target->windowHandle(), Qt::Key_Escape);
}

void HurriedAuthor::askToClose(const QWidget* asked) {
    if (asked != nullptr)
        asked->windowHandle()->close();
}

void HurriedAuthor::typeAddress(const QString& address) const {
    if (siteEditor() == nullptr)
        return;
    QLineEdit& field = *siteEditor()->findChild<QComboBox*>(QStringLiteral("cboAddress"))->lineEdit();
    field.setText(address);
    QTest::keyClick(&field, Qt::Key_Return);
}

void HurriedAuthor::typeTitle(const QString& title) const {
    if (const frmNarEdit* const editor = narrationEditor(); editor != nullptr && editor->isEnabled())
        editor->findChild<QLineEdit*>(QStringLiteral("txtStopTitle"))->setText(title);
}

frmBrowser* HurriedAuthor::siteEditor() const {
    return openWindow<frmBrowser>(window, "frmBrowser");
}

frmNarEdit* HurriedAuthor::narrationEditor() const {
    return openWindow<frmNarEdit>(window, "frmNarEdit");
}

frmFind* HurriedAuthor::findWindow() const {
    return openWindow<frmFind>(window, "frmFind");
}

void HurriedAuthor::openFindWindow() const {
    menu("mnuEditFind");
    findWindow()->findChild<QLineEdit*>(QStringLiteral("txtFind"))->setText(QStringLiteral("stop"));
    findWindow()->findChild<QLineEdit*>(QStringLiteral("txtReplace"))->setText(QStringLiteral("Halt"));
}

void HurriedAuthor::openSiteEditor() {
    if (siteEditor() != nullptr)
        return;
    button("EdBro");
    const auto shows = [this](const QString& ending) {
        const auto* const browser = siteEditor()->findChild<BrowserView*>(QStringLiteral("brwWebBrowser"));
        const auto* const address = siteEditor()->findChild<QComboBox*>(QStringLiteral("cboAddress"));
        // A page that is there is in the history; before that it may still end what comes next.
        return !browser->isBusy() && browser->locationURL().endsWith(ending) &&
               address->itemText(0) == browser->locationURL();
    };
    QVERIFY(waitUntil([&] { return shows(QStringLiteral("newpage.htm")); }, patience));
    typeAddress(server.address(QStringLiteral("/page.htm")));
    QVERIFY(waitUntil([&] { return shows(QStringLiteral("/page.htm")); }, patience));
}

bool HurriedAuthor::showsTestPage() const {
    return siteEditor() != nullptr && siteEditor()
                                          ->findChild<BrowserView*>(QStringLiteral("brwWebBrowser"))
                                          ->locationURL()
                                          .endsWith(QLatin1String("/ft.htm"));
}

void HurriedAuthor::openNarrationEditor() const {
    if (narrationEditor() == nullptr)
        button("EdNar");
}

void HurriedAuthor::letPageTake(int delay) {
    server.answer(QStringLiteral("/page.htm"), {200, {}, "<title>Page</title>", delay});
}

void HurriedAuthor::makeStepsLong(const std::function<void()>& look) {
    program.stepClock = [this, look] {
        QMetaObject::invokeMethod(this, look, Qt::QueuedConnection); // No timer comes for sure in a turn.
        return m_steps += longStep;
    };
}

bool HurriedAuthor::rest() {
    bool resting = false;
    return waitUntil(
        [&] {
            const bool was = std::exchange(resting, isResting());
            return was && resting;
        },
        patience);
}

/// Twice in a row, with events handled in between, it is true.
bool HurriedAuthor::isResting() const {
    if (isLeft())
        return m_closed;
    return program.gate.isOpen() && QApplication::activeModalWidget() == nullptr &&
           !window.findChild<BrowserView*>(QStringLiteral("broMain"))->isBusy();
}

/// The program has ended, or ends.
bool HurriedAuthor::isLeft() const {
    return !exists(toUtf8(program.working(QStringLiteral("script.txt"))));
}

std::string HurriedAuthor::glance() const {
    const TourDocument& document = program.document;
    return tour() + "|" + document.undoName().value_or("-") + "|" + document.redoName().value_or("-") + "|" +
           std::to_string(document.bookmarks().bookmarks.size());
}

std::string HurriedAuthor::tour() const {
    const TourModel& model = program.document.model();
    std::string text = model.tourTitle + "|" + model.tourAuthor + "\n";
    for (const Stop& stop : model.stops)
        text += stop.stopTitle + "|" + stop.stopURL + "|" + stop.stopNarration + "\n";
    return text + std::to_string(model.currentStop) + (model.tourChanged ? " changed" : " unchanged");
}

std::map<std::string, std::string> HurriedAuthor::belongings() const {
    const TourDocument& document = program.document;
    std::map<std::string, std::string> found;
    found["tour"] = plain(tour());
    found["folder"] = plain(document.shownTourPath());
    found["saved"] = document.isAsSaved() ? "as saved" : "not as saved";
    found["steps"] = document.undoName().value_or("-") + "|" + document.redoName().value_or("-");
    found["asked"] = plain(toUtf8(m_asked.join(QStringLiteral("; "))));
    found["windows"] = std::string(m_closed ? "" : "main ") + (siteEditor() == nullptr ? "" : "site ") +
                       (narrationEditor() == nullptr ? "" : "narration");
    found["opened"] = std::to_string(outside.opened.size());
    for (const Bookmark& bookmark : document.bookmarks().bookmarks)
        found["bookmarks"] += plain(bookmark.address) + "|" + bookmark.note + "\n";
    if (const frmNarEdit* const editor = narrationEditor())
        found["words"] = editor->unappliedTexts() ? editor->unappliedTexts()->title : "-";
    if (m_closed) {
        RecordingLog log;
        for (const RecoverySession& session :
             RecoveryStore(program.scratch / "state/recovery", log).leftovers())
            found["kept"] += std::to_string(session.record.model.stopCount()) + " stops ";
    }
    for (const std::string& failure : program.log.failures)
        found["failures"] += plain(failure) + "\n";
    collectFiles("MyTours", found);
    collectFiles("NewTour", found);
    return found;
}

void HurriedAuthor::collectFiles(const std::string& folder, std::map<std::string, std::string>& found) const {
    for (const auto& [name, bytes] : folderContents(program.scratch / folder)) {
        const std::string file = lowerCase(name.substr(name.find_last_of('/') + 1));
        // The site editor writes its lists whenever it goes to the background.
        const bool comesAndGoes = isPrivateFile(file) && (folder == "NewTour" || bytes.empty());
        if (!isScratchFile(file) && file != "brhist.txt" && !comesAndGoes)
            found[folder + "/" + name] = plain(bytes);
    }
}

/// Without what differs from one run to the next.
std::string HurriedAuthor::plain(std::string text) const {
    replaceAll(text, toUtf8(server.address({})), "http://server");
    replaceAll(text, program.scratch.path(), "(program)");
    return text;
}

/// Not by a timer that repeats: such a one does not come while a dialog is answered, and the answer may lead
/// to the next.
void HurriedAuthor::answerDialogs() {
    QTimer::singleShot(lookInterval, this, &HurriedAuthor::answerDialogs);
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || !dialog->isVisible() || dialog == m_answered)
        return;
    if (const auto* const test = qobject_cast<frmTestFrame*>(dialog);
        test != nullptr && !test->frameTestDone())
        return;
    m_answered = dialog;
    if (!textOfAny(*dialog).endsWith(testQuestion)) // Comes when the machine is slow.
        m_asked.append(textOfAny(*dialog));
    if (const auto act = std::exchange(onDialog, nullptr))
        act();
    if (m_answered == dialog && dialog->isVisible())
        answer(*dialog);
}

void HurriedAuthor::answer(QDialog& dialog) {
    const QString name = dialog.objectName();
    const QString folderName = QStringLiteral("made%1").arg(m_names);
    if (auto* const box = qobject_cast<QMessageBox*>(&dialog)) {
        answerQuestion(*box);
    } else if (name == QLatin1String("frmWizard2")) {
        ++m_names;
        dialog.findChild<QLineEdit*>(QStringLiteral("txtTourName"))->setText(folderName);
        dialog.findChild<QLineEdit*>(QStringLiteral("txtTitle"))->setText(QStringLiteral("Made"));
        press(dialog, QStringLiteral("btnNext"));
    } else if (name == QLatin1String("frmWizard3")) {
        press(dialog, QStringLiteral("btnNext"));
    } else if (name == QLatin1String("frmSelectFolderOpen")) {
        selectFolder(dialog, program.path(QStringLiteral("MyTours/other")));
        press(dialog, QStringLiteral("btnOK"));
    } else if (name == QLatin1String("frmSelectFolderSave")) {
        ++m_names;
        dialog.findChild<QLineEdit*>(QStringLiteral("txtTourName"))->setText(folderName);
        press(dialog, QStringLiteral("btnOK"));
    } else if (name == QLatin1String("frmPropTab")) {
        dialog.findChild<QLineEdit*>(QStringLiteral("txtAuthor"))->setText(QStringLiteral("Somebody"));
        press(dialog, QStringLiteral("OKButton"));
    } else if (name == QLatin1String("CDialog")) {
        chooseFile(dialog);
    } else {
        dialog.accept();
    }
}

void HurriedAuthor::answerQuestion(QMessageBox& box) {
    QString said = QStringLiteral("OK");
    if (box.text().startsWith(QLatin1String("Do you really want to quit")))
        said = quitAnswer;
    else if (box.text() == testQuestion && ++m_testQuestions > mostTestQuestions)
        said = QStringLiteral("No"); // A test that never ends is to be seen.
    else if (box.text().endsWith(QLatin1String("Save it first?")))
        said = QStringLiteral("Save and Play");
    else if (box.standardButtons().testFlag(QMessageBox::Yes))
        said = QStringLiteral("Yes");
    press(box, said);
}

void HurriedAuthor::chooseFile(QDialog& dialog) const {
    const bool image = dialog.windowTitle() == QLatin1String("Add Image");
    qobject_cast<QFileDialog*>(&dialog)->selectFile(
        program.path(image ? QStringLiteral("files/image.gif") : QStringLiteral("files/mine.htm")));
    QMetaObject::invokeMethod(&dialog, "accept");
}

} // namespace wendmark::test
