// SPDX-License-Identifier: MIT
//
// The game so far, and the command "position" that replaces it.
#pragma once

#include "board/position.h"
#include "protocol/words.h"

namespace helvan {

// Slot 0 holds the position set up from text, slot i + 1 the one after the i-th move, each linked to the one
// before it; ply is the slot of the current position.
struct GameHistory {
    static constexpr int capacity = 8192;

    Position positions[capacity];
    int ply = 0;

    const Position& current() const { return positions[ply]; }
};

inline GameHistory gameHistory;

// Back to the start position without moves.
void resetGame();

// "position startpos|fen FEN [moves MOVE ...]". A move that does not fit is reported and ends the list; the
// game then stays at the last good move. A FEN with fewer than four fields is reported and changes nothing.
// Neither "startpos" nor "fen", or a FEN without a side to move, ends the process.
void positionCommand(const Words& words);

} // namespace helvan
