#include "probe/HeaderRequest.h"

#include "platform/Strings.h"

#include <QNetworkReply>
#include <QNetworkRequest>

namespace wendmark {

namespace {

constexpr std::size_t mostRedirects = 20; // As browsers allow.

/// What browsers say of a request for the page of a frame. They say where it comes from to servers only that
/// nobody can listen to.
void addFetchLines(QNetworkRequest& request) {
    request.setRawHeader("Upgrade-Insecure-Requests", "1");
    if (isInsecure(toUtf8(request.url().toString(QUrl::FullyEncoded))))
        return;
    request.setRawHeader("Sec-Fetch-Site", "cross-site");
    request.setRawHeader("Sec-Fetch-Mode", "navigate");
    request.setRawHeader("Sec-Fetch-Dest", "frame");
}

RequestFailure failureFrom(QNetworkReply::NetworkError error) {
    switch (error) {
    case QNetworkReply::HostNotFoundError:
        return RequestFailure::noSuchHost;
    case QNetworkReply::ConnectionRefusedError:
        return RequestFailure::noServer;
    case QNetworkReply::SslHandshakeFailedError:
        return RequestFailure::untrusted;
    case QNetworkReply::TimeoutError:
    case QNetworkReply::OperationCanceledError: // How the patience of a request ends.
        return RequestFailure::noAnswer;
    default:
        return RequestFailure::other;
    }
}

} // namespace

HeaderRequest::HeaderRequest(const QUrl& address, QString userAgent, int patience, QObject* parent)
    : QObject(parent), m_userAgent(std::move(userAgent)), m_patience(patience) {
    ask(address);
}

HeaderRequest::~HeaderRequest() {
    giveUp();
}

void HeaderRequest::ask(const QUrl& address) {
    const QString scheme = address.scheme();
    if (scheme != QLatin1String("http") && scheme != QLatin1String("https")) {
        giveUp();
        return;
    }
    QNetworkRequest request(address);
    request.setHeader(QNetworkRequest::UserAgentHeader, m_userAgent);
    request.setRawHeader("Accept", "text/html,application/xhtml+xml,application/xml;q=0.9,*/*;q=0.8");
    addFetchLines(request);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setTransferTimeout(m_patience);
    QNetworkReply* const reply = m_network.get(request);
    m_reply = reply;
    connect(reply, &QNetworkReply::metaDataChanged, this, [this, reply] { takeOver(*reply); });
    // An answer without a page says all it has to say at its end.
    connect(reply, &QNetworkReply::finished, this, [this, reply] { takeOver(*reply); });
}

void HeaderRequest::takeOver(QNetworkReply& reply) {
    if (&reply != m_reply)
        return;
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (status == 0) {
        fail(failureFrom(reply.error()));
        return;
    }
    HttpAnswer answer{toUtf8(reply.url().toString(QUrl::FullyEncoded)), status, {}};
    for (const auto& [name, value] : reply.rawHeaderPairs())
        answer.headers.push_back({name.toStdString(), value.toStdString()});
    m_answers.push_back(answer);
    const QUrl next = reply.url().resolved(QUrl::fromEncoded(reply.rawHeader("Location")));
    const bool goesOn = isRedirect(answer);
    if (goesOn && m_answers.size() > mostRedirects) {
        fail(RequestFailure::goesRound);
        return;
    }
    giveUp();
    m_done = !goesOn;
    if (goesOn)
        ask(next);
    if (m_done)
        emit done();
}

void HeaderRequest::fail(RequestFailure failure) {
    m_answers.clear();
    m_failure = failure;
    giveUp();
    emit done();
}

void HeaderRequest::giveUp() {
    m_done = true;
    if (QNetworkReply* const reply = m_reply; reply != nullptr) {
        m_reply.clear();
        reply->disconnect(this);
        reply->abort();
        reply->deleteLater();
    }
}

} // namespace wendmark
