// SPDX-License-Identifier: MIT
#include "board/keys.h"

#include "board/castling.h"

namespace helvan {

namespace {

// SplitMix64 (Steele, Lea and Flood, "Fast splittable pseudorandom number generators", 2014).
struct KeyGenerator {
    std::uint64_t state;

    constexpr Key next() {
        state += 0x9e3779b97f4a7c15;
        std::uint64_t mixed = state;
        mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9;
        mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111eb;
        return mixed ^ (mixed >> 31);
    }
};

constexpr std::uint64_t pieceSeed = 0x48656c76616e0001;
constexpr std::uint64_t pawnSeed = 0x48656c76616e0002;
constexpr std::uint64_t epSeed = 0x48656c76616e0003;
constexpr std::uint64_t castleSeed = 0x48656c76616e0004;
// The low 12 bits of a material key address the table of known endings: with this seed no two of its endings
// share a slot. A test holds a change of the seed to that.
constexpr std::uint64_t materialSeed = 0x48656c76616e0005;

template <std::size_t size> constexpr std::array<Key, size> randomKeys(std::uint64_t seed) {
    KeyGenerator generator{seed};
    std::array<Key, size> keys{};
    for (Key& key : keys) key = generator.next();
    return keys;
}

constexpr std::array<Key, pieceTableSize> makePawnKeys() {
    std::array<Key, pieceTableSize> keys = randomKeys<pieceTableSize>(pawnSeed);
    for (int index = 0; index < pieceTableSize; ++index) {
        const PieceType type = index / 64 % 8;
        if (type != pawn && type != king) keys[index] = 0;
    }
    return keys;
}

constexpr std::array<Key, 16> makeMaterialKeys() {
    std::array<Key, 16> keys = randomKeys<16>(materialSeed);
    for (Colour colour : {white, black}) {
        for (PieceType type : {allPieces, king, phantom}) keys[materialIndex(colour, type)] = 0;
    }
    return keys;
}

// The index must tell all squares that rights hang on.
constexpr bool indexKnowsEveryHome() {
    for (const CastlingRight& right : castlingRights) {
        for (const Square home : {right.kingFrom, right.rookFrom}) {
            if (castlingIndex(bit(home)) == castlingIndex(0)) return false;
        }
    }
    return true;
}
static_assert(indexKnowsEveryHome());

} // namespace

constexpr std::array<Key, pieceTableSize> pieceKeys = randomKeys<pieceTableSize>(pieceSeed);
constexpr std::array<Key, pieceTableSize> pawnKeys = makePawnKeys();
constexpr std::array<Key, 64> epKeys = randomKeys<64>(epSeed);
constexpr std::array<Key, 64> castleKeys = randomKeys<64>(castleSeed);
constexpr std::array<Key, 16> materialKeys = makeMaterialKeys();

} // namespace helvan
