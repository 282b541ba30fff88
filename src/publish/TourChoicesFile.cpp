#include "publish/TourChoicesFile.h"

#include "base/Files.h"
#include "base/Log.h"
#include "base/TextLines.h"
#include "model/TourChoices.h"
#include "model/TourContext.h"
#include "model/TourModel.h"
#include "model/Workspace.h"
#include "publish/PageFile.h"
#include "publish/TemplateFiller.h"

#include <string>
#include <string_view>

namespace wendmark {

namespace {

constexpr std::string_view wordsName = "tourwords.js";
constexpr std::string_view choicesName = "tourchoices.js";

/// The line before the words of a language ends in its code; the line behind the last of them in "s".
constexpr std::string_view languageMarker = "//language ";
constexpr std::string_view languagesEnd = "//languages";

std::string_view languageOf(const TourModel& model) {
    return model.language.empty() ? std::string_view("en") : std::string_view(model.language);
}

/// Template text with the words of one language. One that it does not have leaves it as it is.
std::string inOneLanguage(std::string_view text, std::string_view language) {
    std::string rest;
    bool isTaken = true;
    bool isFound = false;
    TextLines lines(text);
    while (const auto line = lines.next()) {
        if (line->starts_with(languageMarker))
            isTaken = line->substr(languageMarker.size()) == language;
        else if (line->starts_with(languagesEnd))
            isTaken = true;
        isFound = isFound || (isTaken && line->starts_with(languageMarker));
        if (isTaken)
            rest.append(*line).append(lineBreak);
    }
    return isFound ? rest : std::string(text);
}

std::string composeChoices(const TourModel& model) {
    std::string text = "'use strict';\r\n\r\n// What the author of this tour has chosen for it.\r\n";
    if (!model.language.empty())
        text.append("tourChoices.language = '").append(model.language).append("';\r\n");
    if (model.wordsBesidePage)
        text.append("tourChoices.layout = '").append(wordsBesidePageLayout).append("';\r\n");
    return text;
}

} // namespace

bool makeTourWords(TourContext& context) {
    const std::string path = context.workspace.templateFile(wordsName);
    if (files::isMissing(path))
        return true;
    const files::Contents source = files::read(path);
    context.log.skip(source.outcome);
    const TourModel& model = context.model;
    const std::string words =
        model.editingMode ? source.bytes : inOneLanguage(source.bytes, languageOf(model));
    return source.outcome.ok() && fillPageFrom(context, words, wordsName,
                                               [&](TemplateFiller& filler) { fillTourWords(filler, model); });
}

bool makeTourChoices(TourContext& context) {
    const std::string path = context.workspace.workingFile(choicesName);
    Outcome outcome = Outcome::success();
    if (hasChoices(context.model))
        outcome = context.workspace.writeWorkingFile(choicesName, composeChoices(context.model));
    else if (!files::isMissing(path))
        outcome = files::remove(path);
    context.log.skip(outcome);
    return outcome.ok();
}

bool makeWordsAndChoices(TourContext& context) {
    const bool complete = makeTourWords(context);
    return makeTourChoices(context) && complete;
}

void fillTourWords(TemplateFiller& filler, const TourModel& model) {
    filler.copyThrough(scriptBlockMarker);
    filler.write("tourHasChoices = ", hasChoices(model) ? "true" : "false");
    filler.closeRegion(scriptBlockMarker);
    filler.copyRest();
}

} // namespace wendmark
