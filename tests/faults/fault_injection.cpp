// Counts the calls by which a process reads and writes files, or its allocations, and does
// something at one of them. What, the environment says:
//   QZ_FAULT=KIND:NUMBER:ERROR   KIND "call" or "allocation"; the call of this number, from 1,
//   fails
//                                with this errno; error 0 kills the process there
//   QZ_FAULT_COUNT=FILE          how many calls and allocations there were, written at the end
#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

struct Plan {
    bool isAllocation = false;
    long number = 0;
    int error = 0;
};

Plan g_plan;
std::atomic<long> g_calls{0}, g_allocations{0};
bool g_isReady = false;

// Number 0: nothing fails.
__attribute__((constructor)) void ReadPlan() {
    if (const char* const text = std::getenv("QZ_FAULT")) {
        g_plan.isAllocation = std::strncmp(text, "allocation:", 11) == 0;
        const char* const number = std::strchr(text, ':');
        if (number != nullptr) std::sscanf(number + 1, "%ld:%d", &g_plan.number, &g_plan.error);
    }
    g_isReady = true;
}

__attribute__((destructor)) void WriteCounts() {
    const char* const path = std::getenv("QZ_FAULT_COUNT");
    if (path == nullptr) return;
    g_isReady = false;
    if (std::FILE* const file = std::fopen(path, "w")) {
        std::fprintf(file, "%ld %ld\n", g_calls.load(), g_allocations.load());
        std::fclose(file);
    }
}

// True when this call is the one that fails; errno is set then.
bool Fails(std::atomic<long>& count, bool isAllocation) {
    if (!g_isReady) return false;
    const long number = ++count;
    if (g_plan.isAllocation != isAllocation || number != g_plan.number) return false;
    if (g_plan.error == 0) ::raise(SIGKILL);
    errno = g_plan.error;
    return true;
}
bool CallFails() { return Fails(g_calls, false); }

template <class Function>
Function* Next(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

// Only what the program does to files; the standard streams are the test's own.
bool IsFile(int fd) { return fd > STDERR_FILENO; }

}  // namespace

#define NEXT(name) static auto* const next = Next<decltype(::name)>(#name)

extern "C" {

int open(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    NEXT(open);
    return CallFails() ? -1 : next(path, flags, mode);
}
ssize_t read(int fd, void* bytes, size_t size) {
    NEXT(read);
    return IsFile(fd) && CallFails() ? -1 : next(fd, bytes, size);
}
ssize_t writev(int fd, const iovec* parts, int count) {
    NEXT(writev);
    return IsFile(fd) && CallFails() ? -1 : next(fd, parts, count);
}
int fstat(int fd, struct stat* info) noexcept {
    NEXT(fstat);
    return IsFile(fd) && CallFails() ? -1 : next(fd, info);
}
int fsync(int fd) {
    NEXT(fsync);
    return CallFails() ? -1 : next(fd);
}
int fchmod(int fd, mode_t mode) noexcept {
    NEXT(fchmod);
    return CallFails() ? -1 : next(fd, mode);
}
int fchown(int fd, uid_t user, gid_t group) noexcept {
    NEXT(fchown);
    return CallFails() ? -1 : next(fd, user, group);
}
int rename(const char* from, const char* to) noexcept {
    NEXT(rename);
    return CallFails() ? -1 : next(from, to);
}
int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept {
    NEXT(linkat);
    return CallFails() ? -1 : next(fromFolder, from, toFolder, to, flags);
}
int close(int fd) {
    NEXT(close);
    if (!IsFile(fd) || !CallFails()) return next(fd);
    next(fd);  // gone all the same, as after a late error of a network's file system
    return -1;
}

void* malloc(size_t size) noexcept {
    static auto* const next = Next<void*(size_t) noexcept>("malloc");
    return Fails(g_allocations, true) ? nullptr : next(size);
}

}  // extern "C"
