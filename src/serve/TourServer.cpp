#include "serve/TourServer.h"

#include "serve/ServedFile.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <exception>
#include <httplib.h>
#include <optional>
#include <random>
#include <system_error>
#include <thread>
#include <utility>

namespace wendmark {

namespace {

constexpr const char* loopback = "127.0.0.1";
constexpr std::size_t workers = 16; // Browsers open several connections, some of which they never use.

// Seconds.
constexpr int idleTime = 1;
constexpr int readTime = 2;
constexpr int writeTime = 5;

enum Status { ok = 200, partialContent = 206, forbidden = 403, notFound = 404, methodNotAllowed = 405 };

std::string randomLetters() {
    constexpr std::size_t count = 32; // 150 bits.
    std::random_device random;
    std::uniform_int_distribution<int> letter('a', 'z');
    std::string letters(count, 'a');
    std::generate(letters.begin(), letters.end(), [&] { return static_cast<char>(letter(random)); });
    return letters;
}

/// Bytes of a file, from `begin` up to but without `end`.
struct Part {
    std::uint64_t begin;
    std::uint64_t end;
};

/// The part of a file of this size that is asked for. None: the whole file, which a server may always send.
std::optional<Part> partAskedFor(const httplib::Request& request, std::uint64_t size) {
    if (request.ranges.size() != 1)
        return std::nullopt;
    const auto [first, last] = request.ranges.front(); // -1 where nothing stands.
    const auto limited = [size](ssize_t position) {
        return std::cmp_less(position, size) ? static_cast<std::uint64_t>(position) : size;
    };
    if (first < 0 && last > 0)
        return Part{size - limited(last), size}; // The end of the file.
    if (first < 0 || limited(first) == size || (last >= 0 && last < first))
        return std::nullopt;
    return Part{limited(first), last < 0 ? size : limited(last + 1)};
}

void send(httplib::Response& response, ServedFile file, std::string_view type, std::optional<Part> asked) {
    const auto shared = std::make_shared<ServedFile>(std::move(file));
    const Part part = asked.value_or(Part{0, shared->size()});
    if (asked)
        response.set_header("Content-Range", "bytes " + std::to_string(part.begin) + "-" +
                                                 std::to_string(part.end - 1) + "/" +
                                                 std::to_string(shared->size()));
    response.status = asked ? partialContent : ok;
    response.set_header("Accept-Ranges", "bytes");
    response.set_header("Content-Length", std::to_string(part.end - part.begin));
    // The library does not hear of the length: it would apply any range to it, also one beyond its end.
    response.set_content_provider(
        std::string(type), [shared, part](std::size_t sent, httplib::DataSink& sink) {
            std::array<char, 65536> bytes{};
            const std::uint64_t left = part.end - part.begin - sent;
            if (left == 0) {
                sink.done();
                return true;
            }
            const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left, bytes.size()));
            const std::size_t count = shared->read(part.begin + sent, bytes.data(), wanted);
            return count > 0 && sink.write(bytes.data(), count);
        });
}

} // namespace

/// Serves one folder until it is stopped.
class TourServer::Service final {
public:
    explicit Service(std::string folder)
        : m_folder(std::move(folder)), m_prefix("/" + randomLetters() + "/") {
        m_server.set_keep_alive_timeout(idleTime);
        m_server.set_keep_alive_max_count(1); // A connection that is kept holds a worker up.
        m_server.set_read_timeout(readTime);
        m_server.set_write_timeout(writeTime);
        m_server.set_payload_max_length(0);
        m_server.set_socket_options([](socket_t) {}); // The port is this program's alone.
        m_server.new_task_queue = [] { return new httplib::ThreadPool(workers); };
        m_server.set_default_headers(
            {{"Cache-Control", "no-store"}, {"Referrer-Policy", "strict-origin-when-cross-origin"}});
        m_server.set_pre_routing_handler(
            [this](const httplib::Request& request, httplib::Response& response) {
                answer(request, response);
                return httplib::Server::HandlerResponse::Handled;
            });
    }

    ~Service() {
        stop();
        if (m_thread.joinable())
            m_thread.join();
    }
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    Outcome start() {
        m_port = m_server.bind_to_any_port(loopback);
        if (m_port <= 0)
            return Outcome::failure("no port of this computer is to be had");
        try {
            m_thread = std::thread([this] { listen(); });
        } catch (const std::system_error& error) {
            return Outcome::failure(std::string("no thread is to be had: ") + error.what());
        }
        // What is stopped before it has begun would never end.
        while (!m_server.is_running() && !m_ended)
            std::this_thread::yield();
        return m_ended ? Outcome::failure("the port of this computer cannot be listened to")
                       : Outcome::success();
    }

    void stop() { m_server.stop(); }

    bool hasEnded() const { return m_ended; }

    std::string addressOf(std::string_view name) const {
        return "http://" + host() + m_prefix + std::string(name);
    }

private:
    std::string host() const { return std::string(loopback) + ":" + std::to_string(m_port); }

    void listen() {
        try {
            m_server.listen_after_bind();
        } catch (const std::exception&) {
            m_server.stop(); // No threads for its workers.
        }
        m_ended = true;
    }

    void answer(const httplib::Request& request, httplib::Response& response) const {
        // Another Host line comes from a page that has got this address under a name of its own.
        if (request.get_header_value_count("Host") != 1 || request.get_header_value("Host") != host()) {
            response.status = forbidden;
        } else if (request.method != "GET" && request.method != "HEAD") {
            response.set_header("Allow", "GET, HEAD");
            response.status = methodNotAllowed;
        } else if (!request.target.starts_with(m_prefix) || !request.path.starts_with(m_prefix)) {
            response.status = notFound;
        } else {
            answerWithFile(request, response);
        }
    }

    void answerWithFile(const httplib::Request& request, httplib::Response& response) const {
        const std::string_view path = std::string_view(request.path).substr(m_prefix.size());
        std::optional<ServedFile> file = ServedFile::open(m_folder, path);
        if (!file) {
            response.status = notFound;
            return;
        }
        const std::optional<Part> part = partAskedFor(request, file->size());
        send(response, std::move(*file), contentTypeOf(path), part);
    }

    std::string m_folder;
    std::string m_prefix; ///< Of the paths that are served, with a "/" at both ends.
    int m_port = 0;
    httplib::Server m_server;
    std::atomic<bool> m_ended = false;
    std::thread m_thread;
};

TourServer::TourServer() = default;
TourServer::~TourServer() = default;

Outcome TourServer::serve(const std::string& folder) {
    if (m_service && !m_service->hasEnded() && folder == m_folder)
        return Outcome::success();
    stop();
    auto service = std::make_unique<Service>(folder);
    Outcome started = service->start();
    if (started.ok()) {
        m_service = std::move(service);
        m_folder = folder;
    }
    return started;
}

void TourServer::stop() {
    m_folder.clear();
    std::erase_if(m_ending, [](const auto& service) { return service->hasEnded(); });
    if (!m_service)
        return;
    m_service->stop();
    m_ending.push_back(std::move(m_service));
}

std::string TourServer::addressOf(std::string_view name) const {
    return m_service ? m_service->addressOf(name) : std::string();
}

} // namespace wendmark
