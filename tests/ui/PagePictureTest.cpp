#include "probe/PagePicture.h"

#include "platform/BrowserView.h"
#include "ui/support/LoopbackServer.h"
#include "ui/support/UiFixture.h"

#include <QSignalSpy>
#include <QTest>
#include <QWebEngineProfile>
#include <memory>

namespace wendmark {

using test::LoopbackServer;
using test::waitUntil;

namespace {

/// Looks at one page.
class Look final {
public:
    explicit Look(const QString& path, LoopbackServer& server, PagePicture::Patience patience = {60'000, 200})
        : picture(*profile, QUrl(server.address(path)), window, patience), spy(&picture, &PagePicture::done) {
        window.show();
    }

    const PagePicture::Portrait& portrait() {
        if (!waitUntil([this] { return !spy.isEmpty(); }))
            qFatal("Nothing was found out");
        return picture.portrait();
    }

    std::unique_ptr<QWebEngineProfile> profile{makeBrowserProfile(nullptr)};
    QWidget window;
    PagePicture picture;
    QSignalSpy spy;
};

} // namespace

class PagePictureTest final : public QObject {
    Q_OBJECT

private slots:
    void pageSaysWhatItIs() {
        LoopbackServer server;
        server.page("/a.htm",
                    "<title> Two \n words </title><meta property='og:description' content='&lt;b&gt; of it'>"
                    "<body style='margin: 0; background: rgb(0, 0, 255)'>");
        Look look("/a.htm", server);
        QCOMPARE(look.portrait().title, QString("Two words"));
        QCOMPARE(look.portrait().site, QString());
        QCOMPARE(look.portrait().description, QString("<b> of it"));
        QCOMPARE(look.portrait().picture.size(), QSize(1280, 800));
        QCOMPARE(look.portrait().picture.pixelColor(640, 400), QColor(0, 0, 255));
    }

    void pageThatSaysTooMuchIsCut() {
        LoopbackServer server;
        server.page("/a.htm", "<title>" + QByteArray(5'000'000, 'x') + "</title>");
        QCOMPARE(Look("/a.htm", server).portrait().title.size(), 1000);
    }

    void pageThatNeverEndsIsTakenAsFarAsItHasCome() {
        LoopbackServer server;
        server.answer("/a.htm",
                      {200,
                       {},
                       "<title>Endless</title><body style='background: red'>" + QByteArray(20'000, ' '),
                       0,
                       LoopbackServer::Answer::Kind::withoutEnd});
        Look look("/a.htm", server, {3'000, 200});
        QCOMPARE(look.portrait().title, QString("Endless"));
        QVERIFY(!look.portrait().picture.isNull());
    }

    void pageThatDoesNotComeHasNoPicture() {
        LoopbackServer server;
        server.answer("/a.htm", {200, {}, {}, 0, LoopbackServer::Answer::Kind::broken});
        QVERIFY(Look("/a.htm", server).portrait().picture.isNull());
        QVERIFY(Look("/silent.htm", server, {500, 200}).portrait().title.isEmpty());
    }

    void pageThatIsBusyForEverIsLeft() {
        LoopbackServer server;
        server.page("/a.htm",
                    "<title>Busy</title><script>onload = () => setTimeout(() => { for (;;); }, 50)</script>");
        Look look("/a.htm", server, {60'000, 500});
        QCOMPARE(look.portrait().title, QString());
    }

    void lookThatIsGivenUpLeavesNothing() {
        LoopbackServer server;
        for (const int events : {0, 1, 5, 50}) {
            const Look look("/plain.htm", server);
            for (int i = 0; i < events; ++i)
                QCoreApplication::processEvents();
        }
        QCOMPARE(Look("/plain.htm", server).portrait().picture.size(), QSize(1280, 800));
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::PagePictureTest)

#include "PagePictureTest.moc"
