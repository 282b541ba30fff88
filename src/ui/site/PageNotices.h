#pragma once

#include <QString>
#include <functional>

class QObject;

namespace wendmark {

class BrowserView;

/// Shows, for as long as `context` lives, why the browser does not show a page, in the author's words.
void connectNotices(BrowserView& browser, QObject& context, const std::function<void(const QString&)>& show);

} // namespace wendmark
