// SPDX-License-Identifier: MIT
#include <cinttypes>
#include <cstdio>
#include <random>
#include <vector>

#include "board/attacks.h"
#include "board/fen.h"
#include "board/make_move.h"
#include "board/moves.h"
#include "board/piece_square.h"
#include "eval/eval_cache.h"
#include "eval/evaluate.h"
#include "eval/pawn_table.h"
#include "search/limits.h"
#include "search/quiesce.h"
#include "search/settings.h"
#include "tools/debug_tools.h"

namespace helvan {

namespace {

constexpr std::size_t sampledPositions = 50'000;
constexpr int longestGame = 120; // plies
constexpr int randomOpening = 8; // plies
constexpr int movesCompared = 6; // of the legal ones, drawn at random, the best by quiescence search is played

using Random = std::mt19937_64;

bool makeLegal(const Position& parent, Position& child, Move move) {
    makeMove(parent, child, move);
    if (moverLeftInCheck(child)) return false;
    child.inCheck = static_cast<std::uint16_t>(inCheck(child, child.sideToMove()));
    return true;
}

// A move that a weak player might choose; nullMove where none was found.
Move plausibleMove(const Position& position, int ply, Random& random) {
    Move moves[maxMoves];
    const int count = allMoves(position, moves);
    Move best = nullMove;
    int bestScore = -infiniteScore;
    int compared = 0;
    Move line[2];
    for (int tries = 0; count > 0 && tries < 3 * count && compared < movesCompared; ++tries) {
        const Move move = moves[random() % static_cast<unsigned>(count)];
        Position child;
        if (!makeLegal(position, child, move)) continue;
        ++compared;
        const int score = ply < randomOpening ? 0 : -quiesce(child, -infiniteScore, infiniteScore, 0, 1, line);
        if (score <= bestScore) continue;
        bestScore = score;
        best = move;
    }
    return best;
}

// Quiet positions and others from games between weak players, the same in every run.
std::vector<Position> positionsFromPlay() {
    std::vector<Position> positions;
    positions.reserve(sampledPositions);
    Random random(1);
    const SearchScope scope; // of the quiescence searches, which stop at no limit
    while (positions.size() < sampledPositions) {
        Position current;
        setupFromFen(current, startFen);
        refreshPieceSums(current);
        for (int ply = 0; ply < longestGame && positions.size() < sampledPositions; ++ply) {
            const Move move = plausibleMove(current, ply, random);
            if (move == nullMove) break;
            Position child;
            makeLegal(current, child, move);
            child.prev = nullptr;
            current = child;
            if (ply >= randomOpening && current.inCheck == 0) positions.push_back(current);
        }
    }
    return positions;
}

// The sum keeps the evaluations from being left out.
void measure(const char* what, const std::vector<Position>& positions, int repeats) {
    const std::uint64_t probes = etableProbes, hits = etableHits;
    std::int64_t sum = 0;
    const double start = now();
    for (const Position& position : positions) {
        for (int i = 0; i < repeats; ++i) sum += evaluate(position);
    }
    const double seconds = now() - start;
    const double count = static_cast<double>(positions.size()) * repeats;
    const double probed = static_cast<double>(etableProbes - probes);
    std::printf("%-28s %7.2f million a second, pawn structures found %5.1f per cent (sum %" PRId64 ")\n", what,
                count / seconds / 1e6, probed > 0 ? 100.0 * static_cast<double>(etableHits - hits) / probed : 0.0, sum);
}

} // namespace

void benchEvaluation() {
    const std::vector<Position> positions = positionsFromPlay();
    std::printf("%zu positions from play\n", positions.size());
    for (int run = 0; run < 3; ++run) {
        clearPawnTable();
        evalCache.fill({});
        measure("cold caches", positions, 1);
        evalCache.fill({});
        measure("warm pawn table", positions, 1);
        measure("warm caches", positions, 8);
    }
}

} // namespace helvan
