#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace wendmark::test {

class TestTour;

/// Cuts a template short after each of its lines in turn and expects the output to be what the whole template
/// gives up to there, with one failure in the log as long as fewer than `linesNeeded` lines are left.
void expectCutTemplateGivesBeginning(TestTour& tour, std::string_view templateName, std::string_view outName,
                                     std::size_t linesNeeded, const std::function<void()>& generate);

} // namespace wendmark::test
