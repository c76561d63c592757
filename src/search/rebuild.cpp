// SPDX-License-Identifier: MIT
#include "search/rebuild.h"

#include "eval/tables.h"
#include "search/transposition_table.h"

namespace helvan {

void rebuildTables() {
    initAllEvaluation();
    transpositionTable.clear();
}

} // namespace helvan
