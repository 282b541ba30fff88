#include "probe/PageCheck.h"

#include "check/PageVerdict.h"
#include "platform/Strings.h"
#include "ui/support/LoopbackServer.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QSignalSpy>
#include <QTcpServer>
#include <QTest>
#include <algorithm>
#include <map>

namespace wendmark {

using test::LoopbackServer;
using test::waitUntil;
using Answer = LoopbackServer::Answer;

namespace {

/// Finds out about pages, and keeps it.
class Checked final {
public:
    explicit Checked(PageCheck::Options options = hurried()) : check(options, nullptr) {
        QObject::connect(&check, &PageCheck::found, &check,
                         [this](const PageFindings& findings) { found[findings.address] = findings; });
    }

    /// For pages that never come.
    static PageCheck::Options hurried() {
        PageCheck::Options options;
        options.patience.page = 60'000;
        options.patience.late = 100;
        return options;
    }

    const PageFindings& findingsOf(const QString& address) {
        const std::string key = toUtf8(address);
        if (!check.add(key).ok())
            qFatal("The page cannot be framed");
        if (!waitUntil([&] { return found.contains(key); }))
            qFatal("Nothing was found out");
        return found.at(key);
    }

    QString verdictOn(const QString& address, Posting posting = Posting::http) {
        const PageVerdict verdict = judgePage(findingsOf(address), {posting, {}});
        why = toQString(verdict.why);
        return toQString(nameOf(verdict.verdict));
    }

    LoopbackServer server;
    PageCheck check;
    std::map<std::string, PageFindings> found;
    QString why; ///< Of the last verdict.
};

} // namespace

class PageCheckTest final : public QObject {
    Q_OBJECT

private slots:
    void eachPageHasItsVerdict_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("verdict");
        const std::map<QString, QString> verdicts = {
            {"/plain.htm", "plays"},        {"/slow.htm", "plays"},      {"/deny.htm", "refuses"},
            {"/sameorigin.htm", "refuses"}, {"/nobody.htm", "refuses"},  {"/anybody.htm", "plays"},
            {"/busting.htm", "takes-over"}, {"/popup.htm", "plays"},     {"/moving.htm", "plays"},
            {"/redirect.htm", "plays"},     {"/big.htm", "plays"},       {"/download.zip", "download"},
            {"/broken.htm", "fails"},       {"/none.htm", "gone"},       {"/never.htm", "plays"},
            {"/410.htm", "gone"},           {"/500.htm", "fails"},       {"/password.htm", "fails"},
            {"/moved.htm", "moved"},        {"/left.htm", "takes-over"}, {"/late.htm", "takes-over"},
            {"/round.htm", "fails"},        {"/picture.svg", "plays"},   {"/alert.htm", "plays"}};
        for (const auto& [path, verdict] : verdicts)
            QTest::addRow("%s", qPrintable(path)) << path << verdict;
    }
    void eachPageHasItsVerdict() {
        QFETCH(const QString, path);
        QFETCH(const QString, verdict);
        Checked checked;
        LoopbackServer& server = checked.server;
        server.answer("/410.htm", {410, {}, "gone"});
        server.answer("/500.htm", {500, {}, "error"});
        server.answer("/password.htm", {401, {{"WWW-Authenticate", "Basic realm=\"x\""}}, "who?"});
        server.answer("/moved.htm", {301, {{"Location", "/plain.htm"}}, {}});
        server.page("/left.htm", "<script>if (top !== self) top.location = self.location;</script>");
        server.page("/late.htm", "<script>addEventListener('load', () => setTimeout(() => { top.location = "
                                 "self.location; }));</script>");
        server.answer("/round.htm", {302, {{"Location", "/round.htm"}}, {}});
        server.answer(
            "/picture.svg",
            {200, {{"Content-Type", "image/svg+xml"}}, "<svg xmlns='http://www.w3.org/2000/svg'/>"});
        server.page("/alert.htm", "<script>alert('Here'); confirm('Sure?'); prompt('Name?');</script>");
        QCOMPARE(checked.verdictOn(server.address(path)), verdict);
    }

    void documentThatBrowsersShowPlays() {
        Checked checked;
        const QByteArray document = "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
                                    "2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\n"
                                    "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 200]>>endobj\n"
                                    "trailer<</Root 1 0 R>>\n%%EOF\n";
        checked.server.answer("/page.pdf", {200, {{"Content-Type", "application/pdf"}}, document});
        QCOMPARE(checked.verdictOn(checked.server.address("/page.pdf")), QString("plays"));
    }

