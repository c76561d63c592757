// SPDX-License-Identifier: MIT
//
// What the searches of all kinds of nodes share: evaluation with its refinement by the table, legal moves, and lines.
// For the search alone, which inlines it.
#pragma once

#include "board/attacks.h"
#include "board/checks.h"
#include "board/exchange.h"
#include "board/move_picker.h"
#include "board/moves.h"
#include "eval/evaluate.h"
#include "search/draws.h"
#include "search/margins.h"
#include "search/search.h"
#include "search/stopping.h"

namespace helvan {

// A table hit, copied: a command in the middle of the search may free the table.
struct TableHit {
    bool found = false;
    Move move = nullMove;
    int score = 0; // as stored
    int depth = 0;
    Bound bound = noBound;

    // Whether the stored score, as it stands, settles the window below or above beta; an exact one bounds from both
    // sides.
    bool settles(int beta) const {
        return found && (((bound & lowerBound) != 0 && beta <= score) || ((bound & upperBound) != 0 && beta > score));
    }
};

inline TableHit probeTable(const Search& search, const Position& position) {
    const TTEntry* entry = search.tables.transpositionTable.probe(position.key);
    if (entry == nullptr) return {};
    return {true, entry->move, entry->score, entry->depth, entry->bound()};
}

// The evaluation for the side to move, stored in the position.
inline int evaluateNode(Search& search, Position& position) {
    const int eval = evaluate(position, search.tables.evalCaches) + (position.capturedPiece != 0 ? captureBonus : 0);
    position.evalScratch = eval;
    return eval;
}

// The evaluation, brought nearer to the truth by what an earlier search found.
inline int refinedEval(int eval, const TableHit& hit) {
    if (!hit.found || absolute(hit.score) > mateBorder) return eval;
    switch (hit.bound) {
    case exactBound: return hit.score;
    case lowerBound: return maximum(eval, hit.score);
    case upperBound: return minimum(eval, hit.score);
    default: return eval;
    }
}

// Makes the move; false where it leaves the mover's king attacked. The child's inCheck is then true to the board.
inline bool makeLegalMove(Search& search, const Position& position, Position& child, Move move) {
    countNode(search);
    return advanceLegally(position, child, move);
}

// The same, sooner; the child's table entry is on its way.
inline bool makeLegalMove(Search& search, const Position& position, Position& child, PickedMove picked) {
    makeMove(search, position, child, picked.move, picked.mover, picked.victim);
    search.tables.transpositionTable.prefetch(child.key);
    return settleCheck(child);
}

// Writes the move and the line behind it, cut to pvCapacity.
inline void joinPv(Move* pvOut, Move move, const Move* line) {
    *pvOut++ = move;
    for (int i = 0; i < pvCapacity - 2 && line[i] != nullMove; ++i) *pvOut++ = line[i];
    *pvOut = nullMove;
}

} // namespace helvan
