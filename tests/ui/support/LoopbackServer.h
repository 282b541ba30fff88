#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QPair>
#include <QString>
#include <QTcpServer>

class QTcpSocket;

namespace wendmark::test {

/// A web server on the loopback address that answers as a test wants it to, for as long as it lives. It works
/// while events are processed. Paths that have no answer give 404.
///
/// It comes with
///   /plain.htm       a page titled "Plain" with the text "plain"
///   /slow.htm        one that is answered only after 300 ms
///   /silent.htm      never answered
///   /never.htm       one that begins and never ends
///   /deny.htm, /sameorigin.htm, /nobody.htm   refuse frames by X-Frame-Options and by frame-ancestors 'none'
///   /anybody.htm     allows frames of every web server by frame-ancestors *
///   /busting.htm     its script takes the top window over
///   /popup.htm       its script opens a window
///   /moving.htm      its script goes on to /plain.htm
///   /redirect.htm    redirects to /plain.htm
///   /big.htm         four million bytes
///   /download.zip    to be saved, not shown
///   /broken.htm      closes the connection without an answer
class LoopbackServer final : public QObject {
    Q_OBJECT

public:
    using Headers = QList<QPair<QByteArray, QByteArray>>;

    struct Answer {
        enum class Kind { complete, withoutEnd, silence, broken };

        int status = 200;
        Headers headers; ///< Sent as they are; the type is HTML unless one of them says otherwise.
        QByteArray body;
        int delay = 0; ///< Milliseconds before the answer.
        Kind kind = Kind::complete;
    };

    struct Request {
        QString path;                          ///< With its query.
        QHash<QByteArray, QByteArray> headers; ///< Names in lower case.
    };

    LoopbackServer();

    /// The address of a path, "http://127.0.0.1:<port>/...".
    QString address(const QString& path) const;

    /// Answers requests for the path from now on.
    void answer(const QString& path, const Answer& answer);
    /// The same for requests alone whose header of that name, in lower case, has this value; takes
    /// precedence.
    void answerWhere(const QString& path, const QByteArray& header, const QByteArray& value,
                     const Answer& answer);
    void page(const QString& path, const QByteArray& body) { answer(path, {200, {}, body}); }
    void redirect(const QString& from, const QString& to);

    /// In the order in which they came. Browsers may ask for /favicon.ico, too.
    const QList<Request>& requests() const { return m_requests; }
    int requestsFor(const QString& path) const;
    void forgetRequests() { m_requests.clear(); }

private:
    struct SpecialAnswer {
        QByteArray header;
        QByteArray value;
        Answer answer;
    };

    Answer chooseAnswer(const Request& request) const;
    void addPages();
    void greet();
    void readRequest(QTcpSocket& socket);
    void respond(QTcpSocket& socket, const Answer& answer);

    QTcpServer m_server;
    QHash<QString, Answer> m_answers;
    QMultiHash<QString, SpecialAnswer> m_specialAnswers;
    QList<Request> m_requests;
};

} // namespace wendmark::test
