#pragma once

#include "check/PageVerdict.h"

#include <QNetworkAccessManager>
#include <QObject>
#include <QPointer>
#include <QUrl>
#include <vector>

class QNetworkReply;

namespace wendmark {

/// Asks a web server for a page as a browser would, through all its redirects, and keeps what the answers
/// say of themselves. The pages are not read. For one address.
class HeaderRequest final : public QObject {
    Q_OBJECT

public:
    static constexpr int usualPatience = 10'000;

    /// Sends the request at once, in the name of the browser `userAgent`. Addresses that are not of the web
    /// are not asked for. A server without a sign for `patience` milliseconds is given up.
    HeaderRequest(const QUrl& address, QString userAgent, int patience = usualPatience,
                  QObject* parent = nullptr);
    ~HeaderRequest() override;

    /// True when the last answer has come, and when there is none to wait for any more.
    bool isDone() const { return m_done; }

    /// In the order in which they came; empty when the server could not be asked, or leads
    /// from one address to the next without end.
    const std::vector<HttpAnswer>& answers() const { return m_answers; }

    /// Why there are no answers.
    RequestFailure failure() const { return m_failure; }

signals:
    /// isDone() from now on. Not while the request is being made.
    void done();

private:
    void ask(const QUrl& address);
    void takeOver(QNetworkReply& reply);
    void fail(RequestFailure failure);
    void giveUp();

    QNetworkAccessManager m_network;
    QString m_userAgent;
    int m_patience;
    QPointer<QNetworkReply> m_reply;
    std::vector<HttpAnswer> m_answers;
    RequestFailure m_failure = RequestFailure::none;
    bool m_done = false;
};

} // namespace wendmark
