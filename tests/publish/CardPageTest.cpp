#include "publish/CardPage.h"

#include "base/Files.h"
#include "support/ScratchFolder.h"

#include <gmock/gmock.h>

namespace wendmark::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class CardPageTest : public ::testing::Test {
protected:
    std::string composed() const {
        std::string page;
        const Outcome outcome = composeCard(shippedTemplate, card, page);
        EXPECT_TRUE(outcome.ok()) << outcome.message();
        return page;
    }

    std::string shippedTemplate =
        readFile(std::string(WENDMARK_ASSETS "/Template/") + std::string(cardTemplate));
    PageCard card{"https://a.example/b?c=1&d=2",
                  "Rivers & <b>lakes</b>",
                  "A \"good\" site",
                  "What flows.",
                  "2026-11-23",
                  "card1.jpg",
                  "card1-2x.jpg",
                  640,
                  400};
};

TEST_F(CardPageTest, saysWhatThePageIsAndOpensItInATabOfItsOwn) {
    const std::string page = composed();
    EXPECT_THAT(page, HasSubstr("<title>Rivers &amp; &lt;b&gt;lakes&lt;/b&gt;</title>"));
    EXPECT_THAT(page, HasSubstr("What flows."));
    EXPECT_THAT(page, HasSubstr("A &quot;good&quot; site"));
    EXPECT_THAT(page,
                HasSubstr("href=\"https://a.example/b?c=1&amp;d=2\" target=\"_blank\" rel=\"noopener\""));
    EXPECT_THAT(page, HasSubstr("srcset=\"card1.jpg 1x, card1-2x.jpg 2x\" width=\"640\" height=\"400\""));
    EXPECT_THAT(page, Not(HasSubstr("Card of a page"))); // What the template holds until it is filled.
}

TEST_F(CardPageTest, remembersItsOriginal) {
    EXPECT_EQ(originalOfCard(composed()), card.original);
    card.original = "https://a.example/\u00e4/\u2192\"'>&lt;";
    EXPECT_EQ(originalOfCard(composed()), card.original);
}

TEST_F(CardPageTest, doesWithoutWhatIsNotKnown) {
    card.title = card.description = card.picture = "";
    const std::string page = composed();
    EXPECT_THAT(page, HasSubstr("<h1 dir=\"auto\">A &quot;good&quot; site</h1>"));
    EXPECT_THAT(page, Not(HasSubstr("<img")));
    EXPECT_THAT(page, Not(HasSubstr("class=\"description\"")));
    card.picture = "only.jpg";
    card.largePicture = "";
    EXPECT_THAT(composed(), HasSubstr("srcset=\"only.jpg 1x\""));
}

TEST_F(CardPageTest, lettersOfAllKindsArrive) {
    card.title = "\u00e4 \u2192 \u05e9\u05dc\u05d5\u05dd";
    EXPECT_THAT(composed(), HasSubstr("\xe4 &#8594; &#1513;&#1500;&#1493;&#1501;"));
}

TEST_F(CardPageTest, brokenTemplateIsTold) {
    std::string page = "as it was";
    for (const std::string& broken : {std::string(), std::string("<!--variable-->\r\n<!--variable-->\r\n")}) {
        const Outcome outcome = composeCard(broken, card, page);
        EXPECT_FALSE(outcome.ok());
        EXPECT_THAT(outcome.message(), HasSubstr("template of cards"));
        EXPECT_EQ(page, "as it was");
    }
}

TEST_F(CardPageTest, otherPagesAreNoCards) {
    EXPECT_EQ(originalOfCard(""), "");
    EXPECT_EQ(originalOfCard("<meta name=\"tour-original\">"), "");
    EXPECT_EQ(originalOfCard("<!-- <meta name=\"tour-original\" content=\"http://a\"> -->"), "");
    EXPECT_EQ(originalOfCard("<p>tour-original content=\"http://a\"</p>"), "");
    EXPECT_EQ(
        originalOfCard(std::string(100'000, ' ') + "<meta name=\"tour-original\" content=\"http://a\">"), "");
    EXPECT_EQ(originalOfCard("<META NAME=tour-original CONTENT='http://a/?b&amp;c'>"), "http://a/?b&c");
}

} // namespace
} // namespace wendmark::test
