#pragma once

class QString;

namespace wendmark {

struct ProgramParts;

/// Checks words in the language that the author chose last, in this run of the program or a former one. The
/// dictionary is read at the first call.
void beginSpelling(const ProgramParts& parts);

/// Checks words in this language in all windows, in later runs of the program too. Empty: not at all.
void chooseSpelling(const ProgramParts& parts, const QString& language);

} // namespace wendmark
