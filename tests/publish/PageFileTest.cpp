#include "publish/PageFile.h"

#include "publish/TemplateFiller.h"
#include "support/TestTour.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace wendmark {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

void copyToMarker(TemplateFiller& filler) {
    filler.copyThrough(pageMarker);
}

TEST(PageFile, filledTemplateReplacesTheWorkingFile) {
    test::TestTour tour;
    tour.writeWorking("page.htm", "a much longer page than the new one\r\n");
    tour.writeTemplate("page.htm", "new\n<!--variable-->\n");
    EXPECT_TRUE(fillPage(tour.context, tour.workspace.templateFile("page.htm"), "page.htm", copyToMarker));
    EXPECT_EQ(tour.working("page.htm"), "new\r\n<!--variable-->\r\n");
    EXPECT_THAT(tour.log.failures, IsEmpty());
}

TEST(PageFile, incompleteFillingIsWrittenAndLoggedOnce) {
    test::TestTour tour;
    tour.writeWorking("page.htm", "old");
    EXPECT_FALSE(fillPageFrom(tour.context, "no marker", "page.htm", copyToMarker));
    EXPECT_EQ(tour.working("page.htm"), "no marker\r\n");
    EXPECT_THAT(tour.log.failures, ElementsAre(AllOf(HasSubstr("page.htm"), HasSubstr("<!--variable-->"))));
}

TEST(PageFile, missingTemplateLeavesTheWorkingFileAndIsLoggedOnce) {
    test::TestTour tour;
    tour.writeWorking("page.htm", "old");
    EXPECT_FALSE(fillPage(tour.context, tour.workspace.templateFile("page.htm"), "page.htm", copyToMarker));
    EXPECT_EQ(tour.working("page.htm"), "old");
    EXPECT_THAT(tour.log.failures, ElementsAre(HasSubstr("Template/page.htm")));
}

TEST(PageFile, folderInPlaceOfTheTemplateIsAMissingTemplate) {
    test::TestTour tour;
    std::filesystem::create_directory(tour.workspace.templateFile("page.htm"));
    EXPECT_FALSE(fillPage(tour.context, tour.workspace.templateFile("page.htm"), "page.htm", copyToMarker));
    EXPECT_FALSE(test::exists(tour.workspace.workingFile("page.htm")));
    EXPECT_EQ(tour.log.failures.size(), 1U);
}

TEST(PageFile, folderInPlaceOfTheOutputIsAFailureThatLeavesNothingBehind) {
    test::TestTour tour;
    std::filesystem::create_directory(tour.workspace.workingFile("page.htm"));
    EXPECT_FALSE(fillPageFrom(tour.context, "<!--variable-->", "page.htm", copyToMarker));
    EXPECT_THAT(tour.log.failures, ElementsAre(HasSubstr("NewTour/page.htm")));
    EXPECT_THAT(test::folderContents(tour.workspace.folders().newTourPath), IsEmpty());
}

TEST(PageFile, templateIsFoundInAnySpelling) {
    test::TestTour tour;
    tour.writeTemplate("Page.HTM", "<!--variable-->");
    EXPECT_TRUE(fillPage(tour.context, tour.workspace.templateFile("page.htm"), "page.htm", copyToMarker));
    EXPECT_EQ(tour.working("page.htm"), "<!--variable-->\r\n");
}

} // namespace
} // namespace wendmark
