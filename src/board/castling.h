// SPDX-License-Identifier: MIT
//
// The four castling rights: what each hangs on and where its castling leads.
#pragma once

#include <array>

#include "board/types.h"

namespace helvan {

struct CastlingRight {
    Colour colour;
    char letter; // in a FEN
    Square kingFrom;
    Square kingTo;
    Square rookFrom;
    Bitboard empty; // between king and rook

    // The right stands while nothing has moved from or to these.
    constexpr Bitboard homes() const { return bit(kingFrom) | bit(rookFrom); }
    constexpr Square rookTo() const { return castlingRookTo(kingFrom, kingTo); }
    // The king comes through these, which the enemy must not attack.
    constexpr Bitboard kingPath() const { return bit(kingFrom) | bit(rookTo()) | bit(kingTo); }
    constexpr Move move() const { return encodeMove(kingFrom, kingTo, castling); }
};

// In the order in which a FEN names them. A colour's two stand together, the king's side first.
inline constexpr std::array<CastlingRight, 4> castlingRights = {{
    {white, 'K', e1, g1, h1, bit(f1) | bit(g1)},
    {white, 'Q', e1, c1, a1, bit(b1) | bit(c1) | bit(d1)},
    {black, 'k', e8, g8, h8, bit(f8) | bit(g8)},
    {black, 'q', e8, c8, a8, bit(b8) | bit(c8) | bit(d8)},
}};

// touched: the squares from or to which something has moved.
constexpr bool stands(const CastlingRight& right, Bitboard touched) { return (touched & right.homes()) == 0; }

} // namespace helvan
