#include "tour_cli/HelpText.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace wendmark::cli {

namespace {

struct CommandHelp {
    std::string_view name;
    std::string_view usage; ///< Behind the program's name.
    std::string_view about; ///< Its row in the list of commands.
    std::string_view status;
};

constexpr std::string_view usualStatus =
    "Exit status: 0 done, 1 it could not be done and nothing was changed, 2 the command line is wrong.";

constexpr std::array<CommandHelp, 5> commands = {
    {{"publish", "publish TOUR [--into FOLDER] [--template FOLDER] [--working-copy FOLDER]",
      R"(  publish TOUR             read the script of the tour in the folder TOUR, generate all its pages
                           and save them, ready to be played from playtour.htm
)",
      usualStatus},
     {"new", "new FOLDER --title TITLE [--template FOLDER]",
      R"(  new FOLDER               make a new tour in FOLDER, which must not exist yet
)",
      usualStatus},
     {"print", "print TOUR --to FILE.pdf [--from N] [--to-stop M]",
      R"(  print TOUR               print the tour's script into a PDF file, three stops to a page
)",
      usualStatus},
     {"check", "check TOUR... [--for https|http|disk] [--json FILE] [--jobs N] [--timeout SECONDS]",
      R"(  check TOUR...            say of every stop of the tours whether visitors see its page, and why not
)",
      "Exit status: 0 all stops play, 1 not all do or a tour could not be read, 2 the command line is wrong "
      "or\n"
      "the program that checks is not installed."},
     {"help", "help [COMMAND]",
      R"(  help [COMMAND]           show this text, or what is to be said of one command
)",
      usualStatus}}};

struct OptionHelp {
    std::string_view commands; ///< Those that take it; empty: it stands alone.
    std::string_view about;
};

constexpr std::array<OptionHelp, 14> options = {
    {{"publish", R"(  --into FOLDER            save there instead of in TOUR; made if it is missing
)"},
     {"publish new",
      R"(  --template FOLDER        take the page templates from there instead of from beside the program
)"},
     {"publish",
      R"(  --working-copy FOLDER    generate the pages there and leave them; every file in it is deleted first
)"},
     {"new", R"(  --title TITLE            title of the new tour
)"},
     {"print", R"(  --to FILE.pdf            the PDF file; one that is there is replaced
)"},
     {"print", R"(  --from N                 print from stop N on instead of from the first
)"},
     {"print", R"(  --to-stop M              print up to stop M instead of up to the last
)"},
     {"check",
      R"(  --for https|http|disk    where visitors play the tours from; without it, http where all launching points
                           of a tour are there, else https
)"},
     {"check",
      R"(  --json FILE              write what was found out as JSON, too; to the standard output, "-", alone
)"},
     {"check",
      R"(  --jobs N                 ask for at most N pages at once, 1 to 24 (24), and at most 4 of one server
)"},
     {"check", R"(  --timeout SECONDS        wait so long for a page, 1 to 600 (30)
)"},
     {"publish new print check help", R"(  -h, --help               show this text
)"},
     {"", R"(  -v, --version            show the version
)"},
     {"publish new print check",
      R"(  --                       what follows is no option, even if it begins with a dash
)"}}};

constexpr std::string_view tourNote = R"(
A tour is named by its folder or by the script.txt in it. Errors in lines of a script go to the standard error
stream, one a line; the rest of the script is used.
)";

std::string helpOf(const CommandHelp& command) {
    std::string text = "Usage: wendmark-tour " + std::string(command.usage) + "\n\n" +
                       std::string(command.about) + "\nOptions:\n";
    for (const OptionHelp& option : options) {
        if (option.commands.find(command.name) != std::string_view::npos)
            text += option.about;
    }
    if (command.usage.find("TOUR") != std::string_view::npos)
        text += tourNote;
    return text + "\n" + std::string(command.status) + "\n";
}

std::string wholeHelp() {
    std::string text;
    for (const CommandHelp& command : commands)
        text += (text.empty() ? "Usage: wendmark-tour " : "       wendmark-tour ") +
                std::string(command.usage) + "\n";
    text += "       wendmark-tour --help | --version\n\n"
            "Makes and checks Wendmark tours without a window.\n\nCommands:\n";
    for (const CommandHelp& command : commands)
        text += command.about;
    text += "\nOptions:\n";
    for (const OptionHelp& option : options)
        text += option.about;
    return text.append(tourNote)
        .append("\n")
        .append(usualStatus)
        .append(" Of check: 0 all\nstops play, 1 not all do or a tour could not be read, 2 also when the "
                "program that checks is not installed.\n");
}

} // namespace

std::vector<std::string_view> commandNames() {
    std::vector<std::string_view> names;
    std::ranges::transform(commands, std::back_inserter(names), &CommandHelp::name);
    return names;
}

std::string helpText(std::string_view command) {
    const auto* const found = std::ranges::find(commands, command, &CommandHelp::name);
    return found == commands.end() || command == "help" ? wholeHelp() : helpOf(*found);
}

} // namespace wendmark::cli
