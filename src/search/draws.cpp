// SPDX-License-Identifier: MIT
#include "search/draws.h"

#include <algorithm>
#include <array>

#include "search/settings.h"

namespace helvan {

namespace {

constexpr int signatureCount = 11;

std::array<Key, signatureCount> makeDrawSignatures() {
    const auto one = [](Colour colour, PieceType type) { return materialKeys[materialIndex(colour, type)]; };
    const Key whiteKnight = one(white, knight), blackKnight = one(black, knight);
    const Key whiteBishop = one(white, bishop), blackBishop = one(black, bishop);
    return {0, // bare kings
            whiteKnight,
            blackKnight,
            whiteBishop,
            blackBishop,
            whiteKnight + blackKnight,
            whiteBishop + blackBishop,
            whiteKnight + blackBishop,
            whiteBishop + blackKnight,
            2 * whiteKnight,
            2 * blackKnight};
}

} // namespace

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

bool recognisedDraw(const Position& position, int ply) {
    constexpr int mostPhase = 8;
    constexpr int firstPly = 3;
    if (position.phase > mostPhase || ply < firstPly) return false;
    if (position.inCheck != 0 || (position.prev != nullptr && position.prev->inCheck != 0)) return false;
    static const std::array<Key, signatureCount> drawSignatures = makeDrawSignatures();
    return std::find(drawSignatures.begin(), drawSignatures.end(), position.materialKey) != drawSignatures.end();
}

int usedDrawScore() {
    constexpr int farthest = 30000;
    return std::clamp(searchSettings.drawScore, -farthest, farthest);
}

} // namespace helvan
