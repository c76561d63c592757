// SPDX-License-Identifier: MIT
#include <cinttypes>
#include <cstdio>
#include <memory>
#include <random>
#include <vector>

#include "board/advance.h"
#include "board/fen.h"
#include "board/moves.h"
#include "board/piece_square.h"
#include "eval/evaluate.h"
#include "platform/clock.h"
#include "search/quiesce.h"
#include "tools/debug_tools.h"

namespace helvan {

namespace {

constexpr std::size_t sampledPositions = 50'000;
constexpr int longestGame = 120; // plies
constexpr int randomOpening = 8; // plies
constexpr int movesCompared = 6; // of the legal ones, drawn at random, the best by quiescence search is played

using Random = std::mt19937_64;

// A move that a weak player might choose; nullMove where none was found.
Move plausibleMove(Search& search, const Position& position, int ply, Random& random) {
    Move moves[maxMoves];
    const int count = allMoves(position, moves);
    Move best = nullMove;
    int bestScore = -infiniteScore;
    int compared = 0;
    Move line[2];
    for (int tries = 0; count > 0 && tries < 3 * count && compared < movesCompared; ++tries) {
        const Move move = moves[random() % static_cast<unsigned>(count)];
        Position child;
        if (!advanceLegally(position, child, move)) continue;
        ++compared;
        const int score = ply < randomOpening ? 0 : -quiesce(search, child, -infiniteScore, infiniteScore, 0, 1, line);
        if (score <= bestScore) continue;
        bestScore = score;
        best = move;
    }
    return best;
}

// Quiet positions and others from games between weak players, the same in every run.
std::vector<Position> positionsFromPlay(SearchTables& tables) {
    Search search(tables);
    std::vector<Position> positions;
    positions.reserve(sampledPositions);
    Random random(1);
    while (positions.size() < sampledPositions) {
        Position current = positionFrom(startFen);
        refreshPieceSums(current);
        for (int ply = 0; ply < longestGame && positions.size() < sampledPositions; ++ply) {
            const Move move = plausibleMove(search, current, ply, random);
            if (move == nullMove) break;
            Position child;
            advanceLegally(current, child, move);
            child.prev = nullptr;
            current = child;
            if (ply >= randomOpening && current.inCheck == 0) positions.push_back(current);
        }
    }
    return positions;
}

// The sum keeps the evaluations from being left out.
void measure(const char* what, EvalCaches& caches, const std::vector<Position>& positions, int repeats) {
    const std::uint64_t probes = caches.etableProbes, hits = caches.etableHits;
    std::int64_t sum = 0;
    const double start = now();
    for (const Position& position : positions) {
        for (int i = 0; i < repeats; ++i) sum += evaluate(position, caches);
    }
    const double seconds = now() - start;
    const double count = static_cast<double>(positions.size()) * repeats;
    const double probed = static_cast<double>(caches.etableProbes - probes);
    std::printf("%-28s %7.2f million a second, pawn structures found %5.1f per cent (sum %" PRId64 ")\n", what,
                count / seconds / 1e6,
                probed > 0 ? 100.0 * static_cast<double>(caches.etableHits - hits) / probed : 0.0, sum);
}

} // namespace

void benchEvaluation() {
    const auto tables = std::make_unique<SearchTables>();
    EvalCaches& caches = tables->evalCaches;
    const std::vector<Position> positions = positionsFromPlay(*tables);
    std::printf("%zu positions from play\n", positions.size());
    for (int run = 0; run < 3; ++run) {
        clearPawnTable(caches);
        caches.evalCache.fill({});
        measure("cold caches", caches, positions, 1);
        caches.evalCache.fill({});
        measure("warm pawn table", caches, positions, 1);
        measure("warm caches", caches, positions, 8);
    }
}

} // namespace helvan
