#include "bench/SlowDisk.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

namespace {

using namespace std::chrono_literals;

int NumberOf(const char* variable, int otherwise) {
    const char* text = std::getenv(variable);
    return text ? std::atoi(text) : otherwise;
}

std::atomic<int>& ToStall() {
    static std::atomic<int> left = NumberOf("TRACKDECK_SLOW_STALL", 0);
    return left;
}

std::atomic<int> g_nStalls = 0;
std::atomic<int> g_nOpenedByMainThread = 0;

bool IsBelowFolder(int base, const char* path) {
    static const char* const folder = std::getenv("TRACKDECK_SLOW_FOLDER");
    if (!folder || !path)
        return false;
    std::string whole = path;
    if (path[0] != '/' && base != AT_FDCWD) {
        std::array<char, 4096> target{};
        const std::string link = "/proc/self/fd/" + std::to_string(base);
        if (::readlink(link.c_str(), target.data(), target.size() - 1) > 0)
            whole = std::string(target.data()) + '/' + path;
    }
    return whole.starts_with(std::string(folder) + '/');
}

/// What opening a file costs. Folders are for free.
void Pay(int base, const char* path, int flags) {
    if ((flags & O_DIRECTORY) != 0 || !IsBelowFolder(base, path))
        return;
    static const auto delay = std::chrono::milliseconds(NumberOf("TRACKDECK_SLOW_MS", 30));
    g_nOpenedByMainThread += ::gettid() == ::getpid();
    if (--ToStall() == 0) {
        ++g_nStalls;
        std::this_thread::sleep_for(5s);
    } else {
        std::this_thread::sleep_for(delay);
    }
}

/// The function of that name that would be called without this library.
template <typename Function>
Function* Real(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

mode_t ModeOf(int flags, std::va_list rest) {
    return (flags & (O_CREAT | __O_TMPFILE)) != 0 ? va_arg(rest, mode_t) : 0;
}

} // namespace

void SlowDisk::StallAt(int n) {
    ToStall() = n;
}

int SlowDisk::CountStalls() {
    return g_nStalls;
}

int SlowDisk::OpenedByMainThread() {
    return g_nOpenedByMainThread;
}

// Each of these has a form of its own for large files, and one for checked calls.

#define OPEN(name)                                                                                 \
    int name(const char* path, int flags, ...) {                                                   \
        static auto* const real = Real<int(const char*, int, ...)>(#name);                         \
        std::va_list rest;                                                                         \
        va_start(rest, flags);                                                                     \
        const mode_t mode = ModeOf(flags, rest);                                                   \
        va_end(rest);                                                                              \
        Pay(AT_FDCWD, path, flags);                                                                \
        return real(path, flags, mode);                                                            \
    }

#define OPENAT(name)                                                                               \
    int name(int base, const char* path, int flags, ...) {                                         \
        static auto* const real = Real<int(int, const char*, int, ...)>(#name);                    \
        std::va_list rest;                                                                         \
        va_start(rest, flags);                                                                     \
        const mode_t mode = ModeOf(flags, rest);                                                   \
        va_end(rest);                                                                              \
        Pay(base, path, flags);                                                                    \
        return real(base, path, flags, mode);                                                      \
    }

#define CHECKED_OPEN(name)                                                                         \
    int name(const char* path, int flags) {                                                        \
        static auto* const real = Real<int(const char*, int)>(#name);                              \
        Pay(AT_FDCWD, path, flags);                                                                \
        return real(path, flags);                                                                  \
    }

#define FOPEN(name)                                                                                \
    FILE* name(const char* path, const char* mode) {                                               \
        static auto* const real = Real<FILE*(const char*, const char*)>(#name);                    \
        Pay(AT_FDCWD, path, 0);                                                                    \
        return real(path, mode);                                                                   \
    }

extern "C" {
OPEN(open)
OPEN(open64)
OPENAT(openat)
OPENAT(openat64)
CHECKED_OPEN(__open_2)
CHECKED_OPEN(__open64_2)
FOPEN(fopen)
FOPEN(fopen64)
}
