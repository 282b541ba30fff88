#include "platform/Strings.h"
#include "ui/main/frmMain.h"
#include "ui/support/OutsidePrograms.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QAction>
#include <QDesktopServices>
#include <QFile>
#include <QLineEdit>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTest>
#include <memory>
#include <sys/resource.h>

namespace wendmark {

using test::onNextDialog;
using test::press;
using test::textOf;
using test::UiFixture;

namespace {

constexpr const char* playServed = "mnuFilePlayServed";
constexpr const char* playFromDisk = "mnuFilePlayFromDisk";
constexpr const char* openFolder = "mnuFileFolder";

/// The program with a saved tour; what it opens outside is written down.
class OpenTour final {
public:
    explicit OpenTour(const QString& name = "walk") : window(program.parts()) {
        window.load(program.makeTour(name, 3));
        window.save();
        window.show();
    }

    void give(const char* command) const { window.findChild<QAction*>(command)->trigger(); }

    QString opened() const {
        QStringList addresses;
        for (const QUrl& address : outside.opened)
            addresses.append(address.isLocalFile() ? address.toLocalFile() : address.toString());
        return addresses.join(' ');
    }
    QString tourFile(const QString& name) const { return program.path("MyTours/walk/" + name); }

    /// Expects a question, and answers it with the button of this caption.
    static void answer(const QString& button) {
        onNextDialog([button](QDialog& question) { press(question, button); });
    }

    UiFixture program;
    test::OutsidePrograms outside;
    frmMain window;
};

/// What a browser gets from there; the error if it gets nothing.
QString fetched(const QUrl& address) {
    QNetworkAccessManager network;
    const std::unique_ptr<QNetworkReply> reply(network.get(QNetworkRequest(address)));
    test::waitUntil([&] { return reply->isFinished(); });
    return reply->error() == QNetworkReply::NoError ? QString::fromUtf8(reply->readAll())
                                                    : reply->errorString();
}

} // namespace

class PlayTest final : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { QCOMPARE(test::dialogsExpected(), 0); }

    void savedTourIsPlayedFromAWebServer() {
        const OpenTour open;
        open.give(playServed);
        QVERIFY2(open.opened().startsWith("http://127.0.0.1:"), qPrintable(open.opened()));
        QVERIFY(open.opened().endsWith("/playtour.htm"));
        const QString page = fetched(open.outside.opened.constFirst());
        QCOMPARE(page.toUtf8(),
                 QByteArray::fromStdString(test::readFile(toUtf8(open.tourFile("playtour.htm")))));
        QVERIFY(fetched(open.outside.opened.constFirst().resolved(QUrl("page2.htm"))).contains("Stop 2"));
        open.give(playServed);
        QCOMPARE(open.outside.opened.at(1), open.outside.opened.at(0));
    }

    void savedTourIsPlayedFromDisk() {
        const OpenTour open;
        open.give(playFromDisk);
        QCOMPARE(open.opened(), open.tourFile("playtour.htm"));
    }

    void tourFolderIsShown() {
        OpenTour open;
        open.program.document.insertStop();
        open.give(openFolder); // Whatever is saved of it.
        QCOMPARE(open.opened(), open.program.path("MyTours/walk"));
    }

    void folderMayHaveAnyName() {
        const OpenTour open(QString::fromUtf8("\xC3\xBC #1 100%?"));
        open.give(playFromDisk);
        QCOMPARE(open.opened(),
                 open.program.path(QString::fromUtf8("MyTours/\xC3\xBC #1 100%?/playtour.htm")));
        open.give(playServed);
        QVERIFY(fetched(open.outside.opened.at(1)).contains("<frameset", Qt::CaseInsensitive));
    }

    void changesAreSavedFirst() {
        OpenTour open;
        open.program.document.insertStop();
        OpenTour::answer("Save and Play");
        open.give(playFromDisk);
        QVERIFY(open.program.document.isAsSaved());
        QVERIFY(QFile::exists(open.tourFile("page4.htm")));
        QCOMPARE(open.opened(), open.tourFile("playtour.htm"));
    }

    void orWhatIsSavedIsPlayed() {
        OpenTour open;
        open.program.document.insertStop();
        OpenTour::answer("Play What Is Saved");
        open.give(playServed);
        QVERIFY(!open.program.document.isAsSaved());
        QCOMPARE(open.outside.opened.size(), 1);
    }

