#include "commands/TourDocument.h"
#include "platform/BrowserView.h"
#include "platform/Strings.h"
#include "platform/Tasks.h"
#include "ui/support/SiteEditor.h"

#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <functional>
#include <optional>

namespace wendmark {

using test::onMessageWindow;
using test::onNextDialog;
using test::press;
using test::SiteEditor;
using test::waitUntil;

namespace {

const QString writtenByUs = QStringLiteral("which Wendmark writes itself, so that your file would be lost.");
const QString reserved = QStringLiteral(
    "which is essential for correct operation of the tour, and cannot be overwritten or replaced.");

/// Answers the file dialog by choosing a file, or by giving up.
void onFileDialog(const QString& path) {
    onNextDialog([=](QDialog& dialog) {
        QCOMPARE(dialog.objectName(), QString("CDialog"));
        QCOMPARE(dialog.windowTitle(), QString("Wendmark - Select Local File"));
        auto& files = *qobject_cast<QFileDialog*>(&dialog);
        QCOMPARE(files.findChild<QLineEdit*>("fileNameEdit")->text(), QString());
        QCOMPARE(files.nameFilters(), QStringList({"HTML (*.htm *.html)", "All (*)"}));
        QCOMPARE(files.defaultSuffix(), QString("htm"));
        if (path.isEmpty()) {
            files.reject();
            return;
        }
        files.selectFile(path);
        QMetaObject::invokeMethod(&files, "accept");
    });
}

/// Answers the overwrite question.
void onOverwrite(const QString& name, const QString& answer) {
    onNextDialog([=](QDialog& dialog) {
        QCOMPARE(test::textOf(dialog), "Wendmark - File overwrite|There is already a file called " + name +
                                           " in the tour folder. Do you want to overwrite this file?");
        press(dialog, answer);
    });
}

/// Answers the rename dialog; an empty answer cancels it.
void onRename(const QString& clash, const QString& reason, const QString& answer) {
    onNextDialog([=](QDialog& dialog) {
        QCOMPARE(dialog.objectName(), QString("frmRenameFile"));
        QCOMPARE(dialog.findChild<QLabel*>("lblFile")->text(), clash);
        QCOMPARE(dialog.findChild<QLabel*>("Label2")->text(), reason);
        dialog.findChild<QLineEdit*>("txtFile")->setText(answer);
        press(dialog, answer.isEmpty() ? "CancelButton" : "OKButton");
    });
}

void onPageFiles(const std::function<void(QDialog&)>& answer) {
    onNextDialog([=](QDialog& dialog) {
        QCOMPARE(dialog.objectName(), QString("frmPageFiles"));
        QVERIFY(dialog.findChild<QLabel*>("lblPage")->text().startsWith("eels.htm shows files"));
        answer(dialog);
    });
}

class LocalFile final {
public:
    /// A page of the author's own, outside of the tour.
    QString make(const QString& name) const {
        const QString path = open.program.path("Pages/" + name);
        test::writeFile(toUtf8(path), "<title>" + toUtf8(name) + "</title>");
        return path;
    }

    /// One that shows a picture in another folder, one outside of its own, and one that is not there.
    QString makeWithPicture() const {
        const QString path = make("eels.htm");
        test::writeFile(toUtf8(path), "<title>Eels</title><img src=img/Eel.PNG><img src=../away.png>"
                                      "<img src=gone.png>");
        QDir().mkpath(open.program.path("Pages/img"));
        test::writeFile(toUtf8(open.program.path("Pages/img/Eel.PNG")), "eel");
        return path;
    }

    void select() {
        open.program.clockStep = 0.5F; // Copying waits a while.
        open.click("btnSelectFile");
        open.program.clockStep = 0;
        QCOMPARE(test::dialogsExpected(), 0);
    }

    /// The working copy without the editor's own lists.
    QStringList files() const {
        QStringList names = open.program.filesOf("NewTour");
        names.removeAll("brhist.txt");
        names.removeAll("goodlist.txt");
        return names;
    }

    QString titleOf(const QString& workingFile) const {
        return toQString(test::readFile(toUtf8(open.program.working(workingFile))))
            .remove("<title>")
            .remove("</title>");
    }

