// SPDX-License-Identifier: MIT
//
// What the search remembers of moves to try the promising ones early: killers by ply, answers to the move before, and
// the success of quiet moves.
#pragma once

#include <array>
#include <cstdint>

#include "board/move_picker.h"
#include "board/position.h"

namespace helvan {

inline constexpr int killerPlies = 256;

inline std::array<Move, killerPlies> killerPrimary;
inline std::array<Move, killerPlies> killerSecondary;

struct CounterMove {
    std::int32_t pieceType; // of the piece that made the move before
    Move move;
};

// By the mover and the squares of the move before.
inline std::array<CounterMove, 14 * 4096> counterMove;

// Success of quiet moves, 0..65536, by side and type x 64 + to-square.
inline constexpr std::int32_t largestHistory = 65536;
inline std::int32_t history[2][512];

// The same of quiet moves after each move, -largestSequel..largestSequel: first by side and by type x 64 + to-square of
// the move before, the enemy's last for replies and the side's own last for follow-ups. Type 0 is a move by nobody
// known: none, a null move, or the double push that a FEN's en-passant square tells of.
inline constexpr int largestSequel = 16000;
using SequelHistory = std::int16_t[2][512][512];
inline SequelHistory replyHistory;
inline SequelHistory followUpHistory;

// The counters that order the quiet moves of the side to move.
QuietOrder quietOrderOf(const Position& position);

void clearKillers();
void clearCounterMoves();
void clearHistory();

// The stored answer to the position's last move, 0 if there is none.
Move counterMoveOf(const Position& position);

// Notes a quiet move that refuted the position, ply (below killerPlies) from the root and searched depth half-plies
// deep, and the quiet moves tried before it without success; the move itself may be among them.
void noteCutoff(const Position& position, int ply, int depth, Move move, const Move* triedBefore, int triedCount);

} // namespace helvan
