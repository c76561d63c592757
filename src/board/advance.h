// SPDX-License-Identifier: MIT
//
// The one way to advance a position.
#pragma once

#include "board/position.h"

namespace helvan {

// Writes the position after the move (nullMove to pass) into the child. The parent stays as it is and must outlive the
// child, which links to it. Nothing is tested: the caller checks afterwards that the mover's king is not attacked, and
// stores the child's inCheck, until then a copy of the parent's, or 0 after a null move.
// A from-square without a piece of the mover, and the capture of a king, are reported on standard output and
// carried on with: they are faults of the caller.
void advance(const Position& parent, Position& child, Move move);

// The same, sooner, where it is known what moves and what it takes on its to-square (phantom: nothing). No fault is
// reported.
void advance(const Position& parent, Position& child, Move move, PieceType mover, PieceType victim);

// advance; false where it leaves the mover's king attacked. Else the child's inCheck is true to the board.
bool advanceLegally(const Position& parent, Position& child, Move move);

// False where the child's mover has left its king attacked; else stores whether the child is in check.
bool settleCheck(Position& child);

// The key after the move, but for the rarer changes of castling rights, en passant and promotions: to fetch from a
// table ahead of making the move.
Key likelyKeyAfter(const Position& position, Move move);

// The same, sooner, of a move of a piece of this type that takes this one, phantom for none.
inline Key likelyKeyAfter(const Position& position, Move move, PieceType mover, PieceType victim) {
    const Colour us = position.sideToMove();
    const Key taken = victim == phantom ? 0 : pieceKeys[pieceIndex(opponent(us), victim, moveTo(move))];
    return position.key ^ pieceKeys[white] ^ pieceKeys[black] ^ taken ^
           pieceKeys[pieceIndex(us, mover, moveFrom(move))] ^ pieceKeys[pieceIndex(us, mover, moveTo(move))];
}

// Whether a child's incremental fields differ from its parent's by just what its boards say: the check that
// advance is held to after every move in debug builds. For playable parents and pseudo-legal moves.
bool incrementalStateAgrees(const Position& parent, const Position& child);

} // namespace helvan
