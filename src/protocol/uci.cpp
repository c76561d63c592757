// SPDX-License-Identifier: MIT
#include "protocol/uci.h"

#include <cstdio>
#include <cstring>

#include "platform/platform.h"
#include "protocol/command_queue.h"
#include "protocol/end_process.h"
#include "protocol/go_command.h"
#include "protocol/log.h"
#include "protocol/options.h"
#include "protocol/position_command.h"
#include "protocol/set_option.h"
#include "protocol/words.h"
#include "search/limits.h"
#include "search/transposition_table.h"

namespace helvan {

namespace {

void printIdentification() {
    std::printf("id name %s %s\n", engineName, versionText);
    std::printf("id author %s\n", authorText);
    printOptions();
    std::printf("uciok\n");
    std::fflush(stdout);
}

// Whoever asks an idle engine will wait, once for each table: the moment for what takes its time.
void printReady() {
    constexpr double longestWait = 0.9; // seconds
    if (!isSearching() && transpositionTable.isNew) {
        transpositionTable.isNew = false;
        const double end = now() + longestWait;
        while (!lineWaits(commandQueue()) && now() < end && transpositionTable.claimPages()) {
        }
    }
    std::printf("readyok\n");
    std::fflush(stdout);
}

struct Command {
    const char* word;
    std::uint32_t hash;
    void (*run)(const Words&);
};

constexpr Command command(const char* word, void (*run)(const Words&)) { return {word, commandHash(word), run}; }

constexpr Command commands[] = {
    command("uci", [](const Words&) { printIdentification(); }),
    command("isready", [](const Words&) { printReady(); }),
    command("quit", [](const Words&) { endProcess(0); }),
    command("stop", [](const Words&) { stopAllSearches(); }),
    command("ponderhit", [](const Words&) { searchState.pondering = 0; }),
    command("position", positionCommand),
    command("setoption", setOptionCommand),
    command("go", goCommand),
};

void dispatch(const Words& words) {
    const std::uint32_t hash = commandHash(words[0]);
    for (const Command& candidate : commands) {
        // Other words have the same hash; only the command itself is meant.
        if (candidate.hash == hash && words.is(0, candidate.word)) return candidate.run(words);
    }
}

} // namespace

void handleLine(const char* line) {
    char command[lineCapacity];
    std::snprintf(command, lineCapacity, "%s", line);
    command[std::strcspn(command, "\n\f\r")] = '\0';
    if (command[0] == '\0') return;
    logWrite("uci -> %s\n", command);
    const Words words(command);
    if (words.count == 0) return;
    logWrite("cmd = %s\n", words[0]);
    dispatch(words);
}

bool pollCommand() {
    static bool first = true;
    if (first) {
        first = false;
        resetGame();
    }
    if (std::ferror(stdout) != 0 && !outputIsOpen()) endProcess(0);
    char line[lineCapacity];
    if (!takeLine(commandQueue(), line)) return false;
    handleLine(line);
    return true;
}

} // namespace helvan
