// SPDX-License-Identifier: MIT
#include "board/attacks.h"

#include <algorithm>
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

// Every set of blockers is visited once, by the carry-rippler walk through the subsets of a mask.
void fillBlock(Square square, const std::array<Step, 4>& steps, Bitboard mask, int shift, const Magic& magic) {
    Bitboard blockers = 0;
    do {
        Bitboard& entry = slidingAttacks[magicIndex(magic, blockers, shift)];
        const Bitboard attacks = walkRays(square, steps, blockers);
        assert(entry == 0 || entry == attacks); // no attack set is empty
        entry = attacks;
        blockers = (blockers - mask) & mask;
    } while (blockers != 0);
}

} // namespace

constexpr std::array<std::array<Bitboard, 64>, 2> pawnAttacksFrom = {
    bySquare([](Square square) { return pawnAttacks(white, bit(square)); }),
    bySquare([](Square square) { return pawnAttacks(black, bit(square)); })};
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

// Found and printed by tools/find_magics.cpp, with its own defaults. A multiplier sends blockers with different
// attacks to different indices and uses few of these, in runs that leave room for other blocks.
// clang-format off
constexpr std::array<Magic, 64> rookMagic = {{
    {0x2080024000228050, 100968}, {0x8020001000080024,  50088},
    {0x0020000400080023,  28416}, {0x0040040040080003,  52136},
    {0x8040020040040001,  54184}, {0x7fe0012928a7ffe0,  93880},
    {0x8040004442efffff,  93072}, {0x0080010001fbc080,      0},
    {0xa780082142041053,  34432}, {0xee3ff40085fcffff,  96872},
    {0xe880100200040011,   9216}, {0xf700200204202005,  76840},
    {0x2b80200200010020,  70880}, {0x1c00200100008020,  57256},
    {0xd300200080200040,  56232}, {0xb180101000208241,  36584},
    {0x0d40002000100020,  58280}, {0xf604001000080015,  72928},
    {0x9104000802010008,  69856}, {0x0d04002002002024,  66728},
    {0x1f91002020020001,  89240}, {0x2649001010008040,  63400},
    {0xc814004000844005,  90264}, {0xeca4002000408220,  38728},
    {0x3c42200010080010,  40800}, {0xdb90040008020009,  71904},
    {0xb8c2010008040008,  75808}, {0x1a60020020040020,  79072},
    {0xcc40010020020020,  62376}, {0xd0e8010020008020,  81128},
    {0x6904400040008001,  73952}, {0xcca8200020004081,  42904},
    {0xac40001000200028,  60328}, {0x0980080400100011,  80104},
    {0xe944020100080008,  85224}, {0x4520200400200201,  98032},
    {0xad20200200200100,  92048}, {0xb330200080200100,  82152},
    {0xa504200080200040,  88216}, {0xd126822000200040,  44968},
    {0x88fffeebfeffd800,  44448}, {0x3f91080201000401,  67768},
    {0x1300400408004010,  64424}, {0xaca0024008004004,  25088},
    {0xc571002002002001,  99064}, {0x5271002000802001,  86248},
    {0x3364004000802020,  65704}, {0x60c9fff8f9ff9803,  28352},
    {0x7dfffeff33ebffd8,  74976}, {0x067fff7304ff7fec,  83856},
    {0x85c4010008020008,  84200}, {0x69000220200d0020,  95520},
    {0x4000200200010020,  32992}, {0x34a7ffe7ff207fe8,  87952},
    {0x1a6fffffabff7fd8,  80096}, {0x6947ffffadd7ffd8,  45992},
    {0x1008800640610091,   4096}, {0xc075002040840812,  16448},
    {0xe3f804204080100a,  20480}, {0x52de041000022009,  20608},
    {0x7d64080120041002,  24576}, {0x042ffffbfffdf7ff,   8192},
    {0x76ffa04208012084,  16384}, {0x100004008261410a,  12288},
}};

constexpr std::array<Magic, 64> bishopMagic = {{
    {0x2a04008021000411,  11592}, {0x1a00810040040565,  34112},
    {0x47804080081141d2,  11720}, {0x72c08060041c1e64,  30408},
    {0x21b48080932c8b61,  11752}, {0x7fe0202000675fe7,  34016},
    {0x8228a02101009756,   9144}, {0x5370200400410096,   8272},
    {0x533301010100080a,  28224}, {0xa2cb402100101011,  34240},
    {0x1001008080108818,   8984}, {0xeca6002008108fc3,  28160},
    {0xecfa0880809b7655,   9744}, {0x2100d14041008bde,   8928},
    {0x47c35aa0c041009f,   9760}, {0x1c9ca02080208054,   9984},
    {0x2882048400401023,  34144}, {0xfb82118300a10010,  10128},
    {0x4f81008200110003,  27392}, {0x8a010040200820a6,  11336},
    {0xed408260100405d7,  11528}, {0x8500102020100803,   8496},
    {0xa0e8063010808046,  30376}, {0x29e0021820202025,  41824},
    {0xe241011d80820012,  31520}, {0xa1e0411940210010,  27616},
    {0x7961040080802004,  74984}, {0x0805004084040002,  32480},
    {0x0808840028822002,  68832}, {0x0b60208070080109,  24608},
    {0x2dd0104250104011,  34208}, {0x181804103c084013,  29440},
    {0x278041041280404a,  34080}, {0x95f0080080004080,  28176},
    {0xc938110081a01080,  11272}, {0x08880a0180080080,  69344},
    {0x4004c204008e0108,  77888}, {0x7500408080500805,  27136},
    {0x692020204168200a,  32448}, {0x0090082020d00808,  38664},
    {0x88418200820400a2,   9816}, {0x94b8104100270048,  47200},
    {0xad30400401098081,   8432}, {0x5299a40840401009,   8200},
    {0xcd05020040106101,  34304}, {0x9b81002080806404,  27680},
    {0xab80401040437010,  36552}, {0x13c040082020dc04,  31488},
    {0x652020220200a789,  47072}, {0x1c38302022804656,  10048},
    {0x39100c08208061d0,  48608}, {0xff685a1409004250,  10760},
    {0xf8303882804100c5,  10888}, {0x0451008103002000,   8824},
    {0xd780420020401262,  47040}, {0x5740202080200958,  38696},
    {0xce2c884100410090,   8688}, {0x1ba5341010820044,  48648},
    {0x8b02945820202019,  34048}, {0x0b67d78ca0084044,  48544},
    {0x6d132bc200808180,  11024}, {0x3d15148082008008,  47168},
    {0x3adf804100401043,  27520}, {0x7081040100080811,  27552},
}};
// clang-format on

static_assert(std::ranges::all_of(rookMagic, [](const Magic& magic) {
    return magic.offset + (1 << (64 - rookShift)) <= slidingAttacksSize;
}));
static_assert(std::ranges::all_of(bishopMagic, [](const Magic& magic) {
    return magic.offset + (1 << (64 - bishopShift)) <= slidingAttacksSize;
}));

void initSlidingAttacks() {
    for (Square square = 0; square < 64; ++square) {
        fillBlock(square, rookSteps, rookMask[square], rookShift, rookMagic[square]);
        fillBlock(square, bishopSteps, bishopMask[square], bishopShift, bishopMagic[square]);
    }
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
    return exposedSquares(position, colour, inCheck(position, colour) != 0);
}

Bitboard exposedSquares(const Position& position, Colour colour, bool isInCheck) {
    const Bitboard kings = position.of(colour, king);
    if (isInCheck || popCount(kings) != 1) return ~Bitboard{0};
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
