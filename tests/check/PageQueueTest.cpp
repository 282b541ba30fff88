#include "check/PageQueue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace wendmark {
namespace {

using testing::ElementsAre;
using testing::Eq;
using testing::Optional;

/// Every page that the queue gives out now.
std::vector<std::size_t> takeAll(PageQueue& queue, std::int64_t now = 0) {
    std::vector<std::size_t> pages;
    while (const auto page = queue.takeNext(now))
        pages.push_back(*page);
    return pages;
}

TEST(PageQueue, asksFourPagesOfAServerAtOnce) {
    PageQueue queue;
    for (std::size_t page = 0; page < 6; ++page)
        queue.add(page, "http://a.example/" + std::to_string(page));
    EXPECT_THAT(takeAll(queue), ElementsAre(0, 1, 2, 3));
    queue.end(1);
    EXPECT_THAT(takeAll(queue), ElementsAre(4));
    EXPECT_EQ(queue.left(), 5U);
}

TEST(PageQueue, asksTwentyFourPagesAtOnce) {
    PageQueue queue;
    for (std::size_t page = 0; page < 100; ++page)
        queue.add(page, "http://h" + std::to_string(page) + ".example/");
    EXPECT_EQ(takeAll(queue).size(), 24U);
}

TEST(PageQueue, namesOfHostsCountWithoutCase) {
    PageQueue queue({24, 1});
    queue.add(0, "http://A.example/");
    queue.add(1, "https://a.EXAMPLE/x");
    EXPECT_EQ(takeAll(queue).size(), 1U);
}

TEST(PageQueue, serversTakeTurns) {
    PageQueue queue({2, 2});
    queue.add(0, "http://a.example/0");
    queue.add(1, "http://a.example/1");
    queue.add(2, "http://b.example/");
    EXPECT_THAT(takeAll(queue), ElementsAre(0, 2));
}

TEST(PageQueue, aServerThatWaitsHoldsUpNoOther) {
    PageQueue queue({24, 1});
    queue.add(0, "http://a.example/");
    queue.add(1, "http://a.example/1");
    queue.add(2, "http://b.example/");
    ASSERT_THAT(queue.takeNext(1000), Optional(Eq(0U)));
    queue.postpone(0, 5000);
    EXPECT_THAT(takeAll(queue, 1000), ElementsAre(2));
    EXPECT_THAT(queue.nextTime(1000), Optional(5000));
    EXPECT_THAT(takeAll(queue, 4999), ElementsAre());
    EXPECT_THAT(takeAll(queue, 5000), ElementsAre(0));
    EXPECT_EQ(queue.nextTime(5000), std::nullopt);
}

TEST(PageQueue, clearForgetsThoseThatWait) {
    PageQueue queue({1, 1});
    queue.add(0, "http://a.example/");
    queue.add(1, "http://b.example/");
    ASSERT_THAT(queue.takeNext(0), Optional(Eq(0U)));
    queue.clear();
    EXPECT_EQ(queue.left(), 1U);
    queue.end(0);
    EXPECT_EQ(queue.left(), 0U);
    EXPECT_EQ(queue.takeNext(0), std::nullopt);
}

std::vector<HttpAnswer> busy(const std::string& value, int status = 429) {
    return {{"http://a.example/", status, {{"Retry-After", value}}}};
}

TEST(RetryAfter, isANumberOfSecondsOrADate) {
    EXPECT_THAT(retryAfter(busy("120"), 0), Optional(120));
    EXPECT_THAT(retryAfter(busy("Sun, 06 Nov 1994 08:49:37 GMT"), 784111777 - 10), Optional(10));
    EXPECT_THAT(retryAfter(busy("Sun, 06 Nov 1994 08:49:37 GMT"), 784111777 + 10), Optional(0));
    EXPECT_THAT(retryAfter(busy("3", 503), 0), Optional(3));
}

TEST(RetryAfter, isNothingElse) {
    for (const char* value : {"", "soon", "-5", "12x", "Sun, 31 Feb 1994 08:49:37 GMT"})
        EXPECT_EQ(retryAfter(busy(value), 0), std::nullopt) << value;
    EXPECT_EQ(retryAfter(busy("5", 200), 0), std::nullopt);
    EXPECT_EQ(retryAfter({}, 0), std::nullopt);
}

} // namespace
} // namespace wendmark
