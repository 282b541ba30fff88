#pragma once

#include "model/LineError.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace wendmark {

struct TourContext;
struct TourModel;

/// Begins every line of a script that is a command or the head of a stop's block.
inline constexpr std::string_view scriptMarker = "<<<VoskInfo>>>";

/// Most errors of one script that are shown; the number of those after them is shown as one more.
inline constexpr int mostShownLineErrors = 200;

/// How much of a script was left out because a tour has no place for it.
struct ScriptSurplus {
    int stops = 0;
    int launchURLs = 0;
};

/// What reading a script has come to.
struct ScriptReading {
    ScriptSurplus surplus;
    bool couldBeRead = true; ///< False: there was no file, or the system did not give its bytes.
    bool hasTitle = false;   ///< False: the script ends before the tour's title. Title and stops of the
                             ///< model are those it had before.
};

/// Reads the working copy's script.txt into the model, without clearing the model first: what the script does
/// not name keeps its value. The first mostShownLineErrors errors of lines go to
/// reportLineError(); a file that cannot be read behaves like an empty one. Stops after the 100th are counted
/// in stopCount but not stored, launching points after the 100th are not even counted; how many were left out
/// is a warning in the log.
ScriptReading readScript(TourContext& context);

/// Same for the script at `path`.
ScriptReading readScriptFile(TourContext& context, const std::string& path);

/// Same for the bytes of a script.
ScriptReading readScriptBytes(TourContext& context, std::string_view script);

/// Replaces the working copy's script.txt by the model. Fills empty texts of the model with their
/// placeholders and marks the paragraphs of its narrations and instructions. False when it could not be
/// written; why, is in the log.
bool writeScript(TourContext& context);

/// Reads a whole script, Windows-1252 bytes, as readScript() does.
ScriptReading parseScript(std::string_view script, TourModel& model, const LineErrorHandler& onError);

/// The bytes that writeScript() writes; changes the model as writeScript() does.
std::string composeScript(TourModel& model);

/// The tour's title in the beginning of a script, Windows-1252 bytes; empty when it does not reach that far.
std::string titleInScript(std::string_view beginning);

/// Applies one command line of a script's header, Windows-1252 bytes. Unknown commands are ignored. False
/// when the command adds a launching point and the model is full.
bool parseScriptCommand(std::string_view line, int lineNumber, TourModel& model,
                        const LineErrorHandler& onError);

/// Most UTF-16 units of a text whose paragraphs are marked.
inline constexpr std::size_t longestMarkedText = 32767;

/// Turns each pair of line breaks into "<BR>" and one line break. Texts longer than longestMarkedText are
/// left as they are.
void markParagraphs(std::string& text);

/// The text without its line breaks, except that of several in a row only every other one goes.
std::string joinLines(const std::string& text);

} // namespace wendmark
