// SPDX-License-Identifier: MIT
//
// The rules that zero-window and principal-variation nodes of the main search share. For these two alone, which
// inline them.
#pragma once

#include <optional>

#include "board/checks.h"
#include "board/move_picker.h"
#include "search/node.h"
#include "search/ordering.h"
#include "search/reductions.h"
#include "search/threats.h"

namespace helvan {

// A node of the main search while its moves are searched.
struct MainNode {
    MainNode(Search& of, Position& at, int halfPlies, int fromRoot)
        : search(of), position(at), depth(halfPlies), ply(fromRoot), inCheck(at.inCheck != 0) {}

    Search& search;
    Position& position;
    int depth; // half-plies
    int ply;
    bool inCheck;
    bool singleReply = false; // in check with one legal move
    Move hashMove = nullMove;
    int hashScore = 0;            // as stored
    int hashDepth = 0;            // of the search behind hashScore
    bool hashProvesScore = false; // hashScore is a lower bound or exact, and no mate
    int eval = 0;                 // meaningless in check
    Move counter = nullMove;
    int best = -infiniteScore;
    Move bestMove = nullMove;
    std::optional<KingLines> lines; // once a move has been made
    int moveNumber = 0;             // moves made so far, and one where standing pat counts as a move
    int quietCount = 0;
    Move quiets[maxMoves]; // quiet moves made so far; uninitialised beyond their count
};

inline void adoptHit(MainNode& node, const TableHit& hit) {
    node.hashMove = hit.move;
    node.hashScore = hit.score;
    node.hashDepth = hit.depth;
    node.hashProvesScore =
        hit.found && (hit.bound == lowerBound || hit.bound == exactBound) && absolute(hit.score) <= largestPlainScore;
}

inline MovePicker openPicker(const MainNode& node, PickerKind kind) {
    return {node.position,
            kind,
            node.hashMove,
            node.search.killers.killerPrimary[node.ply],
            node.search.killers.killerSecondary[node.ply],
            quietOrderOf(node.search.tables.moveHistory, node.position)};
}

// Whether a side in check has just one legal move; three are counted at most. Kept out of its callers, whose stack
// frames recurse.
[[gnu::noinline]] inline bool hasSingleReply(Search& search, const Position& position) {
    MovePicker picker(position, PickerKind::evasions);
    Position child;
    int replies = 0;
    for (Move move = nextMove(picker); move > 0 && replies < 3; move = nextMove(picker)) {
        makeMove(search, position, child, move);
        if (!moverLeftInCheck(child)) ++replies;
    }
    return replies == 1;
}

// What is looked up once before the node's moves are searched.
inline void prepareMoves(MainNode& node) {
    node.counter = counterMoveOf(node.search.tables.moveHistory, node.position);
    node.singleReply = node.inCheck && node.depth / 2 >= singleReplyPlies && hasSingleReply(node.search, node.position);
}

// One move of a node.
struct MoveState {
    Move move;
    PieceType mover;
    PieceType victim; // on the to-square, phantom for none
    int number;       // among the node's moves, as moveNumber counts
    bool tactical;    // capture or promotion
    bool givesCheck;
    bool quiet; // neither tactical nor a check nor an evasion
    bool killer;
    bool counter;     // the stored answer to the move before
    int newDepth = 0; // the node's depth with the move's extension
    bool repetition = false;
};

inline bool isKiller(const MainNode& node, Move move) {
    const Killers& killers = node.search.killers;
    return move == killers.killerPrimary[node.ply] || move == killers.killerSecondary[node.ply];
}

inline MoveState stateOf(const MainNode& node, const Position& child, PickedMove picked) {
    const Move move = picked.move;
    MoveState state{};
    state.move = move;
    state.mover = picked.mover;
    state.victim = picked.victim;
    state.number = node.moveNumber;
    state.tactical = picked.victim != phantom || moveKind(move) == enPassant || isPromotion(move);
    state.givesCheck = child.inCheck != 0;
    state.quiet = !state.tactical && !state.givesCheck && !node.inCheck;
    state.killer = isKiller(node, move);
    state.counter = move == node.counter;
    return state;
}

// Makes the node's next move and looks at what it is; false where it leaves the mover's king attacked.
inline bool enterMove(MainNode& node, Position& child, PickedMove picked, MoveState& state) {
    const Move move = picked.move;
    node.search.tables.transpositionTable.prefetch(likelyKeyAfter(node.position, move, picked.mover, picked.victim));
    if (!node.lines) node.lines.emplace(node.position, node.inCheck);
    makeMove(node.search, node.position, child, move, picked.mover, picked.victim);
    if (node.lines->leavesInCheck(child)) return false;
    child.inCheck = static_cast<std::uint16_t>(node.lines->givesCheck(node.position, move, picked.mover));
    ++node.moveNumber;
    state = stateOf(node, child, picked);
    state.repetition = drawnByRule(child);
    if (state.quiet && !state.repetition && node.quietCount < maxMoves) node.quiets[node.quietCount++] = move;
    return true;
}

// The draw score of a move that repeats a position or ends the fifty moves.
inline int repetitionScore(int ply) { return -drawScoreAt(ply); }

// What a move's extension comes to at most, in quarter-plies; the capture that leaves a pawn ending stands above it.
inline int cappedExtension(const Position& child, int extension) {
    const bool intoPawnEnding = child.phase == 0 && child.capturedPiece != 0 && child.capturedPiece != pawn;
    return intoPawnEnding ? intoPawnEndingExtension : minimum(extension, mostExtension);
}

// The reasons that extend moves at all nodes, in quarter-plies.
inline int commonExtension(const MainNode& node, const MoveState& state) {
    int extension = 0;
    if (node.singleReply) extension += singleReplyExtension;
    if (state.givesCheck) extension += node.singleReply ? singleReplyCheckExtension : checkExtension;
    if (node.position.phase < pawnPushPhase && isFreePawnPush(node.position, state.move)) {
        extension += pawnPushExtension;
    }
    return extension;
}

// Gives the move its depth: half of the carry and the extension (quarter-plies) now, an odd quarter to the child.
inline void extend(const MainNode& node, Position& child, MoveState& state, int extension) {
    const int quarters = child.extensionCarry + extension;
    state.newDepth = node.depth + quarters / 2;
    child.extensionCarry = static_cast<std::uint8_t>(quarters % 2);
}

// A quiet move of a piece other than the king that saves the piece.
inline bool isEscape(const MainNode& node, const MoveState& state) {
    constexpr int shallowest = 6, deepest = 15;
    if (state.newDepth < shallowest || state.newDepth > deepest || !state.quiet) return false;
    if (state.mover == king) return false;
    return isEnPrise(node.position, moveFrom(state.move), opponent(node.position.sideToMove())) &&
           !losesMaterial(node.position, state.move, state.mover, state.victim);
}

// A move that threatens something keeps its depth near the horizon.
inline bool threatensNearHorizon(const MoveState& state, const Position& child) {
    constexpr int nearDepth = 9;
    return state.newDepth <= nearDepth && lastMoveThreatens(child);
}

// What a node is worth in which no move was made.
inline int scoreWithoutMoves(const MainNode& node) { return node.inCheck ? matedScore(node.ply) : 0; }

// Notes a cut-off by a quiet move for the ordering of others.
inline void noteQuietCutoff(const MainNode& node) {
    noteKiller(node.search.killers, node.ply, node.bestMove);
    noteSuccess(node.search.tables.moveHistory, node.position, node.depth, node.bestMove, node.quiets, node.quietCount);
}

} // namespace helvan
