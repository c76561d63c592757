// SPDX-License-Identifier: MIT
#include "board/position.h"

namespace helvan {

namespace {

// The XOR of a key table's entries over all pieces.
Key piecesKey(const Position& position, const std::array<Key, pieceTableSize>& keys) {
    Key key = 0;
    for (Colour colour : {white, black}) {
        for (PieceType type = pawn; type <= king; ++type) {
            for (Bitboard board = position.of(colour, type); board != 0;) {
                key ^= keys[pieceIndex(colour, type, popLowestBit(board))];
            }
        }
    }
    return key;
}

} // namespace

Key keyOf(const Position& position) {
    Key key = pieceKeys[position.sideToMove()] ^ piecesKey(position, pieceKeys);
    key ^= castleKeys[castlingIndex(position.touched)];
    if (position.epSquare != 0) key ^= epKeys[lowestBit(position.epSquare)];
    return key;
}

Key pawnKeyOf(const Position& position) { return piecesKey(position, pawnKeys); }

Key materialKeyOf(const Position& position) {
    Key key = 0;
    for (Colour colour : {white, black}) {
        for (PieceType type = pawn; type <= queen; ++type) {
            key += static_cast<Key>(popCount(position.of(colour, type))) * materialKeys[materialIndex(colour, type)];
        }
    }
    return key;
}

std::uint16_t phaseOf(const Position& position) {
    std::uint32_t phase = 0;
    for (PieceType type = pawn; type <= king; ++type) {
        const int count = popCount(position.of(white, type)) + popCount(position.of(black, type));
        phase += static_cast<std::uint32_t>(count) * phaseWeights[type];
    }
    return static_cast<std::uint16_t>(phase);
}

} // namespace helvan
