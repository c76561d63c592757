// SPDX-License-Identifier: MIT
#include "search/think.h"

#include <algorithm>
#include <vector>

#include "board/bits.h"
#include "board/legal_moves.h"
#include "board/piece_square.h"
#include "book/book.h"
#include "platform/log.h"
#include "search/margins.h"
#include "search/report.h"
#include "search/root.h"
#include "search/stopping.h"

namespace helvan {

namespace {

// What one search knows from iteration to iteration.
struct Iterations {
    explicit Iterations(Search& of) : search(of) {}

    Search& search;
    RootSearch root;
    std::vector<Move> wanted; // the root moves to search
    int depth = 1;
    PvLine lines[mostPvs];
    int lineCount = 0;
    int scores[maxDepth + 1] = {};     // of the first line, by iteration
    Move bestMoves[maxDepth + 1] = {}; // the same
    double bestMoveShare = 0.5;        // of the nodes below the best move, averaged over iterations

    int depthLimit() const {
        const int asked = search.limits.depth;
        return asked < 1 || asked > maxDepth ? maxDepth : asked;
    }
};

// The game is copied: a command in the middle of the search may replace it.
void copyGamePath(Search& search, Position& root) {
    std::vector<Position>& path = search.gamePath;
    const Position* ancestor = root.prev;
    for (int plies = root.fifty; plies > 0 && ancestor != nullptr; --plies, ancestor = ancestor->prev) {
        path.push_back(*ancestor);
    }
    root.prev = path.empty() ? nullptr : path.data();
    for (std::size_t i = 0; i < path.size(); ++i) path[i].prev = i + 1 < path.size() ? &path[i + 1] : nullptr;
}

std::vector<Move> everyLegalMove(const Position& root) {
    std::vector<Move> moves(maxMoves);
    moves.resize(static_cast<std::size_t>(legalMoves(root, moves.data())));
    return moves;
}

// What a search may not take over from the one before it.
void prepareTables(Search& search) {
    SearchTables& tables = search.tables;
    const bool forget = search.limits.forget || !tables.usedBefore;
    if (forget) clearMoveHistory(tables.moveHistory);
    if (search.limits.hashOff) return; // nor does it count as one that leaves something behind
    if (forget) tables.transpositionTable.clear();
    tables.usedBefore = true;
    tables.transpositionTable.newGeneration();
}

// About the last score, as wide as the scores have swung of late.
Window firstWindow(const Iterations& iterations) {
    constexpr int firstNarrow = 5; // iterations
    const int depth = iterations.depth;
    if (depth < firstNarrow || iterations.search.limits.ranks > 1) return fullWindow;
    const int* const scores = iterations.scores;
    const int s0 = scores[depth - 1], s1 = scores[depth - 2], s2 = scores[depth - 3];
    const int half = maximum((absolute(s1 - s2) + absolute(s0 - s1)) / 2, aspirationMin);
    return {maximum(-infiniteScore, s0 - half), minimum(infiniteScore, s0 + half)};
}

// A window that failed is made half as wide again beyond the failing score.

Window belowFailure(int score, Window window) {
    const int alpha = (2 * (score + 1) - 3 * window.width()) / 2;
    return {maximum(-infiniteScore, alpha), minimum(infiniteScore, score + 1)};
}

Window aboveFailure(int score, Window window) {
    const int beta = (2 * (score - 1) + 3 * window.width()) / 2;
    return {maximum(-infiniteScore, score - 1), minimum(infiniteScore, beta)};
}

// Searches the root, and again with a window moved and widened until the score lies inside. Where the score jumps
// from one side to the other the full window decides.
int searchWindows(Iterations& iterations) {
    Window window = firstWindow(iterations);
    const auto searchOnce = [&] { return searchRoot(iterations.search, iterations.root, iterations.depth, window); };
    const auto failsLow = [&](int score) { return score <= window.alpha && window.alpha > -infiniteScore; };
    const auto failsHigh = [&](int score) { return score >= window.beta && window.beta < infiniteScore; };
    const auto stopped = [&] { return iterations.search.stopSearch; };
    int score = searchOnce();
    if (stopped()) return score;
    if (failsLow(score)) {
        while (failsLow(score) && !stopped()) {
            window = belowFailure(score, window);
            score = searchOnce();
        }
        if (stopped() || !failsHigh(score)) return score;
    } else if (failsHigh(score)) {
        while (failsHigh(score) && !stopped()) {
            window = aboveFailure(score, window);
            score = searchOnce();
        }
        if (stopped() || !failsLow(score)) return score;
    } else {
        return score;
    }
    window = fullWindow;
    return searchOnce();
}

// When the next iteration may still begin: the sooner, the more of the search goes into one steady best move.
void moveSoftDeadline(Iterations& iterations, Move bestMove) {
    constexpr int firstApplied = 5; // iterations
    constexpr double steadyScale = 2.5, mostSteadyPercent = 80.0, forgetting = 0.9;
    constexpr int unstableLimitPercent = 120;
    Search& search = iterations.search;
    const double goal = search.limits.goalSeconds;
    if (search.limits.fixedTime || iterations.depth < firstApplied || goal >= unlimitedSeconds) return;
    double factor = unstableLimitPercent / 100.0;
    if (bestMove == iterations.bestMoves[iterations.depth - 1]) {
        factor = std::min((102.0 - 100.0 * iterations.bestMoveShare) * steadyScale, mostSteadyPercent) / 100.0;
    } else {
        iterations.bestMoveShare *= forgetting;
    }
    search.softDeadline = search.searchStartTime + factor * goal;
}

void updateBestMoveShare(Iterations& iterations) {
    constexpr double newWeight = 0.25;
    const NodeShares& shares = iterations.root.shares;
    const double share = static_cast<double>(shares.best) / static_cast<double>(shares.best + shares.others + 1);
    iterations.bestMoveShare = newWeight * share + (1.0 - newWeight) * iterations.bestMoveShare;
}

void storeLine(Iterations& iterations, int rank, int score) {
    PvLine& line = iterations.lines[rank];
    line.score = score;
    line.milliseconds = searchMilliseconds(iterations.search);
    line.nodes = iterations.search.nodes;
    std::copy(std::begin(iterations.root.pv), std::end(iterations.root.pv), line.pv);
    iterations.lineCount = maximum(iterations.lineCount, rank + 1);
}

// Searches the ranks of one iteration, each without the moves of those before it.
void searchRanks(Iterations& iterations) {
    RootSearch& root = iterations.root;
    root.wanted = iterations.wanted;
    root.shares = {};
    for (int rank = 0; rank < iterations.search.limits.ranks; ++rank) {
        const int score = searchWindows(iterations);
        if (iterations.search.stopSearch) return;
        if (rank == 0) {
            updateBestMoveShare(iterations);
            moveSoftDeadline(iterations, root.pv[0]);
        }
        storeLine(iterations, rank, score);
        std::erase(root.wanted, root.pv[0]);
        // The first iteration has one rank: it makes the list of moves, and counts nodes from 0.
        if (root.wanted.empty() || iterations.depth == 1) return;
    }
}

void reportRanks(Iterations& iterations) {
    // Each rank takes the best of those behind it; equals keep their order.
    PvLine* const end = iterations.lines + iterations.lineCount;
    for (PvLine* first = iterations.lines; first != end; ++first) {
        PvLine* const best =
            std::max_element(first, end, [](const PvLine& a, const PvLine& b) { return a.score < b.score; });
        std::rotate(first, best, best + 1);
    }
    if (iterations.search.limits.ranks == 1) return;
    for (int rank = 0; rank < iterations.lineCount; ++rank) {
        iterations.search.reporter.rankFound(rank + 1, iterations.depth, iterations.lines[rank]);
    }
}

// Answers whether another iteration is to follow.
bool finishIteration(Iterations& iterations) {
    Search& search = iterations.search;
    reportRanks(iterations);
    if (search.stopSearch) {
        logWrite("search aborted\n");
        return false;
    }
    const int depth = iterations.depth;
    const PvLine& first = iterations.lines[0];
    iterations.scores[depth] = first.score;
    iterations.bestMoves[depth] = first.pv[0];
    logTableRow(search, depth, first.score, first.pv);
    search.reporter.iterationEnds(search, depth, first.score, first.pv);
    if (now() > search.softDeadline) search.timeUp = true;
    const bool outOfTime = !search.pondering && search.timeUp;
    return !outOfTime && absolute(first.score) < mateBorder && depth < iterations.depthLimit();
}

// A search stopped before its first line was finished still has a move to answer with.
void ensureMove(Iterations& iterations) {
    if (iterations.lineCount > 0) return;
    const RootMoves& moves = iterations.root.moves;
    const std::vector<Move>& wanted = iterations.wanted;
    for (int i = 0; i < moves.count; ++i) {
        if (std::find(wanted.begin(), wanted.end(), moves.list[i].move) == wanted.end()) continue;
        iterations.lines[0].pv[0] = moves.list[i].move;
        return;
    }
}

// Answers whether the opening book knows what to play, which then is the line. Who names moves wants them searched.
bool playFromBook(Iterations& iterations) {
    Search& search = iterations.search;
    if (search.book == nullptr || search.limits.searchMoves) return false;
    const Move move = probeBook(*search.book, iterations.root.position);
    if (move == nullMove) return false;
    iterations.lines[0].pv[0] = move;
    iterations.lineCount = 1;
    return true;
}

void iterate(Iterations& iterations) {
    Search& search = iterations.search;
    for (;; ++iterations.depth) {
        search.firstIteration = iterations.depth == 1;
        updateNodeOverride(search);
        search.reporter.iterationBegins(iterations.depth);
        searchRanks(iterations);
        if (!finishIteration(iterations)) return;
    }
}

void endSearch(const Iterations& iterations) {
    Search& search = iterations.search;
    logWrite("Total move time %8.1f\n", std::max(searchSeconds(search), 0.0));
    if (iterations.depthLimit() == maxDepth || search.pondering) waitWhilePondering(search);
    search.reporter.searchEnds(search);
    search.reporter.answers(search, iterations.lines[0].pv);
}

} // namespace

PvLine think(Search& search, const Position& gamePosition) {
    search.searchStartTime = now(); // the clock runs while tables are cleared, too
    prepareTables(search);
    Iterations iterations(search);
    iterations.root.position = gamePosition;
    refreshPieceSums(iterations.root.position);
    copyGamePath(search, iterations.root.position);
    iterations.wanted = search.limits.searchMoves ? *search.limits.searchMoves : everyLegalMove(gamePosition);
    setDeadlines(search);
    logTableHead();
    if (!playFromBook(iterations)) {
        iterate(iterations);
        ensureMove(iterations);
    }
    endSearch(iterations);
    return iterations.lines[0];
}

} // namespace helvan
