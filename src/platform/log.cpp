// SPDX-License-Identifier: MIT
#include "platform/log.h"

#include <cstdarg>
#include <cstdio>

namespace helvan {

namespace {

std::FILE* logStream = nullptr;

} // namespace

void openLog(const char* fileName) {
    logStream = std::fopen(fileName, "a+");
    if (logStream != nullptr) std::setvbuf(logStream, nullptr, _IONBF, 0);
}

bool logIsOpen() { return logStream != nullptr; }

void logWrite(const char* format, ...) {
    if (logStream == nullptr) return;
    std::va_list arguments;
    va_start(arguments, format);
    std::vfprintf(logStream, format, arguments);
    va_end(arguments);
    std::fflush(logStream);
}

void flushLog() {
    if (logStream != nullptr) std::fflush(logStream);
}

} // namespace helvan
