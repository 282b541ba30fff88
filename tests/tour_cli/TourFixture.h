#pragma once

#include "support/ScratchFolder.h"
#include "tour_cli/ProgramRun.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace wendmark::test {

/// Everything below a folder, by relative path: "folder", "link to ..." or "file: " and its contents, each
/// with its rights.
std::map<std::string, std::string> folderState(const std::string& folder);

/// A script with that many stops: the first is a page of the tour, the others are remote.
std::string scriptWithStops(int stops);

/// A program of its own folder and a tour, in a scratch folder that every user can reach.
class TourFixture : public ::testing::Test {
protected:
    TourFixture();

    /// Makes a tour and returns its folder.
    std::string makeTour(std::string_view name, std::string_view script) const;

    /// The built program, where it was built.
    static ProgramRun program();

    /// A copy of the built program with copies of the templates beside it, in `app`.
    static ProgramRun programInFolder(const std::string& app);

    /// Runs the program, which must fail: status 1, nothing on the standard output, one line on the standard
    /// error stream that holds all the parts, and the whole scratch folder as it was.
    void expectFailure(const ProgramRun& run, const std::vector<std::string>& arguments,
                       std::initializer_list<std::string_view> parts) const;

    ScratchFolder scratch;
    std::string tour; ///< A tour of three stops.
};

/// Succeeded, and said nothing on the standard error stream.
void expectDone(const ProgramResult& result);

/// The lines of a text; each must end in a line feed.
std::vector<std::string> linesOf(std::string_view text);

} // namespace wendmark::test
