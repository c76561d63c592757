// SPDX-License-Identifier: MIT
//
// Static exchange evaluation: what a move gains or loses in the captures that may follow on its to-square.
#pragma once

#include "board/position.h"

namespace helvan {

// The values the exchange is counted in, by piece type, in centipawns.
inline constexpr int exchangeValues[8] = {0, 100, 300, 300, 500, 900, 10000, 0};

// The material balance, in centipawns for the mover, of the exchange on the move's to-square: both sides
// capture with their least valuable attacker, pieces behind an attacker join once it has captured, either side
// stops when capturing on would lose, and a king captures only what no longer has a defender. A king that moves first
// where it is attacked is itself lost, whatever stands behind it. The mover is the side to move, or its opponent with
// flip 1. A promotion to queen or knight counts its gain.
// Answers 0 for en passant, castling and promotions to rook or bishop.
int see(const Position& position, Move move, int flip = 0);

// What the colour gains by capturing on the square, which an enemy piece stands on, with its least valuable attacker;
// 0 when it has none or the capture loses.
int captureGain(const Position& position, Square square, Colour colour);

// see(position, move, flip) >= threshold, sooner.
bool seeAtLeast(const Position& position, Move move, int threshold, int flip = 0);

inline bool losesMaterial(const Position& position, Move move) { return !seeAtLeast(position, move, 0); }

// The same, sooner, where it is known what moves and what it takes on its to-square (phantom: nothing).
bool losesMaterial(const Position& position, Move move, PieceType mover, PieceType victim);

// captureGain(position, square, colour) > 0, sooner.
bool isEnPrise(const Position& position, Square square, Colour colour);

} // namespace helvan
