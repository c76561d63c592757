// SPDX-License-Identifier: MIT
#include "board/exchange.h"

#include "board/attacks.h"

namespace helvan {

namespace {

constexpr int maxExchangeLength = 64; // no more pieces than squares, even on boards that no game reaches

// The kinds that see answers 0 for share this bit.
constexpr bool isOutsideExchange(Move move) { return (moveKind(move) & 2) != 0; }

struct Attacker {
    PieceType type;
    Bitboard square;
};

// The least valuable of the colour's pieces in a non-empty set.
Attacker leastValuable(const Position& position, Colour colour, Bitboard attackers) {
    for (PieceType type = pawn; type < king; ++type) {
        const Bitboard ofType = attackers & position.of(colour, type);
        if (ofType != 0) return {type, ofType & (~ofType + 1)};
    }
    return {king, attackers & (~attackers + 1)};
}

} // namespace

int see(const Position& position, Move move, int flip) {
    if (isOutsideExchange(move)) return 0;
    const Square from = moveFrom(move);
    const Square to = moveTo(move);
    Colour side = position.sideToMove() ^ flip;

    int standing = exchangeValues[pieceTypeAt(position, side, from)]; // of the piece that can be captured next
    int gains[maxExchangeLength + 1];
    gains[0] = exchangeValues[pieceTypeAt(position, opponent(side), to)];
    if (isPromotion(move)) {
        const int promoted = exchangeValues[promotedType(moveKind(move))];
        gains[0] += promoted - standing;
        standing = promoted;
    }

    Bitboard occupied = (position.occupied() & ~bit(from)) | bit(to);
    const Bitboard straight = position.straightSliders(white) | position.straightSliders(black);
    const Bitboard diagonal = position.diagonalSliders(white) | position.diagonalSliders(black);
    Bitboard attackers = attackersOf(position, to, white, occupied) | attackersOf(position, to, black, occupied);

    int length = 0;
    while (length < maxExchangeLength) {
        side = opponent(side);
        attackers &= occupied;
        const Bitboard own = attackers & position.of(side, allPieces);
        if (own == 0) break;
        const Attacker next = leastValuable(position, side, own);
        occupied ^= next.square;
        // What stood behind the capturer attacks now.
        attackers |= (bishopAttacks(to, occupied) & diagonal) | (rookAttacks(to, occupied) & straight);
        if (next.type == king && (attackers & occupied & position.of(opponent(side), allPieces)) != 0) break;
        ++length;
        gains[length] = standing - gains[length - 1];
        standing = exchangeValues[next.type];
    }
    // Backwards: each side captures only where that gains on what it has without.
    for (; length > 0; --length) gains[length - 1] = -maximum(-gains[length - 1], gains[length]);
    return gains[0];
}

int captureGain(const Position& position, Square square, Colour colour) {
    const Bitboard attackers = attackersOf(position, square, colour, position.occupied());
    if (attackers == 0) return 0;
    const Square from = lowestBit(leastValuable(position, colour, attackers).square);
    return maximum(see(position, encodeMove(from, square), colour ^ position.sideToMove()), 0);
}

bool losesMaterial(const Position& position, Move move) {
    if (isOutsideExchange(move) || isPromotion(move)) return see(position, move) < 0;
    const Colour us = position.sideToMove();
    const int victim = exchangeValues[pieceTypeAt(position, opponent(us), moveTo(move))];
    const int mover = exchangeValues[pieceTypeAt(position, us, moveFrom(move))];
    return victim < mover && see(position, move) < 0;
}

} // namespace helvan
