#pragma once

#include "publish/FramingPolicy.h"

#include <string>
#include <vector>

namespace wendmark::test {

/// A case of tests/framing/answers.txt.
struct FramingCase {
    struct Answer {
        int status = 200;
        std::vector<HttpHeader> headers;
        std::string page; ///< Lines of the page's own; most have none.
    };

    std::string name;
    bool allowed = true;
    std::vector<Answer> answers;
};

/// All cases of the table; throws when it cannot be understood.
std::vector<FramingCase> framingCases();

} // namespace wendmark::test
