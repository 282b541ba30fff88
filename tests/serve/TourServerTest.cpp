#include "serve/TourServer.h"

#include "support/ScratchFolder.h"

#include <gmock/gmock.h>

#include <arpa/inet.h>
#include <array>
#include <atomic>
#include <cerrno>
#include <filesystem>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

std::atomic<bool> socketsAreRefused = false;

} // namespace

/// Stands before the system's own. A limit of open files would refuse sockets, too, but also what the
/// sanitizers open to look at an object.
extern "C" int socket(int domain, int type, int protocol) noexcept {
    if (!socketsAreRefused)
        return static_cast<int>(::syscall(SYS_socket, domain, type, protocol));
    errno = EMFILE;
    return -1;
}

namespace wendmark {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

/// A connection to the server, as a browser makes one.
class Connection final {
public:
    explicit Connection(int port, const char* address = "127.0.0.1")
        : m_socket(::socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in to{};
        to.sin_family = AF_INET;
        to.sin_port = htons(static_cast<std::uint16_t>(port));
        ::inet_pton(AF_INET, address, &to.sin_addr);
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): the system's own way.
        m_open = ::connect(m_socket, reinterpret_cast<const sockaddr*>(&to), sizeof to) == 0;
    }
    ~Connection() { ::close(m_socket); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    bool isOpen() const { return m_open; }

    void send(std::string_view bytes) const {
        while (!bytes.empty()) {
            const ssize_t sent = ::send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (sent <= 0)
                return;
            bytes.remove_prefix(static_cast<std::size_t>(sent));
        }
    }

    /// What comes until the server closes the connection.
    std::string receive() const {
        std::string bytes;
        std::array<char, 65536> buffer{};
        for (ssize_t count = 1; count > 0;) {
            count = ::recv(m_socket, buffer.data(), buffer.size(), 0);
            bytes.append(buffer.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
        }
        return bytes;
    }

private:
    int m_socket;
    bool m_open = false;
};

class TourServerTest : public testing::Test {
protected:
    TourServerTest() {
        test::writeFile(scratch / "tour/playtour.htm", "<title>Tour</title>");
        test::writeFile(scratch / "secret.txt", "secret");
    }

    void serve() { ASSERT_TRUE(server.serve(scratch / "tour").ok()); }

    int port() const { return std::stoi(address().substr(address().rfind(':') + 1)); }
    std::string address() const { return server.addressOf("").substr(0, server.addressOf("").find('/', 7)); }
    std::string host() const { return address().substr(7); }
    std::string prefix() const { return server.addressOf("").substr(address().size()); }

    std::string request(const std::string& line, const std::string& headers) const {
        const Connection connection(port());
        connection.send(line + " HTTP/1.1\r\n" + headers + "\r\n");
        return connection.receive();
    }

    /// The whole answer to a request for this path below the secret one.
    std::string get(const std::string& path, const std::string& method = "GET") const {
        return request(method + " " + prefix() + path, "Host: " + host() + "\r\n");
    }

    static std::string body(const std::string& answer) {
        const std::size_t end = answer.find("\r\n\r\n");
        return end == std::string::npos ? "no answer: " + answer : answer.substr(end + 4);
    }

    test::ScratchFolder scratch;
    TourServer server;
};

constexpr const char* found = "HTTP/1.1 200 ";
constexpr const char* notFound = "HTTP/1.1 404 ";
constexpr const char* forbidden = "HTTP/1.1 403 ";

} // namespace

TEST_F(TourServerTest, servesTheFilesOfItsFolder) {
    serve();
    const std::string answer = get("playtour.htm");
    EXPECT_THAT(answer, StartsWith(found));
    EXPECT_THAT(answer, HasSubstr("Content-Type: text/html\r\n"));
    EXPECT_THAT(answer, HasSubstr("Content-Length: 19\r\n"));
    EXPECT_THAT(answer, HasSubstr("Cache-Control: no-store\r\n"));
    EXPECT_EQ(body(answer), "<title>Tour</title>");
    EXPECT_THAT(get("playtour.htm?stop=3"), StartsWith(found));
    EXPECT_THAT(get("page1.htm"), StartsWith(notFound));
}

TEST_F(TourServerTest, addressIsOnThisMachineAndCannotBeGuessed) {
    serve();
    EXPECT_THAT(server.addressOf("playtour.htm"),
                testing::ContainsRegex("^http://127\\.0\\.0\\.1:[0-9]+/[a-z]+/playtour\\.htm$"));
    EXPECT_GE(prefix().size(), 30U);
    TourServer other;
    ASSERT_TRUE(other.serve(scratch / "tour").ok());
    EXPECT_EQ(other.addressOf("").find(prefix()), std::string::npos);
    EXPECT_NE(other.addressOf(""), server.addressOf(""));
}

TEST_F(TourServerTest, noOtherAddressOfTheMachineAnswers) {
    serve();
    EXPECT_TRUE(Connection(port()).isOpen());
    EXPECT_FALSE(Connection(port(), "127.0.0.2").isOpen());
}

TEST_F(TourServerTest, otherPathsHaveNothing) {
    serve();
    test::writeFile(scratch / "tour/.hidden", "hidden");
    test::writeFile(scratch / "tour/goodlist.txt", "private");
    const std::string hostLine = "Host: " + host() + "\r\n";
    for (const std::string& path :
         {std::string("/"), std::string("/playtour.htm"), prefix().substr(0, prefix().size() - 1), prefix(),
          "/aaaa" + prefix() + "playtour.htm", prefix() + ".hidden", prefix() + "%2Ehidden",
          prefix() + "goodlist.txt", prefix() + "goodlist%2Etxt"}) {
        const std::string answer = request("GET " + path, hostLine);
        EXPECT_THAT(answer, StartsWith(notFound)) << path;
        EXPECT_THAT(answer, Not(HasSubstr("playtour"))) << path;
    }
}

TEST_F(TourServerTest, nothingLeadsOutOfTheFolder) {
    serve();
    std::filesystem::create_symlink(scratch / "secret.txt", scratch / "tour/out.txt");
    for (const char* const path :
         {"../secret.txt", "..%2fsecret.txt", "%2e%2e/secret.txt", "%2E%2E%2Fsecret.txt",
          "%252e%252e%252fsecret.txt", "..%5csecret.txt", "x/../../secret.txt", "%c0%ae%c0%ae/secret.txt",
          "/etc/passwd", "%2fetc%2fpasswd", "out.txt", "playtour.htm%00.txt", "%u002e%u002e/secret.txt"}) {
        const std::string answer = get(path);
        EXPECT_THAT(answer, StartsWith("HTTP/1.1 4")) << path;
        EXPECT_THAT(answer, Not(HasSubstr("secret"))) << path;
        EXPECT_THAT(answer, Not(HasSubstr("root:"))) << path;
    }
    EXPECT_THAT(request("GET " + address() + "/" + "../secret.txt", "Host: " + host() + "\r\n"),
                Not(HasSubstr("secret")));
}

TEST_F(TourServerTest, hostOfAStrangerIsRefused) {
    serve();
    const std::string line = "GET " + prefix() + "playtour.htm";
    for (const std::string& headers :
         {std::string(), std::string("Host: \r\n"), std::string("Host: stranger.example\r\n"),
          "Host: stranger.example:" + std::to_string(port()) + "\r\n",
          "Host: localhost:" + std::to_string(port()) + "\r\n", std::string("Host: 127.0.0.1\r\n"),
          "Host: " + host() + ".stranger.example\r\n",
          "Host: " + host() + "\r\nHost: stranger.example\r\n"}) {
        const std::string answer = request(line, headers);
        EXPECT_THAT(answer, StartsWith(forbidden)) << headers;
        EXPECT_THAT(answer, Not(HasSubstr("Tour"))) << headers;
    }
    EXPECT_THAT(request(line, "Host: " + host() + "\r\n"), StartsWith(found));
}

TEST_F(TourServerTest, onlyGetAndHeadAreAnswered) {
    serve();
    for (const char* const method : {"POST", "PUT", "DELETE", "OPTIONS", "PATCH"}) {
        const std::string answer = get("playtour.htm", method);
        EXPECT_THAT(answer, StartsWith("HTTP/1.1 405 ")) << method;
        EXPECT_THAT(answer, HasSubstr("Allow: GET, HEAD\r\n")) << method;
        EXPECT_THAT(answer, Not(HasSubstr("<title>"))) << method;
    }
    for (const char* const method : {"TRACE", "CONNECT", "NONSENSE"})
        EXPECT_THAT(get("playtour.htm", method), StartsWith("HTTP/1.1 4")) << method;
    EXPECT_EQ(test::readFile(scratch / "tour/playtour.htm"), "<title>Tour</title>");
}

TEST_F(TourServerTest, headHasNoBody) {
    serve();
    const std::string answer = get("playtour.htm", "HEAD");
    EXPECT_THAT(answer, StartsWith(found));
    EXPECT_THAT(answer, HasSubstr("Content-Length: 19\r\n"));
    EXPECT_THAT(answer, HasSubstr("Content-Type: text/html\r\n"));
    EXPECT_THAT(body(answer), IsEmpty());
}

TEST_F(TourServerTest, emptyAndBigFilesComeWhole) {
    serve();
    test::writeFile(scratch / "tour/empty.css", "");
    const std::string empty = get("empty.css");
    EXPECT_THAT(empty, StartsWith(found));
    EXPECT_THAT(empty, HasSubstr("Content-Length: 0\r\n"));
    EXPECT_THAT(body(empty), IsEmpty());
    std::string big;
    for (int i = 0; i < 4'000'000; ++i)
        big += static_cast<char>(i % 251);
    test::writeFile(scratch / "tour/film.mp4", big);
    EXPECT_EQ(body(get("film.mp4")), big);
}

TEST_F(TourServerTest, partOfAFileComesWhenItHasOne) {
    serve();
    const auto range = [&](const std::string& name, const std::string& wanted) {
        return request("GET " + prefix() + name, "Host: " + host() + "\r\nRange: bytes=" + wanted + "\r\n");
    };
    const std::string part = range("playtour.htm", "7-10");
    EXPECT_THAT(part, StartsWith("HTTP/1.1 206 "));
    EXPECT_THAT(part, HasSubstr("Content-Range: bytes 7-10/19\r\n"));
    EXPECT_EQ(body(part), "Tour");
    EXPECT_EQ(body(range("playtour.htm", "11-")), "</title>");
    EXPECT_EQ(body(range("playtour.htm", "-8")), "</title>");
    EXPECT_EQ(body(range("playtour.htm", "15-99")), "tle>");
    for (const char* const whole : {"19-", "99999999999-", "-99", "0-1,3-4"})
        EXPECT_EQ(body(range("playtour.htm", whole)), "<title>Tour</title>") << whole;
    EXPECT_THAT(range("playtour.htm", "5-4"), Not(HasSubstr("Content-Length: 18446")));
    test::writeFile(scratch / "tour/empty.css", "");
    EXPECT_THAT(body(range("empty.css", "0-")), IsEmpty());
    EXPECT_THAT(range("missing.htm", "500-"), StartsWith(notFound));
    EXPECT_THAT(request("GET /", "Host: stranger.example\r\nRange: bytes=500-\r\n"), StartsWith(forbidden));
    EXPECT_THAT(range("../secret.txt", "0-3"), Not(HasSubstr("secr")));
}

TEST_F(TourServerTest, namesMayHaveAnyLetters) {
    serve();
    test::writeFile(scratch / "tour/\xC3\xBC"
                              "ber uns.htm",
                    "about");
    test::writeFile(scratch / "tour/100%.htm", "percent");
    test::writeFile(scratch / "tour/a+b.htm", "plus");
    EXPECT_EQ(body(get("%C3%BCber%20uns.htm")), "about");
    EXPECT_EQ(body(get("100%25.htm")), "percent");
    EXPECT_EQ(body(get("a+b.htm")), "plus");
}

TEST_F(TourServerTest, nonsenseIsRefused) {
    serve();
    for (const std::string& bytes :
         {std::string("\r\n\r\n"), std::string("GET\r\n\r\n"), std::string("\x16\x03\x01\x02"),
          "GET " + std::string(100'000, 'a') + " HTTP/1.1\r\n\r\n"}) {
        const Connection connection(port());
        connection.send(bytes);
        EXPECT_THAT(connection.receive(), Not(HasSubstr("200"))) << bytes.substr(0, 20);
    }
    EXPECT_THAT(get("playtour.htm"), StartsWith(found));
}

TEST_F(TourServerTest, severalBrowsersAreServedAtOnce) {
    serve();
    std::vector<std::unique_ptr<Connection>> idle; // As browsers open them in advance.
    for (int i = 0; i < 6; ++i)
        idle.push_back(std::make_unique<Connection>(port()));
    std::vector<std::string> answers(8);
    std::vector<std::thread> browsers;
    for (std::string& answer : answers)
        browsers.emplace_back([&] { answer = get("playtour.htm"); });
    for (std::thread& browser : browsers)
        browser.join();
    EXPECT_THAT(answers, testing::Each(StartsWith(found)));
}

TEST_F(TourServerTest, sameFolderKeepsItsAddressAndAnotherTakesItsPlace) {
    serve();
    const std::string address = server.addressOf("playtour.htm");
    const int formerPort = port();
    serve();
    EXPECT_EQ(server.addressOf("playtour.htm"), address);
    EXPECT_EQ(server.folder(), scratch / "tour");
    test::writeFile(scratch / "other/playtour.htm", "other");
    ASSERT_TRUE(server.serve(scratch / "other").ok());
    EXPECT_EQ(body(get("playtour.htm")), "other");
    EXPECT_FALSE(Connection(formerPort).isOpen());
}

TEST_F(TourServerTest, stoppedItAnswersNoMore) {
    EXPECT_EQ(server.addressOf("playtour.htm"), "");
    serve();
    const int formerPort = port();
    server.stop();
    EXPECT_EQ(server.folder(), "");
    EXPECT_EQ(server.addressOf("playtour.htm"), "");
    EXPECT_FALSE(Connection(formerPort).isOpen());
    server.stop();
    serve();
    EXPECT_THAT(get("playtour.htm"), StartsWith(found));
}

TEST_F(TourServerTest, endsWhateverBrowsersHaveLeftOpen) {
    auto served = std::make_unique<TourServer>();
    ASSERT_TRUE(served->serve(scratch / "tour").ok());
    const std::string first = served->addressOf("");
    const int usedPort = std::stoi(first.substr(17));
    const Connection silent(usedPort);
    const Connection half(usedPort);
    half.send("GET / HTTP/1.1\r\nHost:");
    served.reset();
    EXPECT_FALSE(Connection(usedPort).isOpen());
}

TEST_F(TourServerTest, portThatCannotBeHadIsTold) {
    socketsAreRefused = true;
    const Outcome outcome = server.serve(scratch / "tour");
    socketsAreRefused = false;
    EXPECT_FALSE(outcome.ok());
    EXPECT_EQ(outcome.message(), "no port of this computer is to be had");
    EXPECT_EQ(server.addressOf("playtour.htm"), "");
    serve();
    EXPECT_THAT(get("playtour.htm"), StartsWith(found));
}

} // namespace wendmark
