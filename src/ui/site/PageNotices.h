#pragma once

#include <QString>
#include <functional>

class QObject;

namespace wendmark {

class BrowserView;

/// What is to be shown of a page. `ofLoading`: about a load, and untrue as soon as the next one begins.
using ShowNotice = std::function<void(const QString& text, bool ofLoading)>;

/// Shows, for as long as `context` lives, why the browser does not show a page, in the author's words.
void connectNotices(BrowserView& browser, QObject& context, const ShowNotice& show);

/// What tours on servers with https do with the page at this address, a sentence; empty when they show it.
QString noticeOfSecureTours(const QString& address);

} // namespace wendmark
