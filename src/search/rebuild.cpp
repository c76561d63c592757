// SPDX-License-Identifier: MIT
#include "search/rebuild.h"

#include "eval/tables.h"

namespace helvan {

void rebuildTables() { initAllEvaluation(); }

} // namespace helvan
