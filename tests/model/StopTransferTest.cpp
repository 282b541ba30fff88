#include "model/StopTransfer.h"

#include "model/FoundLinks.h"

#include <gmock/gmock.h>

namespace wendmark {
namespace {

const std::vector<Stop> three = {
    {"The <B>old</B> &amp; new", "http://host/a?b=1&c", "Words.\r\n\r\nMore\r\n", "Do it.\r\n"},
    {"", "own%20page.htm", "<!--narration-->", ""},
    {"T\xC3\xB6wn \xE2\x86\x92", "https://other.example/", std::string("a\0b\n7 7", 7), "1 2 3 4\n"}};

TEST(StopTransferTest, stopsComeBackAsTheyWere) {
    EXPECT_EQ(decodeStops(encodeStops(three)), three);
    const std::vector<Stop> full(tourCapacity, three.front());
    EXPECT_EQ(decodeStops(encodeStops(full)), full);
}

TEST(StopTransferTest, everyTruncationIsRefused) {
    const std::string bytes = encodeStops(three);
    for (std::size_t size = 0; size < bytes.size(); ++size)
        EXPECT_EQ(decodeStops(std::string_view(bytes).substr(0, size)), std::nullopt) << size;
}

TEST(StopTransferTest, whatIsNotOfThisFormIsRefused) {
    const std::string good = encodeStops({three.back()});
    const auto with = [&](std::string_view from, std::string_view to) {
        std::string bytes = good;
        return bytes.replace(bytes.find(from), from.size(), to);
    };
    EXPECT_EQ(decodeStops(with("stops 1", "stops 2")), std::nullopt);
    EXPECT_EQ(decodeStops(good + "x"), std::nullopt);
    EXPECT_EQ(decodeStops(with("https", "\xFFttps")), std::nullopt) << "No UTF-8.";
    EXPECT_EQ(decodeStops(with("\n1\n", "\n2\n")), std::nullopt);
    EXPECT_EQ(decodeStops(with("\n1\n", "\n18446744073709551615\n")), std::nullopt);
    EXPECT_EQ(decodeStops(with("\n1\n", "\n-1\n")), std::nullopt);
    EXPECT_EQ(decodeStops("wendmark-stops 1\n1\n18446744073709551615 1 1 1\nabc\n"), std::nullopt);
    EXPECT_EQ(decodeStops("wendmark-stops 1\n1\n0 0 0\n\n"), std::nullopt);
    EXPECT_EQ(decodeStops("wendmark-stops 1\n0\n"), std::nullopt);
    EXPECT_EQ(decodeStops(std::string(1000, '\0')), std::nullopt);
    EXPECT_EQ(decodeStops(encodeStops(std::vector<Stop>(tourCapacity + 1))), std::nullopt);
}

TEST(StopTransferTest, otherProgramsGetTitlesAndLinks) {
    EXPECT_EQ(stopsAsHtml(three), "<meta charset=\"utf-8\">\n<ol>\n"
                                  "<li><a href=\"http://host/a?b=1&amp;c\">The old &amp; new</a></li>\n"
                                  "<li></li>\n"
                                  "<li><a href=\"https://other.example/\">T\xC3\xB6wn \xE2\x86\x92</a></li>\n"
                                  "</ol>\n");
    EXPECT_EQ(stopsAsPlainText(three), "The old & new\thttp://host/a?b=1&c\n\town%20page.htm\n"
                                       "T\xC3\xB6wn \xE2\x86\x92\thttps://other.example/\n");
}

TEST(StopTransferTest, titleCannotLeaveItsLineOrItsLink) {
    const std::vector<Stop> hostile = {
        {"a</a>\n\t<script>x</script>&lt;script&gt;", "http://host/\"onclick=\"x", "", ""},
        {"b", "javascript:alert(1)//http://host/", "", ""}};
    EXPECT_EQ(stopsAsHtml(hostile),
              "<meta charset=\"utf-8\">\n<ol>\n"
              "<li><a href=\"http://host/&quot;onclick=&quot;x\">a &lt;script&gt;</a></li>\n"
              "<li>b</li>\n</ol>\n");
}

TEST(StopTransferTest, bothFormsForOthersAreFoundAgain) {
    for (const FoundLinks& found :
         {linksInHtml(stopsAsHtml(three)), linksInPlainText(stopsAsPlainText(three))}) {
        ASSERT_EQ(found.stops.size(), 2U);
        EXPECT_EQ(found.stops[0].stopTitle, "The old &amp; new");
        EXPECT_EQ(found.stops[0].stopURL, three[0].stopURL);
        EXPECT_EQ(found.stops[1].stopTitle, three[2].stopTitle);
    }
}

} // namespace
} // namespace wendmark
