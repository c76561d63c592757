// SPDX-License-Identifier: MIT
#include "platform/platform.h"

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <sys/stat.h>

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <poll.h>
#include <pthread.h>
#include <unistd.h>
#endif

namespace helvan {

#ifdef _WIN32

bool seekFile(std::FILE* file, std::int64_t offset, int origin) { return _fseeki64(file, offset, origin) == 0; }
std::int64_t tellFile(std::FILE* file) { return _ftelli64(file); }

void claimStandardStreams() {} // no such danger: handles are not small numbers handed out in order

std::size_t readInput(char* buffer, std::size_t size) {
    const int count = _read(_fileno(stdin), buffer, static_cast<unsigned>(size));
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

#else

bool seekFile(std::FILE* file, std::int64_t offset, int origin) { return fseeko(file, offset, origin) == 0; }
std::int64_t tellFile(std::FILE* file) { return ftello(file); }

void claimStandardStreams() {
    int taken = 0;
    do {
        taken = open("/dev/null", O_RDONLY); // the smallest number that is free
    } while (taken >= 0 && taken <= STDERR_FILENO);
    if (taken >= 0) close(taken);
}

std::size_t readInput(char* buffer, std::size_t size) {
    for (;;) {
        const ssize_t count = read(STDIN_FILENO, buffer, size);
        if (count >= 0) return static_cast<std::size_t>(count);
        if (errno != EINTR) return 0;
    }
}

namespace {

// Some starters leave their own end's way of waiting to the process.
void makeBlocking(int descriptor) {
    const int flags = fcntl(descriptor, F_GETFL);
    if (flags >= 0 && (flags & O_NONBLOCK) != 0) fcntl(descriptor, F_SETFL, flags & ~O_NONBLOCK);
}

// Who reads standard error or the log may go away: only without standard output is there nobody to play for.
void endIfOutputIsBroken(int signal) {
    pollfd output{STDOUT_FILENO, 0, 0};
    if (poll(&output, 1, 0) < 1) return;
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

} // namespace

#endif

bool startThread(ThreadJob& job) {
#ifdef _WIN32
    const auto run = [](void* started) -> DWORD {
        ThreadJob& own = *static_cast<ThreadJob*>(started);
        own.work(own);
        return 0;
    };
    const HANDLE thread = CreateThread(nullptr, 0, run, &job, 0, nullptr);
    if (thread == nullptr) return false;
    CloseHandle(thread);
#else
    const auto run = [](void* started) -> void* {
        ThreadJob& own = *static_cast<ThreadJob*>(started);
        own.work(own);
        return nullptr;
    };
    pthread_t thread;
    if (pthread_create(&thread, nullptr, run, &job) != 0) return false;
    pthread_detach(thread);
#endif
    return true;
}

void prepareStreams() {
#ifdef _WIN32
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stdin), _O_BINARY);
#else
    std::signal(SIGPIPE, endIfOutputIsBroken); // some front ends ignore it and hand that on
    std::signal(SIGXFSZ, SIG_IGN);             // a file grown to its limit is like a full disk
    makeBlocking(STDIN_FILENO);
    makeBlocking(STDOUT_FILENO);
#endif
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    std::setvbuf(stdin, nullptr, _IONBF, 0);
    std::fflush(nullptr);
}

bool isRegularFile(const char* name) {
    struct stat properties;
    return stat(name, &properties) == 0 && (properties.st_mode & S_IFMT) == S_IFREG;
}

bool outputIsOpen() {
    std::clearerr(stdout);
    errno = 0;
    // An empty line says nothing in the protocol.
    const bool written = std::fputc('\n', stdout) != EOF && std::fflush(stdout) == 0;
    const bool leadsNowhere = errno == EPIPE || errno == EBADF || errno == EIO || errno == EINVAL;
    return written || !leadsNowhere;
}

} // namespace helvan
