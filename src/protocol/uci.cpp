// SPDX-License-Identifier: MIT
#include "protocol/uci.h"

#include <cstdio>
#include <cstring>

#include "protocol/command_queue.h"
#include "protocol/end_process.h"
#include "protocol/go_command.h"
#include "protocol/log.h"
#include "protocol/options.h"
#include "protocol/position_command.h"
#include "protocol/words.h"
#include "search/limits.h"

namespace helvan {

namespace {

void printIdentification() {
    std::printf("id name %s %s\n", engineName, versionText);
    std::printf("id author %s\n", authorText);
    printOptions();
    std::printf("uciok\n");
    std::fflush(stdout);
}

void dispatch(const Words& words) {
    switch (commandHash(words[0])) {
    case commandHash("uci"): printIdentification(); break;
    case commandHash("isready"):
        std::printf("readyok\n");
        std::fflush(stdout);
        break;
    case commandHash("quit"): endProcess(0);
    case commandHash("stop"): stopAllSearches(); break;
    case commandHash("ponderhit"): searchState.pondering = 0; break;
    case commandHash("position"): positionCommand(words); break;
    case commandHash("go"): goCommand(words); break;
    default: break;
    }
}

} // namespace

void handleLine(const char* line) {
    char command[lineCapacity];
    const std::size_t length = strnlen(line, lineCapacity - 1);
    std::memcpy(command, line, length);
    command[length] = '\0';
    command[std::strcspn(command, "\n\f\r")] = '\0';
    if (command[0] == '\0') return;
    logWrite("uci -> %s\n", command);
    const Words words(command);
    if (words.count == 0) return;
    logWrite("cmd = %s\n", words[0]);
    dispatch(words);
}

void pollCommand() {
    static bool first = true;
    if (first) {
        first = false;
        resetGame();
    }
    char line[lineCapacity];
    if (takeLine(commandQueue(), line)) handleLine(line);
}

} // namespace helvan
