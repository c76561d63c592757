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
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace helvan {

#ifdef _WIN32

void* allocateZeroed(std::size_t bytes) {
    return VirtualAlloc(nullptr, bytes, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
}

void freeZeroed(void* block, std::size_t) {
    if (block != nullptr) VirtualFree(block, 0, MEM_RELEASE);
}

bool seekFile(std::FILE* file, std::int64_t offset, int origin) { return _fseeki64(file, offset, origin) == 0; }
std::int64_t tellFile(std::FILE* file) { return _ftelli64(file); }

void claimStandardStreams() {} // no such danger: handles are not small numbers handed out in order

#else

void* allocateZeroed(std::size_t bytes) {
    void* block = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (block == MAP_FAILED) return nullptr;
#ifdef MADV_HUGEPAGE
    madvise(block, bytes, MADV_HUGEPAGE); // a wish: the table works without
#endif
    return block;
}

void freeZeroed(void* block, std::size_t bytes) {
    if (block != nullptr) munmap(block, bytes);
}

bool seekFile(std::FILE* file, std::int64_t offset, int origin) { return fseeko(file, offset, origin) == 0; }
std::int64_t tellFile(std::FILE* file) { return ftello(file); }

void claimStandardStreams() {
    int taken = 0;
    do {
        taken = open("/dev/null", O_RDONLY); // the smallest number that is free
    } while (taken >= 0 && taken <= STDERR_FILENO);
    if (taken >= 0) close(taken);
}

#endif

void prepareStreams() {
#ifdef _WIN32
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stdin), _O_BINARY);
#else
    std::signal(SIGPIPE, SIG_DFL); // some front ends ignore it and hand that on
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
    return written || errno == ENOSPC;
}

} // namespace helvan
