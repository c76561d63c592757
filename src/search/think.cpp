// SPDX-License-Identifier: MIT
#include "search/think.h"

#include <algorithm>
#include <vector>

#include "board/attacks.h"
#include "board/bits.h"
#include "board/make_move.h"
#include "board/move_text.h"
#include "board/moves.h"
#include "board/piece_square.h"
#include "search/limits.h"
#include "search/report.h"
#include "search/scout.h"
#include "search/settings.h"

namespace helvan {

namespace {

// Whether the blank-separated words hold the move's text; no words at all stand for every move.
bool isNamed(const std::string& words, Move move) {
    char text[moveTextSize];
    moveToText(move, text);
    return words.empty() || (' ' + words + ' ').find(' ' + std::string(text) + ' ') != std::string::npos;
}

std::vector<Move> legalRootMoves(const Position& root, const std::string& searchMoves) {
    Move moves[maxMoves];
    const int count = allMoves(root, moves);
    std::vector<Move> legal;
    Position child;
    for (int i = 0; i < count; ++i) {
        makeMove(root, child, moves[i]);
        if (!moverLeftInCheck(child) && isNamed(searchMoves, moves[i])) legal.push_back(moves[i]);
    }
    return legal;
}

// Searches the moves in order and puts the best one first. When the search is stopped, line keeps what it was.
int searchRoot(const Position& root, std::vector<Move>& moves, int depth, Move* line) {
    int best = -infiniteScore;
    Position child;
    Move bestLine[pvCapacity];
    for (std::size_t i = 0; i < moves.size(); ++i) {
        Move childLine[pvCapacity];
        makeMove(root, child, moves[i]);
        child.inCheck = static_cast<std::uint16_t>(inCheck(child, child.sideToMove()));
        const int score = -searchNode(child, -infiniteScore, -best, depth - 1, 1, childLine);
        if (nodeCounter.stopSearch != 0) return 0;
        if (score <= best) continue;
        best = score;
        joinPv(bestLine, moves[i], childLine);
        std::rotate(moves.begin(), moves.begin() + static_cast<std::ptrdiff_t>(i),
                    moves.begin() + static_cast<std::ptrdiff_t>(i) + 1);
    }
    std::copy(std::begin(bestLine), std::end(bestLine), line);
    return best;
}

} // namespace

int think(const Position& gamePosition, double allotted, int depthLimit, std::string searchMoves) {
    if (depthLimit < 1 || depthLimit > maxDepth) depthLimit = maxDepth;
    Position root = gamePosition;
    refreshPieceSums(root);
    nodeCounter.stopSearch = 0;
    searchState.timeUp = 0;
    searchState.firstIteration = 1;
    searchState.searchStartTime = now();
    setDeadlines(allotted);
    updateNodeOverride();

    std::vector<Move> moves = legalRootMoves(root, searchMoves);
    nodeCounter.count = 0;
    Move line[pvCapacity] = {};
    if (!moves.empty()) line[0] = moves[0];
    int score = root.inCheck != 0 ? matedScore(0) : 0;
    for (int depth = 1; !moves.empty(); ++depth) {
        if (depth == 2) searchState.firstIteration = 0;
        updateNodeOverride();
        printIterationStart(depth);
        const int depthScore = searchRoot(root, moves, depth, line);
        if (nodeCounter.stopSearch != 0) break;
        score = depthScore;
        const double finished = now();
        printIteration(depth, finished - searchState.searchStartTime, nodeCounter.count, score, line);
        if (finished > searchState.softDeadline) searchState.timeUp = 1;
        if (searchState.timeUp != 0 && searchState.pondering == 0) break;
        if (depth >= depthLimit || absolute(score) >= mateBorder) break;
    }
    if (depthLimit == maxDepth || searchState.pondering != 0) waitWhilePondering();
    logEtableStatistics();
    printBestMove(nodeCounter.count, line);
    return score;
}

} // namespace helvan
