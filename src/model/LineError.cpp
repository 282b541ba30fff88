#include "model/LineError.h"

#include "model/Desktop.h"

namespace wendmark {

void reportLineError(Desktop& desktop, int lineNumber, std::string_view message) {
    desktop.showLineError(std::string(message) + " in line " + std::to_string(lineNumber));
}

} // namespace wendmark
