// SPDX-License-Identifier: MIT
//
// The terms of passed pawns: how far they are, who holds their path, where the kings and rooks stand. For the
// evaluation alone, which inlines them.
#pragma once

#include "board/attacks.h"
#include "board/geometry.h"
#include "eval/evaluation.h"
#include "eval/parameters.h"
#include "eval/tables.h"

namespace helvan {

// All that the colour attacks, but for its king: a king is too slow, and too shy, to hold a path.
template <Colour us> Bitboard attacksWithoutKing(const Evaluation& e) {
    const Bitboard(&attacks)[boardsPerColour] = e.attacks[us];
    return attacks[pawn] | attacks[knight] | attacks[bishop] | attacks[rook] | attacks[queen];
}

template <Colour us> void evaluatePassedKings(Evaluation& e, Square square, int row) {
    constexpr Colour them = opponent(us);
    const Square stop = square + forwardStep(us);
    const Square promotion = relativeSquare(us, 56) + fileOf(square);
    e.credit[us] += passedByOwnKingSteps[row][kingDistance(e.kingSquare[us], stop)];
    e.credit[us] += passedByEnemyKingSteps[row][kingDistance(e.kingSquare[them], stop)];
    if (kingDistance(e.kingSquare[us], promotion) <= 1) e.credit[us] += evalParameters.kingAtPromotion;
    if (kingDistance(e.kingSquare[them], promotion) <= 1) e.credit[them] += evalParameters.kingAtPromotion;
}

template <Colour us> void evaluateRooksBehind(Evaluation& e, Square square) {
    constexpr Colour them = opponent(us);
    const Bitboard behind = fileBefore(them, square);
    if ((behind & e.position.of(us, rook)) != 0) e.credit[us] += evalParameters.rookBehindPassed;
    if ((behind & e.position.of(them, rook)) != 0) e.credit[them] += evalParameters.rookBehindPassed;
}

// What the pawn's path is worth, by how safe it is. The square before the pawn is empty.
template <Colour us> void evaluatePath(Evaluation& e, Square square, int row) {
    constexpr Colour them = opponent(us);
    const Bitboard path = fileBefore(us, square);
    const Bitboard defended = attacksWithoutKing<us>(e);
    const Bitboard pursuers =
        rookAttacks(square, e.occupied) & fileBefore(them, square) & e.position.straightSliders(them);
    const Bitboard attacked =
        pursuers != 0 ? path : path & (attacksWithoutKing<them>(e) | e.position.of(them, allPieces));
    const Bitboard supporters = squaresBeside(bit(square)) | pawnSteps(them, bit(square));
    if ((supporters & e.position.of(us, pawn)) != 0) e.credit[us] += evalParameters.passedSupportTable[row];
    if (attacked == 0) {
        e.credit[us] +=
            (path & ~defended) == 0 ? evalParameters.passedFreeSafeTable[row] : evalParameters.passedFreeTable[row];
    } else {
        e.credit[us] += (attacked & ~defended) == 0 ? evalParameters.passedAttackedDefendedTable[row]
                                                    : evalParameters.passedAttackedTable[row];
    }
    if ((path & e.position.of(us, allPieces)) == 0) e.credit[us] += evalParameters.passedUnblockedTable[row];
}

template <Colour us> void evaluatePassedPawns(Evaluation& e) {
    constexpr int fourthRank = 2; // as rows count
    const auto& list = e.pawns->passed[us];
    for (int i = 0; i < longestPassedList && list[i] != 0; ++i) {
        const Square square = list[i];
        const int row = relativeRankOf(us, square) - 1; // 0 on the second rank, 5 on the seventh
        e.credit[us] += evalParameters.passedBaseTable[row];
        if (row < fourthRank) continue;
        evaluatePassedKings<us>(e, square, row);
        if (row > fourthRank) evaluateRooksBehind<us>(e, square); // from the fifth rank on, not before
        if ((e.occupied & bit(square + forwardStep(us))) == 0) evaluatePath<us>(e, square, row);
    }
}

} // namespace helvan
