#pragma once

#include <string>
#include <string_view>

/// From what a browser shows to what a stop stores. Locations are percent-encoded, as browsers give them.
namespace wendmark {

/// What a stop stores for the page at `location`: a page on the disk by its name alone, in lower case and
/// still percent-encoded, since it lies in the tour's folder; any other page by its whole address.
std::string stopAddressFor(std::string_view location);

/// Whether the address is that of the page that new stops show, in this folder or another.
bool isNewPage(std::string_view address);

/// The file that an HTML editor is to open for the page at `location`, still percent-encoded: the path of a
/// page on the disk. Empty for any other page, and for that of new stops, which is not to be edited.
std::string editableFile(std::string_view location);

/// The text with a byte for every "%" that two hexadecimal digits follow.
std::string percentDecoded(std::string_view text);

/// Name of the tour's file that a stop's local address leads to: decoded, without what a link adds to a name.
std::string localFileName(std::string_view address);

/// The address with what would end it where it is written, in a script, an attribute or a line,
/// percent-encoded.
std::string withoutDelimiters(std::string_view address);

/// What tells people which page the address of a web page leads to: host and path, readable.
std::string hostAndPath(std::string_view address);

/// Same for the host alone.
std::string hostOf(std::string_view address);

/// The text without blanks at its ends, and with a blank for every "%20".
std::string AddSpaces(std::string_view text);

} // namespace wendmark
