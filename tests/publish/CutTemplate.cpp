#include "publish/CutTemplate.h"

#include "support/TestTour.h"

#include <gtest/gtest.h>

namespace wendmark::test {

void expectCutTemplateGivesBeginning(TestTour& tour, std::string_view templateName, std::string_view outName,
                                     std::size_t linesNeeded, const std::function<void()>& generate) {
    const std::string whole = readFile(tour.workspace.templateFile(templateName));
    generate();
    const std::string wholeOutput = tour.working(outName);
    EXPECT_EQ(tour.log.failures.size(), 0U);

    const std::vector<std::string> lines = splitCrlfLines(whole);
    ASSERT_LE(linesNeeded, lines.size());
    std::string cut;
    std::string outputBefore;
    for (std::size_t kept = 0; kept < lines.size(); cut += lines[kept++] + "\r\n") {
        SCOPED_TRACE(testing::Message() << "after " << kept << " lines of " << templateName);
        tour.writeTemplate(templateName, cut);
        tour.log.failures.clear();
        generate();
        const std::string output = tour.working(outName);
        EXPECT_TRUE(wholeOutput.starts_with(output)) << output;
        EXPECT_TRUE(output.starts_with(outputBefore)) << output;
        EXPECT_EQ(output.empty(), kept == 0);
        const bool incomplete = kept < linesNeeded;
        EXPECT_EQ(tour.log.failures.size(), incomplete ? 1U : 0U);
        EXPECT_TRUE(!incomplete || output.size() < wholeOutput.size());
        outputBefore = output;
    }
}

} // namespace wendmark::test
