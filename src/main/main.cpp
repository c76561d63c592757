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
#include "board/fen.h"
#include "board/piece_square.h"
#include "book/book.h"
#include "eval/eval_cache.h"
#include "eval/pawn_table.h"
#include "main/command_line.h"
#include "main/self_test.h"
#include "platform/platform.h"
#include "protocol/command_queue.h"
#include "protocol/end_process.h"
#include "protocol/log.h"
#include "protocol/uci.h"
#include "search/limits.h"
#include "search/ordering.h"
#include "search/pv.h"
#include "search/rebuild.h"
#include "search/settings.h"
#include "search/transposition_table.h"

namespace helvan {

namespace {

// The process's result after a faulty command line.
constexpr int usageError = -1;

// Handles commands for ever, and has the hash table's pages found meanwhile, one piece after the other. In a fast game
// the next command is never far and would have to wait for the piece: only pauses are used that are long beside it.
[[noreturn]] void serve() {
    constexpr double pauseInPieces = 10.0;
    double pieceSeconds = 0.01; // of the last one; a slow system's at first
    for (double lastCommand = now();;) {
        if (pollCommand()) lastCommand = now();
        const double begin = now();
        const bool pauses = begin - lastCommand > pauseInPieces * pieceSeconds;
        if (pauses && transpositionTable.claimPages()) pieceSeconds = now() - begin;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

void endWithoutMemory() {
    std::fprintf(stderr, "Out of memory\n");
    endProcess(1);
}

// A small search that nobody hears of and that leaves nothing behind, there being no hash table yet: program and tables
// come into the memory before there is a clock that runs. On one of milliseconds that makes several iterations.
void warmUp() {
    constexpr int depth = 8; // half-plies
    const SearchScope scope;
    Position position;
    setupFromFen(position, startFen);
    refreshPieceSums(position);
    Move line[pvCapacity];
    searchPv(position, -infiniteScore, infiniteScore, depth, 1, line);
    clearKillers();
    clearCounterMoves();
    clearHistory();
    evalCache.fill({}); // options that come before the first search hold for all of it
    etableProbes = etableHits = 0;
}

[[noreturn]] void playForEver() {
    rebuildTables();
    std::fprintf(stderr, "Helvan version %s\n", versionText);
    warmUp();
    if (hashMegabytes > 0) transpositionTable.allocate(hashMegabytes);
    pollInput = [] { pollCommand(); };
    if (!startReader()) {
        std::fprintf(stderr, "No thread to read the input\n");
        endProcess(1);
    }
    serve();
}

[[noreturn]] void start(int argumentCount, const char* const* arguments) {
    claimStandardStreams();
    std::set_new_handler(endWithoutMemory);
    std::srand(static_cast<unsigned>(std::time(nullptr)));
    reopenBook();
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
    playForEver();
}

} // namespace

} // namespace helvan

int main(int argumentCount, char** arguments) { helvan::start(argumentCount, arguments); }
