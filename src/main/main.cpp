// SPDX-License-Identifier: MIT
//
// Start-up: prepares the process, builds the tables and hands every line of standard input to the command loop.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <new>
#include <thread>

#include "board/attacks.h"
#include "board/piece_square.h"
#include "main/command_line.h"
#include "main/self_test.h"
#include "platform/clock.h"
#include "platform/end_process.h"
#include "platform/log.h"
#include "platform/newer_program.h"
#include "platform/platform.h"
#include "protocol/position_command.h"
#include "protocol/uci.h"
#include "search/pv.h"

namespace helvan {

namespace {

// The process's result after a faulty command line.
constexpr int usageError = -1;

// Handles commands for ever, and has the hash table's pages found meanwhile, one piece after the other. In a fast game
// the next command is never far and would have to wait for the piece: only pauses are used that are long beside it.
[[noreturn]] void serve(Session& session) {
    constexpr double pauseInPieces = 10.0;
    double pieceSeconds = 0.01; // of the last one; a slow system's at first
    for (double lastCommand = now();;) {
        if (pollCommand(session)) lastCommand = now();
        const double begin = now();
        const bool pauses = begin - lastCommand > pauseInPieces * pieceSeconds;
        if (pauses && session.tables.transpositionTable.claimPages()) pieceSeconds = now() - begin;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

void endWithoutMemory() {
    std::fprintf(stderr, "Out of memory\n");
    endProcess(1);
}

// A small search that nobody hears of, there being no hash table yet: program and tables come into the memory before
// there is a clock that runs. On one of milliseconds that makes several iterations. What it learns is forgotten:
// options that come before the first search hold for all of it.
void warmUp(SearchTables& tables, Position position) {
    constexpr int depth = 8; // half-plies
    Search search(tables);
    refreshPieceSums(position);
    Move line[pvCapacity];
    searchPv(search, position, -infiniteScore, infiniteScore, depth, 1, line);
    clearMoveHistory(tables.moveHistory);
    tables.evalCaches.evalCache.fill({});
    tables.evalCaches.etableProbes = tables.evalCaches.etableHits = 0;
}

// Zero pages until they are used.
Session& theSession() {
    static SearchTables tables;
    static GameHistory gameHistory;
    static Session session{tables, gameHistory};
    return session;
}

[[noreturn]] void playForEver(Session& session) {
    SearchTables& tables = session.tables;
    rebuildTables(tables);
    std::fprintf(stderr, "Helvan version %s\n", versionText);
    resetGame(session.gameHistory);
    warmUp(tables, session.gameHistory.current());
    if (searchSettings.hashMegabytes > 0) tables.transpositionTable.allocate(searchSettings.hashMegabytes);
    session.poll = [&session] { pollCommand(session); };
    if (!startReader(session.queue)) {
        std::fprintf(stderr, "No thread to read the input\n");
        endProcess(1);
    }
    serve(session);
}

[[noreturn]] void start(int argumentCount, const char* const* arguments) {
    claimStandardStreams();
    std::set_new_handler(endWithoutMemory);
    std::srand(static_cast<unsigned>(std::time(nullptr)));
    Session& session = theSession();
    reopenBook(session.book);
    initSlidingAttacks();
    prepareStreams();

    CommandLineSettings settings;
    if (!readCommandLine(argumentCount, arguments, settings)) {
        printUsage(arguments[0]);
        endProcess(usageError);
    }
    if (settings.help == 1) {
        printUsage(arguments[0]);
        endProcess(0);
    }
    if (settings.logFileName[0] != '\0') openLog(settings.logFileName);
    if (settings.makeTestData != 0) endProcess(makeTestData());
    if (settings.selfTest != 0) endProcess(runSelfTest());
    playForEver(session);
}

} // namespace

} // namespace helvan

int main(int argumentCount, char** arguments) {
    helvan::giveWayToNewerProgram(arguments);
    helvan::start(argumentCount, arguments);
}
