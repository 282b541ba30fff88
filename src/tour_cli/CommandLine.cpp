#include "tour_cli/CommandLine.h"

#include "base/Names.h"
#include "tour_cli/HelpText.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <map>
#include <utility>

namespace wendmark::cli {

namespace {

/// The words of one command, sorted into options and operands.
struct ParsedWords {
    std::map<std::string, std::string> options; ///< By name, without the dashes. The last one given counts.
    std::vector<std::string> operands;
    std::string error; ///< Empty when every word is understood.
};

class WordSorter final {
public:
    /// All options but "help" take a value. Both references must outlive the sorter.
    WordSorter(const std::vector<std::string>& words, const std::vector<std::string>& optionNames)
        : m_words(words), m_optionNames(optionNames) {}

    ParsedWords sort(const std::string& command) {
        while (m_next < m_words.size() && m_parsed.error.empty())
            take(command, m_words[m_next++]);
        return std::move(m_parsed);
    }

private:
    void take(const std::string& command, const std::string& word) {
        if (m_optionsEnded || word.size() < 2 || word.front() != '-')
            m_parsed.operands.push_back(word);
        else if (word == "--")
            m_optionsEnded = true;
        else if (word == "--help" || word == "-h")
            m_parsed.options["help"];
        else if (!takeOption(word))
            m_parsed.error = command + " has no option " + word;
    }

    /// "--name=value", or "--name" with the value in the next word. False when there is no such option.
    bool takeOption(const std::string& word) {
        const std::size_t equals = word.find('=');
        const std::string dashedName = word.substr(0, equals);
        const auto name = std::find_if(m_optionNames.begin(), m_optionNames.end(),
                                       [&](const std::string& known) { return dashedName == "--" + known; });
        if (name == m_optionNames.end())
            return false;
        if (equals != std::string::npos)
            m_parsed.options[*name] = word.substr(equals + 1);
        else if (m_next < m_words.size())
            m_parsed.options[*name] = m_words[m_next++];
        else
            m_parsed.error = "the option " + word + " needs a value";
        return true;
    }

