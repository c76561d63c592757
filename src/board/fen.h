// SPDX-License-Identifier: MIT
//
// Forsyth-Edwards Notation.
#pragma once

#include <string>

#include "board/position.h"

namespace helvan {

inline constexpr char startFen[] = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1";

inline constexpr int fenCapacity = 256; // characters that are read of a text, the terminator included

// Fills the whole position from the first fenCapacity - 1 characters of the text; an empty text is the start position.
// The two counters are not read: fifty is 0 and ply 0 (white to move) or 1. pstScore and phase stay 0.
//
// An en-passant field never makes a capture possible, it only becomes lastMove. Malformed text is taken as it
// comes (unknown letters take up a square, squares past the 64th place nothing); only a side to move other than
// 'w' or 'b' is refused: then the answer is the reason, in a few words, and the position stays as it was. Else null.
[[nodiscard]] const char* setupFromFen(Position& position, const char* text);

Position startPosition();

// The placement and the side to move, then " - -": without castling rights, en-passant square and counters.
std::string positionToFen(const Position& position);

// The same with the castling rights: what setup from text reads back, but for an en-passant square.
std::string positionToFenWithRights(const Position& position);

// The letters of the castling rights that stand, in the order "KQkq"; empty without any.
std::string castlingText(const Position& position);

// The piece's letter, upper case for white; '-' for an empty square.
char pieceLetterAt(const Position& position, Square square);

} // namespace helvan
