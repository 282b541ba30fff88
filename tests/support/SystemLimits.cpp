#include "support/SystemLimits.h"

#include <cstdlib>
#include <stdexcept>
#include <unistd.h>

namespace wendmark::test {

FileSizeLimit::FileSizeLimit(rlim_t bytes) : m_formerHandler(std::signal(SIGXFSZ, SIG_IGN)) {
    if (getrlimit(RLIMIT_FSIZE, &m_former) != 0)
        throw std::runtime_error("the file size limit is not to be had");
    const rlimit limit{bytes, m_former.rlim_max};
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
        throw std::runtime_error("the file size limit cannot be set");
}

FileSizeLimit::~FileSizeLimit() {
    // Tests after this one must not run under the limit.
    if (setrlimit(RLIMIT_FSIZE, &m_former) != 0)
        std::abort();
    std::signal(SIGXFSZ, m_formerHandler);
}

UnprivilegedUser::UnprivilegedUser() : m_former(geteuid()) {
    constexpr uid_t nobody = 65534;
    if (m_former == 0 && seteuid(nobody) != 0)
        throw std::runtime_error("the rights of root cannot be given up");
}

UnprivilegedUser::~UnprivilegedUser() {
    // Tests after this one must have the rights that they began with.
    if (seteuid(m_former) != 0)
        std::abort();
}

} // namespace wendmark::test
