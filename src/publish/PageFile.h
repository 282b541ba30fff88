#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace wendmark {

class TemplateFiller;
struct TourContext;

/// Fills the template at `templatePath` by `fill` and replaces the working copy's file `name` by the result,
/// also when the filling stopped on the way. A template that cannot be read leaves the file as it was.
/// Failures are one line in the log. Returns whether the file is there and complete.
bool fillPage(TourContext& context, const std::string& templatePath, std::string_view name,
              const std::function<void(TemplateFiller&)>& fill);

/// Same for a file of the Template folder, with a text read before.
bool fillPageFrom(TourContext& context, std::string_view templateText, std::string_view name,
                  const std::function<void(TemplateFiller&)>& fill);

} // namespace wendmark
