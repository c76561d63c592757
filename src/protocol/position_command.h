// SPDX-License-Identifier: MIT
//
// The command "position", which replaces the game.
#pragma once

#include "protocol/session.h"
#include "protocol/words.h"

namespace helvan {

// Back to the start position without moves.
void resetGame(GameHistory& gameHistory);

// "position startpos|fen FEN [moves MOVE ...]". A move that does not fit is reported and ends the list; the
// game then stays at the last good move. A FEN with fewer than four fields is reported and changes nothing.
// Neither "startpos" nor "fen", or a FEN without a side to move, ends the process.
void positionCommand(Session& session, const Words& words);

} // namespace helvan