    SiteEditor open;
};

} // namespace

class LocalFilesTest final : public QObject {
    Q_OBJECT

private slots:
    void chosenFileIsCopiedInLowerCaseAndShown() {
        LocalFile local;
        onFileDialog(local.make("Intro.HTM"));
        local.select();
        QCOMPARE(local.titleOf("intro.htm"), QString("Intro.HTM"));
        QVERIFY(local.open.shows("/NewTour/intro.htm"));
        QCOMPARE(local.open.stopURL(2), std::string("newpage.htm"));
    }

    void chosenFileIsStoredByUseThisSite() {
        LocalFile local;
        onFileDialog(local.make(QString::fromUtf8("My Pägé.HTM")));
        local.select();
        QVERIFY(local.open.shows("/my%20p%C3%A4g%C3%A9.htm"));
        local.open.click("Yes");
        QCOMPARE(local.open.stopURL(2), std::string("my%20p%c3%a4g%c3%a9.htm"));
        QVERIFY(local.open.notice().isEmpty());
    }

    void namesWithSpecialCharactersAreShown_data() {
        QTest::addColumn<QString>("name");
        for (const char* name : {"a b.htm", "100%.htm", "a#b.htm", "it's \"quoted\".htm", "a%20b.htm",
                                 "a&b;c.htm", "\xE2\x86\x92.htm", "a?b.htm"})
            QTest::newRow(name) << QString::fromUtf8(name);
    }
    void namesWithSpecialCharactersAreShown() {
        QFETCH(QString, name);
        LocalFile local;
        onFileDialog(local.make(name));
        local.select();
        QVERIFY(waitUntil([&] { return local.open.browser().locationName() == name; }));
        local.open.click("Yes");
        local.open.editor().close();
        local.open.window.runToolBarCommand("EdBro");
        QVERIFY(waitUntil([&] { return local.open.browser().locationName() == name; }));
    }

    void givingUpTheFileDialogDoesNothing() {
        LocalFile local;
        const QStringList before = local.files();
        onFileDialog({});
        local.select();
        QCOMPARE(local.files(), before);
    }

    void dialogBeginsWhereThePageBeforeWasFoundButNeverInTheWorkingCopy() {
        LocalFile local;
        onFileDialog(local.make("Intro.htm"));
        local.select();
        QVERIFY(local.open.shows("/NewTour/intro.htm"));
        const Setting<QString> remembered{"PagesFolder", {}};
        QCOMPARE(local.open.program.settings.read(remembered), local.open.program.path("Pages"));
        QString begun;
        onNextDialog([&](QDialog& dialog) {
            begun = qobject_cast<QFileDialog*>(&dialog)->directory().absolutePath();
            dialog.reject();
        });
        local.open.click("btnSelectFile");
        QCOMPARE(begun, local.open.program.path("Pages"));
        local.open.program.settings.store(remembered, local.open.program.path("NewTour"));
        onNextDialog([&](QDialog& dialog) {
            begun = qobject_cast<QFileDialog*>(&dialog)->directory().absolutePath();
            dialog.reject();
        });
        local.open.click("btnSelectFile");
        QVERIFY(!begun.startsWith(local.open.program.path("NewTour")));
    }

    void filesOfThePageComeAlong() {
        LocalFile local;
        const QString page = local.makeWithPicture();
        onFileDialog(page);
        onPageFiles([](QDialog& dialog) {
            const auto& list = *dialog.findChild<QTreeWidget*>("lstFiles");
            QCOMPARE(list.topLevelItemCount(), 1);
            QCOMPARE(list.topLevelItem(0)->text(0), QString("img/Eel.PNG"));
            QCOMPARE(list.topLevelItem(0)->text(1), QString("eel.png"));
            const QString remarks = dialog.findChild<QLabel*>("lblRemarks")->text();
            QVERIFY(remarks.contains("the places that name these files are changed"));
            QVERIFY(remarks.contains("../away.png"));
            QVERIFY(remarks.contains("Cannot be read: gone.png"));
            QVERIFY(dialog.findChild<QPushButton*>("btnTogether")->isDefault());
            QTest::keyClick(&dialog, Qt::Key_Return);
        });
        local.select();
        QVERIFY(local.open.shows("/NewTour/eels.htm"));
        QVERIFY(local.files().contains("eel.png"));
        QVERIFY(test::readFile(toUtf8(local.open.program.working("eels.htm"))).find("src=eel.png") !=
                std::string::npos);
        QVERIFY(test::readFile(toUtf8(page)).find("src=img/Eel.PNG") != std::string::npos);
        const TourDocument& document = local.open.program.document;
        QCOMPARE(document.undoName(), std::optional<std::string>("Select Local File"));
        local.open.program.document.undo();
        QVERIFY(!local.files().contains("eel.png"));
        QVERIFY(!local.files().contains("eels.htm"));
    }

