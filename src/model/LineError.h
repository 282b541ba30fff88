#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace wendmark {

class Desktop;

/// Shows `message` + " in line " + `lineNumber` to the author. Lines count from 1; 0 stands for no line.
void reportLineError(Desktop& desktop, int lineNumber, std::string_view message);

/// Takes an error found in a line, for code that does not know the desktop.
using LineErrorHandler = std::function<void(int lineNumber, std::string_view message)>;

} // namespace wendmark
