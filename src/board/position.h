// SPDX-License-Identifier: MIT
//
// The position record that every other part of the engine reads. Positions are never changed in place while
// searching: advance writes a child record that links back to its parent, so records live on the stack of
// the routine that made them (or in the game history) and a parent outlives its children.
#pragma once

#include <cstddef>
#include <cstdint>

#include "board/bits.h"
#include "board/keys.h"
#include "board/packed_score.h"
#include "board/types.h"

namespace helvan {

// What advance leaves in evalScratch: no evaluation stored yet.
inline constexpr std::int32_t evalNotComputed = 999999;

struct alignas(64) Position {
    // By colour x 7 + type; type 0 is the union of the colour's six others, which are disjoint.
    Bitboard pieces[2 * boardsPerColour];
    // Squares from or to which something has moved; a castling right stands while its king's and its rook's
    // square are untouched. Setup from text touches all of ranks 1 and 8 but for the squares of the rights it
    // grants; no other square matters.
    Bitboard touched;
    // The square behind a pawn that has just advanced two squares to stand beside an enemy pawn; else 0.
    Bitboard epSquare;
    Key key;              // the whole position, castling and en passant included
    Key pawnKey;          // pawns and kings only
    Key materialKey;      // wrap-around sum of materialKeys over all pieces: 0 for bare kings
    PackedScore pstScore; // sum of the piece-square values, from white's point of view
    const Position* prev; // the parent; null for a position set up from text
    // The move that led here. nullMove after a null move or setup from text, unless that text named an
    // en-passant square: then the double push behind it, with kind bits 0.
    Move lastMove;
    std::int32_t evalScratch;    // for search and evaluation; evalNotComputed in every new child
    std::uint16_t movedPiece;    // type of the piece that made lastMove (a pawn when promoting), 0 for none
    std::uint16_t capturedPiece; // type that lastMove captured on its to-square, 0 for none: en passant has none there
    std::int16_t ply;            // counts moves; its parity is the side to move
    std::uint16_t inCheck;       // 1 when the side to move is in check; after a move the parent's value, until
                                 // whoever made the move stores the true one; 0 after a null move
    std::uint16_t phase;         // sum of phaseWeights: 96 with all pieces, more with promoted ones, 0 with pawns and
                                 // kings alone
    std::uint16_t fifty;         // plies since the last capture, pawn move or castling
    // The search's own bytes: cleared by setup, inherited by children.
    std::uint8_t pvPly;          // ply of the nearest principal-variation node
    std::uint8_t extensionCarry; // quarter-plies of extension not yet used
    std::uint8_t horizonMark;    // 1 once the line was extended at its horizon
    std::uint8_t spareByte;

    Colour sideToMove() const { return ply & 1; }
    Bitboard of(Colour colour, PieceType type) const { return pieces[colour * boardsPerColour + type]; }
    Bitboard& of(Colour colour, PieceType type) { return pieces[colour * boardsPerColour + type]; }
    Bitboard occupied() const { return of(white, allPieces) | of(black, allPieces); }
    Bitboard straightSliders(Colour colour) const { return of(colour, rook) | of(colour, queen); }
    Bitboard diagonalSliders(Colour colour) const { return of(colour, bishop) | of(colour, queen); }
};

static_assert(sizeof(Position) == 192, "a position fills three cache lines");
// The sets of squares are the first two lines, all else is the third, and nowhere is a gap, however wide a pointer is.
static_assert(offsetof(Position, key) == 128 && offsetof(Position, prev) == 160 &&
              offsetof(Position, spareByte) == 160 + sizeof(void*) + 23);

// The type of the colour's piece on the square, phantom if it has none there.
inline PieceType pieceTypeAt(const Position& position, Colour colour, Square square) {
    // The bits of the type's number, without branches: which board holds a piece cannot be foreseen.
    const Bitboard* const boards = &position.pieces[colour * boardsPerColour];
    const Bitboard ones = boards[pawn] | boards[bishop] | boards[queen];
    const Bitboard twos = boards[knight] | boards[bishop] | boards[king];
    const Bitboard fours = boards[rook] | boards[queen] | boards[king];
    const auto at = [square](Bitboard board) { return static_cast<int>(board >> square & 1); };
    const PieceType type = at(ones) | at(twos) << 1 | at(fours) << 2;
    return type == 0 ? phantom : type;
}

// The incremental fields computed anew from the boards, touched, epSquare and ply.
Key keyOf(const Position& position);
Key pawnKeyOf(const Position& position);
Key materialKeyOf(const Position& position);
std::uint16_t phaseOf(const Position& position);

} // namespace helvan
