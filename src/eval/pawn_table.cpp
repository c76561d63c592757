// SPDX-License-Identifier: MIT
#include "eval/pawn_table.h"

namespace helvan {

std::array<PawnEntry, pawnTableMask + 1> pawnTable;

void clearPawnTable() {
    for (PawnEntry& entry : pawnTable) entry.key = 0;
}

} // namespace helvan
