#include "model/ScriptFile.h"
#include "model/TourModel.h"
#include "model/WorkedScript.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <vector>

namespace wendmark {
namespace {

using test::workedScript;

struct Reading {
    TourModel model;
    std::vector<int> errorLines;
};

Reading read(std::string_view script) {
    Reading reading;
    parseScript(script, reading.model,
                [&](int lineNumber, std::string_view) { reading.errorLines.push_back(lineNumber); });
    return reading;
}

/// What a script comes to when it is read and written again.
std::string rewritten(std::string_view script) {
    TourModel model = read(script).model;
    return composeScript(model);
}

TEST(ScriptRoundTrip, workedScriptComesBackWithTheEmptyLinesOfTextsDoubled) {
    std::string expected = workedScript(29) + "\r\n<!--instruction-->\r\n\r\n\r\n";
    EXPECT_EQ(rewritten(workedScript()), expected);
    EXPECT_EQ(rewritten(expected), expected);
}

TEST(ScriptRoundTrip, typedParagraphReadsBackAsAMarkedOne) {
    TourModel model;
    model.stops.setCount(1);
    model.stops.at(1).stopNarration = "a\r\n\r\nb";
    const std::string script = composeScript(model);
    EXPECT_EQ(model.stops.at(1).stopNarration, "a<BR>\r\nb");
    EXPECT_EQ(read(script).model.stops.at(1).stopNarration, "a<BR>\r\nb\r\n");
}

TEST(ScriptRoundTrip, choicesComeBackAndStandLastInTheHeader) {
    TourModel model;
    model.tourTitle = "T";
    model.tourAuthor = "Ann";
    model.language = "he";
    model.wordsBesidePage = true;
    const std::string script = composeScript(model);
    EXPECT_NE(script.find("#Author = Ann\r\n<<<VoskInfo>>>#Language = he\r\n"
                          "<<<VoskInfo>>>#Layout = side\r\n\r\nT\r\n"),
              std::string::npos);
    EXPECT_EQ(read(script).model.language, "he");
    EXPECT_TRUE(read(script).model.wordsBesidePage);
    EXPECT_EQ(rewritten(script), script);
}

TEST(ScriptRoundTrip, whatIsNotChosenIsNotWritten) {
    TourModel model;
    const std::string script = composeScript(model);
    EXPECT_EQ(script.find("#Language"), std::string::npos);
    EXPECT_EQ(script.find("#Layout"), std::string::npos);
}

TEST(ScriptRoundTrip, fullTourComesBack) {
    TourModel model;
    model.tourTitle = "Full";
    model.launchURLCount = tourCapacity;
    model.stops.setCount(tourCapacity);
    for (std::size_t i = 0; i < 100; ++i) {
        const std::string number = std::to_string(i);
        model.stops.at(i + 1).stopTitle = "S" + number;
        model.stops.at(i + 1).stopURL = "http://h/" + number;
        model.stops.at(i + 1).stopNarration = "N" + number + "\r\n";
        model.stops.at(i + 1).stopInstruction = "I" + number + "\r\n";
        model.launchURL[i] = "http://l/" + number;
    }
    const Reading reading = read(composeScript(model));
    EXPECT_EQ(reading.errorLines, std::vector<int>{});
    EXPECT_EQ(reading.model.stopCount(), 100);
    EXPECT_EQ(reading.model.launchURLCount, 100);
    EXPECT_EQ(reading.model.stops, model.stops);
    EXPECT_EQ(reading.model.launchURL, model.launchURL);
}

std::string trimmed(std::string text) {
    while (text.starts_with(' '))
        text.erase(0, 1);
    while (text.ends_with(' '))
        text.pop_back();
    return text;
}

/// Part of a text, with what a script makes of it.
struct Piece {
    std::string_view typed;
    std::string_view asHtml;    ///< Read back from a title or text.
    std::string_view asAddress; ///< Read back from an address.
};

constexpr std::array<Piece, 19> pieces = {{{"a", "a", "a"},
                                           {"Zed", "Zed", "Zed"},
                                           {" ", " ", " "},
                                           {"   ", "   ", "   "},
                                           {"\t", "\t", "\t"},
                                           {"é", "é", "é"},
                                           {"€", "€", "€"},
                                           {"“", "“", "“"},
                                           {"\u00A0", "\u00A0", "\u00A0"},
                                           {"\u0081", "\u0081", "\u0081"},
                                           {"→", "→", "%E2%86%92"},
                                           {"Ж", "Ж", "%D0%96"},
                                           {"😀", "😀", "%F0%9F%98%80"},
                                           {"&amp;", "&amp;", "&amp;"},
                                           {"&#8594;", "→", "&#8594;"},
                                           {"&#233;", "&#233;", "&#233;"},
                                           {"<b class=\"x\">", "<b class=\"x\">", "<b class=\"x\">"},
                                           {"#Author = ", "#Author = ", "#Author = "},
                                           {"<<<VoskInfo", "<<<VoskInfo", "<<<VoskInfo"}}};

/// A text as an author types it and as it comes back from a script.
struct Sample {
    std::string typed;
    std::string back;
};

class SampleMaker final {
public:
    explicit SampleMaker(unsigned seed) : m_random(seed) {}

    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_random); }

    Sample htmlLine() { return line(&Piece::asHtml); }
    Sample address() { return line(&Piece::asAddress); }

    Sample lineOr(std::string_view placeholder) {
        return below(5) == 0 ? Sample{"", std::string(placeholder)} : htmlLine();
    }
    Sample addressOr(std::string_view placeholder) {
        return below(5) == 0 ? Sample{"", std::string(placeholder)} : address();
    }

