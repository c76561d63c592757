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

// The captures on one square, each side with its least valuable attacker.
class Exchange {
public:
    // What the move itself wins, and then the captures that may answer it.
    Exchange(const Position& from, Move move, Colour mover)
        : Exchange(from, move, mover, pieceTypeAt(from, mover, moveFrom(move)),
                   pieceTypeAt(from, opponent(mover), moveTo(move))) {}

    Exchange(const Position& from, Move move, Colour mover, PieceType type, PieceType victim)
        : position(from), square(moveTo(move)), side(mover),
          occupied((from.occupied() & ~bit(moveFrom(move))) | bit(square)), firstGain(exchangeValues[victim]),
          standing(exchangeValues[type]) {
        if (isPromotion(move)) {
            const int promoted = exchangeValues[promotedType(moveKind(move))];
            firstGain += promoted - standing;
            standing = promoted;
        }
    }

    // The value of the enemy pawn or knight that can answer the move, found without a look along lines; a king's where
    // neither can.
    int lightestAnswer() const {
        const Colour enemy = opponent(side);
        if ((pawnAttacksFrom[side][square] & position.of(enemy, pawn)) != 0) return exchangeValues[pawn];
        if ((knightAttacks[square] & position.of(enemy, knight)) != 0) return exchangeValues[knight];
        return exchangeValues[king];
    }

    // Looks for the attackers; to be called once, before the first capture.
    void begin() { attackers = allAttackersOf(position, square, occupied); }

    // The other side captures what stands on the square, and its capturer stands there; false where it cannot.
    bool capture() {
        side = opponent(side);
        attackers &= occupied;
        const Bitboard own = attackers & position.of(side, allPieces);
        if (own == 0) return false;
        // A king there has moved into an attack: it is taken, whatever stands behind it, and that is the end.
        if (standing == exchangeValues[king]) {
            attackers = 0;
            return true;
        }
        const Attacker next = leastValuable(position, side, own);
        occupied ^= next.square;
        addUncovered(next.type);
        if (next.type == king && (attackers & occupied & position.of(opponent(side), allPieces)) != 0) return false;
        standing = exchangeValues[next.type];
        return true;
    }

    const Position& position;
    Square square;
    Colour side; // that captured last
    Bitboard occupied;
    Bitboard attackers = 0;
    int firstGain;
    int standing; // value of the piece that can be captured next

private:
    // What stood behind the capturer attacks now.
    void addUncovered(PieceType capturer) {
        if (capturer != knight && capturer != rook) {
            attackers |=
                bishopAttacks(square, occupied) & (position.diagonalSliders(white) | position.diagonalSliders(black));
        }
        if (capturer >= rook) {
            attackers |=
                rookAttacks(square, occupied) & (position.straightSliders(white) | position.straightSliders(black));
        }
    }
};

// The capture on the square by the colour's least valuable attacker, or nullMove if it has none.
Move cheapestCapture(const Position& position, Square square, Colour colour) {
    const Bitboard attackers = attackersOf(position, square, colour, position.occupied());
    if (attackers == 0) return nullMove;
    return encodeMove(lowestBit(leastValuable(position, colour, attackers).square), square);
}

} // namespace

int see(const Position& position, Move move, int flip) {
    if (isOutsideExchange(move)) return 0;
    Exchange exchange(position, move, position.sideToMove() ^ flip);
    int gains[maxExchangeLength + 1];
    gains[0] = exchange.firstGain;
    exchange.begin();
    int length = 0;
    for (int standing = exchange.standing; length < maxExchangeLength && exchange.capture();
         standing = exchange.standing) {
        ++length;
        gains[length] = standing - gains[length - 1];
    }
    // Backwards: each side captures only where that gains on what it has without.
    for (; length > 0; --length) gains[length - 1] = -maximum(-gains[length - 1], gains[length]);
    return gains[0];
}

namespace {

bool reaches(Exchange& exchange, int threshold) {
    // By how much the side that captured last is above what it needs; the other side has to win more than that.
    int surplus = exchange.firstGain - threshold;
    if (surplus < 0) return false;
    surplus = exchange.standing - surplus - 1;
    if (surplus < 0) return true;
    if (exchange.lightestAnswer() <= surplus) return false;
    exchange.begin();
    bool reached = true;
    while (exchange.capture()) {
        reached = !reached;
        surplus = exchange.standing - surplus - 1;
        if (surplus < 0) break;
    }
    return reached;
}

} // namespace

bool seeAtLeast(const Position& position, Move move, int threshold, int flip) {
    if (isOutsideExchange(move)) return threshold <= 0;
    Exchange exchange(position, move, position.sideToMove() ^ flip);
    return reaches(exchange, threshold);
}

bool losesMaterial(const Position& position, Move move, PieceType mover, PieceType victim) {
    if (isOutsideExchange(move)) return false;
    Exchange exchange(position, move, position.sideToMove(), mover, victim);
    return !reaches(exchange, 0);
}

int captureGain(const Position& position, Square square, Colour colour) {
    const Move capture = cheapestCapture(position, square, colour);
    return capture == nullMove ? 0 : maximum(see(position, capture, colour ^ position.sideToMove()), 0);
}

bool isEnPrise(const Position& position, Square square, Colour colour) {
    const Move capture = cheapestCapture(position, square, colour);
    return capture != nullMove && seeAtLeast(position, capture, 1, colour ^ position.sideToMove());
}

} // namespace helvan
