#pragma once

#include "base/TextLines.h"

#include <optional>
#include <string>
#include <string_view>

namespace wendmark {

/// Marker texts. A line is a marker line when it begins with the text, in this case and without leading
/// blanks.
inline constexpr std::string_view pageMarker = "<!--variable-->";
inline constexpr std::string_view loosePageMarker = "<!--variable"; ///< Also matches pageMarker.
inline constexpr std::string_view scriptBlockMarker = "//variable";

/// Copies a template line by line and replaces regions of it. The first step that runs into the end of the
/// template stops the filling: every later step then does nothing, and the output keeps what was composed
/// before. Everything is bytes in the file's encoding; every line of the output ends in CR LF.
class TemplateFiller final {
public:
    /// The text must outlive the filler.
    explicit TemplateFiller(std::string_view templateText) : m_lines(templateText) {}

    /// Copies lines up to and including the next one that begins with `marker`.
    void copyThrough(std::string_view marker);

    /// Drops lines up to and including the next one that begins with `marker`.
    void skipThrough(std::string_view marker);

    void copyLine();
    void dropLine();
    void copyRest();

    /// Writes a line that is made of `parts`, which convert to std::string_view. They are not put together
    /// first: a text of a tour may have many megabytes.
    template <typename... Parts>
    void write(const Parts&... parts) {
        if (stopped())
            return;
        (m_output.append(std::string_view(parts)), ...);
        m_output.append(lineBreak);
    }

    /// Ends a region: drops what the template holds of it and writes its closing marker.
    void closeRegion(std::string_view marker);

    /// Stops the filling from outside, as a missing line does.
    void stop(std::string_view reason);

    bool stopped() const { return !m_reason.empty(); }

    /// Why the filling stopped; empty while it goes well.
    const std::string& reason() const { return m_reason; }

    const std::string& output() const { return m_output; }

private:
    template <typename Take>
    void takeThrough(std::string_view marker, Take take);
    std::optional<std::string_view> nextLine(std::string_view expected);

    TextLines m_lines;
    std::string m_output;
    std::string m_reason;
};

} // namespace wendmark
