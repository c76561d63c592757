// SPDX-License-Identifier: MIT
#include "search/root.h"

#include <algorithm>

#include "board/move_text.h"
#include "eval/tables.h"
#include "search/limits.h"
#include "search/node.h"
#include "search/pv.h"
#include "search/report.h"
#include "search/scout.h"

namespace helvan {

namespace {

struct RootNode {
    RootMoves& moves;
    Position& position;
    int depth; // half-plies
    int alpha;
    int beta;
    bool reportsMoves;
    int best = -infiniteScore;
    int bestIndex = -1;
    int moveNumber = 0;
    bool interesting = false; // a forcing move was met: the later ones are searched to their full depth
};

// One move of the root.
struct RootMoveState {
    bool givesCheck;
    bool quiet; // no capture, no promotion
    int depth;  // half-plies, with the extension, behind the move
};

// The piece-square sum after the move, for the mover: a first guess at the order.
int orderScoreOf(const Position& position, const Position& child, Move move) {
    constexpr int losingPenalty = 500;
    const int phase = minimum(child.phase, fullPhase);
    int score = static_cast<int>(blendByPhase(child.pstScore, phase) / (fullPhase * thousandthsPerCentipawn));
    if (position.sideToMove() == black) score = -score;
    return losesMaterial(position, move) ? score - losingPenalty : score;
}

void sortByOrderScore(RootMoves& moves) {
    std::stable_sort(moves.list, moves.list + moves.count,
                     [](const RootMove& a, const RootMove& b) { return a.orderScore > b.orderScore; });
}

void makeRootMoves(RootMoves& rootMoves, const Position& position) {
    Move moves[maxMoves];
    const int count = allMoves(position, moves);
    rootMoves.count = 0;
    for (int i = 0; i < count; ++i) {
        Position child;
        if (!makeLegalMove(position, child, moves[i])) continue;
        rootMoves.list[rootMoves.count++] = {moves[i], orderScoreOf(position, child, moves[i]), 0};
    }
    sortByOrderScore(rootMoves);
    nodeCounter.count = 0;
}

// Looks at the move, which has been made, and gives it its depth.
RootMoveState classifyMove(RootNode& node, const Position& child, Move move) {
    constexpr int forcingExtension = 4, captureExtension = 2; // quarter-plies
    RootMoveState state{};
    const Position& position = node.position;
    state.givesCheck = child.inCheck != 0;
    state.quiet = !isTactical(position, move);
    const bool push = isFreePawnPush(position, move);
    const bool safeCapture = moveKind(move) == ordinaryMove && isCapture(position, move) && position.inCheck == 0 &&
                             !losesMaterial(position, move);
    int extension = state.givesCheck ? forcingExtension : 0;
    if (push) {
        extension += forcingExtension;
    } else if (safeCapture) {
        extension += captureExtension;
    }
    if (state.givesCheck || position.inCheck != 0 || push || safeCapture) node.interesting = true;
    const int quarters = node.moves.extensionCarry + extension;
    node.moves.extensionCarry = quarters % 2;
    state.depth = node.depth + quarters / 2 - 2;
    return state;
}

bool isReduced(const RootNode& node, const RootMoveState& state) {
    constexpr int firstReduced = 3, shallowest = 8;
    return useLmr != 0 && !node.interesting && node.moveNumber >= firstReduced && node.depth >= shallowest &&
           state.quiet && !state.givesCheck && node.position.inCheck == 0 && node.best >= certainlyLost;
}

int searchRootMove(RootNode& node, Position& child, const RootMoveState& state, Move* line) {
    if (node.moveNumber > 1) {
        const bool reduced = isReduced(node, state);
        const int score = -searchScout(child, -node.alpha, reduced ? node.depth - 4 : state.depth, 1, line);
        if (nodeCounter.stopSearch != 0 || score <= node.alpha) return score;
    }
    return -searchPv(child, -node.beta, -node.alpha, state.depth, 1, line);
}

void moveToFront(RootMoves& moves, int index) { std::rotate(moves.list, moves.list + index, moves.list + index + 1); }

} // namespace

bool isNamed(const std::string& words, Move move) {
    if (words.find_first_not_of(' ') == std::string::npos) return true;
    char text[moveTextSize];
    moveToText(move, text);
    return (' ' + words + ' ').find(' ' + std::string(text) + ' ') != std::string::npos;
}

int searchRoot(RootSearch& search, Position& position, int depth, int alpha, int beta, Move* pvOut,
               const std::string& moveWords, NodeShares& shares) {
    constexpr int firstReportedMoves = 6, firstReportedLines = 5; // iterations
    constexpr double quietSeconds = 0.25;
    pvOut[0] = nullMove;
    if (searchMustStop()) return 0;
    position.pvPly = position.extensionCarry = position.horizonMark = 0;
    const int iteration = depth / 2;
    RootMoves& rootMoves = search.moves;
    if (iteration == 1) makeRootMoves(rootMoves, position);
    if (rootMoves.count == 0) return position.inCheck != 0 ? matedScore(0) : 0;

    const bool singleLine = testMode == 0 && search.ranks == 1;
    RootNode node{rootMoves, position, depth,
                  alpha,     beta,     singleLine && iteration >= firstReportedMoves && searchSeconds() > quietSeconds};
    for (int i = 0; i < rootMoves.count; ++i) {
        RootMove& root = rootMoves.list[i];
        Position child;
        if (!makeLegalMove(position, child, root.move) || !isNamed(moveWords, root.move)) continue;
        const std::uint64_t nodesBefore = nodeCounter.count;
        ++node.moveNumber;
        if (node.reportsMoves) printCurrentMove(root.move, node.moveNumber);
        const RootMoveState state = classifyMove(node, child, root.move);
        Move line[pvCapacity];
        line[0] = nullMove;
        const int score = searchRootMove(node, child, state, line);
        if (nodeCounter.stopSearch != 0) return 0;
        root.nodes = nodeCounter.count - nodesBefore;
        if (score <= node.best) continue;
        node.best = score;
        node.bestIndex = i;
        joinPv(pvOut, root.move, line);
        if (singleLine && iteration >= firstReportedLines) printLine(iteration, score, pvOut);
        if (score >= beta) break;
        node.alpha = maximum(node.alpha, score);
    }
    if (node.bestIndex < 0) return node.best;
    moveToFront(rootMoves, node.bestIndex);
    shares.best += rootMoves.list[0].nodes;
    for (int i = 1; i < rootMoves.count; ++i) shares.others += rootMoves.list[i].nodes;
    return node.best;
}

} // namespace helvan
