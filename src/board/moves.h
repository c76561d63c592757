// SPDX-License-Identifier: MIT
//
// Complete lists of pseudo-legal moves, and the test whether one move is pseudo-legal. Pseudo-legal moves may
// leave the mover's king in check; whoever makes one tests that afterwards.
#pragma once

#include "board/position.h"

namespace helvan {

// No game position has more than 218 moves; a board that no game reaches may, and the excess is dropped.
inline constexpr int maxMoves = 256;

// Writes every pseudo-legal move of the side to move, each once, and answers their number. The buffer holds
// maxMoves moves.
int allMoves(const Position& position, Move* out);

// Writes the castling moves (0 to 2, king side first) that the colour may make. That king and rook stand on
// their squares is taken from these squares being untouched.
int castlingMoves(const Position& position, Colour colour, Move* out);

// 1 if the side to move could have the move generated for it, else 0. En-passant captures and the null move
// are never accepted: whoever is offered such a capture as a hash move waits for it among the generated ones.
int isPseudoLegal(const Position& position, Move move);

inline bool isCapture(const Position& position, Move move) {
    return (position.of(opponent(position.sideToMove()), allPieces) & bit(moveTo(move))) != 0 ||
           moveKind(move) == enPassant;
}

// A capture or a promotion.
inline bool isTactical(const Position& position, Move move) { return isCapture(position, move) || isPromotion(move); }

// A pawn's move into the enemy's half to a square that no enemy pawn can attack, now or later.
bool isFreePawnPush(const Position& position, Move move);

inline bool hasPawnOnSeventh(const Position& position, Colour colour) {
    return (position.of(colour, pawn) & relativeRank(colour, 6)) != 0;
}

// Whether the side that made the last move left its king attacked: the position is then illegal.
bool moverLeftInCheck(const Position& child);

} // namespace helvan
