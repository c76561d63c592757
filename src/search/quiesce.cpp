// SPDX-License-Identifier: MIT
#include "search/quiesce.h"

#include "board/move_picker.h"
#include "eval/tables.h"
#include "search/node.h"

namespace helvan {

namespace {

struct QuiescenceNode {
    QuiescenceNode(Search& of, Position& at, int from, int to, int halfPlies, int fromRoot)
        : search(of), position(at), alpha(from), beta(to), depth(halfPlies), ply(fromRoot), zeroWindow(from + 1 == to) {
    }

    Search& search;
    Position& position;
    int alpha;
    int beta;
    int depth; // 0 and below
    int ply;
    bool zeroWindow;
    PickerKind kind = PickerKind::evasions;
    int eval = 0;
    int best = -infiniteScore;
    bool bestIsRepetition = false;
    Move bestMove = nullMove;
    int counted = 0; // legal moves, and standing pat
};

PickerKind kindOfMoves(const QuiescenceNode& node) {
    if (node.position.inCheck != 0) return PickerKind::evasions;
    const bool checksToo = node.depth == 0 || (!node.zeroWindow && node.depth >= deepestQuietChecks);
    return checksToo ? PickerKind::soundCapturesAndChecks : PickerKind::soundCaptures;
}

// Not even the victim's value and a margin would bring the score up to alpha.
bool deltaPruned(const QuiescenceNode& node, PickedMove picked) {
    const int kind = moveKind(picked.move);
    if (node.position.inCheck != 0 || kind > enPassant) return false;
    const auto& values = evalTables.phasePieceValue[minimum(node.position.phase, fullPhase)];
    const PieceType victim = kind == enPassant ? pawn : picked.victim;
    const int margin = victim == pawn ? pawnDeltaMargin : pieceDeltaMargin;
    return node.alpha > node.eval + values[victim] + margin && !givesCheck(node.position, picked.move);
}

// A quiet check or evasion that gives its piece away.
bool losesQuietly(const QuiescenceNode& node, const MovePicker& picker) {
    const Move move = picker.last.move;
    if (moveKind(move) > doublePush || picker.last.victim != phantom) return false;
    return node.best >= certainlyLost && pickedMoveLoses(picker, move);
}

bool skippedBeforeMake(const QuiescenceNode& node, const MovePicker& picker, Move move) {
    if (isUnderPromotion(move) || deltaPruned(node, picker.last) || losesQuietly(node, picker)) return true;
    // Not in check, where leaving evasions out would look like mate.
    return node.position.inCheck == 0 && node.depth < recapturesOnlyBelow &&
           moveTo(move) != moveTo(node.position.lastMove);
}

// True when the move decides the node.
bool takeScore(QuiescenceNode& node, int score, Move move, bool repetition) {
    if (score <= node.best) return false;
    node.best = score;
    node.bestIsRepetition = repetition;
    if (score > node.alpha) {
        node.alpha = score;
        node.bestMove = move;
    }
    return score >= node.beta;
}

void searchMoves(QuiescenceNode& node, Move hashMove) {
    MovePicker picker(node.position, node.kind, hashMove);
    Position child;
    Move line[2];
    for (Move move = nextMove(picker); move > 0; move = nextMove(picker)) {
        if (skippedBeforeMake(node, picker, move)) continue;
        if (!makeLegalMove(node.search, node.position, child, picker.last)) continue;
        ++node.counted;
        const bool drawn = drawnByRule(child);
        int score = 0;
        if (drawn) {
            score = drawScoreAt(node.ply);
        } else {
            if (node.kind == PickerKind::soundCapturesAndChecks && child.inCheck == 0 &&
                !isTactical(node.position, move)) {
                continue;
            }
            score = -quiesce(node.search, child, -node.beta, -node.alpha, node.depth - 2, node.ply + 1, line);
            if (node.search.stopSearch) return;
        }
        if (takeScore(node, score, move, drawn)) return;
    }
}

void storeQuiescence(const QuiescenceNode& node) {
    constexpr int horizonDepth = 0, deeperDepth = -2; // in the table
    if (!node.zeroWindow || node.bestIsRepetition) return;
    const bool failsHigh = node.best >= node.beta;
    node.search.tables.transpositionTable.store(node.position.key, node.depth < 0 ? deeperDepth : horizonDepth,
                                                scoreToTable(node.best, node.ply), failsHigh ? lowerBound : upperBound,
                                                failsHigh ? node.bestMove : nullMove, 0);
}

} // namespace

int quiesce(Search& search, Position& position, int alpha, int beta, int quiescenceDepth, int ply, Move* pvOut) {
    pvOut[0] = nullMove;
    if (searchMustStop(search)) return 0;
    if (recognisedDraw(position, ply)) return drawScoreAt(ply);
    if (ply >= maxPly) return evaluate(position, search.tables.evalCaches);
    QuiescenceNode node(search, position, alpha, beta, quiescenceDepth, ply);

    // Before the table is looked into: its entry is on the way.
    const int ownEval = position.inCheck == 0 ? evaluateNode(search, position) : 0;
    TableHit hit;
    if (quiescenceDepth >= deepestProbe) {
        hit = probeTable(search, position);
        if (node.zeroWindow && quiescenceDepth <= hit.depth && hit.settles(beta)) return scoreFromTable(hit.score, ply);
    }
    if (position.inCheck == 0) {
        node.eval = refinedEval(ownEval, hit);
        if (quiescenceDepth < deepestQuiescence || node.eval >= beta) return node.eval;
        node.alpha = maximum(alpha, node.eval);
        node.best = node.eval;
        node.counted = 1;
    }
    node.kind = kindOfMoves(node);
    searchMoves(node, hit.move);
    if (node.search.stopSearch) return 0;
    if (node.counted == 0 && position.inCheck != 0) return matedScore(ply);
    storeQuiescence(node);
    if (node.bestMove != nullMove) {
        pvOut[0] = node.bestMove;
        pvOut[1] = nullMove;
    }
    return node.best;
}

} // namespace helvan
