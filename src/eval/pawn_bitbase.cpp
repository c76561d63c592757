// SPDX-License-Identifier: MIT
#include "eval/pawn_bitbase.h"

#include "board/attacks.h"
#include "board/geometry.h"

namespace helvan {

std::array<std::uint8_t, pawnBitbaseBits / 8> pawnBitbase;

namespace {

constexpr Square oneStep = -8; // of a pawn that runs towards rank 1
constexpr int homeRank = 6;

constexpr int pawnIndexOf(Square pawnSquare) { return 4 * (rankOf(pawnSquare) - 1) + fileOf(pawnSquare); }
constexpr Square pawnSquareOf(int pawnIndex) { return 8 * (pawnIndex / 4 + 1) + pawnIndex % 4; }

constexpr int bitIndex(int pawnIndex, Square strongKing, Square weakKing, bool ownerToMove) {
    return 2 * (pawnIndex * 4096 + strongKing * 64 + weakKing) + (ownerToMove ? 1 : 0);
}

// The squares from which a king can step into the set.
constexpr Bitboard kingStepsInto(Bitboard squares) {
    const Bitboard beside = squaresBeside(squares);
    const Bitboard rows = squares | beside;
    return beside | rows << 8 | rows >> 8;
}

// By pawn and strong king, the squares of the weak king on which it is lost, as far as known.
struct Solution {
    Bitboard lostWithOwnerToMove[pawnPlacements][64] = {};
    Bitboard lostToMove[pawnPlacements][64] = {};
};

Bitboard wonByPawnMove(const Solution& solution, Square pawnSquare, Square strongKing) {
    const Square front = pawnSquare + oneStep;
    if (front == strongKing) return 0;
    if (rankOf(front) == 0) {
        // A queen wins, or a rook where a queen would be stalemate, unless the lone king takes it at once.
        const bool guarded = (kingAttacks[strongKing] & bit(front)) != 0;
        return guarded ? ~bit(front) : ~(bit(front) | kingAttacks[front]);
    }
    Bitboard won = solution.lostToMove[pawnIndexOf(front)][strongKing];
    if (rankOf(pawnSquare) == homeRank) {
        won |= solution.lostToMove[pawnIndexOf(front + oneStep)][strongKing] & ~bit(front);
    }
    return won;
}

// Adds what the placements known so far decide, one move back; answers whether that was anything.
bool stepBack(Solution& solution, Square pawnSquare, Square strongKing) {
    const int pawnIndex = pawnIndexOf(pawnSquare);
    const Bitboard pawnTakes = pawnAttacksFrom[black][pawnSquare];
    const Bitboard notByKing = ~(kingAttacks[strongKing] | bit(strongKing));
    const Bitboard possible = notByKing & ~bit(pawnSquare);

    Bitboard won = wonByPawnMove(solution, pawnSquare, strongKing);
    for (Bitboard steps = kingAttacks[strongKing] & ~bit(pawnSquare); steps != 0;) {
        won |= solution.lostToMove[pawnIndex][popLowestBit(steps)];
    }
    won &= possible & ~pawnTakes;

    // The weak king may stand on the pawn's square, too: by taking it, which saves the game.
    const Bitboard open = notByKing & ~pawnTakes;
    const Bitboard stalemated = ~kingStepsInto(open) & ~pawnTakes;
    const Bitboard lost = possible & ~kingStepsInto(open & ~won) & ~stalemated;

    const bool news = won != solution.lostWithOwnerToMove[pawnIndex][strongKing] ||
                      lost != solution.lostToMove[pawnIndex][strongKing];
    solution.lostWithOwnerToMove[pawnIndex][strongKing] = won;
    solution.lostToMove[pawnIndex][strongKing] = lost;
    return news;
}

void solveForPawn(Solution& solution, Square pawnSquare) {
    for (bool news = true; news;) {
        news = false;
        for (Square strongKing = 0; strongKing < 64; ++strongKing) {
            if (strongKing != pawnSquare) news |= stepBack(solution, pawnSquare, strongKing);
        }
    }
}

void store(Bitboard weakKings, int pawnIndex, Square strongKing, bool ownerToMove) {
    while (weakKings != 0) {
        const int index = bitIndex(pawnIndex, strongKing, popLowestBit(weakKings), ownerToMove);
        pawnBitbase[index / 8] |= static_cast<std::uint8_t>(1 << index % 8);
    }
}

} // namespace

void initPawnBitbase() {
    static bool filled = false;
    if (filled) return;
    Solution solution;
    // The most advanced pawns come first: a pawn's moves lead to placements that are already solved.
    for (int pawnIndex = 0; pawnIndex < pawnPlacements; ++pawnIndex) solveForPawn(solution, pawnSquareOf(pawnIndex));
    for (int pawnIndex = 0; pawnIndex < pawnPlacements; ++pawnIndex) {
        for (Square strongKing = 0; strongKing < 64; ++strongKing) {
            store(solution.lostWithOwnerToMove[pawnIndex][strongKing], pawnIndex, strongKing, true);
            store(solution.lostToMove[pawnIndex][strongKing], pawnIndex, strongKing, false);
        }
    }
    filled = true;
}

bool pawnEndingWon(Square pawnSquare, Square strongKing, Square weakKing, bool ownerToMove) {
    if (rankOf(pawnSquare) == 0 || rankOf(pawnSquare) == 7) return false;
    const int mirror = fileOf(pawnSquare) >= 4 ? 7 : 0;
    const int index = bitIndex(pawnIndexOf(pawnSquare ^ mirror), strongKing ^ mirror, weakKing ^ mirror, ownerToMove);
    return (pawnBitbase[index / 8] >> index % 8 & 1) != 0;
}

} // namespace helvan
