#pragma once

#include <csignal>
#include <sys/resource.h>
#include <sys/types.h>

namespace wendmark::test {

/// While it lives, no file of the process can grow beyond `bytes`; writing on fails as on a full disk.
class FileSizeLimit final {
public:
    explicit FileSizeLimit(rlim_t bytes);
    ~FileSizeLimit();
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit m_former{};
    void (*m_formerHandler)(int);
};

/// While it lives, a test that runs as root has the rights of nobody; otherwise it changes nothing.
class UnprivilegedUser final {
public:
    UnprivilegedUser();
    ~UnprivilegedUser();
    UnprivilegedUser(const UnprivilegedUser&) = delete;
    UnprivilegedUser& operator=(const UnprivilegedUser&) = delete;

private:
    uid_t m_former;
};

} // namespace wendmark::test
