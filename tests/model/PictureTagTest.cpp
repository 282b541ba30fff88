#include "model/PictureTag.h"

#include <gtest/gtest.h>

namespace wendmark {
namespace {

TEST(PictureTag, isFoundWhereTheCaretStandsInIt) {
    const std::string text = "An <IMG SRC=\"eel.png\" ALT='An &quot;eel&quot;' width=120> in the river";
    const std::string tag = text.substr(3, text.find('>') - 2);
    for (const int caret : {4, 6, 20, 3 + static_cast<int>(tag.size())}) {
        const auto picture = pictureAt(text, caret);
        ASSERT_TRUE(picture) << caret;
        EXPECT_EQ(picture->place.start, 3);
        EXPECT_EQ(picture->place.length, static_cast<int>(tag.size()));
        EXPECT_EQ(picture->tag, tag);
        EXPECT_EQ(picture->address, "eel.png");
        EXPECT_EQ(picture->description, "An \"eel\"");
        EXPECT_EQ(picture->width, 120);
    }
    for (const int caret : {-1, 0, 3, 4 + static_cast<int>(tag.size()), 1000})
        EXPECT_FALSE(pictureAt(text, caret)) << caret;
}

TEST(PictureTag, caretBetweenTwoBelongsToTheOneBefore) {
    const auto picture = pictureAt("<IMG SRC=a><IMG SRC=b>", 11);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->address, "a");
    EXPECT_EQ(pictureAt("<IMG SRC=a><IMG SRC=b>", 12)->address, "b");
}

TEST(PictureTag, placeCountsUtf16Units) {
    const auto picture = pictureAt("\xF0\x9F\x90\x9F\xC3\xBC<img src='\xF0\x9F\x90\x9F'>", 5);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->place.start, 3);
    EXPECT_EQ(picture->place.length, 14);
    EXPECT_EQ(picture->address, "\xF0\x9F\x90\x9F");
}

TEST(PictureTag, whatIsNoWholeTagOfAPictureIsNone) {
    for (const char* text : {"", "<IMG", "<IMG SRC=a", "<IMG SRC=\"a>", "<IMAGE SRC=a>", "</IMG>",
                             "<!-- <IMG SRC=a> -->", "<script><IMG SRC=a></script>", "< IMG SRC=a>"})
        for (int caret = 0; caret < 30; ++caret)
            EXPECT_FALSE(pictureAt(text, caret)) << text << ' ' << caret;
    EXPECT_TRUE(pictureAt("<img>", 2));
    EXPECT_EQ(pictureAt("<img>", 2)->address, "");
}

TEST(PictureTag, widthsAreWholePixels) {
    const auto widthOf = [](const std::string& value) {
        return pictureAt("<IMG WIDTH=\"" + value + "\">", 2)->width;
    };
    EXPECT_EQ(widthOf("1"), 1);
    EXPECT_EQ(widthOf("9999"), 9999);
    for (const char* other : {"0", "-1", "10000", "99999999999", "50%", "12px", "", " 12"})
        EXPECT_EQ(widthOf(other), 0) << other;
}

TEST(PictureTag, nothingSaidIsNotAnEmptyDescription) {
    EXPECT_FALSE(pictureAt("<IMG SRC=a>", 2)->description);
    EXPECT_EQ(pictureAt("<IMG SRC=a ALT=\"\">", 2)->description, "");
    EXPECT_EQ(pictureAt("<IMG SRC=a ALT>", 2)->description, "");
}

TEST(DescribedTag, getsADescriptionAtItsEndOrInPlaceOfItsOwn) {
    EXPECT_EQ(describedTag("<IMG SRC=\"a\">", "An eel"), "<IMG SRC=\"a\" ALT=\"An eel\">");
    EXPECT_EQ(describedTag("<img>", "x"), "<img ALT=\"x\">");
    EXPECT_EQ(describedTag("<img src=a />", "x"), "<img src=a ALT=\"x\" />");
    EXPECT_EQ(describedTag("<img src=a/>", "x"), "<img src=a/ ALT=\"x\">"); // The stroke is the address's.
    EXPECT_EQ(describedTag("<img src=a width=>", "x"), "<img ALT=\"x\" src=a width=>");
    EXPECT_EQ(describedTag("<IMG alt='old' SRC=a>", "new"), "<IMG ALT=\"new\" SRC=a>");
    EXPECT_EQ(describedTag("<IMG alt SRC=a>", "new"), "<IMG ALT=\"new\" SRC=a>");
    EXPECT_EQ(describedTag("<IMG SRC=a alt = old>", "new"), "<IMG SRC=a ALT=\"new\">");
}

TEST(DescribedTag, takesAnyText) {
    const std::string odd = "\"<b> & 'it\xC3\xBC' > \n $1";
    const std::string tag = describedTag("<IMG SRC=a>", odd);
    EXPECT_EQ(pictureAt(tag, 1)->description, odd);
    EXPECT_EQ(pictureAt(tag, 1)->tag, tag);
}

TEST(DescribedTag, losesItAgain) {
    EXPECT_EQ(describedTag("<IMG SRC=a ALT=\"An eel\">", std::nullopt), "<IMG SRC=a>");
    EXPECT_EQ(describedTag("<IMG SRC=a>", std::nullopt), "<IMG SRC=a>");
    EXPECT_EQ(describedTag("<IMG SRC=a>", ""), "<IMG SRC=a ALT=\"\">");
}

TEST(SizedTag, getsAndLosesAWidth) {
    EXPECT_EQ(sizedTag("<IMG SRC=\"a\">", 120), "<IMG SRC=\"a\" WIDTH=\"120\">");
    EXPECT_EQ(sizedTag("<IMG WIDTH=50% SRC=\"a\">", 7), "<IMG WIDTH=\"7\" SRC=\"a\">");
    EXPECT_EQ(sizedTag("<IMG WIDTH=50% SRC=\"a\">", 0), "<IMG SRC=\"a\">");
}

TEST(FittingWidth, keepsSmallPicturesAndTheShapeOfOthers) {
    EXPECT_EQ(fittingWidth(100, 50), 100);
    EXPECT_EQ(fittingWidth(360, 240), 360);
    EXPECT_EQ(fittingWidth(4000, 100), 360);
    EXPECT_EQ(fittingWidth(600, 480), 300);
    EXPECT_EQ(fittingWidth(1, 100'000), 1);
    EXPECT_EQ(fittingWidth(0, 0), 1);
}

} // namespace
} // namespace wendmark
