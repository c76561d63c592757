// SPDX-License-Identifier: MIT
#include "search/draws.h"

namespace helvan {

bool drawnByRule(const Position& position) {
    constexpr int fiftyMoveLimit = 99; // plies
    constexpr int shortestCycle = 4;   // plies: both sides move away and back
    if (position.fifty > fiftyMoveLimit) return true;
    const Position* ancestor = &position;
    for (int back = 1; back <= position.fifty; ++back) {
        ancestor = ancestor->prev;
        if (ancestor == nullptr) return false;
        if (back >= shortestCycle && back % 2 == 0 && ancestor->key == position.key) return true;
    }
    return false;
}

} // namespace helvan
