// SPDX-License-Identifier: MIT
//
// What the searches of all kinds of nodes share: evaluation with its refinement by the table, the classes of moves,
// and what is stored at the end. For the search alone, which inlines it.
#pragma once

#include "board/attacks.h"
#include "board/checks.h"
#include "board/exchange.h"
#include "board/make_move.h"
#include "board/moves.h"
#include "board/position.h"
#include "eval/evaluate.h"
#include "eval/geometry.h"
#include "search/draws.h"
#include "search/margins.h"
#include "search/settings.h"
#include "search/transposition_table.h"

namespace helvan {

// A table hit, copied: a command in the middle of the search may free the table.
struct TableHit {
    bool found = false;
    Move move = nullMove;
    int score = 0; // as stored
    int depth = 0;
    Bound bound = noBound;

    // Whether the stored score, as it stands, settles the window below or above beta; an exact one bounds from both
    // sides.
    bool settles(int beta) const {
        return found && (((bound & lowerBound) != 0 && beta <= score) || ((bound & upperBound) != 0 && beta > score));
    }
};

inline TableHit probeTable(const Position& position) {
    const TTEntry* entry = transpositionTable.probe(position.key);
    if (entry == nullptr) return {};
    return {true, entry->move, entry->score, entry->depth, entry->bound()};
}

// The evaluation for the side to move, stored in the position.
inline int evaluateNode(Position& position) {
    const int eval = evaluate(position) + (position.capturedPiece != 0 ? captureBonus : 0);
    position.evalScratch = eval;
    return eval;
}

// The evaluation, brought nearer to the truth by what an earlier search found.
inline int refinedEval(int eval, const TableHit& hit) {
    if (!hit.found || absolute(hit.score) > mateBorder) return eval;
    switch (hit.bound) {
    case exactBound: return hit.score;
    case lowerBound: return maximum(eval, hit.score);
    case upperBound: return minimum(eval, hit.score);
    default: return eval;
    }
}

inline bool isCapture(const Position& position, Move move) {
    return (position.of(opponent(position.sideToMove()), allPieces) & bit(moveTo(move))) != 0 ||
           moveKind(move) == enPassant;
}

inline bool isTactical(const Position& position, Move move) { return isCapture(position, move) || isPromotion(move); }

// The key after the move, but for the rarer changes of castling rights, en passant and promotions: to fetch from the
// table ahead of the search.
inline Key likelyKeyAfter(const Position& position, Move move) {
    const Key afterPassing = position.key ^ pieceKeys[white] ^ pieceKeys[black];
    if (move == nullMove) return afterPassing;
    const Colour us = position.sideToMove();
    const PieceType type = pieceTypeAt(position, us, moveFrom(move));
    const PieceType victim = pieceTypeAt(position, opponent(us), moveTo(move));
    const Key taken = victim == phantom ? 0 : pieceKeys[pieceIndex(opponent(us), victim, moveTo(move))];
    return afterPassing ^ taken ^ pieceKeys[pieceIndex(us, type, moveFrom(move))] ^
           pieceKeys[pieceIndex(us, type, moveTo(move))];
}

// Makes the move; false where it leaves the mover's king attacked. The child's inCheck is then true to the board.
inline bool makeLegalMove(const Position& position, Position& child, Move move) {
    makeMove(position, child, move);
    transpositionTable.prefetch(child.key);
    if (moverLeftInCheck(child)) return false;
    child.inCheck = static_cast<std::uint16_t>(inCheck(child, child.sideToMove()));
    return true;
}

inline bool hasPawnOnSeventh(const Position& position, Colour colour) {
    return (position.of(colour, pawn) & relativeRank(colour, 6)) != 0;
}

// A pawn's move into the enemy's half to a square that no enemy pawn can attack, now or later.
inline bool isFreePawnPush(const Position& position, Move move) {
    const Colour us = position.sideToMove();
    const Colour them = opponent(us);
    const Bitboard enemyHalf = relativeRank(us, 4) | relativeRank(us, 5) | relativeRank(us, 6) | relativeRank(us, 7);
    if ((position.of(us, pawn) & bit(moveFrom(move))) == 0 || (enemyHalf & bit(moveTo(move))) == 0) return false;
    return (pawnAttackSpan(them, position.of(them, pawn)) & bit(moveTo(move))) == 0;
}

// Writes the move and the line behind it, cut to pvCapacity.
inline void joinPv(Move* pvOut, Move move, const Move* line) {
    *pvOut++ = move;
    for (int i = 0; i < pvCapacity - 2 && line[i] != nullMove; ++i) *pvOut++ = line[i];
    *pvOut = nullMove;
}

} // namespace helvan
