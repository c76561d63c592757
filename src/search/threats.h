// SPDX-License-Identifier: MIT
//
// Whether something is about to be lost: what keeps the search from cutting a line short.
#pragma once

#include "board/position.h"

namespace helvan {

// Whether the piece that made the last move could win something now: the exchange on a piece that it attacks pays.
// False after a null move.
bool lastMoveThreatens(const Position& position);

// What the side to move stands to lose, in pawns: the most that an exchange on one of its pieces brings the enemy;
// 15 when an enemy pawn is about to promote.
int threatenedLoss(const Position& position);

} // namespace helvan
