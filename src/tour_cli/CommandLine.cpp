#include "tour_cli/CommandLine.h"

#include "base/Names.h"

#include <getopt.h>
#include <map>

namespace wendmark::cli {

namespace {

/// The words of one command, sorted into options and operands.
struct ParsedWords {
    std::map<std::string, std::string> options; ///< By name, without the dashes. The last one given counts.
    std::vector<std::string> operands;
    std::string error; ///< Empty when every word is understood.
};

ParsedWords sortWords(const std::string& command, std::vector<std::string> words,
                      const std::vector<std::string>& optionNames) {
    std::vector<option> known;
    known.reserve(optionNames.size() + 2);
    for (const std::string& name : optionNames)
        known.push_back({name.c_str(), required_argument, nullptr, 0});
    known.push_back({"help", no_argument, nullptr, 'h'});
    known.push_back({nullptr, 0, nullptr, 0});

    std::string programName = command;
    std::vector<char*> arguments{programName.data()};
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    ParsedWords parsed;
    const int count = static_cast<int>(arguments.size()) - 1;
    optind = 0; // Starts a new scan.
    opterr = 0;
    int index = 0;
    for (int found = 0; (found = getopt_long(count, arguments.data(), ":h", known.data(), &index)) != -1;) {
        const std::string word = arguments[static_cast<std::size_t>(optind - 1)];
        if (found == 'h')
            parsed.options["help"];
        else if (found == ':')
            parsed.error = "the option " + word + " needs a value";
        else if (found == '?')
            parsed.error = command + " has no option " + word;
        else
            parsed.options[optionNames[static_cast<std::size_t>(index)]] = optarg;
        if (!parsed.error.empty())
            return parsed;
    }
    parsed.operands.assign(arguments.begin() + optind, arguments.begin() + count);
    return parsed;
}

std::optional<std::string> optionValue(const ParsedWords& parsed, const std::string& name) {
    const auto found = parsed.options.find(name);
    return found == parsed.options.end() ? std::nullopt : std::optional(found->second);
}

/// What is wrong with words that are all understood one by one; empty when nothing is.
std::string complaint(const ParsedWords& parsed, const std::string& command, const std::string& operandName) {
    if (!parsed.error.empty())
        return parsed.error;
    if (parsed.operands.empty())
        return command + " needs a " + operandName;
    if (parsed.operands.size() > 1)
        return command + " takes one " + operandName + ", not also " + parsed.operands[1];
    if (parsed.operands.front().empty())
        return "the name of the " + operandName + " is empty";
    for (const auto& [name, value] : parsed.options) {
        if (value.empty() && name != "help")
            return "the value of the option --" + name + " is empty";
    }
    return {};
}

Request parsePublish(const std::vector<std::string>& words) {
    const ParsedWords parsed = sortWords("publish", words, {"into", "template", "working-copy"});
    if (parsed.options.contains("help"))
        return HelpRequest{};
    if (const std::string wrong = complaint(parsed, "publish", "TOUR"); !wrong.empty())
        return UsageError{wrong};
    return PublishRequest{parsed.operands.front(), optionValue(parsed, "into"),
                          optionValue(parsed, "template"), optionValue(parsed, "working-copy")};
}

Request parseNew(const std::vector<std::string>& words) {
    const ParsedWords parsed = sortWords("new", words, {"title", "template"});
    if (parsed.options.contains("help"))
        return HelpRequest{};
    if (const std::string wrong = complaint(parsed, "new", "FOLDER"); !wrong.empty())
        return UsageError{wrong};
    const std::optional<std::string> title = optionValue(parsed, "title");
    if (!title)
        return UsageError{"new needs a --title"};
    const std::string trimmed{trimBlanks(*title)};
    if (trimmed.empty())
        return UsageError{"Tour Title cannot be blank"};
    return NewRequest{parsed.operands.front(), trimmed, optionValue(parsed, "template")};
}

} // namespace

Request parseCommandLine(const std::vector<std::string>& words) {
    if (words.empty())
        return UsageError{"no command given"};
    const std::string& command = words.front();
    const std::vector<std::string> rest(words.begin() + 1, words.end());
    if (command == "publish")
        return parsePublish(rest);
    if (command == "new")
        return parseNew(rest);
    if (command == "--help" || command == "-h")
        return HelpRequest{};
    if (command == "--version")
        return VersionRequest{};
    return UsageError{"there is no command " + command};
}

std::string helpText() {
    return R"(Usage: wendmark-tour publish TOUR [--into FOLDER] [--template FOLDER] [--working-copy FOLDER]
       wendmark-tour new FOLDER --title TITLE [--template FOLDER]
       wendmark-tour --help | --version

Makes Wendmark tours without a window.

Commands:
  publish TOUR             read the script of the tour in the folder TOUR, generate all its pages
                           and save them, ready to be played from playtour.htm
  new FOLDER               make a new tour in FOLDER, which must not exist yet

Options:
  --into FOLDER            save there instead of in TOUR; made if it is missing
  --template FOLDER        take the page templates from there instead of from beside the program
  --working-copy FOLDER    generate the pages there and leave them; every file in it is deleted first
  --title TITLE            title of the new tour
  --help                   show this text
  --version                show the version
  --                       what follows is no option, even if it begins with a dash

Errors in lines of a script go to the standard error stream, one a line; the rest of the script is used.
Exit status: 0 done, 1 it could not be done and nothing was changed, 2 the command line is wrong.
)";
}

} // namespace wendmark::cli
