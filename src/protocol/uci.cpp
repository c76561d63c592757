// SPDX-License-Identifier: MIT
#include "protocol/uci.h"

#include <cstdio>
#include <cstring>
#include <optional>
#include <utility>

#include "platform/end_process.h"
#include "platform/log.h"
#include "platform/platform.h"
#include "protocol/command_queue.h"
#include "protocol/go_command.h"
#include "protocol/options.h"
#include "protocol/position_command.h"
#include "protocol/set_option.h"
#include "protocol/words.h"
#include "search/stopping.h"

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
void printReady(Session& session) {
    constexpr double longestWait = 0.9; // seconds
    if (session.running.empty() && session.tableIsNew) {
        session.tableIsNew = false;
        const double end = now() + longestWait;
        while (!lineWaits(session.queue) && now() < end && session.tables.transpositionTable.claimPages()) {
        }
    }
    std::printf("readyok\n");
    std::fflush(stdout);
}

// The running search and every one that it interrupted.
void stopAll(Session& session) {
    for (Search* search : session.running) search->stopSearch = true;
}

// Of the running search.
void endPondering(Session& session) {
    if (!session.running.empty()) session.running.back()->pondering = false;
}

struct Command {
    const char* word;
    std::uint32_t hash;
    void (*run)(Session&, const Words&);
};

constexpr Command command(const char* word, void (*run)(Session&, const Words&)) {
    return {word, commandHash(word), run};
}

constexpr Command commands[] = {
    command("uci", [](Session&, const Words&) { printIdentification(); }),
    command("isready", [](Session& session, const Words&) { printReady(session); }),
    command("quit", [](Session&, const Words&) { endProcess(0); }),
    command("stop", [](Session& session, const Words&) { stopAll(session); }),
    command("ponderhit", [](Session& session, const Words&) { endPondering(session); }),
    command("position", positionCommand),
    command("setoption", setOptionCommand),
    command("go", goCommand),
};

void dispatch(Session& session, const Words& words) {
    const std::uint32_t hash = commandHash(words[0]);
    for (const Command& candidate : commands) {
        // Other words have the same hash; only the command itself is meant.
        if (candidate.hash == hash && words.is(0, candidate.word)) return candidate.run(session, words);
    }
}

} // namespace

void handleLine(Session& session, std::string line) {
    line.resize(std::strcspn(line.c_str(), "\n\f\r"));
    if (line.empty()) return;
    logWrite("uci -> %s\n", line.c_str());
    const Words words(std::move(line));
    if (words.count == 0) return;
    logWrite("cmd = %s\n", words[0]);
    dispatch(session, words);
}

bool pollCommand(Session& session) {
    if (std::ferror(stdout) != 0 && !outputIsOpen()) endProcess(0);
    std::optional<std::string> line = takeLine(session.queue);
    if (!line) return false;
    handleLine(session, *std::move(line));
    return true;
}

} // namespace helvan