    void pageAloneComesAsItIs() {
        LocalFile local;
        const QString page = local.makeWithPicture();
        onFileDialog(page);
        onPageFiles([](QDialog& dialog) { press(dialog, "btnAlone"); });
        local.select();
        QVERIFY(local.open.shows("/NewTour/eels.htm"));
        QVERIFY(!local.files().contains("eel.png"));
        QCOMPARE(test::readFile(toUtf8(local.open.program.working("eels.htm"))),
                 test::readFile(toUtf8(page)));
    }

    void escFromTheFilesOfThePageTakesNothing() {
        LocalFile local;
        const QStringList before = local.files();
        onFileDialog(local.makeWithPicture());
        onPageFiles([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
        local.select();
        QCOMPARE(local.files(), before);
    }

    void pageWhoseFilesAreThereAsksNothing() {
        LocalFile local;
        const QString page = local.make("plain.htm");
        test::writeFile(toUtf8(page), "<title>Plain</title><img src=eel.png>");
        test::writeFile(toUtf8(local.open.program.path("Pages/eel.png")), "eel");
        local.open.write("eel.png", "eel");
        onFileDialog(page);
        local.select();
        QVERIFY(local.open.shows("/NewTour/plain.htm"));
    }

    void nameOfATemplateIsNeverOverwritten() {
        LocalFile local;
        const QString before = local.titleOf("page.htm");
        onFileDialog(local.make("Page.HTM"));
        onRename("page.htm", reserved, "tour.css");
        onRename("tour.css", reserved, "Free.htm");
        local.select();
        QCOMPARE(local.titleOf("page.htm"), before);
        QCOMPARE(local.titleOf("free.htm"), QString("Page.HTM"));
        QVERIFY(local.open.shows("/NewTour/free.htm"));
    }

    void yesOverwritesAFileOfTheTour() {
        LocalFile local;
        local.open.write("mine.htm", "old");
        onFileDialog(local.make("Mine.htm"));
        onOverwrite("mine.htm", "Yes");
        local.select();
        QCOMPARE(local.titleOf("mine.htm"), QString("Mine.htm"));
    }

    void noAsksForAnotherNameWhichIsCheckedAgain() {
        LocalFile local;
        local.open.write("mine.htm", "old");
        local.open.write("taken.htm", "old");
        onFileDialog(local.make("Mine.htm"));
        onOverwrite("mine.htm", "No");
        onRename("mine.htm", {}, "Taken.htm");
        onOverwrite("taken.htm", "No");
        onRename("taken.htm", {}, "page.htm");
        onRename("page.htm", reserved, "Free One.HTM");
        local.select();
        QCOMPARE(local.titleOf("mine.htm"), QString("old"));
        QCOMPARE(local.titleOf("taken.htm"), QString("old"));
        QCOMPARE(local.titleOf("free one.htm"), QString("Mine.htm"));
    }

    void generatedNamesAreNotFreeAfterTheQuestionsOfOtherNames_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("isThere");
        QTest::addColumn<QString>("reason");
        QTest::newRow("page of a stop") << "page1.htm" << true << writtenByUs;
        QTest::newRow("page of a stop that may come") << "page77.htm" << false << writtenByUs;
        QTest::newRow("page that tests frames") << "ft.htm" << false << writtenByUs;
        QTest::newRow("frameset of a saved tour") << "playtour.htm" << true << writtenByUs;
        QTest::newRow("launching point") << "_tourlaunch1.htm" << false << writtenByUs;
        QTest::newRow("contents, of which there is a template") << "toc.htm" << false << reserved;
    }
    void generatedNamesAreNotFreeAfterTheQuestionsOfOtherNames() {
        QFETCH(QString, name);
        QFETCH(bool, isThere);
        QFETCH(QString, reason);
        LocalFile local;
        if (isThere)
            local.open.write(name, "written by the program");
        onFileDialog(local.make(name.toUpper()));
        if (isThere)
            onOverwrite(name, "Yes");
        onRename(name, reason, "Mine.htm");
        local.select();
        if (isThere)
            QCOMPARE(local.titleOf(name), QString("written by the program"));
        QCOMPARE(local.titleOf("mine.htm"), name.toUpper());
        QVERIFY(local.open.shows("/NewTour/mine.htm"));
    }

    void closingTheWindowWhileTheCopyIsWaitedForClosesItAfterwards() {
        LocalFile local;
        int rounds = 0;
        bool openMeanwhile = false;
        QTimer clock;
        clock.callOnTimeout([&] {
            if (!local.open.program.gate.isClosed() || rounds++ > 0)
                return;
            local.open.editor().close();
            openMeanwhile = local.open.isOpen();
        });
        clock.start(0);
        onFileDialog(local.make("Mine.htm"));
        local.open.program.clockStep = 0.01F; // Copying waits for some rounds of events.
        local.open.click("btnSelectFile");
        QVERIFY(rounds > 0);
        QVERIFY(openMeanwhile);
        QVERIFY(waitUntil([&] { return !local.open.isOpen(); }));
        QVERIFY(local.open.program.gate.isOpen());
        QCOMPARE(local.titleOf("mine.htm"), QString("Mine.htm"));
    }

    void cancellingTheRenameDialogCopiesNothing() {
        LocalFile local;
        local.open.write("mine.htm", "old");
        const QStringList before = local.files();
        const QString location = local.open.browser().locationURL();
        onFileDialog(local.make("Mine.htm"));
        onOverwrite("mine.htm", "No");
        onRename("mine.htm", {}, {});
        local.select();
        QCOMPARE(local.files(), before);
        QCOMPARE(local.titleOf("mine.htm"), QString("old"));
        QCOMPARE(local.open.browser().locationURL(), location);
    }

    void typedNameNeverLeavesTheTour() {
        LocalFile local;
        onFileDialog(local.make("Page.htm"));
        onRename("page.htm", reserved, "../outside.htm");
        local.select();
        QVERIFY(!QFile::exists(local.open.program.path("outside.htm")));
        QCOMPARE(local.titleOf("outside.htm"), QString("Page.htm"));
    }

    void fileOfTheTourItselfIsKept() {
        LocalFile local;
        local.open.write("mine.htm", "<title>mine.htm</title>");
        onFileDialog(local.open.program.working("mine.htm"));
        onOverwrite("mine.htm", "Yes");
        local.select();
        QCOMPARE(local.titleOf("mine.htm"), QString("mine.htm"));
        QVERIFY(local.open.shows("/NewTour/mine.htm"));
    }

    void fileThatVanishesIsToldOfAndTheBrowserIsSentThereAllTheSame() {
        LocalFile local;
        local.open.write("mine.htm", "old");
        const QString path = local.make("Mine.htm");
        onFileDialog(path);
        onNextDialog([&](QDialog& dialog) {
            QVERIFY(QFile::remove(path));
            press(dialog, "Yes");
        });
        local.select();
        QVERIFY(local.open.notice().contains("could not be copied"));
        QCOMPARE(local.titleOf("mine.htm"), QString("old"));
        QVERIFY(local.open.shows("/NewTour/mine.htm"));
    }

    // The external HTML editor.

    void withoutAnEditorTheAuthorIsToldWhereToNameOne_data() {
        QTest::addColumn<QString>("path");
        QTest::newRow("NONE") << "NONE";
        QTest::newRow("none") << "none";
        QTest::newRow("empty") << "";
    }
    void withoutAnEditorTheAuthorIsToldWhereToNameOne() {
        QFETCH(QString, path);
        LocalFile local;
        local.open.program.options.htmlEditorPath = toUtf8(path);
        onMessageWindow("Wendmark - HTML Editor not specified",
                        "To use this feature you have to specify your favorite HTML editor:\r\n"
                        "  Go to the Wendmark main window.\r\n"
                        "  Select Options from the View menu.\r\n"
                        "  Specify the path to the editor's EXE file.");
        local.open.click("Edit");
        QCOMPARE(test::dialogsExpected(), 0);
        QCOMPARE(local.open.program.htmlEditor.editorTaskId(), 0);
    }

    void editorGetsTheFileAsOneArgument_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("opened");
        QTest::newRow("plain") << "a.htm" << true;
        QTest::newRow("blanks") << "My Old  Page.htm" << true;
        QTest::newRow("quotes, signs and letters")
            << QString::fromUtf8("it's \"$HOME\" `id` %20 #1 ä.htm") << true;
        QTest::newRow("new page") << "newpage.htm" << false;
        QTest::newRow("new page in capitals") << "NEWPAGE.HTM" << false;
    }
    void editorGetsTheFileAsOneArgument() {
        QFETCH(QString, name);
        QFETCH(bool, opened);
        LocalFile local;
        local.open.write(name, "<title>Mine</title>");
        local.open.visit(local.open.local(name));
        const QString said = startEditor(local, opened ? editing() : creating());
        QCOMPARE(said, "1\n" + (opened ? local.open.program.working(name) : QString()) + "\n");
    }

