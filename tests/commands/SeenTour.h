#pragma once

#include <map>
#include <string>
#include <vector>

namespace wendmark::test {

class DocumentFixture;

/// What undo promises to bring back.
struct Seen {
    std::string tour;
    std::map<std::string, std::string> files; ///< By name: the bytes of the working copy.
};

Seen seen(const DocumentFixture& program);

/// Names of what differs; none when both are byte for byte the same.
std::vector<std::string> differences(const Seen& left, const Seen& right);

} // namespace wendmark::test
