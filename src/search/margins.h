// SPDX-License-Identifier: MIT
//
// The numbers of the search's rules, each named after its rule: margins in centipawns, depths in half-plies,
// extensions in quarter-plies. Pure functions and data.
#pragma once

#include <array>

#include "board/bits.h"

namespace helvan {

// --- scores

inline constexpr int certainlyLost = -31900; // below this the best score so far is a mate against us
inline constexpr int captureBonus = 5;       // for the side to move after a capture: it may have a recapture

// --- horizon: a line is searched once a ply deeper where its evaluation is shaky

inline constexpr int scoutHorizonMargin = 75; // above beta
inline constexpr int pvHorizonMargin = 99;    // about the window

// --- static evaluation

inline constexpr int hopelessDepth = 8;     // below this depth ...
inline constexpr int hopelessMargin = 1250; // ... so far under beta nothing is searched
inline constexpr int winningEval = 401;     // from here on a node is searched a ply less deep
inline constexpr int winningDepth = 4;

// --- null move

inline constexpr int nullMargin = 5;    // above beta
inline constexpr int nullMoveDepth = 6; // from here on the null move is searched
inline constexpr int expectedAllNodeMargin = 70;
inline constexpr int staticNullMostDepth = 7; // up to here the evaluation alone may decide
// By depth: what is enough by itself, and what is enough beside threatMargin.
inline constexpr std::array<int, 8> staticNullMargin = {0, 0, 110, 115, 125, 130, 140, 160};
inline constexpr std::array<int, 6> staticNullMargin2 = {0, 0, 10, 15, 30, 35};

// By the loss, in pawns, that the side to move stands to suffer.
constexpr int threatMargin(int loss) {
    constexpr int margins[8] = {0, 50, 62, 70, 76, 81, 86, 90};
    return margins[minimum(loss, 7)];
}

// In thousandths of a half-ply, by how far the evaluation is above beta, 0..639: 2000 x tanh(x / 130.3). Worked out
// with plain arithmetic, the same with every library.
constexpr std::array<int, 640> makeNullReduction() {
    std::array<int, 640> table{};
    for (int x = 0; x < 640; ++x) {
        // exp(2 x / 130.3) by its series on a small part of the exponent, then squared up.
        constexpr int halvings = 10;
        const double small = 2.0 * x / 130.3 / (1 << halvings);
        double term = 1.0, power = 1.0;
        for (int n = 1; n < 12; ++n) {
            term = term * small / n;
            power += term;
        }
        for (int n = 0; n < halvings; ++n) power *= power;
        table[x] = static_cast<int>(2000.0 * (power - 1.0) / (power + 1.0));
    }
    return table;
}
inline constexpr std::array<int, 640> nullReduction = makeNullReduction();

// Half-plies that a null move is searched less deep, beside the ply of the move itself. surplus: eval - beta, 0 or
// more.
constexpr int nullMoveReduction(int surplus, int phase, int depth) {
    constexpr int fewPieces = 24; // phase
    const int base = phase < fewPieces ? 4000 : 6000;
    return (nullReduction[minimum(surplus, 639)] + base + 250 * depth - 2500) / 1000;
}

// --- razoring

inline constexpr int razorBase = 120;
inline constexpr int razorQuiescenceDepth = 3; // up to here the quiescence search's score stands as it is
inline constexpr int razorMostDepth = 9;
inline constexpr std::array<int, 10> razorMargin = {0, 20, 40, 60, 80, 100, 120, 140, 160, 180}; // by depth - 2

// --- choice and number of moves

constexpr int futilityMargin(int depth) { return 60 + 2 * depth * depth; }
inline constexpr int tacticalOnlyPlies = 5; // up to this depth / 2

// Moves after which quiet ones are left out, by the node's parity and depth.
inline constexpr int lateMoveCount[2][10] = {{0, 0, 3, 4, 5, 6, 7, 8, 14, 17}, {0, 0, 4, 5, 6, 7, 8, 9, 10, 11}};
inline constexpr int lateMovePruningDepth = 7;
inline constexpr int lateMoveCutPlies = 4;

inline constexpr int firstFutileMove = 7;

// 2^k of the futility rule, in centipawns: the deeper, the more a quiet move may still gain. newDepth: 6 or more.
constexpr int futilityGain(int newDepth, int parity) { return 1 << (parity != 0 ? newDepth - 6 : newDepth - 4); }

constexpr int futilityBound(int eval, int newDepth, int moveNumber, int parity) {
    return eval - 4 * moveNumber + 30 + futilityGain(newDepth, parity) + 2 * newDepth;
}

// The bound of the second look, with the evaluation of the position after the move (for its side to move).
constexpr int futilityBoundAfterMove(int childEval, int newDepth, int moveNumber, int parity) {
    return 2 * newDepth + futilityGain(newDepth, parity) - 4 * moveNumber - childEval;
}
inline constexpr int futilitySecondLook = 119; // the second look is for bounds this close above beta

// Where a shortened search would end at the horizon's edge it is made one of the horizon.
constexpr int reducedDepth(int newDepth, int reduction) {
    const int depth = newDepth - 2 - reduction;
    return depth == 2 || depth == 3 ? 0 : depth;
}

// --- extensions

inline constexpr int mostExtension = 4; // of all together, the next one apart
inline constexpr int intoPawnEndingExtension = 8;
inline constexpr int singleReplyPlies = 7; // from this depth / 2 on single replies are looked for
inline constexpr int singleReplyExtension = 2;
inline constexpr int checkExtension = 2;
inline constexpr int singleReplyCheckExtension = 4; // instead of the one above
inline constexpr int expectedCutCheckExtension = 1; // beside it
inline constexpr int expectedCutCheckDepth = 15;    // up to here
inline constexpr int pawnPushExtension = 2;
inline constexpr int pawnPushPhase = 33;       // below this the push of a free pawn is extended
inline constexpr int safeCaptureExtension = 2; // on the principal variation ...
inline constexpr int safeCaptureMoves = 3;     // ... among so many first moves
inline constexpr int hashMoveExtension = 2;    // the hash move searched first, without other reason
inline constexpr int hashMoveLeastDepth = 6;
inline constexpr int hashMoveMostDepth = 15;
inline constexpr int singularExtension = 2;
inline constexpr int singularExtensionNearRoot = 4; // where depth is at least ...
inline constexpr int singularPliesFactor = 4;       // ... so many times the ply
inline constexpr int singularMostBefore = 2;        // no test where other reasons extend more than this
inline constexpr int singularScoutDepth = 15;       // from here on the test is made at zero-window nodes ...
inline constexpr int singularPvDepth = 16;          // ... and on the principal variation
inline constexpr int singularEntryDepth = 6;        // less deep the search behind the hash score may have been
inline constexpr int singularMargin = 20;
constexpr int singularDepth(int depth) { return depth - minimum(depth / 2, 12); }

// --- quiescence

inline constexpr int pawnDeltaMargin = 80;
inline constexpr int pieceDeltaMargin = 140;
inline constexpr int deepestProbe = -10; // quiescence depths, counted down from 0
inline constexpr int deepestQuiescence = -59;
inline constexpr int deepestQuietChecks = -2;
inline constexpr int recapturesOnlyBelow = -16;

// --- driver

inline constexpr int aspirationMin = 16;

} // namespace helvan