    const std::vector<std::string>& m_words;
    const std::vector<std::string>& m_optionNames;
    std::size_t m_next = 0;
    bool m_optionsEnded = false;
    ParsedWords m_parsed;
};

std::optional<std::string> optionValue(const ParsedWords& parsed, const std::string& name) {
    const auto found = parsed.options.find(name);
    return found == parsed.options.end() ? std::nullopt : std::optional(found->second);
}

/// What is wrong with words that are all understood one by one, where any number of operands may be named;
/// empty when nothing is.
std::string complaintOfMany(const ParsedWords& parsed, const std::string& command,
                            const std::string& operandName) {
    if (!parsed.error.empty())
        return parsed.error;
    if (parsed.operands.empty())
        return command + " needs a " + operandName;
    if (std::ranges::find(parsed.operands, "") != parsed.operands.end())
        return "the name of the " + operandName + " is empty";
    for (const auto& [name, value] : parsed.options) {
        if (value.empty() && name != "help")
            return "the value of the option --" + name + " is empty";
    }
    return {};
}

/// Same where one operand is.
std::string complaint(const ParsedWords& parsed, const std::string& command, const std::string& operandName) {
    if (parsed.error.empty() && parsed.operands.size() > 1)
        return command + " takes one " + operandName + ", not also " + parsed.operands[1];
    return complaintOfMany(parsed, command, operandName);
}

Request parsePublish(const std::vector<std::string>& words) {
    static const std::vector<std::string> optionNames{"into", "template", "working-copy"};
    const ParsedWords parsed = WordSorter(words, optionNames).sort("publish");
    if (parsed.options.contains("help"))
        return HelpRequest{"publish"};
    if (const std::string wrong = complaint(parsed, "publish", "TOUR"); !wrong.empty())
        return UsageError{wrong};
    return PublishRequest{parsed.operands.front(), optionValue(parsed, "into"),
                          optionValue(parsed, "template"), optionValue(parsed, "working-copy")};
}

Request parseNew(const std::vector<std::string>& words) {
    static const std::vector<std::string> optionNames{"title", "template"};
    const ParsedWords parsed = WordSorter(words, optionNames).sort("new");
    if (parsed.options.contains("help"))
        return HelpRequest{"new"};
    if (const std::string wrong = complaint(parsed, "new", "FOLDER"); !wrong.empty())
        return UsageError{wrong};
    const std::optional<std::string> title = optionValue(parsed, "title");
    if (!title)
        return UsageError{"new needs a --title"};
    const std::string trimmed{trimBlanks(*title)};
    if (trimmed.empty())
        return UsageError{"Tour Title cannot be blank"};
    if (trimmed.find_first_of("\r\n") != std::string::npos)
        return UsageError{"the tour's title must be one line"};
    return NewRequest{parsed.operands.front(), trimmed, optionValue(parsed, "template")};
}

/// One that is too large for its type is as good as the largest.
std::optional<std::int32_t> wholeNumber(const std::string& text) {
    const bool negative = text.front() == '-';
    const std::string digits = text.substr(negative ? 1 : 0);
    if (digits.empty() || digits.find_first_not_of("0123456789") != std::string::npos)
        return std::nullopt;
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc())
        number = std::numeric_limits<std::int32_t>::max();
    return negative ? -number : number;
}

Request parsePrint(const std::vector<std::string>& words) {
    static const std::vector<std::string> optionNames{"to", "from", "to-stop"};
    const ParsedWords parsed = WordSorter(words, optionNames).sort("print");
    if (parsed.options.contains("help"))
        return HelpRequest{"print"};
    if (const std::string wrong = complaint(parsed, "print", "TOUR"); !wrong.empty())
        return UsageError{wrong};
    const std::optional<std::string> to = optionValue(parsed, "to");
    if (!to)
        return UsageError{"print needs a --to"};
    PrintRequest request{parsed.operands.front(), *to, {}, {}};
    for (const auto& [name, number] :
         {std::pair("from", &request.from), std::pair("to-stop", &request.toStop)}) {
        const std::optional<std::string> value = optionValue(parsed, name);
        if (value && !(*number = wholeNumber(*value)))
            return UsageError{std::string("the value of the option --") + name + " is no number"};
    }
    return request;
}

/// Sets the number that an option gives; what is wrong with it, or nothing.
std::string takeNumber(const ParsedWords& parsed, const std::string& name, std::int32_t most,
                       std::optional<std::int32_t>& number) {
    const std::optional<std::string> value = optionValue(parsed, name);
    if (!value)
        return {};
    number = wholeNumber(*value);
    if (number && *number >= 1 && *number <= most)
        return {};
    return "the value of the option --" + name + " is no number from 1 to " + std::to_string(most);
}

Request parseCheck(const std::vector<std::string>& words) {
    static const std::vector<std::string> optionNames{"for", "json", "jobs", "timeout"};
    const ParsedWords parsed = WordSorter(words, optionNames).sort("check");
    if (parsed.options.contains("help"))
        return HelpRequest{"check"};
    if (const std::string wrong = complaintOfMany(parsed, "check", "TOUR"); !wrong.empty())
        return UsageError{wrong};
    CheckRequest request{parsed.operands, {}, optionValue(parsed, "json"), {}, {}};
    if (const std::optional<std::string> posting = optionValue(parsed, "for")) {
        request.posting = postingNamed(*posting);
        if (!request.posting)
            return UsageError{"the value of the option --for is neither https nor http nor disk"};
    }
    std::string wrong = takeNumber(parsed, "jobs", mostJobs, request.jobs);
    if (wrong.empty())
        wrong = takeNumber(parsed, "timeout", longestTimeout, request.timeout);
    if (!wrong.empty())
        return UsageError{wrong};
    return request;
}

Request parseHelp(const std::vector<std::string>& words) {
    static const std::vector<std::string> noOptions;
    const ParsedWords parsed = WordSorter(words, noOptions).sort("help");
    if (!parsed.error.empty())
        return UsageError{parsed.error};
    if (parsed.operands.empty())
        return HelpRequest{};
    if (parsed.operands.size() > 1)
        return UsageError{"help takes one COMMAND, not also " + parsed.operands[1]};
    const std::string& command = parsed.operands.front();
    const std::vector<std::string_view> known = commandNames();
    if (std::ranges::find(known, command) == known.end())
        return UsageError{"there is no command " + command};
    return HelpRequest{command};
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
    if (command == "print")
        return parsePrint(rest);
    if (command == "check")
        return parseCheck(rest);
    if (command == "help")
        return parseHelp(rest);
    if (command == "--help" || command == "-h")
        return HelpRequest{};
    if (command == "--version" || command == "-v")
        return VersionRequest{};
    return UsageError{"there is no command " + command};
}

} // namespace wendmark::cli
