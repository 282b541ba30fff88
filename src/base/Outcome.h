#pragma once

#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace wendmark {

/// Whether an operation on the outside world succeeded and, if not, one sentence that says what failed, on
/// which file, and the system's reason. Must be looked at, or handed to Log::skip() on purpose.
class [[nodiscard]] Outcome final {
public:
    static Outcome success() { return Outcome(true, {}); }
    static Outcome failure(std::string message) { return Outcome(false, std::move(message)); }

    /// "cannot <action> <path>: <reason>", for example "cannot read /t/script.txt: Permission denied".
    static Outcome failure(std::string_view action, std::string_view path, const std::error_code& reason);

    bool ok() const { return m_ok; }

    /// Empty when ok().
    const std::string& message() const { return m_message; }

private:
    Outcome(bool ok, std::string message) : m_ok(ok), m_message(std::move(message)) {}

    bool m_ok;
    std::string m_message;
};

} // namespace wendmark
