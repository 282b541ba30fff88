#include "check/PageVerdict.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace wendmark {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using Frame = PageFindings::Frame;

constexpr const char* page = "https://a.example/page";

HttpAnswer answer(int status, std::vector<HttpHeader> headers = {}, std::string address = page) {
    return {std::move(address), status, std::move(headers)};
}

/// Of a page that the frame shows.
PageFindings shown(std::vector<HttpAnswer> answers = {answer(200)}) {
    PageFindings findings;
    findings.address = answers.empty() ? page : answers.front().address;
    findings.frame = Frame::page;
    findings.framedBy = {"http", "127.0.0.1", 4000};
    findings.milliseconds = 100;
    findings.answers = std::move(answers);
    return findings;
}

/// Of one in whose place an error page stands.
PageFindings notShown(std::vector<HttpAnswer> answers = {answer(200)}) {
    PageFindings findings = shown(std::move(answers));
    findings.frame = Frame::error;
    return findings;
}

PageFindings refused(const std::string& sources) {
    PageFindings findings =
        notShown({answer(200, {{"Content-Security-Policy", "frame-ancestors " + sources}})});
    findings.console = {"Refused to frame '" + std::string(page) +
                        "' because an ancestor violates the following Content Security Policy directive: "
                        "\"frame-ancestors " +
                        sources + "\".\n"};
    return findings;
}

Audience visitors(Posting posting, const std::vector<std::string>& launching = {}) {
    Audience audience{posting, {}};
    for (const std::string& address : launching)
        audience.sites.push_back(*originOf(address));
    return audience;
}

Verdict verdictOf(const PageFindings& findings, Posting posting = Posting::https) {
    return judgePage(findings, visitors(posting)).verdict;
}

TEST(PageVerdict, pageThatIsShownPlays) {
    const PageVerdict verdict = judgePage(shown(), visitors(Posting::https));
    EXPECT_EQ(verdict.verdict, Verdict::plays);
    EXPECT_EQ(verdict.why, "");
    EXPECT_EQ(verdict.finalAddress, page);
    EXPECT_EQ(verdict.newAddress, "");
    EXPECT_THAT(verdict.playsFor, IsEmpty());
}

TEST(PageVerdict, whatTheBrowserShowsCountsMoreThanWhatTheProgramIsAnswered) {
    EXPECT_EQ(verdictOf(shown({answer(200, {{"X-Frame-Options", "DENY"}})})), Verdict::plays);
    PageFindings findings = notShown();
    findings.console = {"Refused to display 'https://a.example/page' in a frame because it set "
                        "'X-Frame-Options' to 'deny'."};
    EXPECT_EQ(verdictOf(findings), Verdict::refuses);
}

TEST(PageVerdict, noServerNoHostNoCertificateAndNoPageAreGone) {
    for (const auto failure :
         {RequestFailure::noSuchHost, RequestFailure::noServer, RequestFailure::untrusted}) {
        PageFindings findings = notShown({});
        findings.failure = failure;
        EXPECT_EQ(verdictOf(findings), Verdict::gone);
        EXPECT_THAT(judgePage(findings, visitors(Posting::disk)).why, HasSubstr("a.example"));
        findings.frame = Frame::page; // The browser has got it all the same.
        EXPECT_EQ(verdictOf(findings), Verdict::plays);
    }
    EXPECT_EQ(verdictOf(shown({answer(404)})), Verdict::gone);
    EXPECT_EQ(verdictOf(shown({answer(410)})), Verdict::gone);
}

TEST(PageVerdict, errorsOfServersAndSilenceFail) {
    for (const int status : {400, 401, 403, 429, 500, 503})
        EXPECT_EQ(verdictOf(shown({answer(status)})), Verdict::fails) << status;
    PageFindings silent = notShown({});
    silent.frame = Frame::nothing;
    EXPECT_EQ(verdictOf(silent), Verdict::fails);
    EXPECT_EQ(verdictOf(notShown()), Verdict::fails);
    PageFindings endless = notShown({});
    endless.failure = RequestFailure::goesRound;
    EXPECT_THAT(judgePage(endless, visitors(Posting::https)).why, HasSubstr("without end"));
}

TEST(PageVerdict, missingPageIsGoneAlsoWhereItRefusesFrames) {
    PageFindings findings = refused("'none'");
    findings.answers.front().status = 404;
    EXPECT_EQ(verdictOf(findings), Verdict::gone);
}

TEST(PageVerdict, downloadIsOneWhereverNothingIsShown) {
    PageFindings findings = notShown();
    findings.frame = Frame::nothing;
    findings.isDownload = true;
    EXPECT_EQ(verdictOf(findings), Verdict::download);
}

TEST(PageVerdict, refusalNamesTheHeaderAndTheSitesThatMayShowThePage) {
    const PageVerdict verdict = judgePage(refused("'self' https://m.example"), visitors(Posting::https));
    EXPECT_EQ(verdict.verdict, Verdict::refuses);
    EXPECT_THAT(verdict.why, HasSubstr("Content-Security-Policy: frame-ancestors 'self' https://m.example"));
    EXPECT_THAT(verdict.playsFor, ElementsAre("https://m.example"));
}

TEST(PageVerdict, pageForSomeSitesPlaysWhereTheTourIsStartedFromThese) {
    const PageFindings findings = refused("https://m.example https://*.n.example");
    const auto verdictFor = [&](const std::vector<std::string>& launching) {
        return judgePage(findings, visitors(Posting::https, launching)).verdict;
    };
    EXPECT_EQ(verdictFor({"https://m.example/start.htm"}), Verdict::plays);
    EXPECT_EQ(verdictFor({"https://m.example/", "https://www.n.example/"}), Verdict::plays);
    EXPECT_EQ(verdictFor({"https://m.example/", "https://other.example/"}), Verdict::refuses);
    EXPECT_EQ(verdictFor({"http://m.example/"}), Verdict::refuses); // Nothing is known of https.
    EXPECT_EQ(judgePage(findings, visitors(Posting::http, {"http://m.example/"})).verdict, Verdict::refuses);
    EXPECT_EQ(judgePage(findings, visitors(Posting::disk, {"https://m.example/"})).verdict, Verdict::refuses);
}