    void whatIsNotThereIsGone() {
        Checked checked;
        QTcpServer closed;
        QVERIFY(closed.listen(QHostAddress::LocalHost));
        const QString nowhere = QStringLiteral("http://127.0.0.1:%1/").arg(closed.serverPort());
        closed.close();
        QCOMPARE(checked.verdictOn(nowhere), QString("gone"));
        QVERIFY2(checked.why.contains("127.0.0.1"), qPrintable(checked.why));
    }

    void silentPageFailsWhenPatienceIsOver() {
        PageCheck::Options options = Checked::hurried();
        options.patience.page = 300;
        Checked checked(options);
        QCOMPARE(checked.verdictOn(checked.server.address("/silent.htm")), QString("fails"));
    }

    void pageIsFramedAsInATour() {
        Checked checked;
        QCOMPARE(checked.verdictOn(checked.server.address("/plain.htm")), QString("plays"));
        const auto& requests = checked.server.requests();
        QVERIFY(checked.server.requestsFor("/plain.htm") >= 2);
        for (const LoopbackServer::Request& request : requests) {
            if (request.path == "/plain.htm")
                QCOMPARE(request.headers.value("sec-fetch-dest"), QByteArray("frame"));
        }
    }

    void askedNamesNoPageOfThisProgram() {
        Checked checked;
        checked.findingsOf(checked.server.address("/plain.htm"));
        for (const LoopbackServer::Request& request : checked.server.requests())
            QVERIFY(!request.headers.value("referer").contains(".htm"));
    }

    void samePageIsAskedForOnce() {
        Checked checked;
        const std::string address = toUtf8(checked.server.address("/plain.htm"));
        QVERIFY(checked.check.add(address).ok());
        QVERIFY(checked.check.add(address).ok());
        const QSignalSpy ended(&checked.check, &PageCheck::ended);
        QVERIFY(waitUntil([&] { return !ended.isEmpty(); }));
        QCOMPARE(checked.server.requestsFor("/plain.htm"), 2); // By the engine, and by the program.
        QVERIFY(!checked.check.isRunning());
    }

    void busyServerIsAskedAgainLater() {
        Checked checked;
        checked.server.answer("/busy.htm", {429, {{"Retry-After", "1"}}, "later"});
        QVERIFY(checked.check.add(toUtf8(checked.server.address("/busy.htm"))).ok());
        QVERIFY(waitUntil([&] { return checked.server.requestsFor("/busy.htm") >= 2; }));
        checked.server.page("/busy.htm", "now");
        QVERIFY(waitUntil([&] { return !checked.found.empty(); }));
        QCOMPARE(checked.found.begin()->second.answers.back().status, 200);
    }

    void serverThatWantsToWaitLongIsNotWaitedFor() {
        Checked checked;
        checked.server.answer("/busy.htm", {429, {{"Retry-After", "3600"}}, "later"});
        QCOMPARE(checked.verdictOn(checked.server.address("/busy.htm")), QString("fails"));
    }

    void cancelledCheckFindsNothingMoreAndGoesOnLater() {
        Checked checked;
        QVERIFY(checked.check.add(toUtf8(checked.server.address("/slow.htm"))).ok());
        QVERIFY(waitUntil([&] { return checked.server.requestsFor("/slow.htm") > 0; }));
        checked.check.cancel();
        QVERIFY(!checked.check.isRunning());
        QCOMPARE(checked.verdictOn(checked.server.address("/plain.htm")), QString("plays"));
        QCOMPARE(checked.found.size(), std::size_t{1});
    }

    void hundredPagesAreFoundOutAbout() {
        Checked checked;
        for (int n = 0; n < 100; ++n) {
            const QString path = QStringLiteral("/p%1.htm").arg(n);
            checked.server.page(path, "page");
            QVERIFY(checked.check.add(toUtf8(checked.server.address(path))).ok());
        }
        QVERIFY(waitUntil([&] { return checked.found.size() == 100; }));
        QVERIFY(std::ranges::all_of(checked.found, [](const auto& entry) {
            return entry.second.frame == PageFindings::Frame::page;
        }));
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::PageCheckTest)

#include "PageCheckTest.moc"
