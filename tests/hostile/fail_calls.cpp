// Loaded ahead of the system's library, this makes one call on files fail. Environment:
//   FAIL_BELOW   only calls on this folder and what lies below it count
//   FAIL_AT      number of the call that fails, from 1; 0: none does
//   FAIL_ERROR   number of the error that it reports
//   FAIL_LASTS   which later calls that change something fail, too: "all", as on a disk that is gone, or
//   those
//                of one name, such as "rename"
//   FAIL_REPORT  a file that gets the name and the path of the call that failed and, when the process ends,
//   the
//                number of calls counted
// A write that fails has written half; a file that cannot be closed has lost half of what was written.

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

template <typename Function>
Function* real(const char* name, Function*) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

/// The system's own function of this name.
#define REAL(name) real(#name, &name)

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

/// What the environment asks for, and how far the count has come.
struct Plan {
    std::string below = variable("FAIL_BELOW");
    long failAt = std::atol(variable("FAIL_AT").c_str());
    int error = std::atoi(variable("FAIL_ERROR").c_str());
    std::string lasts = variable("FAIL_LASTS");
    std::string reportPath = variable("FAIL_REPORT");
    std::atomic<long> count = 0;

    ~Plan() { report("calls " + std::to_string(count)); }

    void report(const std::string& line) const {
        const long file =
            syscall(SYS_openat, AT_FDCWD, reportPath.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
        if (file < 0)
            return;
        const std::string text = line + "\n";
        syscall(SYS_write, file, text.data(), text.size());
        syscall(SYS_close, file);
    }
};

Plan& plan() {
    static Plan made;
    return made;
}

std::string linkTarget(const std::string& link) {
    char target[PATH_MAX];
    const long length = syscall(SYS_readlinkat, AT_FDCWD, link.c_str(), target, sizeof target);
    return length > 0 ? std::string(target, static_cast<std::size_t>(length)) : std::string();
}

std::string pathOf(int file) {
    return linkTarget("/proc/self/fd/" + std::to_string(file));
}

std::string absolute(int folder, const char* path) {
    if (path == nullptr || path[0] == '/')
        return path == nullptr ? "" : path;
    return (folder == AT_FDCWD ? linkTarget("/proc/self/cwd") : pathOf(folder)) + "/" + path;
}

bool countsBelow(std::string_view path) {
    const std::string& below = plan().below;
    return !below.empty() && path.starts_with(below) &&
           (path.size() == below.size() || path[below.size()] == '/');
}

enum class Kind { looks, changes };

/// Counts a call and says whether it has to fail; errno is then set.
bool mustFail(Kind kind, const char* call, const std::string& path, const std::string& otherPath = {}) {
    const int formerError = errno;
    if (!countsBelow(path) && !countsBelow(otherPath)) {
        errno = formerError;
        return false;
    }
    Plan& p = plan();
    const long number = ++p.count;
    const bool first = number == p.failAt;
    const bool later = kind == Kind::changes && p.failAt > 0 && number > p.failAt;
    const bool fails = first || (later && (p.lasts == "all" || p.lasts == call));
    if (first)
        p.report(std::string("failed ") + (kind == Kind::changes ? "change " : "look ") + call + " " + path);
    errno = fails ? p.error : formerError;
    return fails;
}

bool opensForWriting(int flags) {
    return (flags & (O_WRONLY | O_RDWR | O_CREAT | O_TRUNC)) != 0;
}

Kind kindOf(int flags) {
    return opensForWriting(flags) ? Kind::changes : Kind::looks;
}

mode_t modeIn(va_list rest, int flags) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, mode_t) : 0;
}

bool isWritable(int file) {
    const int flags = fcntl(file, F_GETFL);
    return flags >= 0 && (flags & O_ACCMODE) != O_RDONLY;
}

void loseHalf(int file) {
    struct stat status {};
    if (isWritable(file) && REAL(fstat)(file, &status) == 0 && S_ISREG(status.st_mode))
        static_cast<void>(syscall(SYS_ftruncate, file, status.st_size / 2));
}

