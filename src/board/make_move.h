// SPDX-License-Identifier: MIT
//
// The one way to advance a position.
#pragma once

#include "board/position.h"

namespace helvan {

// Writes the position after the move (nullMove to pass) into the child and counts a node. The parent stays as
// it is and must outlive the child, which links to it. Nothing is tested: the caller checks afterwards that
// the mover's king is not attacked, and stores the child's inCheck, until then a copy of the parent's, or 0 after
// a null move.
// A from-square without a piece of the mover, and the capture of a king, are reported on standard output and
// carried on with: they are faults of the caller. Always answers 1.
int makeMove(const Position& parent, Position& child, Move move);

// Whether a child's incremental fields differ from its parent's by just what its boards say: the check that
// make-move is held to after every move in debug builds. For playable parents and pseudo-legal moves.
bool incrementalStateAgrees(const Position& parent, const Position& child);

} // namespace helvan
