// SPDX-License-Identifier: MIT
#include "board/attacks.h"

#include <cassert>

namespace helvan {

namespace {

struct Step {
    int file;
    int rank;
};

constexpr std::array<Step, 8> knightSteps = {{{1, 2}, {2, 1}, {2, -1}, {1, -2}, {-1, -2}, {-2, -1}, {-2, 1}, {-1, 2}}};
constexpr std::array<Step, 4> rookSteps = {{{0, 1}, {1, 0}, {0, -1}, {-1, 0}}};
constexpr std::array<Step, 4> bishopSteps = {{{1, 1}, {1, -1}, {-1, -1}, {-1, 1}}};

constexpr bool canStep(Square square, Step step) {
    const int file = fileOf(square) + step.file;
    const int rank = rankOf(square) + step.rank;
    return file >= 0 && file < 8 && rank >= 0 && rank < 8;
}

constexpr Square stepped(Square square, Step step) { return square + step.file + 8 * step.rank; }

// Walks the rays from the square up to the first occupied square, that one included.
constexpr Bitboard walkRays(Square square, const std::array<Step, 4>& steps, Bitboard occupied) {
    Bitboard attacks = 0;
    for (const Step step : steps) {
        for (Square at = square; canStep(at, step);) {
            at = stepped(at, step);
            attacks |= bit(at);
            if ((occupied & bit(at)) != 0) break;
        }
    }
    return attacks;
}

// The squares of the rays whose occupancy matters: whether the last one is occupied changes nothing.
constexpr Bitboard relevantSquares(Square square, const std::array<Step, 4>& steps) {
    Bitboard relevant = 0;
    for (const Step step : steps) {
        for (Square at = square; canStep(at, step);) {
            at = stepped(at, step);
            if (canStep(at, step)) relevant |= bit(at);
        }
    }
    return relevant;
}

template <typename EntryOf> constexpr std::array<Bitboard, 64> bySquare(EntryOf entryOf) {
    std::array<Bitboard, 64> table{};
    for (Square square = 0; square < 64; ++square) table[square] = entryOf(square);
    return table;
}

constexpr Bitboard knightSquares(Square square) {
    Bitboard attacks = 0;
    for (const Step step : knightSteps) {
        if (canStep(square, step)) attacks |= bit(stepped(square, step));
    }
    return attacks;
}

constexpr Bitboard kingSquares(Square square) {
    constexpr Bitboard allOccupied = ~Bitboard{0};
    return walkRays(square, rookSteps, allOccupied) | walkRays(square, bishopSteps, allOccupied);
}

constexpr std::array<std::array<Bitboard, 64>, 64> makeBetween() {
    std::array<std::array<Bitboard, 64>, 64> table{};
    for (Square from = 0; from < 64; ++from) {
        for (const auto& steps : {rookSteps, bishopSteps}) {
            for (const Step step : steps) {
                Bitboard passed = 0;
                for (Square at = from; canStep(at, step);) {
                    at = stepped(at, step);
                    table[from][at] = passed;
                    passed |= bit(at);
                }
            }
        }
    }
    return table;
}

constexpr Bitboard threeFiles(Square square) {
    const int leftFile = minimum(maximum(fileOf(square) - 1, 0), 5);
    return (fileA | fileA << 1 | fileA << 2) << leftFile;
}

// Fills one square's block and answers its length. Every set of blockers is visited once, by the
// carry-rippler walk through the subsets of a mask.
std::uint32_t fillBlock(Square square, const std::array<Step, 4>& steps, Bitboard mask, int shift, const Magic& magic) {
    std::uint32_t length = 0;
    Bitboard blockers = 0;
    do {
        const auto index = static_cast<std::uint32_t>(blockers * magic.multiplier >> shift);
        slidingAttacks[magic.offset + index] = walkRays(square, steps, blockers);
        if (index >= length) length = index + 1;
        blockers = (blockers - mask) & mask;
    } while (blockers != 0);
    return length;
}

} // namespace

constexpr std::array<Bitboard, 64> knightAttacks = bySquare(knightSquares);
constexpr std::array<Bitboard, 64> kingAttacks = bySquare(kingSquares);
constexpr std::array<Bitboard, 64> rookLines =
    bySquare([](Square square) { return bit(square) | walkRays(square, rookSteps, 0); });
constexpr std::array<Bitboard, 64> bishopLines =
    bySquare([](Square square) { return bit(square) | walkRays(square, bishopSteps, 0); });
constexpr std::array<Bitboard, 64> queenLines =
    bySquare([](Square square) { return rookLines[square] | bishopLines[square]; });
constexpr std::array<std::array<Bitboard, 64>, 64> between = makeBetween();
constexpr std::array<Bitboard, 64> ThreeFileMask = bySquare(threeFiles);
constexpr std::array<Bitboard, 64> rookMask =
    bySquare([](Square square) { return relevantSquares(square, rookSteps); });
constexpr std::array<Bitboard, 64> bishopMask =
    bySquare([](Square square) { return relevantSquares(square, bishopSteps); });

std::array<Bitboard, slidingAttacksSize> slidingAttacks;

// The multipliers were found by trying random numbers with few bits set: each sends blockers with different
// attacks to different indices, and of the good ones seen it is the one whose highest index is smallest, which
// keeps the blocks short. The offsets are filled in at start.
// clang-format off
std::array<Magic, 64> rookMagic = {{
    {0x0480044000802850, 0}, {0x0020000800100021, 0}, {0x00401000c8004084, 0}, {0x0040080044004002, 0},
    {0x0020020420200100, 0}, {0x8040010040008200, 0}, {0x0040008000400100, 0}, {0x8080004080002100, 0},
    {0x0200081020410400, 0}, {0x0400100400080010, 0}, {0xc300400800044010, 0}, {0x1000200400020020, 0},
    {0x0000200100200200, 0}, {0x0200200080010020, 0}, {0x0200202000800040, 0}, {0x0800200220024081, 0},
    {0x0040002000100028, 0}, {0x0410000802040009, 0}, {0x1004008200810020, 0}, {0x0002002020040002, 0},
    {0xa081002020020001, 0}, {0x0211001000804010, 0}, {0x1040004040008001, 0}, {0x0010802000400020, 0},
    {0x0040200010080010, 0}, {0x2000080010040031, 0}, {0x0204020008010048, 0}, {0x1800040020020020, 0},
    {0x2622008010100100, 0}, {0x0800010020200080, 0}, {0x4214008020200040, 0}, {0x2100200020004081, 0},
    {0x0040001000200024, 0}, {0x0204000800100010, 0}, {0x0202400800400410, 0}, {0x0000200200200400, 0},
    {0x0000200200200100, 0}, {0x8000200080200100, 0}, {0x0414200080200040, 0}, {0x0020802000200040, 0},
    {0x0110214904000800, 0}, {0x0c1002000c000800, 0}, {0xa000400408004010, 0}, {0x0500020004002020, 0},
    {0x4080020001002020, 0}, {0x2000010000802020, 0}, {0xa044400080004001, 0}, {0x0a08100208010804, 0},
    {0x0040002000100020, 0}, {0x1000080400100010, 0}, {0x0042000804010008, 0}, {0x0000200200040020, 0},
    {0x8410200200010020, 0}, {0x0000200080010020, 0}, {0x0200200040008020, 0}, {0x0104802000400020, 0},
    {0x0011004020120082, 0}, {0x00002100088110c1, 0}, {0x0000040840208012, 0}, {0x4240104004200802, 0},
    {0x0108001008020401, 0}, {0x0000041480020801, 0}, {0x1af0008402124001, 0}, {0x0808240688230042, 0},
}};

std::array<Magic, 64> bishopMagic = {{
    {0x4102008010800840, 0}, {0x2000802080041100, 0}, {0x2800802004204200, 0}, {0x6240804811020000, 0},
    {0x6000440208418240, 0}, {0x000021c100910900, 0}, {0x0000804100806900, 0}, {0x0020801041040048, 0},
    {0x4001004041002020, 0}, {0x0000002020802008, 0}, {0x4005804010401000, 0}, {0x2040008060040082, 0},
    {0x0024804402220008, 0}, {0x0194204100804410, 0}, {0x0496081082010043, 0}, {0x019000108021002c, 0},
    {0x80012a0202002008, 0}, {0x0040800100101040, 0}, {0x2000440082008020, 0}, {0x1100240200801000, 0},
    {0x020010008c040080, 0}, {0xa200100080440050, 0}, {0x0008040040404042, 0}, {0x2008040420104010, 0},
    {0x0000804002020020, 0}, {0x0041008080401043, 0}, {0x2002008100410040, 0}, {0x8228080045820022, 0},
    {0x200084000081a000, 0}, {0x0440200800808400, 0}, {0x0010084330202021, 0}, {0x4818040800202010, 0},
    {0x030080808204002d, 0}, {0x0080410024004040, 0}, {0x0009010080010008, 0}, {0x0002a08020080201, 0},
    {0x0204040400021010, 0}, {0x8001020008008020, 0}, {0x0000208004002020, 0}, {0x1a00102020000805, 0},
    {0x0010404200800040, 0}, {0x02082021002c0040, 0}, {0x8100208200800040, 0}, {0x0851008840440020, 0},
    {0x000082004010a100, 0}, {0x080400440040e008, 0}, {0x0400801080080020, 0}, {0x0900401004210010, 0},
    {0x2000208044005c00, 0}, {0x0c48202100402810, 0}, {0x0000a00820806244, 0}, {0x0000000808403008, 0},
    {0x00a0820100202001, 0}, {0x0004040100200881, 0}, {0x2600808080800424, 0}, {0x0080204040400404, 0},
    {0x0400208200808049, 0}, {0x2000004040208020, 0}, {0x2205022808208060, 0}, {0x0040000500084030, 0},
    {0x00080a0001002020, 0}, {0x8a00200040810010, 0}, {0x0000008020404041, 0}, {0x0400840010204010, 0},
}};
// clang-format on

void initSlidingAttacks() {
    std::uint32_t offset = 0;
    for (Square square = 0; square < 64; ++square) {
        rookMagic[square].offset = offset;
        offset += fillBlock(square, rookSteps, rookMask[square], rookShift, rookMagic[square]);
    }
    for (Square square = 0; square < 64; ++square) {
        bishopMagic[square].offset = offset;
        offset += fillBlock(square, bishopSteps, bishopMask[square], bishopShift, bishopMagic[square]);
    }
    assert(offset + (1u << (64 - rookShift)) == slidingAttacksSize);
}

Bitboard attackMap(const Position& position, Colour colour) {
    const Bitboard occupied = position.occupied();
    Bitboard map = pawnAttacks(colour, position.of(colour, pawn));
    for (Bitboard knights = position.of(colour, knight); knights != 0;) map |= knightAttacks[popLowestBit(knights)];
    for (Bitboard sliders = position.diagonalSliders(colour); sliders != 0;) {
        map |= bishopAttacks(popLowestBit(sliders), occupied);
    }
    for (Bitboard sliders = position.straightSliders(colour); sliders != 0;) {
        map |= rookAttacks(popLowestBit(sliders), occupied);
    }
    for (Bitboard kings = position.of(colour, king); kings != 0;) map |= kingAttacks[popLowestBit(kings)];
    return map;
}

Bitboard exposedSquares(const Position& position, Colour colour) {
    const Bitboard kings = position.of(colour, king);
    if (popCount(kings) != 1 || checkersOf(position, colour) != 0) return ~Bitboard{0};
    return kings | loneBlockers(position, lowestBit(kings), opponent(colour));
}

Bitboard loneBlockers(const Position& position, Square square, Colour sliders) {
    const Bitboard occupied = position.occupied();
    Bitboard snipers = (rookLines[square] & position.straightSliders(sliders)) |
                       (bishopLines[square] & position.diagonalSliders(sliders));
    Bitboard lone = 0;
    while (snipers != 0) {
        const Bitboard blockers = between[square][popLowestBit(snipers)] & occupied;
        if (!moreThanOne(blockers)) lone |= blockers;
    }
    return lone;
}

} // namespace helvan