void markFailed(std::FILE* file) {
    file->_flags |= 0x20; // What ferror() looks at.
}

} // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = modeIn(rest, flags);
    va_end(rest);
    return mustFail(kindOf(flags), "open", absolute(AT_FDCWD, path)) ? -1 : REAL(open)(path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = modeIn(rest, flags);
    va_end(rest);
    return mustFail(kindOf(flags), "open", absolute(AT_FDCWD, path)) ? -1 : REAL(open64)(path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = modeIn(rest, flags);
    va_end(rest);
    return mustFail(kindOf(flags), "openat", absolute(folder, path))
               ? -1
               : REAL(openat)(folder, path, flags, mode);
}

int openat64(int folder, const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = modeIn(rest, flags);
    va_end(rest);
    return mustFail(kindOf(flags), "openat", absolute(folder, path))
               ? -1
               : REAL(openat64)(folder, path, flags, mode);
}

int creat(const char* path, mode_t mode) {
    return mustFail(Kind::changes, "creat", absolute(AT_FDCWD, path)) ? -1 : REAL(creat)(path, mode);
}

std::FILE* fopen(const char* path, const char* mode) {
    const Kind kind = mode[0] == 'r' && std::strchr(mode, '+') == nullptr ? Kind::looks : Kind::changes;
    return mustFail(kind, "fopen", absolute(AT_FDCWD, path)) ? nullptr : REAL(fopen)(path, mode);
}

std::FILE* fopen64(const char* path, const char* mode) {
    const Kind kind = mode[0] == 'r' && std::strchr(mode, '+') == nullptr ? Kind::looks : Kind::changes;
    return mustFail(kind, "fopen", absolute(AT_FDCWD, path)) ? nullptr : REAL(fopen64)(path, mode);
}

size_t fread(void* to, size_t size, size_t count, std::FILE* file) {
    if (!mustFail(Kind::looks, "fread", pathOf(fileno(file))))
        return REAL(fread)(to, size, count, file);
    const int error = errno;
    const size_t half = REAL(fread)(to, size, count / 2, file);
    markFailed(file);
    errno = error;
    return half;
}

size_t fwrite(const void* from, size_t size, size_t count, std::FILE* file) {
    if (!mustFail(Kind::changes, "fwrite", pathOf(fileno(file))))
        return REAL(fwrite)(from, size, count, file);
    const int error = errno;
    const size_t half = REAL(fwrite)(from, size, count / 2, file);
    markFailed(file);
    errno = error;
    return half;
}

int fflush(std::FILE* file) {
    if (file == nullptr || !mustFail(Kind::changes, "fflush", pathOf(fileno(file))))
        return REAL(fflush)(file);
    return EOF;
}

int fclose(std::FILE* file) {
    const int descriptor = fileno(file);
    const Kind kind = isWritable(descriptor) ? Kind::changes : Kind::looks;
    if (!mustFail(kind, "fclose", pathOf(descriptor)))
        return REAL(fclose)(file);
    const int error = errno;
    REAL(fflush)(file);
    loseHalf(descriptor);
    REAL(fclose)(file);
    errno = error;
    return EOF;
}

ssize_t read(int file, void* to, size_t count) {
    return mustFail(Kind::looks, "read", pathOf(file)) ? -1 : REAL(read)(file, to, count);
}

ssize_t write(int file, const void* from, size_t count) {
    return mustFail(Kind::changes, "write", pathOf(file)) ? -1 : REAL(write)(file, from, count);
}

ssize_t pwrite(int file, const void* from, size_t count, off_t at) {
    return mustFail(Kind::changes, "pwrite", pathOf(file)) ? -1 : REAL(pwrite)(file, from, count, at);
}

ssize_t sendfile(int to, int from, off_t* at, size_t count) {
    return mustFail(Kind::changes, "sendfile", pathOf(to)) ? -1 : REAL(sendfile)(to, from, at, count);
}

ssize_t copy_file_range(int from, off64_t* fromAt, int to, off64_t* toAt, size_t count, unsigned flags) {
    return mustFail(Kind::changes, "copy_file_range", pathOf(to))
               ? -1
               : REAL(copy_file_range)(from, fromAt, to, toAt, count, flags);
}

int fsync(int file) {
    return mustFail(Kind::changes, "fsync", pathOf(file)) ? -1 : REAL(fsync)(file);
}

int fdatasync(int file) {
    return mustFail(Kind::changes, "fdatasync", pathOf(file)) ? -1 : REAL(fdatasync)(file);
}

int ftruncate(int file, off_t size) noexcept {
    return mustFail(Kind::changes, "ftruncate", pathOf(file)) ? -1 : REAL(ftruncate)(file, size);
}

int close(int file) {
    const Kind kind = isWritable(file) ? Kind::changes : Kind::looks;
    if (!mustFail(kind, "close", pathOf(file)))
        return REAL(close)(file);
    const int error = errno;
    loseHalf(file);
    REAL(close)(file);
    errno = error;
    return -1;
}

int rename(const char* from, const char* to) noexcept {
    const bool fails = mustFail(Kind::changes, "rename", absolute(AT_FDCWD, to), absolute(AT_FDCWD, from));
    return fails ? -1 : REAL(rename)(from, to);
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept {
    const bool fails =
        mustFail(Kind::changes, "renameat", absolute(toFolder, to), absolute(fromFolder, from));
    return fails ? -1 : REAL(renameat)(fromFolder, from, toFolder, to);
}

int link(const char* from, const char* to) noexcept {
    const bool fails = mustFail(Kind::changes, "link", absolute(AT_FDCWD, to), absolute(AT_FDCWD, from));
    return fails ? -1 : REAL(link)(from, to);
}

int symlink(const char* target, const char* path) noexcept {
    return mustFail(Kind::changes, "symlink", absolute(AT_FDCWD, path)) ? -1 : REAL(symlink)(target, path);
}

int remove(const char* path) noexcept {
    return mustFail(Kind::changes, "remove", absolute(AT_FDCWD, path)) ? -1 : REAL(remove)(path);
}

int unlink(const char* path) noexcept {
    return mustFail(Kind::changes, "unlink", absolute(AT_FDCWD, path)) ? -1 : REAL(unlink)(path);
}

int unlinkat(int folder, const char* path, int flags) noexcept {
    return mustFail(Kind::changes, "unlinkat", absolute(folder, path)) ? -1
                                                                       : REAL(unlinkat)(folder, path, flags);
}

int rmdir(const char* path) noexcept {
    return mustFail(Kind::changes, "rmdir", absolute(AT_FDCWD, path)) ? -1 : REAL(rmdir)(path);
}

int mkdir(const char* path, mode_t mode) noexcept {
    return mustFail(Kind::changes, "mkdir", absolute(AT_FDCWD, path)) ? -1 : REAL(mkdir)(path, mode);
}

int mkdirat(int folder, const char* path, mode_t mode) noexcept {
    return mustFail(Kind::changes, "mkdirat", absolute(folder, path)) ? -1
                                                                      : REAL(mkdirat)(folder, path, mode);
}

int chmod(const char* path, mode_t mode) noexcept {
    return mustFail(Kind::changes, "chmod", absolute(AT_FDCWD, path)) ? -1 : REAL(chmod)(path, mode);
}

int fchmod(int file, mode_t mode) noexcept {
    return mustFail(Kind::changes, "fchmod", pathOf(file)) ? -1 : REAL(fchmod)(file, mode);
}

int fchmodat(int folder, const char* path, mode_t mode, int flags) noexcept {
    const bool fails = mustFail(Kind::changes, "fchmodat", absolute(folder, path));
    return fails ? -1 : REAL(fchmodat)(folder, path, mode, flags);
}

int chdir(const char* path) noexcept {
    return mustFail(Kind::looks, "chdir", absolute(AT_FDCWD, path)) ? -1 : REAL(chdir)(path);
}

int access(const char* path, int kind) noexcept {
    return mustFail(Kind::looks, "access", absolute(AT_FDCWD, path)) ? -1 : REAL(access)(path, kind);
}

int stat(const char* path, struct stat* status) noexcept {
    return mustFail(Kind::looks, "stat", absolute(AT_FDCWD, path))
               ? -1
               : real<int(const char*, struct stat*)>("stat", nullptr)(path, status);
}

int stat64(const char* path, struct stat64* status) noexcept {
    return mustFail(Kind::looks, "stat", absolute(AT_FDCWD, path))
               ? -1
               : real<int(const char*, struct stat64*)>("stat64", nullptr)(path, status);
}

int lstat(const char* path, struct stat* status) noexcept {
    return mustFail(Kind::looks, "lstat", absolute(AT_FDCWD, path)) ? -1 : REAL(lstat)(path, status);
}

int fstat(int file, struct stat* status) noexcept {
    return mustFail(Kind::looks, "fstat", pathOf(file)) ? -1 : REAL(fstat)(file, status);
}

int fstatat(int folder, const char* path, struct stat* status, int flags) noexcept {
    return mustFail(Kind::looks, "fstatat", absolute(folder, path))
               ? -1
               : REAL(fstatat)(folder, path, status, flags);
}

ssize_t readlink(const char* path, char* target, size_t size) noexcept {
    return mustFail(Kind::looks, "readlink", absolute(AT_FDCWD, path)) ? -1
                                                                       : REAL(readlink)(path, target, size);
}

char* realpath(const char* path, char* resolved) noexcept {
    return mustFail(Kind::looks, "realpath", absolute(AT_FDCWD, path)) ? nullptr
                                                                       : REAL(realpath)(path, resolved);
}

DIR* opendir(const char* path) {
    return mustFail(Kind::looks, "opendir", absolute(AT_FDCWD, path)) ? nullptr : REAL(opendir)(path);
}

DIR* fdopendir(int file) {
    return mustFail(Kind::looks, "fdopendir", pathOf(file)) ? nullptr : REAL(fdopendir)(file);
}

dirent* readdir(DIR* folder) {
    return mustFail(Kind::looks, "readdir", pathOf(dirfd(folder))) ? nullptr : REAL(readdir)(folder);
}

dirent64* readdir64(DIR* folder) {
    return mustFail(Kind::looks, "readdir", pathOf(dirfd(folder))) ? nullptr : REAL(readdir64)(folder);
}

} // extern "C"
