// SPDX-License-Identifier: MIT
//
// How much less deep late moves are searched, by remaining depth and move number.
#pragma once

namespace helvan {

// Fills the tables; they depend on nothing that changes.
void buildReductions();

// Half-plies by which the search of a move is shortened, at zero-window and at principal-variation nodes. depth in
// half-plies, move number from 1; both may be as large as they like.
int lmrReduction(int depth, int moveNumber);
int pvReduction(int depth, int moveNumber);

} // namespace helvan
