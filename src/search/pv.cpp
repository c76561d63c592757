// SPDX-License-Identifier: MIT
#include "search/pv.h"

#include "search/main_node.h"
#include "search/quiesce.h"
#include "search/scout.h"

namespace helvan {

namespace {

struct PvNode : MainNode {
    int alpha;
    int beta;
    int firstAlpha;

    PvNode(Search& of, Position& at, int low, int high, int halfPlies, int fromRoot)
        : MainNode(of, at, halfPlies, fromRoot), alpha(low), beta(high), firstAlpha(low) {}
};

// A line whose evaluation lies near the window, under threat, ends a ply later; once a line.
bool extendedAtHorizon(const PvNode& node) {
    if (node.depth < 0 || node.position.horizonMark != 0) return false;
    const int eval = evaluateNode(node.search, node.position);
    if (node.beta - pvHorizonMargin <= eval && eval < node.beta) return true;
    return node.alpha <= eval && eval <= node.beta + pvHorizonMargin && threatenedLoss(node.position) != 0;
}

int searchHorizon(const PvNode& node, Move* pvOut) {
    if (!extendedAtHorizon(node)) return quiesce(node.search, node.position, node.alpha, node.beta, 0, node.ply, pvOut);
    node.position.horizonMark = 1;
    return searchPv(node.search, node.position, node.alpha, node.beta, node.depth + 2, node.ply, pvOut);
}

// The table never decides a node of the principal variation; it only names the move to try first.
void adoptTableMove(PvNode& node) {
    constexpr int mostShallower = 6;
    const TableHit hit = probeTable(node.search, node.position);
    if (hit.found && hit.depth >= node.depth - mostShallower) adoptHit(node, hit);
}

// Internal iterative deepening: without a move to try first, a shallower search finds one.
void deepenInternally(PvNode& node, Move* pvOut) {
    constexpr int shallowest = 10, shallower = 4;
    if (node.hashMove != nullMove || node.depth < shallowest) return;
    const int score =
        searchPv(node.search, node.position, node.alpha, node.beta, node.depth - shallower, node.ply, pvOut);
    if (node.search.stopSearch) return;
    node.hashMove = pvOut[0];
    node.hashScore = score;
    node.hashDepth = node.depth - shallower;
    node.hashProvesScore = score > node.alpha && absolute(score) <= largestPlainScore;
}

int extendSingular(const PvNode& node, const MoveState& state) {
    if (state.move != node.hashMove || node.depth < singularPvDepth || !node.hashProvesScore ||
        node.hashDepth < node.depth - singularEntryDepth) {
        return 0;
    }
    const int bound = node.hashScore - singularMargin;
    return searchWithoutMove(node.search, node.position, bound, node.depth, node.ply, node.hashMove, true) < bound
               ? singularExtension
               : 0;
}

// In quarter-plies.
int extensionOf(const PvNode& node, const Position& child, const MoveState& state) {
    int extension = commonExtension(node, state);
    if (state.number <= safeCaptureMoves && isCapture(node.position, state.move) &&
        !losesMaterial(node.position, state.move, state.mover, state.victim)) {
        extension += safeCaptureExtension;
    }
    extension += extendSingular(node, state);
    return cappedExtension(child, extension);
}

// Half-plies to search the move less deep; 0 for none.
int reductionOf(const PvNode& node, const Position& child, const MoveState& state) {
    constexpr int shallowest = 8;
    if (searchSettings.useLmr == 0 || state.newDepth < shallowest || !state.quiet || state.killer ||
        node.best < certainlyLost) {
        return 0;
    }
    const int reduction = pvReduction(state.newDepth, state.number);
    if (reduction < 2 || threatensNearHorizon(state, child) || isEscape(node, state)) return 0;
    return reduction;
}

int searchChild(const PvNode& node, Position& child, const MoveState& state, Move* line) {
    const int depth = state.newDepth - 2;
    if (state.number > 1) {
        if (const int reduction = reductionOf(node, child, state); reduction > 0) {
            const int score = -searchScout(node.search, child, -node.alpha, reducedDepth(state.newDepth, reduction),
                                           node.ply + 1, line);
            if (node.search.stopSearch || score <= node.alpha) return score;
        }
        const int score = -searchScout(node.search, child, -node.alpha, depth, node.ply + 1, line);
        if (node.search.stopSearch || score <= node.alpha) return score;
    }
    return -searchPv(node.search, child, -node.beta, -node.alpha, depth, node.ply + 1, line);
}

// Searches the moves until one reaches beta. Answers whether that one is quiet.
bool searchMoves(PvNode& node, Move* pvOut) {
    MovePicker picker = openPicker(node, node.inCheck ? PickerKind::evasions : PickerKind::everyMove);
    Position child;
    Move line[pvCapacity];
    for (Move move = nextMove(picker); move > 0; move = nextMove(picker)) {
        MoveState state;
        if (!enterMove(node, child, picker.last, state)) continue;
        line[0] = nullMove;
        int score = repetitionScore(node.ply);
        if (!state.repetition) {
            extend(node, child, state, extensionOf(node, child, state));
            if (node.search.stopSearch) return false;
            score = searchChild(node, child, state, line);
        }
        if (node.search.stopSearch) return false;
        if (score <= node.best) continue;
        node.best = score;
        node.bestMove = move;
        joinPv(pvOut, move, line);
        if (score <= node.alpha) continue;
        node.alpha = score;
        if (score >= node.beta) return state.quiet && !state.repetition;
    }
    return false;
}

// Unlike a scout's, a score that rests on a repetition is kept as well: the window was open to every move.
void storePv(const PvNode& node) {
    const Bound bound = node.best >= node.beta ? lowerBound : node.best > node.firstAlpha ? exactBound : upperBound;
    node.search.tables.transpositionTable.store(node.position.key, node.depth, scoreToTable(node.best, node.ply), bound,
                                                bound == upperBound ? nullMove : node.bestMove, 0);
}

} // namespace

int searchPv(Search& search, Position& position, int alpha, int beta, int depth, int ply, Move* pvOut) {
    pvOut[0] = nullMove;
    if (searchMustStop(search)) return 0;
    if (recognisedDraw(position, ply)) return drawScoreAt(ply);
    if (ply >= maxPly) return evaluate(position, search.tables.evalCaches);
    PvNode node(search, position, alpha, beta, depth, ply);
    position.pvPly = static_cast<std::uint8_t>(ply);
    if (depth < 2) return searchHorizon(node, pvOut);

    adoptTableMove(node);
    node.eval = evaluateNode(search, position);
    deepenInternally(node, pvOut);
    if (node.search.stopSearch) return 0;
    pvOut[0] = nullMove;
    prepareMoves(node);
    const bool quietCutoff = searchMoves(node, pvOut);
    if (node.search.stopSearch) return 0;
    if (node.moveNumber == 0) return scoreWithoutMoves(node);
    if (quietCutoff) noteQuietCutoff(node);
    storePv(node);
    return node.best;
}

} // namespace helvan