    /// Lines with breaks of every kind between them, but never with an empty line that a script would take
    /// for the end of the text.
    Sample textOr(std::string_view placeholder) {
        Sample text;
        if (below(4) == 0)
            text.typed = "\r\n";
        const int lines = below(5);
        for (int i = 0; i < lines; ++i)
            appendLine(text, i + 1 == lines);
        return lines == 0 ? Sample{"", std::string(placeholder) + "\r\n"} : text;
    }

private:
    Sample line(std::string_view Piece::*back) {
        Sample sample;
        while (trimmed(sample.typed).empty()) {
            for (int i = below(6); i >= 0; --i) {
                const Piece& piece = pieces.at(static_cast<std::size_t>(below(pieces.size())));
                sample.typed += piece.typed;
                sample.back += piece.*back;
            }
        }
        sample.back = trimmed(sample.back);
        return sample;
    }

    void appendLine(Sample& text, bool last) {
        const Sample next = htmlLine();
        text.typed += next.typed;
        text.back += next.back;
        if (below(3) == 0) {
            text.typed += "\r\n\r\n";
            // The mark stands behind the blanks that would be lost at the end of a line.
            text.back += next.typed.substr(next.typed.find_last_not_of(' ') + 1) + "<BR>";
        } else if (!last || below(2) == 0) {
            constexpr std::array<std::string_view, 3> breaks = {"\r\n", "\n", "\r"};
            text.typed += breaks.at(static_cast<std::size_t>(below(breaks.size())));
        }
        text.back += "\r\n";
    }

    std::mt19937 m_random;
};

/// A random model and what must be left of it after writing and reading.
struct RandomTour {
    TourModel typed;
    TourModel back;
};

void setText(std::string& typed, std::string& back, Sample sample) {
    typed = std::move(sample.typed);
    back = std::move(sample.back);
}

RandomTour randomTour(unsigned seed) {
    SampleMaker make(seed);
    RandomTour tour;
    TourModel& typed = tour.typed;
    TourModel& back = tour.back;
    typed.autoBuffer = back.autoBuffer = make.below(2) == 0;
    typed.autoInstruction = back.autoInstruction = make.below(2) == 0;
    typed.bufferDelay = make.below(40) - 10;
    back.bufferDelay = std::max(typed.bufferDelay, 10);
    typed.narHeight = back.narHeight = static_cast<std::int16_t>(make.below(65536) - 32768);
    typed.advWidth = back.advWidth = static_cast<std::int16_t>(make.below(65536) - 32768);
    typed.navWidth = back.navWidth = static_cast<std::int16_t>(make.below(65536) - 32768);
    setText(typed.tourTitle, back.tourTitle, make.lineOr("Untitled Tour"));
    setText(typed.tourAuthor, back.tourAuthor, make.lineOr(""));
    typed.launchURLCount = back.launchURLCount = static_cast<std::int16_t>(make.below(4));
    for (std::size_t i = 0; i < static_cast<std::size_t>(typed.launchURLCount); ++i)
        setText(typed.launchURL[i], back.launchURL[i], make.address());
    typed.stops.setCount(static_cast<std::int16_t>(make.below(6)));
    back.stops.setCount(typed.stopCount());
    for (std::size_t i = 0; i < static_cast<std::size_t>(typed.stopCount()); ++i) {
        setText(typed.stops.at(i + 1).stopTitle, back.stops.at(i + 1).stopTitle, make.lineOr("Untitled"));
        setText(typed.stops.at(i + 1).stopURL, back.stops.at(i + 1).stopURL, make.addressOr("NoURL"));
        setText(typed.stops.at(i + 1).stopNarration, back.stops.at(i + 1).stopNarration,
                make.textOr("<!--narration-->"));
        setText(typed.stops.at(i + 1).stopInstruction, back.stops.at(i + 1).stopInstruction,
                make.textOr("<!--instruction-->"));
    }
    return tour;
}

void expectSameTour(const TourModel& found, const TourModel& expected) {
    EXPECT_EQ(found.autoBuffer, expected.autoBuffer);
    EXPECT_EQ(found.autoInstruction, expected.autoInstruction);
    EXPECT_EQ(found.bufferDelay, expected.bufferDelay);
    EXPECT_EQ(found.narHeight, expected.narHeight);
    EXPECT_EQ(found.advWidth, expected.advWidth);
    EXPECT_EQ(found.navWidth, expected.navWidth);
    EXPECT_EQ(found.tourTitle, expected.tourTitle);
    EXPECT_EQ(found.tourAuthor, expected.tourAuthor);
    EXPECT_EQ(found.launchURLCount, expected.launchURLCount);
    EXPECT_EQ(found.launchURL, expected.launchURL);
    EXPECT_EQ(found.stops, expected.stops);
}

TEST(ScriptRoundTrip, randomToursComeBackAndAreStableFromTheSecondWritingOn) {
    for (unsigned seed = 1; seed <= 300 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomTour tour = randomTour(seed);
        const std::string first = composeScript(tour.typed);
        const Reading reading = read(first);
        EXPECT_EQ(reading.errorLines, std::vector<int>{});
        expectSameTour(reading.model, tour.back);
        const std::string second = rewritten(first);
        EXPECT_EQ(rewritten(second), second);
    }
}

TEST(ScriptRoundTrip, whatRandomBytesAreReadAsIsStableFromTheSecondWritingOn) {
    for (unsigned seed = 1; seed <= 300 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        std::string script;
        for (int i = 0; i < 400; ++i) {
            const auto chance = random() % 8;
            if (chance == 0)
                script += "\r\n";
            else if (chance == 1)
                script += "\n<<<VoskInfo>>>#LaunchURL =";
            else
                script += static_cast<char>(random());
        }
        const std::string second = rewritten(rewritten(script));
        EXPECT_EQ(rewritten(second), second);
    }
}

} // namespace
} // namespace wendmark