TEST(PageVerdict, pageForWebServersIsRefusedFromDisk) {
    const PageFindings findings = shown({answer(200, {{"Content-Security-Policy", "frame-ancestors *"}})});
    EXPECT_EQ(verdictOf(findings, Posting::https), Verdict::plays);
    EXPECT_EQ(verdictOf(findings, Posting::http), Verdict::plays);
    EXPECT_EQ(verdictOf(findings, Posting::disk), Verdict::refuses);
}

TEST(PageVerdict, pageForThisComputerAloneIsRefusedElsewhere) {
    const PageFindings findings =
        shown({answer(200, {{"Content-Security-Policy", "frame-ancestors http://127.0.0.1:*"}})});
    EXPECT_EQ(verdictOf(findings, Posting::http), Verdict::refuses);
}

TEST(PageVerdict, takeOverIsTold) {
    PageFindings findings = shown();
    findings.triedToTakeOver = true;
    EXPECT_EQ(verdictOf(findings), Verdict::takesOver);
}

TEST(PageVerdict, pageByHttpIsInsecureInToursWithHttpsOnly) {
    const PageFindings findings = shown({answer(200, {}, "http://a.example/")});
    EXPECT_EQ(verdictOf(findings, Posting::https), Verdict::insecure);
    EXPECT_EQ(verdictOf(findings, Posting::http), Verdict::plays);
    EXPECT_EQ(verdictOf(findings, Posting::disk), Verdict::plays);
    EXPECT_EQ(verdictOf(shown(
                  {answer(302, {{"Location", "http://b.example/"}}), answer(200, {}, "http://b.example/")})),
              Verdict::insecure);
    EXPECT_EQ(verdictOf(shown({answer(200, {}, "http://localhost:8000/")})), Verdict::plays);
}

TEST(PageVerdict, permanentRedirectsNameTheNewAddress) {
    PageFindings findings = shown(
        {answer(301, {{"Location", "/b"}}), answer(308, {{"Location", "/c"}}, "https://a.example/b"),
         answer(302, {{"Location", "/d"}}, "https://a.example/c"), answer(200, {}, "https://a.example/d")});
    findings.address = "https://a.example/page#part";
    const PageVerdict verdict = judgePage(findings, visitors(Posting::https));
    EXPECT_EQ(verdict.verdict, Verdict::moved);
    EXPECT_EQ(verdict.newAddress, "https://a.example/c#part");
    EXPECT_EQ(verdict.finalAddress, "https://a.example/d");
    EXPECT_THAT(remediesFor(verdict), ElementsAre("new-address"));
    EXPECT_THAT(remediesFor({}), IsEmpty());
    EXPECT_EQ(verdictOf(shown({answer(302, {{"Location", "/b"}}), answer(200)})), Verdict::plays);
}

TEST(PageVerdict, cardsHelpWherePagesAreOnTheWebButNotInTheFrame) {
    const auto remediesOf = [](Verdict verdict) {
        PageVerdict result;
        result.verdict = verdict;
        return remediesFor(result);
    };
    for (const Verdict verdict : {Verdict::fails, Verdict::download, Verdict::refuses, Verdict::takesOver,
                                  Verdict::insecure, Verdict::slow})
        EXPECT_THAT(remediesOf(verdict), ElementsAre("card")) << nameOf(verdict);
    for (const Verdict verdict :
         {Verdict::noPage, Verdict::fileMissing, Verdict::gone, Verdict::moved, Verdict::plays})
        EXPECT_THAT(remediesOf(verdict), IsEmpty()) << nameOf(verdict);
    PageVerdict both;
    both.verdict = Verdict::insecure;
    both.newAddress = "https://a.example/";
    EXPECT_THAT(remediesFor(both), ElementsAre("new-address", "card"));
}

TEST(PageVerdict, slowPageIsToldAfterEightSeconds) {
    PageFindings findings = shown();
    findings.milliseconds = 8000;
    EXPECT_EQ(verdictOf(findings), Verdict::plays);
    findings.milliseconds = 8001;
    EXPECT_EQ(verdictOf(findings), Verdict::slow);
}

TEST(PageVerdict, everyPostingIsKnownByItsName) {
    for (const Posting posting : {Posting::https, Posting::http, Posting::disk})
        EXPECT_EQ(postingNamed(nameOf(posting)), posting);
    EXPECT_EQ(nameOf(Posting::disk), "disk");
    EXPECT_EQ(postingNamed("Disk"), std::nullopt);
    EXPECT_EQ(postingNamed(""), std::nullopt);
}

TEST(PageVerdict, everyVerdictHasItsWords) {
    EXPECT_EQ(nameOf(Verdict::noPage), "no-page");
    EXPECT_EQ(nameOf(Verdict::takesOver), "takes-over");
    EXPECT_EQ(nameOf(Verdict::plays), "plays");
    EXPECT_EQ(wordsFor(Verdict::refuses), "Refuses frames");
    EXPECT_EQ(visitorsSee(Verdict::plays), "Visitors see the page.");
    EXPECT_TRUE(isShown(Verdict::moved));
    EXPECT_FALSE(isShown(Verdict::insecure));
}

} // namespace
} // namespace wendmark
