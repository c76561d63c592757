// SPDX-License-Identifier: MIT
#include "eval/scaling.h"

#include <algorithm>

#include "board/bits.h"
#include "eval/parameters.h"

namespace helvan {

namespace {

constexpr int loneBishopWeight = pieceWeights[bishop];
constexpr int weightStep = 8; // weights are compared in these: three make a knight

// 1000 times the square root of 0..21, rounded.
constexpr int sqrtTable[22] = {0,    1000, 1414, 1732, 2000, 2236, 2449, 2646, 2828, 3000, 3162,
                               3317, 3464, 3606, 3742, 3873, 4000, 4123, 4243, 4359, 4472, 4583};

} // namespace

OppositeBishopScale oppositeBishopScale(const ScaledSide (&sides)[2], Colour stronger, int phase) {
    constexpr int phaseOfManyPieces = 55;
    constexpr int scaleWithOtherPieces = 900;
    if (sides[white].pieceWeight == loneBishopWeight && sides[black].pieceWeight == loneBishopWeight) {
        // The bishops stop pawns of one colour each: only several pawns, and passed ones most, can win.
        const int pawns = std::clamp(sides[stronger].pawnCount - 2 + sides[stronger].passedCount, 0, 21);
        const int scale = (sqrtTable[pawns] + 2) / 5;
        return {scale, scale == fullScale}; // never full: the table ends below it
    }
    if (phase > phaseOfManyPieces) return {fullScale, true};
    return {scaleWithOtherPieces, false};
}

int scarceMaterialScale(const ScaledSide (&sides)[2], Colour stronger) {
    constexpr int pawnEndingScale = 1300;
    constexpr int scaleByLead[5] = {100, 100, 100, 200, 400};             // without pawns, by the steps of lead
    constexpr int scaleByPawns[6] = {400, 550, 700, 800, 900, fullScale}; // by the stronger side's pawns
    const int whiteSteps = sides[white].pieceWeight / weightStep;
    const int blackSteps = sides[black].pieceWeight / weightStep;
    const bool pawnless = sides[white].pawnCount == 0 && sides[black].pawnCount == 0;
    if (whiteSteps == 0 && blackSteps == 0 && !pawnless) return pawnEndingScale;
    if (pawnless) return scaleByLead[minimum(absolute(whiteSteps - blackSteps), 4)];
    return scaleByPawns[minimum(sides[stronger].pawnCount, 5)];
}

} // namespace helvan
