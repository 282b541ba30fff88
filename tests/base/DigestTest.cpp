#include "base/Digest.h"

#include <gtest/gtest.h>

namespace wendmark {
namespace {

TEST(Digest, knownTexts) {
    EXPECT_EQ(digestOf(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(digestOf("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(digestOf(std::string(1'000'000, 'a')),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(Digest, piecesMakeTheSameDigestWhereverTheTextIsCut) {
    const std::string text(200, 'x');
    for (std::size_t cut = 0; cut <= text.size(); ++cut) {
        Digest digest;
        digest.add(std::string_view(text).substr(0, cut));
        digest.add(std::string_view(text).substr(cut));
        ASSERT_EQ(digest.finish(), digestOf(text)) << cut;
    }
}

TEST(Digest, lengthsAroundABlockDiffer) {
    for (std::size_t length = 54; length < 66; ++length)
        EXPECT_NE(digestOf(std::string(length, 'x')), digestOf(std::string(length + 1, 'x'))) << length;
}

} // namespace
} // namespace wendmark
