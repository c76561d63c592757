// SPDX-License-Identifier: MIT
//
// What searches learn and leave behind for the next one.
#pragma once

#include "eval/eval_caches.h"
#include "search/ordering.h"
#include "search/transposition_table.h"

namespace helvan {

// All zero at first, some megabytes: one for each thread that searches. Searches of one thread, also those that begin
// in the middle of another, share theirs.
struct SearchTables {
    TranspositionTable transpositionTable;
    EvalCaches evalCaches;
    MoveHistory moveHistory;
    bool usedBefore = false; // a search has left something here: the first one forgets what there is
};

// Builds all tables of the evaluation anew, process-wide, and forgets every score that the search has stored under the
// old ones, but for the cache of whole evaluations: there a score of the old parameters may be answered until its slot
// is taken. To be called at start and whenever a parameter of the evaluation has changed.
void rebuildTables(SearchTables& tables);

} // namespace helvan
