// SPDX-License-Identifier: MIT
//
// What a person wants to see while working on the engine.
#include <cinttypes>
#include <cstdio>
#include <cstring>

#include "board/advance.h"
#include "board/apply_move.h"
#include "board/attacks.h"
#include "board/display.h"
#include "board/exchange.h"
#include "board/fen.h"
#include "board/move_picker.h"
#include "board/move_text.h"
#include "board/perft.h"
#include "board/piece_square.h"
#include "board/validity.h"
#include "eval/tables.h"
#include "platform/clock.h"
#include "protocol/number_text.h"
#include "tools/debug_tools.h"

namespace helvan {

namespace {

constexpr int usageError = 2;

struct Arguments {
    int count;
    char** values;

    const char* operator[](int index) const { return values[index]; }
};

int showPerft(const Arguments& arguments) {
    PerftCounters counters;
    std::printf("%" PRIu64 "\n", perft(positionFrom(arguments[0]), intFromText(arguments[1]), counters));
    return 0;
}

int showDivide(const Arguments& arguments) {
    const Position position = positionFrom(arguments[0]);
    const int depth = intFromText(arguments[1]);
    std::uint64_t total = 0;
    PerftCounters counters;
    MovePicker picker(position, PickerKind::everyMove);
    for (Move move = nextMove(picker); move > 0 && depth > 0; move = nextMove(picker)) {
        Position child;
        if (!advanceLegally(position, child, move)) continue;
        const std::uint64_t leaves = perft(child, depth - 1, counters);
        total += leaves;
        std::printf("%s %" PRIu64 "\n", moveText(move).c_str(), leaves);
    }
    std::printf("total %" PRIu64 "\n", total);
    return 0;
}

int showBoard(const Arguments& arguments) {
    const Position position = positionFrom(arguments[0]);
    printBoard(position);
    std::printf("key %016" PRIx64 "  pawn key %016" PRIx64 "  material key %016" PRIx64 "\n", position.key,
                position.pawnKey, position.materialKey);
    return 0;
}

int showExchange(const Arguments& arguments) {
    const Position position = positionFrom(arguments[0]);
    Position child;
    if (applyMoveText(position, child, arguments[1]) == 0) {
        std::fprintf(stderr, "%s is no move of this position.\n", arguments[1]);
        return 1;
    }
    std::printf("%d\n", see(position, child.lastMove));
    return 0;
}

int showEvaluationOf(const Arguments& arguments) {
    Position position = positionFrom(arguments[0]);
    if (unplayableReason(position) != nullptr) return 1;
    refreshPieceSums(position);
    showEvaluation(position);
    return 0;
}

int benchEval(const Arguments& /*none*/) {
    benchEvaluation();
    return 0;
}

int bench(const Arguments& arguments) {
    constexpr int usualDepth = 11;
    const int depth = arguments.count > 0 ? intFromText(arguments[0]) : usualDepth;
    if (depth < 1) return usageError; // a FILE without its DEPTH, perhaps
    return benchSearch(depth, arguments.count > 1 ? arguments[1] : nullptr) ? 0 : 1;
}

int benchPerft(const Arguments& arguments) {
    const int depth = arguments.count > 0 ? intFromText(arguments[0]) : 6;
    const Position position = positionFrom(startFen);
    PerftCounters counters;
    const double start = now();
    const std::uint64_t leaves = perft(position, depth, counters);
    const double seconds = now() - start;
    std::printf("perft %d of the start position: %" PRIu64 " leaves in %.3f s, %.1f million a second\n", depth, leaves,
                seconds, perSecond(leaves, seconds) / 1e6);
    return 0;
}

struct Tool {
    const char* name;
    const char* parameters;
    const char* answer;
    int minArguments;
    int maxArguments;
    int (*run)(const Arguments&); // answers the exit status; usageError shows the usage
};

constexpr Tool tools[] = {
    {"perft", "FEN DEPTH", "the number of legal move sequences", 2, 2, showPerft},
    {"divide", "FEN DEPTH", "the same for each first move", 2, 2, showDivide},
    {"board", "FEN", "the position and its keys", 1, 1, showBoard},
    {"see", "FEN MOVE", "the move's static exchange value in centipawns", 2, 2, showExchange},
    {"eval", "FEN", "the evaluation, term by term", 1, 1, showEvaluationOf},
    {"bench", "[DEPTH [FILE]]", "the search's signature and speed", 0, 2, bench},
    {"bench-perft", "[DEPTH]", "the speed of move generation", 0, 1, benchPerft},
    {"bench-eval", "", "the speed of the evaluation", 0, 0, benchEval},
};

int printUsage(const char* programPath) {
    std::fprintf(stderr, "usage: %s TOOL ...\n\n", programPath);
    for (const Tool& tool : tools) std::fprintf(stderr, "  %-12s %-14s  %s\n", tool.name, tool.parameters, tool.answer);
    return usageError;
}

int runTool(int argumentCount, char** arguments) {
    initSlidingAttacks();
    initAllEvaluation();
    if (argumentCount < 2) return printUsage(arguments[0]);
    const Arguments rest{argumentCount - 2, arguments + 2};
    for (const Tool& tool : tools) {
        if (std::strcmp(tool.name, arguments[1]) != 0) continue;
        if (rest.count < tool.minArguments || rest.count > tool.maxArguments) break;
        const int status = tool.run(rest);
        if (status == usageError) break;
        return status;
    }
    return printUsage(arguments[0]);
}

} // namespace

} // namespace helvan

int main(int argumentCount, char** arguments) { return helvan::runTool(argumentCount, arguments); }
