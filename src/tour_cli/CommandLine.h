#pragma once

#include "check/PageVerdict.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace wendmark::cli {

struct HelpRequest {
    std::string command; ///< Empty: of all of them.
};

struct VersionRequest {};

/// Folders as typed: relative to the current folder, in UTF-8.
struct PublishRequest {
    std::string tour;                          ///< Its folder or its script.
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

struct CheckRequest {
    std::vector<std::string> tours;      ///< At least one.
    std::optional<Posting> posting;      ///< Default: what the launching points of each tour say.
    std::optional<std::string> json;     ///< The file; "-" is the standard output.
    std::optional<std::int32_t> jobs;    ///< Pages at once, 1 to mostJobs.
    std::optional<std::int32_t> timeout; ///< Seconds, 1 to longestTimeout.
};

inline constexpr std::int32_t mostJobs = 24;
inline constexpr std::int32_t longestTimeout = 600;

/// Why the command line cannot be understood, in one sentence without a full stop.
struct UsageError {
    std::string message;
};

using Request = std::variant<HelpRequest, VersionRequest, PublishRequest, NewRequest, PrintRequest,
                             CheckRequest, UsageError>;

/// Understands the words after the program's name.
Request parseCommandLine(const std::vector<std::string>& words);

} // namespace wendmark::cli
