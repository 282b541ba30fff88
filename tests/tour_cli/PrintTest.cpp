#include "tour_cli/TourFixture.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace wendmark::test {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

class PrintTest : public TourFixture {
protected:
    /// Prints into "printed.pdf" and returns the words of each page.
    std::vector<std::string> pagesOf(std::string folder, std::vector<std::string> options = {}) const {
        const std::string pdf = scratch / "printed.pdf";
        options.insert(options.begin(), {"print", std::move(folder), "--to", pdf});
        expectDone(program().run(options));
        const std::string text = ProgramRun("/usr/bin/pdftotext").run({"-layout", pdf, "-"}).output;
        std::vector<std::string> pages;
        for (std::size_t begin = 0, end = 0; (end = text.find('\f', begin)) != std::string::npos;
             begin = end + 1)
            pages.push_back(text.substr(begin, end - begin));
        return pages;
    }

    std::string tourOf(int stops) const {
        return makeTour("tour of " + std::to_string(stops), scriptWithStops(stops));
    }
};

TEST_F(PrintTest, pagesHoldTheStopsAndThenTheProperties) {
    EXPECT_THAT(
        pagesOf(tourOf(4)),
        ElementsAre(AllOf(HasSubstr("Plants of the Desert"), HasSubstr("[ 1 of 3 ]"), HasSubstr("Plant 1\n"),
                          HasSubstr("cactus.htm"), HasSubstr("What plant 3 does."),
                          HasSubstr("Look closely."), Not(HasSubstr("Plant 4"))),
                    AllOf(HasSubstr("[ 2 of 3 ]"), HasSubstr("Plant 4"),
                          HasSubstr("https://www.brenholt.example/4.htm")),
                    AllOf(HasSubstr("[ 3 of 3 ]"), HasSubstr("Caching Period :"), HasSubstr("30"),
                          HasSubstr(scratch / "tour of 4"))));
}

TEST_F(PrintTest, rangeIsTakenAndFittedIntoTheTour) {
    const std::string ten = tourOf(10);
    const auto only = [](int stop) {
        return ElementsAre(AllOf(HasSubstr("[ 1 of 2 ]"), HasSubstr("Plant " + std::to_string(stop) + "\n"),
                                 Not(HasSubstr("Plant " + std::to_string(stop % 10 + 1) + "\n"))),
                           HasSubstr("[ 2 of 2 ]"));
    };
    EXPECT_THAT(pagesOf(ten, {"--from", "5", "--to-stop", "2"}), only(5));
    EXPECT_THAT(pagesOf(ten, {"--from", "10"}), only(10));
    EXPECT_THAT(pagesOf(ten, {"--from", "400", "--to-stop", "500"}), only(10));
    EXPECT_THAT(pagesOf(ten, {"--from", "-7", "--to-stop", "1"}), only(1));
    EXPECT_THAT(pagesOf(ten, {"--to-stop", "6"}),
                ElementsAre(HasSubstr("[ 1 of 3 ]"), HasSubstr("Plant 6"), HasSubstr("[ 3 of 3 ]")));
}

TEST_F(PrintTest, tourWithoutStopsPrintsItsProperties) {
    EXPECT_THAT(pagesOf(tourOf(0)),
                ElementsAre(AllOf(HasSubstr("Plants of the Desert"), HasSubstr("[ 1 of 1 ]"))));
}

TEST_F(PrintTest, hundredStopsArePrintedAndOfMoreTheFirstHundred) {
    EXPECT_EQ(pagesOf(tourOf(100)).size(), 35U);
    const ProgramResult result = program().run({"print", tourOf(101), "--to", scratch / "printed.pdf"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("pages: 35"));
    EXPECT_THAT(result.errors, HasSubstr("wendmark-tour: warning: "));
}

TEST_F(PrintTest, textsMayHoldAnyLetter) {
    const std::string folder =
        makeTour("letters", crlfLines({"", "W\xfcste", "", "<<<VoskInfo>>> Stop1",
                                       "\xc4pfel &#8594; S\xfc\xdf", "cactus.htm", "", "N", "", "I", ""}));
    EXPECT_THAT(pagesOf(folder).front(), AllOf(HasSubstr("Wüste"), HasSubstr("Äpfel → Süß")));
}

TEST_F(PrintTest, nothingButTheFileIsTouched) {
    const auto before = folderState(scratch.path());
    const std::string pdf = scratch / "tour.pdf";
    const ProgramResult result = program().run({"print", tour, "--to", pdf});
    expectDone(result);
    EXPECT_EQ(result.output, "Printed \"Plants of the Desert\", pages: 2, to " + pdf + "\n");
    auto after = folderState(scratch.path());
    EXPECT_EQ(after.erase("tour.pdf"), 1U);
    EXPECT_EQ(after, before);
}

TEST_F(PrintTest, noDisplayIsNeeded) {
    expectDone(program()
                   .with("DISPLAY", "")
                   .with("WAYLAND_DISPLAY", "")
                   .with("QT_QPA_PLATFORM", "xcb")
                   .run({"print", tour, "--to", scratch / "tour.pdf"}));
    EXPECT_TRUE(exists(scratch / "tour.pdf"));
}

TEST_F(PrintTest, fileThatIsThereIsReplacedOnlyByAWholeOne) {
    writeFile(scratch / "tour.pdf", "the former one");
    ProgramRun limited = program();
    expectFailure(limited.withFileSizeLimit(1000), {"print", tour, "--to", scratch / "tour.pdf"},
                  {"cannot write", "tour.pdf"});
    expectDone(program().run({"print", tour, "--to", scratch / "tour.pdf"}));
    EXPECT_THAT(readFile(scratch / "tour.pdf"), ::testing::StartsWith("%PDF"));
}

TEST_F(PrintTest, programsOwnFoldersAreNoTours) {
    const std::string app = fs::path(WENDMARK_TOUR).parent_path();
    fs::create_directory_symlink(app + "/Template", scratch / "link");
    for (const std::string& folder : {app + "/Template", app + "/TEMPLATE/inner", scratch / "link"})
        expectFailure(program(), {"print", folder, "--to", scratch / "tour.pdf"},
                      {folder, "The 'Template' folder is used for internal operations"});
}

TEST_F(PrintTest, whatCannotBeReadOrWrittenIsNamed) {
    fs::create_directory(scratch / "empty");
    expectFailure(program(), {"print", scratch / "empty", "--to", scratch / "tour.pdf"},
                  {"cannot read", "empty/script.txt"});
    expectFailure(program(), {"print", scratch / "none", "--to", scratch / "tour.pdf"},
                  {"cannot read", "none/script.txt"});
    writeFile(scratch / "untitled/script.txt", "<<<VoskInfo>>>#AutoBuffer\r\n\r\n");
    expectFailure(program(), {"print", scratch / "untitled", "--to", scratch / "tour.pdf"},
                  {"cannot use", "untitled/script.txt: it ends before the title of a tour"});
    expectFailure(program(), {"print", tour, "--to", scratch / "none/tour.pdf"},
                  {"cannot write", "none/tour.pdf"});
    expectFailure(program(), {"print", tour, "--to", scratch / "empty"}, {"cannot write", "empty"});
}

} // namespace
} // namespace wendmark::test
