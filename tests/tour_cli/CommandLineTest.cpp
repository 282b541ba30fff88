#include "tour_cli/CommandLine.h"

#include "check/PageQueue.h"
#include "tour_cli/HelpText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace wendmark::cli {
namespace {

using Words = std::vector<std::string>;

template <typename Wanted>
Wanted parsed(const Words& words) {
    const Request request = parseCommandLine(words);
    const Wanted* const wanted = std::get_if<Wanted>(&request);
    if (wanted == nullptr)
        throw std::runtime_error("understood as something else: " + ::testing::PrintToString(words));
    return *wanted;
}

TEST(CommandLine, publishNeedsOnlyTheTour) {
    const auto request = parsed<PublishRequest>({"publish", "tour"});
    EXPECT_EQ(request.tour, "tour");
    EXPECT_EQ(request.into, std::nullopt);
    EXPECT_EQ(request.templateFolder, std::nullopt);
    EXPECT_EQ(request.workingCopy, std::nullopt);
}

TEST(CommandLine, publishTakesAllItsOptions) {
    const auto request = parsed<PublishRequest>(
        {"publish", "tour", "--into", "www", "--template", "looks", "--working-copy", "copy"});
    EXPECT_EQ(request.tour, "tour");
    EXPECT_EQ(request.into, "www");
    EXPECT_EQ(request.templateFolder, "looks");
    EXPECT_EQ(request.workingCopy, "copy");
}

TEST(CommandLine, optionsMayStandBeforeTheTour) {
    const auto request = parsed<PublishRequest>({"publish", "--into", "www", "tour"});
    EXPECT_EQ(request.tour, "tour");
    EXPECT_EQ(request.into, "www");
}

TEST(CommandLine, valueMayFollowAnEqualsSign) {
    EXPECT_EQ(parsed<PublishRequest>({"publish", "tour", "--into=www"}).into, "www");
    EXPECT_EQ(parsed<PublishRequest>({"publish", "tour", "--into=a=b"}).into, "a=b");
}

TEST(CommandLine, nextWordIsTheValueWhateverItLooksLike) {
    EXPECT_EQ(parsed<PublishRequest>({"publish", "tour", "--into", "--template"}).into, "--template");
    EXPECT_EQ(parsed<NewRequest>({"new", "f", "--title", "--help"}).title, "--help");
    EXPECT_EQ(parsed<PublishRequest>({"publish", "tour", "--into", "--"}).into, "--");
}

TEST(CommandLine, lastOneOfARepeatedOptionCounts) {
    EXPECT_EQ(parsed<PublishRequest>({"publish", "tour", "--into", "a", "--into", "b"}).into, "b");
}

TEST(CommandLine, wordsAfterTwoDashesAreNoOptions) {
    EXPECT_EQ(parsed<PublishRequest>({"publish", "--", "--into"}).tour, "--into");
    EXPECT_EQ(parsed<PublishRequest>({"publish", "--into", "www", "--", "-tour"}).tour, "-tour");
    EXPECT_EQ(parsed<PublishRequest>({"publish", "--", "--"}).tour, "--");
}

TEST(CommandLine, oneDashIsAName) {
    EXPECT_EQ(parsed<PublishRequest>({"publish", "-"}).tour, "-");
}

TEST(CommandLine, namesAreTakenAsTheyStand) {
    for (const std::string name : {"two words", " blanks ", "it's", "\"quoted\"", "ÄÖÜ→", "a\nb", "\xff"})
        EXPECT_EQ(parsed<PublishRequest>({"publish", name}).tour, name);
}

TEST(CommandLine, newTakesFolderTitleAndTemplates) {
    const auto request =
        parsed<NewRequest>({"new", "folder", "--title", "Plants of the Desert", "--template", "looks"});
    EXPECT_EQ(request.folder, "folder");
    EXPECT_EQ(request.title, "Plants of the Desert");
    EXPECT_EQ(request.templateFolder, "looks");
}

TEST(CommandLine, printTakesAFileAndARange) {
    const auto whole = parsed<PrintRequest>({"print", "tour", "--to", "tour.pdf"});
    EXPECT_EQ(whole.tour, "tour");
    EXPECT_EQ(whole.to, "tour.pdf");
    EXPECT_EQ(whole.from, std::nullopt);
    EXPECT_EQ(whole.toStop, std::nullopt);
    const auto part =
        parsed<PrintRequest>({"print", "tour", "--to=tour.pdf", "--from", "2", "--to-stop=100"});
    EXPECT_EQ(part.from, 2);
    EXPECT_EQ(part.toStop, 100);
}

TEST(CommandLine, numbersOfStopsMayLieOutsideTheTour) {
    const auto fromOf = [](const std::string& number) {
        return parsed<PrintRequest>({"print", "tour", "--to", "a", "--from", number}).from;
    };
    EXPECT_EQ(fromOf("0"), 0);
    EXPECT_EQ(fromOf("-3"), -3);
    EXPECT_EQ(fromOf("99999999999"), 2147483647);
    EXPECT_EQ(fromOf("-99999999999"), -2147483647);
}

TEST(CommandLine, whatIsNoNumberOfAStopIsRefused) {
    for (const std::string wrong : {"two", "2.5", "2x", "-", " 2", "+2", "0x2"}) {
        EXPECT_EQ(parsed<UsageError>({"print", "tour", "--to", "a", "--from", wrong}).message,
                  "the value of the option --from is no number");
        EXPECT_EQ(parsed<UsageError>({"print", "tour", "--to", "a", "--to-stop", wrong}).message,
                  "the value of the option --to-stop is no number");
    }
    EXPECT_EQ(parsed<UsageError>({"print", "tour", "--to", "a", "--from", ""}).message,
              "the value of the option --from is empty");
}

TEST(CommandLine, printNeedsATourAndAFile) {
    EXPECT_EQ(parsed<UsageError>({"print", "--to", "a"}).message, "print needs a TOUR");
    EXPECT_EQ(parsed<UsageError>({"print", "tour"}).message, "print needs a --to");
    EXPECT_EQ(parsed<UsageError>({"print", "tour", "--to", ""}).message,
              "the value of the option --to is empty");
}

TEST(CommandLine, checkTakesAnyNumberOfTours) {
    const auto plain = parsed<CheckRequest>({"check", "tour"});
    EXPECT_THAT(plain.tours, ::testing::ElementsAre("tour"));
    EXPECT_EQ(plain.posting, std::nullopt);
    EXPECT_EQ(plain.json, std::nullopt);
    EXPECT_EQ(plain.jobs, std::nullopt);
    EXPECT_EQ(plain.timeout, std::nullopt);
    const auto whole = parsed<CheckRequest>(
        {"check", "a", "--for", "disk", "b", "--json=-", "--jobs", "24", "a", "--timeout=600"});
    EXPECT_THAT(whole.tours, ::testing::ElementsAre("a", "b", "a"));
    EXPECT_EQ(whole.posting, Posting::disk);
    EXPECT_EQ(whole.json, "-");
    EXPECT_EQ(whole.jobs, 24);
    EXPECT_EQ(whole.timeout, 600);
}

TEST(CommandLine, checkRefusesNumbersThatAreNoneOrOutsideTheirRange) {
    for (const std::string wrong : {"0", "-1", "25", "99999999999", "two", "2.5", "2x", " 2", "+2"})
        EXPECT_EQ(parsed<UsageError>({"check", "tour", "--jobs", wrong}).message,
                  "the value of the option --jobs is no number from 1 to 24");
    for (const std::string wrong : {"0", "601", "1s"})
        EXPECT_EQ(parsed<UsageError>({"check", "tour", "--timeout", wrong}).message,
                  "the value of the option --timeout is no number from 1 to 600");
    EXPECT_EQ(mostJobs, PageQueue::Limits().pages);
}

TEST(CommandLine, titleLosesTheBlanksAtItsEnds) {
    EXPECT_EQ(parsed<NewRequest>({"new", "folder", "--title", "  Pflanzen der Wüste "}).title,
              "Pflanzen der Wüste");
}

TEST(CommandLine, helpIsGivenBeforeAndAfterACommand) {
    EXPECT_EQ(parsed<HelpRequest>({"--help"}).command, "");
    EXPECT_EQ(parsed<HelpRequest>({"-h"}).command, "");
    EXPECT_EQ(parsed<HelpRequest>({"publish", "--help"}).command, "publish");
    EXPECT_EQ(parsed<HelpRequest>({"publish", "tour", "-h"}).command, "publish");
    EXPECT_EQ(parsed<HelpRequest>({"new", "--help"}).command, "new");
    EXPECT_EQ(parsed<HelpRequest>({"print", "--help"}).command, "print");
    EXPECT_EQ(parsed<HelpRequest>({"check", "--help"}).command, "check");
    EXPECT_EQ(parsed<HelpRequest>({"help"}).command, "");
    EXPECT_EQ(parsed<HelpRequest>({"help", "--help"}).command, "");
    EXPECT_EQ(parsed<HelpRequest>({"help", "publish"}).command, "publish");
}

TEST(CommandLine, versionIsAsked) {
    parsed<VersionRequest>({"--version"});
    parsed<VersionRequest>({"-v"});
}

struct WrongUse {
    Words words;
    std::string message;
};

TEST(CommandLine, wrongUseSaysWhatIsWrong) {
    const std::vector<WrongUse> cases = {
        {{}, "no command given"},
        {{"publsh", "tour"}, "there is no command publsh"},
        {{""}, "there is no command "},
        {{"--", "publish", "tour"}, "there is no command --"},
        {{"help", "publsh"}, "there is no command publsh"},
        {{"help", "new", "print"}, "help takes one COMMAND, not also print"},
        {{"help", "--into", "www"}, "help has no option --into"},
        {{"publish"}, "publish needs a TOUR"},
        {{"publish", "--into", "www"}, "publish needs a TOUR"},
        {{"publish", ""}, "the name of the TOUR is empty"},
        {{"publish", "a", "b"}, "publish takes one TOUR, not also b"},
        {{"publish", "tour", "--into"}, "the option --into needs a value"},
        {{"publish", "tour", "--into", ""}, "the value of the option --into is empty"},
        {{"publish", "tour", "--into="}, "the value of the option --into is empty"},
        {{"publish", "tour", "--int", "www"}, "publish has no option --int"},
        {{"publish", "tour", "--title", "T"}, "publish has no option --title"},
        {{"publish", "tour", "--=x"}, "publish has no option --=x"},
        {{"publish", "tour", "-xy"}, "publish has no option -xy"},
        {{"publish", "tour", "--help=all"}, "publish has no option --help=all"},
        {{"new", "--title", "T"}, "new needs a FOLDER"},
        {{"new", "folder"}, "new needs a --title"},
        {{"new", "folder", "--title", ""}, "the value of the option --title is empty"},
        {{"new", "folder", "--title", "   "}, "Tour Title cannot be blank"},
        {{"new", "folder", "--title", "two\nlines"}, "the tour's title must be one line"},
        {{"new", "folder", "--title", "two\rlines"}, "the tour's title must be one line"},
        {{"new", "folder", "--title", "T", "--into", "www"}, "new has no option --into"},
        {{"check"}, "check needs a TOUR"},
        {{"check", "--jobs", "2"}, "check needs a TOUR"},
        {{"check", "a", ""}, "the name of the TOUR is empty"},
        {{"check", "a", "--for"}, "the option --for needs a value"},
        {{"check", "a", "--for", "HTTPS"},
         "the value of the option --for is neither https nor http nor disk"},
        {{"check", "a", "--json", ""}, "the value of the option --json is empty"},
        {{"check", "a", "--into", "f"}, "check has no option --into"},
    };
    for (const WrongUse& wrong : cases) {
        SCOPED_TRACE(::testing::PrintToString(wrong.words));
        EXPECT_EQ(parsed<UsageError>(wrong.words).message, wrong.message);
    }
}

TEST(CommandLine, helpNamesEveryCommandAndOption) {
    for (const std::string word :
         {"publish TOUR", "new FOLDER", "check TOUR", "--for", "--json", "--jobs", "--timeout", "--into",
          "--template", "--working-copy", "--title", "--help", "--version", "Exit status"})
        EXPECT_THAT(helpText(), ::testing::HasSubstr(word));
}

TEST(CommandLine, helpOfACommandNamesItsOptionsAndNoOthers) {
    using ::testing::AllOf;
    using ::testing::HasSubstr;
    using ::testing::Not;
    EXPECT_THAT(helpText("publish"),
                AllOf(HasSubstr("Usage: wendmark-tour publish TOUR"), HasSubstr("--into"),
                      HasSubstr("--working-copy"), HasSubstr("Exit status"), Not(HasSubstr("--title"))));
    EXPECT_THAT(helpText("new"),
                AllOf(HasSubstr("--title"), HasSubstr("--template"), Not(HasSubstr("--into"))));
    EXPECT_THAT(helpText("print"), AllOf(HasSubstr("--to "), HasSubstr("--from"), HasSubstr("--to-stop")));
    EXPECT_THAT(helpText("check"),
                AllOf(HasSubstr("--json"), HasSubstr("all stops play"), Not(HasSubstr("--to "))));
    EXPECT_EQ(helpText("help"), helpText());
    for (const std::string_view command : commandNames())
        EXPECT_THAT(helpText(), HasSubstr("wendmark-tour " + std::string(command)));
}

} // namespace
} // namespace wendmark::cli
