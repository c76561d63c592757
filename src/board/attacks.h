// SPDX-License-Identifier: MIT
//
// The geometry of the board: what a piece attacks, and which squares lie on or between lines.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "board/bits.h"
#include "board/position.h"
#include "board/types.h"

namespace helvan {

extern const std::array<Bitboard, 64> knightAttacks;
extern const std::array<Bitboard, 64> kingAttacks;
extern const std::array<std::array<Bitboard, 64>, 2> pawnAttacksFrom; // by the pawn's colour and square

extern const std::array<Bitboard, 64> rookLines;   // rank and file through the square, the square included
extern const std::array<Bitboard, 64> bishopLines; // both diagonals through the square, the square included
extern const std::array<Bitboard, 64> queenLines;  // both of these

// The squares strictly between two squares of one rank, file or diagonal (a1, h8: b2..g7); else empty.
extern const std::array<std::array<Bitboard, 64>, 64> between;

// Three whole adjacent files: the square's own and its neighbours, shifted inwards at the board's edge, so
// that squares on the a- and b-file get the files a to c.
extern const std::array<Bitboard, 64> ThreeFileMask;

// Sliding attacks by magic multiplication (Kannan, "Magic move-bitboard generation", 2007) with one shift for
// all squares: the blockers that matter, times the square's multiplier, shifted down, index the square's
// block in one shared array. The blocks overlap: the indices that one never uses hold what others look up.
struct Magic {
    std::uint64_t multiplier;
    std::uint32_t offset; // where the square's block begins in slidingAttacks
};

// Where the attacks behind these blockers stand in slidingAttacks.
constexpr std::size_t magicIndex(const Magic& magic, Bitboard blockers, int shift) {
    return static_cast<std::size_t>(blockers * magic.multiplier >> shift) + magic.offset;
}

inline constexpr int rookShift = 52;   // a 12-bit index
inline constexpr int bishopShift = 55; // a 9-bit index

// Enough for every index that the shifts allow, used or not, in every block.
inline constexpr int slidingAttacksSize = 105064;

extern const std::array<Bitboard, 64> rookMask; // the rays without the square and without their last squares
extern const std::array<Bitboard, 64> bishopMask;
extern const std::array<Magic, 64> rookMagic;
extern const std::array<Magic, 64> bishopMagic;
extern std::array<Bitboard, slidingAttacksSize> slidingAttacks;

// Fills slidingAttacks; everything else here is constant. To be called before the first sliding look-up; calling
// it again changes nothing.
void initSlidingAttacks();

// The squares that a slider attacks: along each ray up to the first occupied square, that one included,
// whosever it is.
inline Bitboard rookAttacks(Square square, Bitboard occupied) {
    const Magic& magic = rookMagic[square];
    return slidingAttacks[magicIndex(magic, occupied & rookMask[square], rookShift)];
}
inline Bitboard bishopAttacks(Square square, Bitboard occupied) {
    const Magic& magic = bishopMagic[square];
    return slidingAttacks[magicIndex(magic, occupied & bishopMask[square], bishopShift)];
}
inline Bitboard queenAttacks(Square square, Bitboard occupied) {
    return rookAttacks(square, occupied) | bishopAttacks(square, occupied);
}

// What a knight, bishop, rook, queen or king attacks from the square.
inline Bitboard pieceAttacks(PieceType type, Square square, Bitboard occupied) {
    switch (type) {
    case knight: return knightAttacks[square];
    case bishop: return bishopAttacks(square, occupied);
    case rook: return rookAttacks(square, occupied);
    case queen: return queenAttacks(square, occupied);
    default: return kingAttacks[square];
    }
}

// Every square that the colour attacks, with all pieces as blockers; defended own pieces are in the map.
Bitboard attackMap(const Position& position, Colour colour);

// The pieces of the colour that attack the square, with the given squares taken as occupied.
inline Bitboard attackersOf(const Position& position, Square square, Colour colour, Bitboard occupied) {
    // A pawn attacks the square from where an enemy pawn on the square would attack it; likewise all others.
    return (pawnAttacksFrom[opponent(colour)][square] & position.of(colour, pawn)) |
           (knightAttacks[square] & position.of(colour, knight)) | (kingAttacks[square] & position.of(colour, king)) |
           (bishopAttacks(square, occupied) & position.diagonalSliders(colour)) |
           (rookAttacks(square, occupied) & position.straightSliders(colour));
}

// The same of both colours.
inline Bitboard allAttackersOf(const Position& position, Square square, Bitboard occupied) {
    const auto both = [&](PieceType type) { return position.of(white, type) | position.of(black, type); };
    const Bitboard queens = both(queen);
    return (pawnAttacksFrom[black][square] & position.of(white, pawn)) |
           (pawnAttacksFrom[white][square] & position.of(black, pawn)) | (knightAttacks[square] & both(knight)) |
           (kingAttacks[square] & both(king)) | (bishopAttacks(square, occupied) & (both(bishop) | queens)) |
           (rookAttacks(square, occupied) & (both(rook) | queens));
}

// The enemy pieces that attack the colour's king. Empty without a king; the union over several kings, which
// only boards that no game reaches have.
inline Bitboard checkersOf(const Position& position, Colour colour) {
    Bitboard checkers = 0;
    for (Bitboard kings = position.of(colour, king); kings != 0;) {
        checkers |= attackersOf(position, popLowestBit(kings), opponent(colour), position.occupied());
    }
    return checkers;
}

// 1 if the colour's king is attacked, else 0.
inline int inCheck(const Position& position, Colour colour) { return checkersOf(position, colour) != 0 ? 1 : 0; }

// Squares from which a move of the colour may leave its king attacked: the king's, the only piece on a line
// between it and an enemy slider (whosever), and all squares while it is in check or there is not just one
// king. A move from any other square, en passant apart, needs no test.
Bitboard exposedSquares(const Position& position, Colour colour);

// The same, sooner, where it is known whether the colour is in check.
Bitboard exposedSquares(const Position& position, Colour colour, bool isInCheck);

// The squares of single pieces, whosever, between the square and a slider of the colour that looks at it.
Bitboard loneBlockers(const Position& position, Square square, Colour sliders);

} // namespace helvan
