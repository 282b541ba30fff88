#include "platform/FrameScripts.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QUrl>

namespace wendmark {

namespace {

/// `steps` know the element as "frame", and the text as "text".
QString scriptInFrame(const QString& frame, const QString& text, const QString& steps) {
    // An array of texts is written in JSON as in the language of pages.
    const QString arguments =
        QString::fromUtf8(QJsonDocument(QJsonArray{frame, text}).toJson(QJsonDocument::Compact));
    return QStringLiteral(R"((([name, text]) => {
  const frame = document.querySelector('frame[name="' + name + '"]');
  if (!frame)
    return;
  %1
})()")
               .arg(steps) +
           arguments + QLatin1Char(')');
}

} // namespace

QString scriptToReplaceBody(const QString& frame, const QString& html) {
    return scriptInFrame(frame, html, QStringLiteral(R"(
  const page = frame.contentDocument;
  if (page && page.body) {
    const fresh = new DOMParser().parseFromString(text, 'text/html');
    page.body.replaceChildren(...page.importNode(fresh.body, true).childNodes);
    page.dispatchEvent(new Event('bodyreplaced'));
  })"));
}

QString scriptToReplaceFrame(const QString& frame, const QUrl& address) {
    return scriptInFrame(frame, address.toString(QUrl::FullyEncoded),
                         QStringLiteral("frame.contentWindow.location.replace(text);"));
}

} // namespace wendmark
