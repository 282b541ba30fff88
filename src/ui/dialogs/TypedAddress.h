#pragma once

#include <string>

class QString;

namespace wendmark {

class Workspace;

/// The address that a stop stores for what an author has typed: a page of the web, also without "https://",
/// or a file of the tour by its name. Nothing typed gives the page of new stops. Empty: it is neither.
std::string addressFromTyping(const QString& text, const Workspace& workspace);

} // namespace wendmark