    void orNothing() {
        OpenTour open;
        open.program.document.insertStop();
        onNextDialog([](QDialog& question) {
            QCOMPARE(textOf(question),
                     QString("Wendmark|The browser plays the tour as it was saved, and there are unsaved "
                             "changes. Save it first?"));
            question.reject();
        });
        open.give(playServed);
        QVERIFY(!open.program.document.isAsSaved());
        QCOMPARE(open.opened(), QString());
    }

    void tourWithoutFolderIsSavedFirst() {
        UiFixture program;
        const test::OutsidePrograms outside;
        frmMain window(program.parts());
        onNextDialog([](QDialog& wizard) { wizard.close(); });
        window.load();
        for (const char* const command : {playServed, playFromDisk, openFolder}) {
            onNextDialog([](QDialog& question) {
                QCOMPARE(textOf(question), QString("Wendmark|The tour has no folder yet. Save it first?"));
                question.reject();
            });
            window.findChild<QAction*>(command)->trigger();
        }
        OpenTour::answer("Save and Play");
        onNextDialog([](QDialog& folders) { folders.reject(); });
        window.findChild<QAction*>(playServed)->trigger();
        QVERIFY(outside.opened.isEmpty());
        OpenTour::answer("Save");
        onNextDialog([](QDialog& folders) {
            folders.findChild<QLineEdit*>("txtTourName")->setText("mine");
            press(folders, "btnOK");
        });
        window.findChild<QAction*>(openFolder)->trigger();
        QCOMPARE(outside.opened.value(0).toLocalFile(), program.path("MyTours/mine"));
    }

    void serverEndsWithTheTour() {
        OpenTour open;
        open.give(playServed);
        const QUrl address = open.outside.opened.constFirst();
        open.program.document.insertStop();
        open.window.save();
        QVERIFY(fetched(address).contains("<frameset", Qt::CaseInsensitive));
        open.program.document.beginOpening();
        open.program.document.finishOpening(toUtf8(open.program.makeTour("other", 2)));
        QVERIFY(fetched(address).contains("refused"));
        open.window.save();
        open.give(playServed);
        QVERIFY(open.outside.opened.at(1) != address);
        QVERIFY(fetched(open.outside.opened.at(1)).contains("<frameset", Qt::CaseInsensitive));
    }

    void serverEndsWithTheProgram() {
        auto open = std::make_unique<OpenTour>();
        open->give(playServed);
        const QUrl address = open->outside.opened.constFirst();
        open.reset();
        QVERIFY(fetched(address).contains("refused"));
    }

    void folderWithoutPagesIsSavedFirst() {
        OpenTour open;
        for (const char* const command : {playServed, playFromDisk}) {
            QVERIFY(QFile::remove(open.tourFile("playtour.htm")));
            onNextDialog([](QDialog& question) {
                QVERIFY(textOf(question).contains("holds no playtour.htm"));
                question.reject();
            });
            open.give(command);
            QCOMPARE(open.opened(), QString());
            OpenTour::answer("Save and Play");
            open.give(command);
            QCOMPARE(open.outside.opened.size(), 1);
            open.outside.opened.clear();
        }
    }

    void portThatCannotBeHadIsTold() {
        const OpenTour open;
        rlimit former{};
        QCOMPARE(::getrlimit(RLIMIT_NOFILE, &former), 0);
        rlimit none = former;
        none.rlim_cur = 0;
        onNextDialog([&](QDialog& message) {
            ::setrlimit(RLIMIT_NOFILE, &former);
            QVERIFY(textOf(message).startsWith(
                "Wendmark|The tour cannot be played from a web server: no port of this "
                "computer is to be had."));
            message.accept();
        });
        QCOMPARE(::setrlimit(RLIMIT_NOFILE, &none), 0);
        open.give(playServed);
        ::setrlimit(RLIMIT_NOFILE, &former);
        QCOMPARE(open.opened(), QString());
    }

    void missingBrowserIsTold() {
        const OpenTour open;
        QObject nobody;
        QDesktopServices::setUrlHandler("file", &nobody, "open"); // Has no such function.
        onNextDialog([&](QDialog& message) {
            QVERIFY(textOf(message).contains(open.tourFile("playtour.htm")));
            message.accept();
        });
        open.give(playFromDisk);
        QDesktopServices::unsetUrlHandler("file");
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::PlayTest)
#include "PlayTest.moc"