    void editorStartsOnANewDocumentForAPageOfTheWeb() {
        LocalFile local;
        local.open.visit(local.open.served("/plain.htm"));
        QCOMPARE(startEditor(local, creating()), QString("1\n\n"));
    }

    void editorIsStartedAgainWhereItCannotBeBroughtToTheFront() {
        LocalFile local;
        local.open.visit(local.open.served("/plain.htm"));
        startEditor(local, creating());
        const auto first = local.open.program.htmlEditor.editorTaskId();
        QFile::remove(local.open.program.path("said.txt"));
        startEditor(local, creating());
        QVERIFY(local.open.program.htmlEditor.editorTaskId() != first);
    }

    void editorThatCannotBeStartedIsToldOf() {
        LocalFile local;
        local.open.program.options.htmlEditorPath = toUtf8(local.open.program.path("no such editor"));
        local.open.visit(local.open.served("/plain.htm"));
        onMessageWindow("Wendmark - HTML Editor", creating());
        local.open.click("Edit");
        QVERIFY(local.open.notice().contains("could not be started"));
        QCOMPARE(local.open.program.htmlEditor.editorTaskId(), 0);
        QVERIFY(local.open.program.log.failures.back().starts_with("cannot start the HTML editor"));
    }

private:
    static QString editing() {
        return "After editing the current HTML document, save the file in its current location (by using the "
               "editor's \"Save\" button).\r\n\r\nUpon returning to the \"URL Editor\" window, use the "
               "\"Refresh\" "
               "button to update the display.";
    }

    static QString creating() {
        return "After creating your HTML document, save the file in any location you choose.\r\n\r\nUpon "
               "returning to the \"URL Editor\" window, use the \"Select Local File\" button to load the "
               "newly "
               "created file";
    }

    /// Starts an editor that writes down how many arguments it got, and the first; returns what it wrote.
    static QString startEditor(LocalFile& local, const QString& message) {
        const QString editor = local.open.program.path("my editor.sh");
        const QString said = local.open.program.path("said.txt");
        test::writeFile(toUtf8(editor), toUtf8("#!/bin/sh\nprintf '%s\\n%s\\n' \"$#\" \"$1\" > '" + said +
                                               ".part'\nmv '" + said + ".part' '" + said + "'\n"));
        QFile::setPermissions(editor, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        local.open.program.options.htmlEditorPath = toUtf8(editor);
        onMessageWindow("Wendmark - HTML Editor", message);
        local.open.click("Edit");
        if (!waitUntil([&] { return QFile::exists(said); }))
            return "nothing";
        return toQString(test::readFile(toUtf8(said)));
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::LocalFilesTest)
#include "LocalFilesTest.moc"
