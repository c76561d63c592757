// SPDX-License-Identifier: MIT
#include "search/reductions.h"

#include "board/bits.h"

namespace helvan {

namespace {

constexpr int rows = 210;    // by depth
constexpr int columns = 400; // by move number

int lmrTable[rows][columns];
int pvTable[rows][columns];

// The step that a move number falls into when each is twice as long as the one before: 0 below first, 1 below twice
// first, ... up to 5.
int doublingStep(int moveNumber, int first) {
    int step = 0;
    while (step < 5 && moveNumber >= first << step) ++step;
    return step;
}

int lookUp(const int (&table)[rows][columns], int depth, int moveNumber) {
    return table[minimum(maximum(depth, 0), rows - 1)][minimum(moveNumber, columns - 1)];
}

} // namespace

void buildReductions() {
    constexpr int firstReducedPvMove = 5;
    constexpr int firstReducedMove = 3;
    constexpr int pvSteps[6] = {0, 2, 3, 4, 5, 6};
    constexpr int lmrSteps[6] = {0, 2, 4, 6, 8, 10};
    for (int depth = 2; depth < rows; ++depth) {
        for (int number = 1; number < columns; ++number) {
            pvTable[depth][number] = pvSteps[doublingStep(number, firstReducedPvMove)];
            lmrTable[depth][number] = lmrSteps[doublingStep(number, firstReducedMove)];
        }
    }
}

int lmrReduction(int depth, int moveNumber) { return lookUp(lmrTable, depth, moveNumber); }
int pvReduction(int depth, int moveNumber) { return lookUp(pvTable, depth, moveNumber); }

} // namespace helvan
