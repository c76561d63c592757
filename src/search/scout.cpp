// SPDX-License-Identifier: MIT
#include "search/scout.h"

#include "search/main_node.h"
#include "search/quiesce.h"

namespace helvan {

namespace {

struct ScoutNode : MainNode {
    int beta;
    Move excluded;
    bool noNull;
    int parity; // 1 where a cut-off is expected, 0 where every move is expected to fail
    bool tacticalOnly = false;
    bool bestIsRepetition = false;

    ScoutNode(Search& of, Position& at, int bound, int halfPlies, int fromRoot, Move excludedMove, bool withoutNull)
        : MainNode(of, at, halfPlies, fromRoot), beta(bound), excluded(excludedMove), noNull(withoutNull),
          parity((at.pvPly ^ fromRoot) & 1) {}
};

bool extendedAtHorizon(const ScoutNode& node) {
    Position& position = node.position;
    if (node.depth < 0 || position.horizonMark != 0 || node.excluded != nullMove || node.inCheck) return false;
    const int eval = evaluateNode(node.search, position);
    return node.beta <= eval && eval < node.beta + scoutHorizonMargin && lastMoveThreatens(position);
}

int quiesceScout(const ScoutNode& node, int beta) {
    Move line[2];
    return quiesce(node.search, node.position, beta - 1, beta, 0, node.ply, line);
}

int searchHorizon(const ScoutNode& node, Move* pvOut) {
    if (!extendedAtHorizon(node)) return quiesceScout(node, node.beta);
    node.position.horizonMark = 1;
    return searchScout(node.search, node.position, node.beta, node.depth + 2, node.ply, pvOut, node.excluded,
                       node.noNull);
}

// The rules that may decide the node before its moves are searched answer true and set the score.

bool tableCutoff(ScoutNode& node, const TableHit& hit, int& score) {
    if (hit.depth < node.depth || !hit.settles(node.beta)) return false;
    score = scoreFromTable(hit.score, node.ply);
    return true;
}

bool hopeless(const ScoutNode& node) { return node.depth < hopelessDepth && node.beta - hopelessMargin > node.eval; }

// Far ahead against an enemy that can make no trouble: less depth will do.
bool winsEasily(const ScoutNode& node) {
    const Colour enemy = opponent(node.position.sideToMove());
    return node.depth >= winningDepth && node.eval >= winningEval && node.position.of(enemy, queen) == 0 &&
           !hasPawnOnSeventh(node.position, enemy);
}

bool hasPieces(const Position& position) {
    const Colour us = position.sideToMove();
    return (position.of(us, allPieces) & ~(position.of(us, pawn) | position.of(us, king))) != 0;
}

// The side to move passes; if the enemy cannot even then bring the score under beta, the node fails high.
bool nullMoveCutoff(ScoutNode& node) {
    if (node.depth < nullMoveDepth || !hasPieces(node.position)) return false;
    const int reduction = nullMoveReduction(node.eval - node.beta, node.position.phase, node.depth);
    Position child;
    Move line[pvCapacity];
    makeMove(node.search, node.position, child, nullMove);
    const int score =
        -searchScout(node.search, child, 1 - node.beta, node.depth - reduction - 2, node.ply + 1, line, nullMove, true);
    return !node.search.stopSearch && score >= node.beta && absolute(score) <= mateBorder;
}

// So far above beta that the enemy's next move will hardly bring the score under it.
bool staticNullCutoff(const ScoutNode& node) {
    const int allNodeMargin = expectedAllNodeMargin * (1 - node.parity);
    if (node.depth > staticNullMostDepth) return false;
    if (node.depth >= nullMoveDepth) return node.beta - allNodeMargin + staticNullMargin[node.depth] <= node.eval;
    if (node.beta <= node.eval + allNodeMargin - staticNullMargin[node.depth]) return true;
    // The costly look at what is under attack only where it can decide.
    const int slack = node.eval - staticNullMargin2[node.depth] - node.beta;
    return slack >= threatMargin(0) && slack >= threatMargin(threatenedLoss(node.position));
}

bool nullCutoffs(ScoutNode& node, int& score) {
    if (node.noNull || searchSettings.nullMovePruning == 0 || node.inCheck || absolute(node.beta) > mateBorder)
        return false;
    if (node.eval < node.beta + nullMargin) return false;
    score = node.beta;
    return staticNullCutoff(node) || nullMoveCutoff(node) || node.search.stopSearch;
}

// So far under beta that only tactics can help: if the quiescence search finds none, the node fails low.
bool razored(const ScoutNode& node, int& score) {
    if (node.hashMove != nullMove || node.position.lastMove == nullMove || node.inCheck ||
        node.depth > razorMostDepth || hasPawnOnSeventh(node.position, node.position.sideToMove())) {
        return false;
    }
    if (node.depth <= razorQuiescenceDepth) {
        if (node.beta - razorBase <= node.eval) return false;
        score = quiesceScout(node, node.beta);
        return true;
    }
    const int lowered = node.beta - razorMargin[node.depth - 2] - razorBase;
    if (absolute(node.beta) > mateBorder || lowered <= node.eval) return false;
    score = quiesceScout(node, lowered);
    return node.search.stopSearch || score < lowered;
}

PickerKind chooseMoves(ScoutNode& node) {
    if (node.inCheck) return PickerKind::evasions;
    if (node.depth / 2 > tacticalOnlyPlies || node.beta <= futilityMargin(node.depth) + node.eval) {
        return PickerKind::everyMove;
    }
    node.tacticalOnly = true;
    node.moveNumber = 1; // standing pat counts as a move: that no capture helps is neither mate nor stalemate
    node.best = node.eval;
    return PickerKind::soundCaptures;
}

// Near the horizon only so many quiet moves are tried.
bool lateMovePruned(const ScoutNode& node, PickedMove picked) {
    const Move move = picked.move;
    if (node.depth > lateMovePruningDepth || node.inCheck || isKiller(node, move)) return false;
    if (node.moveNumber <= lateMoveCount[node.parity][node.depth]) return false;
    if (moveKind(move) > doublePush || picked.victim != phantom) return false;
    const Bitboard sixth = relativeRank(node.position.sideToMove(), 5);
    if (picked.mover == pawn && (sixth & bit(moveFrom(move))) != 0) return false;
    return !node.lines->givesCheck(node.position, move, picked.mover);
}

// Promotions to less than a queen are tried only where a knight could check.
bool idlePromotion(const ScoutNode& node, Move move) {
    if (!isUnderPromotion(move)) return false;
    const Bitboard enemyKing = node.position.of(opponent(node.position.sideToMove()), king);
    return (knightAttacks[moveTo(move)] & enemyKing) == 0;
}

bool losesNearHorizon(const ScoutNode& node, const MovePicker& picker, Move move) {
    constexpr int nearPlies = 2;
    return node.depth / 2 <= nearPlies && !node.inCheck && node.moveNumber > 0 && moveKind(move) == ordinaryMove &&
           pickedMoveLoses(picker, move);
}

// Whether nothing but the hash move keeps the score up: the others are searched without it, shallower.
int extendSingular(const ScoutNode& node, const MoveState& state, int extension) {
    if (state.move != node.hashMove || node.excluded != nullMove || node.parity == 0 ||
        extension > singularMostBefore || node.depth < singularScoutDepth || !node.hashProvesScore ||
        node.hashDepth < node.depth - singularEntryDepth) {
        return extension;
    }
    const int bound = node.hashScore - singularMargin;
    // What a null move led to is not passed in either: two never follow each other.
    const int score =
        searchWithoutMove(node.search, node.position, bound, node.depth, node.ply, node.hashMove, node.noNull);
    if (score >= bound) return extension;
    return node.depth >= singularPliesFactor * node.ply ? singularExtensionNearRoot : extension + singularExtension;
}

// In quarter-plies.
int extensionOf(const ScoutNode& node, const Position& child, const MoveState& state) {
    int extension = commonExtension(node, state);
    if (state.givesCheck && node.parity != 0 && node.depth <= expectedCutCheckDepth) {
        extension += expectedCutCheckExtension;
    }
    const bool searchedFirst = state.number == (node.tacticalOnly ? 2 : 1);
    if (extension == 0 && state.move == node.hashMove && searchedFirst && node.depth >= hashMoveLeastDepth &&
        node.depth <= hashMoveMostDepth) {
        extension = hashMoveExtension;
    }
    extension = extendSingular(node, state, extension);
    return cappedExtension(child, extension);
}

// A late quiet move that cannot be expected to bring the score up to beta.
bool futile(const ScoutNode& node, Position& child, const MoveState& state) {
    constexpr int shallowest = 6, deepest = 17;
    if (state.newDepth < shallowest || state.newDepth > deepest || node.inCheck) return false;
    if ((!state.quiet && !state.counter) || state.killer || node.best <= certainlyLost) return false;
    if (state.number < firstFutileMove) return false;
    const int bound = futilityBound(node.eval, state.newDepth, state.number, node.parity);
    if (bound > node.beta + futilitySecondLook) return false;
    if (!losesMaterial(node.position, state.move, state.mover, state.victim) && lastMoveThreatens(child)) return false;
    if (node.beta > bound) return true;
    return node.beta > futilityBoundAfterMove(evaluate(child, node.search.tables.evalCaches), state.newDepth,
                                              state.number, node.parity);
}

bool isPlainQuiet(const ScoutNode& node, const MoveState& state) {
    return !state.tactical && !state.givesCheck && state.move != node.hashMove && !state.killer && !state.counter;
}

// Four plies before the horizon the late quiet moves are taken to fail low.
bool lateMoveCut(const ScoutNode& node, const Position& child, const MoveState& state) {
    return node.depth / 2 == lateMoveCutPlies && state.quiet && isPlainQuiet(node, state) &&
           state.number > lateMoveCount[node.parity][node.depth] && node.best >= certainlyLost &&
           !lastMoveThreatens(child);
}

// Half-plies to search the move less deep; 0 for none.
int reductionOf(const ScoutNode& node, const Position& child, const MoveState& state) {
    constexpr int shallowest = 8, escapeReduction = 2;
    if (searchSettings.useLmr == 0 || state.newDepth < shallowest || !isPlainQuiet(node, state)) return 0;
    if ((node.inCheck && node.parity == 0) || node.best < certainlyLost) return 0;
    const int column = node.parity != 0 && !node.inCheck ? 2 * state.number : state.number;
    const int reduction = lmrReduction(state.newDepth, column);
    if (reduction < 2 || threatensNearHorizon(state, child)) return 0;
    return isEscape(node, state) ? escapeReduction : reduction;
}

int searchChild(const ScoutNode& node, Position& child, const MoveState& state, Move* line) {
    const int bound = 1 - node.beta;
    if (const int reduction = reductionOf(node, child, state); reduction > 0) {
        const int score =
            -searchScout(node.search, child, bound, reducedDepth(state.newDepth, reduction), node.ply + 1, line);
        if (node.search.stopSearch || score < node.beta) return score;
    }
    return -searchScout(node.search, child, bound, state.newDepth - 2, node.ply + 1, line);
}

// Searches the moves until one reaches beta. Answers whether that one is quiet.
bool searchMoves(ScoutNode& node, MovePicker& picker, Move* pvOut) {
    Position child;
    Move line[pvCapacity];
    for (Move move = nextMove(picker); move > 0; move = nextMove(picker)) {
        if (move == node.excluded) continue;
        if (lateMovePruned(node, picker.last)) {
            // So will be all of its like: the count only grows.
            dropFromBatch(picker, [&](PickedMove picked) { return lateMovePruned(node, picked); });
            continue;
        }
        if (idlePromotion(node, move) || losesNearHorizon(node, picker, move)) continue;
        MoveState state;
        if (!enterMove(node, child, picker.last, state)) continue;
        line[0] = nullMove;
        int score = repetitionScore(node.ply);
        if (!state.repetition) {
            extend(node, child, state, extensionOf(node, child, state));
            if (node.search.stopSearch) return false;
            if (futile(node, child, state)) continue;
            score = lateMoveCut(node, child, state) ? node.beta - 1 : searchChild(node, child, state, line);
        }
        if (node.search.stopSearch) return false;
        if (score <= node.best) continue;
        node.best = score;
        node.bestMove = move;
        node.bestIsRepetition = state.repetition;
        joinPv(pvOut, move, line);
        if (score >= node.beta) return state.quiet && !state.repetition;
    }
    return false;
}

void storeScout(const ScoutNode& node) {
    if (node.excluded != nullMove || node.bestIsRepetition) return;
    const bool failsHigh = node.best >= node.beta;
    node.search.tables.transpositionTable.store(node.position.key, node.depth, scoreToTable(node.best, node.ply),
                                                failsHigh ? lowerBound : upperBound,
                                                failsHigh ? node.bestMove : nullMove, node.parity);
}

} // namespace

int searchWithoutMove(Search& search, Position& position, int beta, int depth, int ply, Move hashMove, bool noNull) {
    Move line[pvCapacity];
    return searchScout(search, position, beta, singularDepth(depth), ply, line, hashMove, noNull);
}

int searchScout(Search& search, Position& position, int beta, int depth, int ply, Move* pvOut, Move excludedMove,
                bool noNull) {
    pvOut[0] = nullMove;
    if (searchMustStop(search)) return 0;
    if (recognisedDraw(position, ply)) return drawScoreAt(ply);
    if (ply >= maxPly) return evaluate(position, search.tables.evalCaches);
    ScoutNode node(search, position, beta, depth, ply, excludedMove, noNull);
    if (depth < 2) return searchHorizon(node, pvOut);

    int score = 0;
    TableHit hit;
    if (excludedMove == nullMove) {
        hit = probeTable(search, position);
        if (tableCutoff(node, hit, score)) return score;
        adoptHit(node, hit);
    }
    // While the position is evaluated, what is known of its first children comes nearer.
    if (node.hashMove != nullMove) search.tables.transpositionTable.prefetch(likelyKeyAfter(position, node.hashMove));
    if (!node.inCheck) {
        if (depth >= nullMoveDepth && !noNull)
            search.tables.transpositionTable.prefetch(likelyKeyAfter(position, nullMove));
        node.eval = refinedEval(evaluateNode(search, position), hit);
        if (hopeless(node)) return node.eval;
        if (winsEasily(node)) node.depth -= 2;
    }
    if (nullCutoffs(node, score) || razored(node, score)) return node.search.stopSearch ? 0 : score;

    MovePicker picker = openPicker(node, chooseMoves(node));
    prepareMoves(node);
    const bool quietCutoff = searchMoves(node, picker, pvOut);
    if (node.search.stopSearch) return 0;
    if (node.moveNumber == 0) return excludedMove != nullMove ? beta - 1 : scoreWithoutMoves(node);
    if (quietCutoff) noteQuietCutoff(node);
    storeScout(node);
    return node.best;
}

} // namespace helvan
