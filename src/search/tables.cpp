// SPDX-License-Identifier: MIT
#include "search/tables.h"

#include "eval/tables.h"

namespace helvan {

void rebuildTables(SearchTables& tables) {
    initAllEvaluation();
    clearPawnTable(tables.evalCaches);
    tables.transpositionTable.clear();
}

} // namespace helvan
