// SPDX-License-Identifier: MIT
//
// What pawns are worth by themselves and to both kings, and which of them are passed.
#pragma once

#include "board/position.h"
#include "eval/eval_caches.h"

namespace helvan {

// The entry of the position's pawns and kings, computed if it is not stored. Valid until the next call. The position
// has one king of each colour and no pawn on the first or last rank, and the tables are built.
const PawnEntry& evaluatePawns(const Position& position, EvalCaches& caches);

// The same, computed without the table.
PawnEntry pawnEntryOf(const Position& position);

// What one colour's pawns are worth to it, computed without the table.
PackedScore pawnStructureOf(const Position& position, Colour us);

} // namespace helvan
