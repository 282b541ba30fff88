#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace wendmark::cli {

struct HelpRequest {};

struct VersionRequest {};

/// Folders as typed: relative to the current folder, in UTF-8.
struct PublishRequest {
    std::string tour;
    std::optional<std::string> into;           ///< Default: the tour's own folder.
    std::optional<std::string> templateFolder; ///< Default: the one beside the program.
    std::optional<std::string> workingCopy;    ///< Default: a private temporary folder.
};

struct NewRequest {
    std::string folder;
    std::string title; ///< Not blank.
    std::optional<std::string> templateFolder;
};

struct PrintRequest {
    std::string tour;
    std::string to; ///< The PDF file.
    std::optional<std::int32_t> from;
    std::optional<std::int32_t> toStop;
};

/// Why the command line cannot be understood, in one sentence without a full stop.
struct UsageError {
    std::string message;
};

using Request =
    std::variant<HelpRequest, VersionRequest, PublishRequest, NewRequest, PrintRequest, UsageError>;

/// Understands the words after the program's name.
Request parseCommandLine(const std::vector<std::string>& words);

/// What --help prints.
std::string helpText();

} // namespace wendmark::cli
