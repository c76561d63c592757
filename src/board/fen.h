// SPDX-License-Identifier: MIT
//
// Forsyth-Edwards Notation.
#pragma once

#include "board/position.h"

namespace helvan {

inline constexpr char startFen[] = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1";

// What a buffer for positionToFen must hold: 64 pieces, seven slashes, " w - -" and the terminator.
inline constexpr int fenBufferSize = 80;

// Fills the whole position from the first 255 characters of the text; an empty text is the start position.
// The two counters are not read: fifty is 0 and ply 0 (white to move) or 1. pstScore and phase stay 0.
//
// An en-passant field never makes a capture possible, it only becomes lastMove. Malformed text is taken as it
// comes (unknown letters take up a square, squares past the 64th place nothing); only a side to move other than
// 'w' or 'b' is refused, with a message on standard error and the end of the process.
void setupFromFen(Position& position, const char* text);

// Writes the placement and the side to move, then " - -": castling rights, en-passant square and counters are
// not written. The buffer holds fenBufferSize characters.
void positionToFen(const Position& position, char* buffer);

// The piece's letter, upper case for white; '-' for an empty square.
char pieceLetterAt(const Position& position, Square square);

} // namespace helvan
