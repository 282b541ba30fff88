#include "ui/support/LoopbackServer.h"

#include <QHostAddress>
#include <QTcpSocket>
#include <QTimer>
#include <algorithm>
#include <stdexcept>

namespace wendmark::test {

namespace {

constexpr int slowAnswer = 300;    // Milliseconds.
constexpr int bigPage = 4'000'000; // Bytes.
const QByteArray endOfHead = "\r\n\r\n";

LoopbackServer::Request requestFrom(const QByteArray& head) {
    const QList<QByteArray> lines = head.split('\n');
    LoopbackServer::Request request;
    request.path = QString::fromUtf8(lines.first().split(' ').value(1));
    for (const QByteArray& line : lines.mid(1)) {
        const qsizetype colon = line.indexOf(':');
        if (colon > 0)
            request.headers.insert(line.left(colon).toLower(), line.mid(colon + 1).trimmed());
    }
    return request;
}

QByteArray headOf(const LoopbackServer::Answer& answer) {
    QByteArray head = "HTTP/1.1 " + QByteArray::number(answer.status) + " Answer\r\nConnection: close\r\n";
    bool typed = false;
    for (const auto& [name, value] : answer.headers) {
        head += name + ": " + value + "\r\n";
        typed = typed || name.toLower() == "content-type";
    }
    if (!typed)
        head += "Content-Type: text/html\r\n";
    if (answer.kind == LoopbackServer::Answer::Kind::complete)
        head += "Content-Length: " + QByteArray::number(answer.body.size()) + "\r\n";
    return head + "\r\n";
}

} // namespace

LoopbackServer::LoopbackServer() {
    if (!m_server.listen(QHostAddress::LocalHost))
        throw std::runtime_error("no port on the loopback address");
    connect(&m_server, &QTcpServer::newConnection, this, &LoopbackServer::greet);
    addPages();
}

QString LoopbackServer::address(const QString& path) const {
    return QStringLiteral("http://127.0.0.1:%1%2").arg(m_server.serverPort()).arg(path);
}

void LoopbackServer::answer(const QString& path, const Answer& answer) {
    m_answers.insert(path, answer);
}

void LoopbackServer::answerWhere(const QString& path, const QByteArray& header, const QByteArray& value,
                                 const Answer& answer) {
    m_specialAnswers.insert(path, {header, value, answer});
}

LoopbackServer::Answer LoopbackServer::chooseAnswer(const Request& request) const {
    for (const SpecialAnswer& special : m_specialAnswers.values(request.path)) {
        if (request.headers.value(special.header) == special.value)
            return special.answer;
    }
    return m_answers.value(request.path, {404, {}, "<title>Missing</title>missing"});
}

void LoopbackServer::redirect(const QString& from, const QString& to) {
    answer(from, {302, {{"Location", to.toUtf8()}}, {}});
}

int LoopbackServer::requestsFor(const QString& path) const {
    return static_cast<int>(std::count_if(m_requests.begin(), m_requests.end(),
                                          [&](const Request& request) { return request.path == path; }));
}

void LoopbackServer::addPages() {
    const QByteArray plain = "<title>Plain</title><p>plain</p>";
    page("/plain.htm", plain);
    answer("/slow.htm", {200, {}, plain, slowAnswer});
    answer("/silent.htm", {200, {}, {}, 0, Answer::Kind::silence});
    answer("/never.htm", {200, {}, plain, 0, Answer::Kind::withoutEnd});
    answer("/deny.htm", {200, {{"X-Frame-Options", "DENY"}}, plain});
    answer("/sameorigin.htm", {200, {{"X-Frame-Options", "SAMEORIGIN"}}, plain});
    answer("/nobody.htm", {200, {{"Content-Security-Policy", "frame-ancestors 'none'"}}, plain});
    answer("/anybody.htm", {200, {{"Content-Security-Policy", "frame-ancestors *"}}, plain});
    page("/busting.htm",
         "<title>Busting</title><script>if (top !== self) top.location = self.location;</script>");
    page("/popup.htm", "<title>Popup</title><script>open('/plain.htm');</script>");
    page("/moving.htm", "<title>Moving</title><script>location.replace('/plain.htm');</script>");
    redirect("/redirect.htm", "/plain.htm");
    page("/big.htm", "<title>Big</title>" + QByteArray(bigPage, 'x'));
    answer("/download.zip",
           {200, {{"Content-Type", "application/zip"}, {"Content-Disposition", "attachment"}}, "PK"});
    answer("/broken.htm", {200, {}, {}, 0, Answer::Kind::broken});
}

void LoopbackServer::greet() {
    while (QTcpSocket* const socket = m_server.nextPendingConnection()) {
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { readRequest(*socket); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }
}

void LoopbackServer::readRequest(QTcpSocket& socket) {
    const QByteArray received = socket.peek(socket.bytesAvailable());
    const qsizetype headEnd = received.indexOf(endOfHead);
    if (headEnd < 0)
        return;
    socket.readAll();
    m_requests.append(requestFrom(received.left(headEnd)));
    const Answer chosen = chooseAnswer(m_requests.last());
    QTimer::singleShot(chosen.delay, &socket, [this, &socket, chosen] { respond(socket, chosen); });
}

void LoopbackServer::respond(QTcpSocket& socket, const Answer& answer) {
    if (answer.kind == Answer::Kind::silence)
        return;
    if (answer.kind == Answer::Kind::broken) {
        socket.abort();
        return;
    }
    socket.write(headOf(answer) + answer.body);
    if (answer.kind == Answer::Kind::complete)
        socket.disconnectFromHost();
}

} // namespace wendmark::test
