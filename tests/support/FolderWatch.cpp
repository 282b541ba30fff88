#include "support/FolderWatch.h"

#include <array>
#include <cstring>
#include <stdexcept>
#include <sys/inotify.h>
#include <unistd.h>

namespace wendmark::test {

FolderWatch::FolderWatch(const std::map<std::string, std::string>& folders)
    : m_queue(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    for (const auto& [name, path] : folders) {
        const int watch =
            inotify_add_watch(m_queue, path.c_str(), IN_CLOSE_WRITE | IN_MOVED_TO | IN_DELETE | IN_ONLYDIR);
        if (watch < 0)
            throw std::runtime_error("cannot watch " + path);
        m_names[watch] = name;
    }
}

FolderWatch::~FolderWatch() {
    close(m_queue);
}

std::vector<std::string> FolderWatch::events() {
    std::vector<std::string> all;
    std::array<char, 65536> block{};
    for (ssize_t size = 0; (size = read(m_queue, block.data(), block.size())) > 0;) {
        for (std::size_t at = 0; at < static_cast<std::size_t>(size);) {
            inotify_event event{};
            std::memcpy(&event, block.data() + at, sizeof event);
            if ((event.mask & IN_Q_OVERFLOW) != 0)
                throw std::runtime_error("more happened than could be recorded");
            const std::string name = event.len == 0 ? "" : block.data() + at + sizeof event;
            at += sizeof event + event.len;
            if (name.empty() || name.front() == '.' || (event.mask & IN_ISDIR) != 0)
                continue;
            const char* const kind = (event.mask & IN_DELETE) != 0 ? "-" : "+";
            all.push_back(kind + m_names.at(event.wd) + "/" + name);
        }
    }
    return all;
}

} // namespace wendmark::test
