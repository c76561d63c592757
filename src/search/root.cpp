// SPDX-License-Identifier: MIT
#include "search/root.h"

#include <algorithm>

#include "eval/tables.h"
#include "search/node.h"
#include "search/pv.h"
#include "search/scout.h"

namespace helvan {

namespace {

struct RootNode {
    Search& search;
    RootMoves& moves;
    Position& position;
    int depth; // half-plies
    int alpha;
    int beta;
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

void makeRootMoves(Search& search, RootMoves& rootMoves, const Position& position) {
    Move moves[maxMoves];
    const int count = allMoves(position, moves);
    rootMoves.count = 0;
    for (int i = 0; i < count; ++i) {
        Position child;
        if (!makeLegalMove(search, position, child, moves[i])) continue;
        rootMoves.list[rootMoves.count++] = {moves[i], orderScoreOf(position, child, moves[i]), 0};
    }
    sortByOrderScore(rootMoves);
    search.nodes = 0;
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
    return searchSettings.useLmr != 0 && !node.interesting && node.moveNumber >= firstReduced &&
           node.depth >= shallowest && state.quiet && !state.givesCheck && node.position.inCheck == 0 &&
           node.best >= certainlyLost;
}

int searchRootMove(RootNode& node, Position& child, const RootMoveState& state, Move* line) {
    if (node.moveNumber > 1) {
        const bool reduced = isReduced(node, state);
        const int score =
            -searchScout(node.search, child, -node.alpha, reduced ? node.depth - 4 : state.depth, 1, line);
        if (node.search.stopSearch || score <= node.alpha) return score;
    }
    return -searchPv(node.search, child, -node.beta, -node.alpha, state.depth, 1, line);
}

void moveToFront(RootMoves& moves, int index) { std::rotate(moves.list, moves.list + index, moves.list + index + 1); }

bool isWanted(const RootSearch& root, Move move) {
    return std::find(root.wanted.begin(), root.wanted.end(), move) != root.wanted.end();
}

// Where several lines are asked for, none is shown before the iteration ends.
bool showsMoves(const Search& search, int iteration) {
    constexpr int firstShown = 6; // iterations
    constexpr double quietSeconds = 0.25;
    return search.limits.ranks == 1 && iteration >= firstShown && searchSeconds(search) > quietSeconds;
}

bool showsLines(const Search& search, int iteration) {
    constexpr int firstShown = 5; // iterations
    return search.limits.ranks == 1 && iteration >= firstShown;
}

void addShares(NodeShares& shares, const RootMoves& moves) {
    shares.best += moves.list[0].nodes;
    for (int i = 1; i < moves.count; ++i) shares.others += moves.list[i].nodes;
}

} // namespace

int searchRoot(Search& search, RootSearch& root, int iteration, Window window) {
    Position& position = root.position;
    root.pv[0] = nullMove;
    if (searchMustStop(search)) return 0;
    position.pvPly = position.extensionCarry = position.horizonMark = 0;
    if (iteration == 1) makeRootMoves(search, root.moves, position);
    if (root.moves.count == 0) return position.inCheck != 0 ? matedScore(0) : 0;

    const bool moveShown = showsMoves(search, iteration);
    RootNode node{search, root.moves, position, 2 * iteration, window.alpha, window.beta};
    for (int i = 0; i < root.moves.count; ++i) {
        RootMove& move = root.moves.list[i];
        Position child;
        if (!makeLegalMove(search, position, child, move.move) || !isWanted(root, move.move)) continue;
        const std::uint64_t nodesBefore = search.nodes;
        ++node.moveNumber;
        if (moveShown) search.reporter.moveBegins(move.move, node.moveNumber);
        const RootMoveState state = classifyMove(node, child, move.move);
        Move line[pvCapacity];
        line[0] = nullMove;
        const int score = searchRootMove(node, child, state, line);
        if (search.stopSearch) return 0;
        move.nodes = search.nodes - nodesBefore;
        if (score <= node.best) continue;
        node.best = score;
        node.bestIndex = i;
        joinPv(root.pv, move.move, line);
        if (showsLines(search, iteration)) search.reporter.lineFound(search, iteration, score, root.pv);
        if (score >= node.beta) break;
        node.alpha = maximum(node.alpha, score);
    }
    if (node.bestIndex < 0) return node.best;
    moveToFront(root.moves, node.bestIndex);
    addShares(root.shares, root.moves);
    return node.best;
}

} // namespace helvan
