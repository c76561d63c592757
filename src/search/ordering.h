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

// By ply from the root: the two quiet moves that last refuted a position there, the later first.
struct Killers {
    static constexpr int plies = 256;

    std::array<Move, plies> killerPrimary{};
    std::array<Move, plies> killerSecondary{};
};

struct CounterMove {
    std::int32_t pieceType; // of the piece that made the move before
    Move move;
};

inline constexpr std::int32_t largestHistory = 65536;
inline constexpr int largestSequel = 16000;

// Success of a quiet move that follows another, -largestSequel..largestSequel: first by side and by type x 64 +
// to-square of the move before, then by type x 64 + to-square. Type 0 is a move by nobody known: none, a null move, or
// the double push that a FEN's en-passant square tells of.
using SequelHistory = std::int16_t[2][512][512];

// What outlasts a search, some megabytes.
struct MoveHistory {
    std::array<CounterMove, 14 * 4096> counterMove; // by the mover and the squares of the move before
    std::int32_t history[2][512];                   // 0..largestHistory, by side and type x 64 + to-square
    SequelHistory replyHistory;                     // to the enemy's last move
    SequelHistory followUpHistory;                  // to the side's own last move
};

void clearMoveHistory(MoveHistory& history);

// The counters that order the quiet moves of the side to move.
QuietOrder quietOrderOf(const MoveHistory& moveHistory, const Position& position);

// The stored answer to the position's last move, 0 if there is none.
Move counterMoveOf(const MoveHistory& moveHistory, const Position& position);

// Notes a quiet move that refuted a position, ply (below Killers::plies) from the root.
void noteKiller(Killers& killers, int ply, Move move);

// Notes a quiet move that refuted the position, searched depth half-plies deep, and the quiet moves tried before it
// without success; the move itself may be among them.
void noteSuccess(MoveHistory& moveHistory, const Position& position, int depth, Move move, const Move* triedBefore,
                 int triedCount);

} // namespace helvan
