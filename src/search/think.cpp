// SPDX-License-Identifier: MIT
#include "search/think.h"

#include <algorithm>
#include <vector>

#include "board/bits.h"
#include "board/legal_moves.h"
#include "board/move_text.h"
#include "board/moves.h"
#include "board/piece_square.h"
#include "book/book.h"
#include "protocol/log.h"
#include "search/limits.h"
#include "search/margins.h"
#include "search/ordering.h"
#include "search/report.h"
#include "search/root.h"
#include "search/settings.h"
#include "search/transposition_table.h"

namespace helvan {

namespace {

bool newGame = true; // nothing was searched yet

// The best line of a rank, the first being the best of all.
struct PvLine {
    int score = 0;
    int milliseconds = 0; // when it was finished
    std::uint64_t nodes = 0;
    Move pv[pvCapacity] = {};
};

// What one search knows from iteration to iteration.
struct Iterations {
    Iterations(const Position& position, double seconds, int mostIterations, const std::string& moveWords)
        : root(position), allotted(seconds), depthLimit(mostIterations), searchMoves(moveWords) {}

    Position root;
    double allotted;
    int depthLimit;
    std::string searchMoves;
    int depth = 1;
    PvLine lines[mostPvs];
    int lineCount = 0;
    int scores[recordedIterations] = {};     // of the first line, by iteration
    Move bestMoves[recordedIterations] = {}; // the same
    double bestMoveShare = 0.5;              // of the nodes below the best move, averaged over iterations
    RootSearch rootSearch;
    // The game before the root, as far as repetitions reach: a command in the middle may replace the game.
    std::vector<Position> ancestors;
};

void copyAncestors(Iterations& search) {
    std::vector<Position>& ancestors = search.ancestors;
    const Position* ancestor = search.root.prev;
    for (int plies = search.root.fifty; plies > 0 && ancestor != nullptr; --plies, ancestor = ancestor->prev) {
        ancestors.push_back(*ancestor);
    }
    search.root.prev = ancestors.empty() ? nullptr : ancestors.data();
    for (std::size_t i = 0; i < ancestors.size(); ++i) {
        ancestors[i].prev = i + 1 < ancestors.size() ? &ancestors[i + 1] : nullptr;
    }
}

std::string textOf(Move move) {
    char text[moveTextSize];
    moveToText(move, text);
    return text;
}

std::string legalMoveWords(const Position& root) {
    Move moves[maxMoves];
    const int count = legalMoves(root, moves);
    std::string words;
    for (int i = 0; i < count; ++i) words += textOf(moves[i]) + ' ';
    return words;
}

std::string withoutWord(const std::string& words, const std::string& dropped) {
    std::string kept;
    for (std::size_t at = 0; (at = words.find_first_not_of(' ', at)) != std::string::npos;) {
        const std::size_t end = std::min(words.find(' ', at), words.size());
        const std::string word = words.substr(at, end - at);
        if (word != dropped) kept += word + ' ';
        at = end;
    }
    return kept;
}

// What a search may not take over from the one before it.
void resetSearch() {
    searchState.firstIteration = 1;
    searchState.timeUp = 0;
    nodeCounter.stopSearch = 0;
    updateNodeOverride();
    resetCheckCounter();
    clearKillers();
    const bool forget = newGame || deterministic != 0;
    if (forget) {
        clearCounterMoves();
        clearHistory();
    }
    if (hashMegabytes != 0) {
        if (forget) transpositionTable.clear();
        newGame = false;
        transpositionTable.newGeneration();
    }
}

struct Window {
    int alpha;
    int beta;

