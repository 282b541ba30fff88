#include "base/Outcome.h"

namespace wendmark {

Outcome Outcome::failure(std::string_view action, std::string_view path, const std::error_code& reason) {
    std::string message = "cannot ";
    message.append(action).append(" ").append(path).append(": ").append(reason.message());
    return failure(std::move(message));
}

} // namespace wendmark
