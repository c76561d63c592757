// SPDX-License-Identifier: MIT
#include "main/command_line.h"

#include <cstdio>
#include <cstdlib>

#include "board/move_text.h"
#include "protocol/number_text.h"

namespace helvan {

namespace {

const CommandLineOption* findOption(const CommandLineOption* options, const char* name) {
    for (; options->name[0] != '\0'; ++options) {
        if (equalIgnoringCase(options->name, name)) return options;
    }
    return nullptr;
}

bool takesValue(ArgumentKind kind) {
    return kind == ArgumentKind::text || kind == ArgumentKind::integer || kind == ArgumentKind::real;
}

// False for a kind that does not exist.
bool store(const CommandLineOption& option, const char* value) {
    switch (option.kind) {
    case ArgumentKind::ignored: return true;
    case ArgumentKind::text:
        std::snprintf(static_cast<char*>(option.target), textArgumentCapacity, "%s", value);
        return true;
    case ArgumentKind::integer: *static_cast<int*>(option.target) = intFromText(value); return true;
    case ArgumentKind::real: *static_cast<double*>(option.target) = std::strtod(value, nullptr); return true;
    case ArgumentKind::flag: *static_cast<int*>(option.target) = 1; return true;
    }
    return false;
}

} // namespace

bool readCommandLine(int argumentCount, const char* const* arguments, const CommandLineOption* options) {
    for (int i = 1; i < argumentCount; ++i) {
        const char* argument = arguments[i];
        if (argument[0] != '-') {
            std::fprintf(stderr, "Error in command line processing.  option expected at argument %d\n", i);
            return false;
        }
        const CommandLineOption* option = findOption(options, argument + 1);
        if (option == nullptr) {
            std::fprintf(stderr, "Error. option %s not found.\n", argument);
            return false;
        }
        const char* value = "";
        if (takesValue(option->kind)) {
            if (++i >= argumentCount) {
                std::fprintf(stderr, "Error.  No argument.\n");
                return false;
            }
            value = arguments[i];
        }
        if (!store(*option, value)) {
            std::fprintf(stderr, "Error.  Do not understand command line switch.");
            return false;
        }
    }
    return true;
}

bool readCommandLine(int argumentCount, const char* const* arguments, CommandLineSettings& settings) {
    const CommandLineOption options[] = {{"test", &settings.selfTest, ArgumentKind::flag},
                                         {"makeTestData", &settings.makeTestData, ArgumentKind::flag},
                                         {"log", settings.logFileName, ArgumentKind::text},
                                         {"cpu", &settings.cpu, ArgumentKind::integer},
                                         {"pgn", &settings.pgn, ArgumentKind::flag},
                                         {"quiet", nullptr, ArgumentKind::ignored},
                                         {"", nullptr, ArgumentKind::ignored}};
    return readCommandLine(argumentCount, arguments, options);
}

void printUsage(const char* programPath) {
    std::fprintf(stderr, "\nusage: %s {options} \n\n", programPath);
    std::fprintf(stderr, "  -log FILE      log file name\n");
    std::fprintf(stderr, "  -help          display this help message\n");
    std::fprintf(stderr, "\n");
}

} // namespace helvan