    int width() const { return beta - alpha; }
};

constexpr Window fullWindow = {-infiniteScore, infiniteScore};

// About the last score, as wide as the scores have swung of late.
Window firstWindow(const Iterations& search) {
    constexpr int firstNarrow = 5; // iterations
    const int depth = search.depth;
    if (depth < firstNarrow || search.rootSearch.ranks > 1) return fullWindow;
    const int s0 = search.scores[depth - 1], s1 = search.scores[depth - 2], s2 = search.scores[depth - 3];
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
int searchWindows(Iterations& search, const std::string& words, Move* pv, NodeShares& shares) {
    Window window = firstWindow(search);
    const auto searchOnce = [&] {
        return searchRoot(search.rootSearch, search.root, search.depth * 2, window.alpha, window.beta, pv, words,
                          shares);
    };
    const auto failsLow = [&](int score) { return score <= window.alpha && window.alpha > -infiniteScore; };
    const auto failsHigh = [&](int score) { return score >= window.beta && window.beta < infiniteScore; };
    const auto stopped = [] { return nodeCounter.stopSearch != 0; };
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
void moveSoftDeadline(Iterations& search, Move bestMove) {
    constexpr int firstApplied = 5; // iterations
    constexpr double steadyScale = 2.5, mostSteadyPercent = 80.0, forgetting = 0.9;
    constexpr int unstableLimitPercent = 120;
    if (searchState.fixedMoveTime != 0.0 || search.depth < firstApplied || search.allotted >= noTimeGoalSeconds) return;
    double factor = unstableLimitPercent / 100.0;
    if (bestMove == search.bestMoves[search.depth - 1]) {
        factor = std::min((102.0 - 100.0 * search.bestMoveShare) * steadyScale, mostSteadyPercent) / 100.0;
    } else {
        search.bestMoveShare *= forgetting;
    }
    searchState.softDeadline = searchState.searchStartTime + factor * search.allotted;
}

void updateBestMoveShare(Iterations& search, const NodeShares& shares) {
    constexpr double newWeight = 0.25;
    const double share = static_cast<double>(shares.best) / static_cast<double>(shares.best + shares.others + 1);
    search.bestMoveShare = newWeight * share + (1.0 - newWeight) * search.bestMoveShare;
}

// Searches the ranks of one iteration, each without the moves of those before it.
void searchRanks(Iterations& search) {
    std::string words = search.searchMoves;
    NodeShares shares;
    for (int rank = 0; rank < search.rootSearch.ranks; ++rank) {
        Move pv[pvCapacity] = {};
        const int score = searchWindows(search, words, pv, shares);
        if (nodeCounter.stopSearch != 0) return;
        if (rank > 0 && pv[0] == nullMove) return; // the words left name no legal move
        if (rank == 0) {
            updateBestMoveShare(search, shares);
            moveSoftDeadline(search, pv[0]);
        }
        PvLine& line = search.lines[rank];
        line.score = score;
        line.milliseconds = searchMilliseconds();
        line.nodes = nodeCounter.count;
        std::copy(std::begin(pv), std::end(pv), line.pv);
        search.lineCount = maximum(search.lineCount, rank + 1);
        words = withoutWord(words, textOf(pv[0]));
        // The first iteration has one rank: it makes the list of moves, and counts nodes from 0.
        if (words.empty() || search.depth == 1) return;
    }
}

void reportRanks(Iterations& search) {
    // Each rank takes the best of those behind it; equals keep their order.
    for (int rank = 0; rank < search.lineCount; ++rank) {
        PvLine* const first = search.lines + rank;
        PvLine* const best = std::max_element(first, search.lines + search.lineCount,
                                              [](const PvLine& a, const PvLine& b) { return a.score < b.score; });
        std::rotate(first, best, best + 1);
    }
    if (search.rootSearch.ranks == 1) return;
    for (int rank = 0; rank < search.lineCount; ++rank) {
        const PvLine& line = search.lines[rank];
        printRank(rank + 1, search.depth, line.score, line.milliseconds, line.nodes, line.pv);
    }
}

void reportIteration(const Iterations& search) {
    const PvLine& first = search.lines[0];
    logTableRow(search.depth, first.score, first.pv);
    if (testMode == 0) {
        printLine(search.depth, first.score, first.pv);
    } else {
        iterationRecords[search.depth - 1] = {std::max(searchSeconds(), shortestSeconds), nodeCounter.count,
                                              first.score, first.pv[0]};
    }
}

// Answers whether another iteration is to follow.
bool finishIteration(Iterations& search) {
    reportRanks(search);
    if (nodeCounter.stopSearch != 0) {
        logWrite("search aborted\n");
        return false;
    }
    const PvLine& first = search.lines[0];
    search.scores[search.depth] = first.score;
    search.bestMoves[search.depth] = first.pv[0];
    reportIteration(search);
    if (now() > searchState.softDeadline) searchState.timeUp = 1;
    const bool outOfTime = searchState.pondering == 0 && searchState.timeUp != 0;
    return !outOfTime && absolute(first.score) < mateBorder && search.depth < search.depthLimit;
}

// A search stopped before its first line was finished still has a move to answer with.
void ensureMove(Iterations& search) {
    if (search.lineCount > 0) return;
    const RootMoves& moves = search.rootSearch.moves;
    const auto* const end = moves.list + moves.count;
    const auto* const first =
        std::find_if(moves.list, end, [&](const RootMove& root) { return isNamed(search.searchMoves, root.move); });
    if (first != end) search.lines[0].pv[0] = first->move;
}

// Answers whether the opening book knows what to play, which then is the line. Who names moves wants them searched, and
// the self-test searches whatever book may lie about.
bool playFromBook(Iterations& search, bool everyMoveAllowed) {
    if (testMode != 0 || !everyMoveAllowed) return false;
    const Move move = probeBook(search.root);
    if (move == nullMove) return false;
    search.lines[0].pv[0] = move;
    search.lineCount = 1;
    return true;
}

void iterate(Iterations& search) {
    for (;; ++search.depth) {
        if (search.depth == 2) searchState.firstIteration = 0;
        updateNodeOverride();
        if (testMode == 0) printIterationStart(search.depth);
        searchRanks(search);
        if (!finishIteration(search)) return;
    }
}

void endSearch(const Iterations& search) {
    const double elapsed = std::max(searchSeconds(), 0.0);
    logWrite("Total move time %8.1f\n", elapsed);
    totalMoveTime += elapsed;
    if (testMode != 0) return;
    if (search.depthLimit == maxDepth || searchState.pondering != 0) waitWhilePondering();
    logEtableStatistics();
    printBestMove(nodeCounter.count, search.lines[0].pv);
}

} // namespace

int think(const Position& gamePosition, double allotted, int depthLimit, const std::string& searchMoves) {
    searchState.searchStartTime = now(); // the clock runs while tables are cleared, too
    if (testMode != 0) deterministic = 1;
    if (depthLimit < 1 || depthLimit > maxDepth) depthLimit = maxDepth;
    resetSearch();
    Iterations search(gamePosition, allotted, depthLimit, searchMoves);
    refreshPieceSums(search.root);
    copyAncestors(search);
    search.rootSearch.ranks = usedMultiPv();
    const bool everyMoveAllowed = search.searchMoves.empty();
    if (everyMoveAllowed) search.searchMoves = legalMoveWords(search.root);
    setDeadlines(allotted);
    logTableHead();
    if (!playFromBook(search, everyMoveAllowed)) {
        iterate(search);
        ensureMove(search);
    }
    endSearch(search);
    return search.lines[0].score;
}

} // namespace helvan
