// SPDX-License-Identifier: MIT
//
// The words that every part of the engine speaks: squares, colours, piece types and moves.
#pragma once

#include <cstdint>

namespace helvan {

using Bitboard = std::uint64_t; // a set of squares, bit n = square n
using Square = int;             // rank x 8 + file: a1 = 0, h1 = 7, a2 = 8, h8 = 63
using Colour = int;             // 0 or 1, below
using PieceType = int;          // 0..7, below

inline constexpr Colour white = 0;
inline constexpr Colour black = 1;

constexpr Colour opponent(Colour colour) { return 1 - colour; }

inline constexpr PieceType allPieces = 0; // slot of a colour's occupancy; "no piece" in a position's fields
inline constexpr PieceType pawn = 1;
inline constexpr PieceType knight = 2;
inline constexpr PieceType bishop = 3;
inline constexpr PieceType rook = 4;
inline constexpr PieceType queen = 5;
inline constexpr PieceType king = 6;
inline constexpr PieceType phantom = 7; // never on a board: what pieceTypeAt answers where there is no piece

inline constexpr int boardsPerColour = 7; // the occupancy and six piece types

// Index of a (colour, type, square) triple in the hash-key and piece-square tables; type 0..7.
inline constexpr int pieceTableSize = 1024;
constexpr int pieceIndex(Colour colour, PieceType type, Square square) { return colour * 512 + type * 64 + square; }

// Index of a (colour, type) pair in the material-key table; type 0..7.
constexpr int materialIndex(Colour colour, PieceType type) { return colour * 8 + type; }

// clang-format off
enum NamedSquare : int {
    a1, b1, c1, d1, e1, f1, g1, h1,
    a2, b2, c2, d2, e2, f2, g2, h2,
    a3, b3, c3, d3, e3, f3, g3, h3,
    a4, b4, c4, d4, e4, f4, g4, h4,
    a5, b5, c5, d5, e5, f5, g5, h5,
    a6, b6, c6, d6, e6, f6, g6, h6,
    a7, b7, c7, d7, e7, f7, g7, h7,
    a8, b8, c8, d8, e8, f8, g8, h8
};
// clang-format on

constexpr int fileOf(Square square) { return square & 7; }
constexpr int rankOf(Square square) { return square >> 3; }
constexpr Bitboard bit(Square square) { return Bitboard{1} << square; }

// The same square seen from the other side of the board (a1 <-> a8).
constexpr Square mirrored(Square square) { return square ^ 56; }

inline constexpr Bitboard fileA = 0x0101010101010101;
inline constexpr Bitboard fileH = 0x8080808080808080;
inline constexpr Bitboard rank1 = 0xff;
inline constexpr Bitboard rank8 = 0xff00000000000000;

// The given rank (0..7) counted from the colour's own side: 0 is rank 1 for white and rank 8 for black.
constexpr Bitboard relativeRank(Colour colour, int rank) { return rank1 << (8 * (colour == white ? rank : 7 - rank)); }

// A move in 15 bits: to-square in bits 0..5, from-square in bits 6..11, kind in bits 12..14.
// Every real move is greater than 0. Castling is the king's move (e1g1).
using Move = std::int32_t;

inline constexpr Move nullMove = 0;
inline constexpr Move moveBits = 0x7fff;

enum MoveKind : int {
    ordinaryMove = 0, // captures included
    doublePush = 1,
    enPassant = 2,
    castling = 3,
    promoteQueen = 4,
    promoteKnight = 5,
    promoteRook = 6,
    promoteBishop = 7
};

constexpr Move encodeMove(Square from, Square to, int kind = ordinaryMove) { return kind << 12 | from << 6 | to; }
constexpr Square moveTo(Move move) { return move & 63; }
constexpr Square moveFrom(Move move) { return move >> 6 & 63; }
constexpr int moveKind(Move move) { return move >> 12 & 7; }

constexpr bool isPromotion(Move move) { return moveKind(move) >= promoteQueen; }
constexpr bool isUnderPromotion(Move move) { return moveKind(move) > promoteQueen; }

// The piece that a promotion kind (4..7) puts on the board.
constexpr PieceType promotedType(int kind) {
    constexpr PieceType types[4] = {queen, knight, rook, bishop};
    return types[kind & 3];
}

// Where the rook stands before and after the castling whose king goes to the given square.
constexpr Square castlingRookFrom(Square kingTo) { return (kingTo & 4) != 0 ? kingTo | 7 : kingTo & 56; }
constexpr Square castlingRookTo(Square kingFrom, Square kingTo) { return (kingFrom + kingTo) / 2; }

// The square of the pawn that an en-passant capture takes: the from-square's rank, the to-square's file.
constexpr Square enPassantVictim(Move move) { return (moveFrom(move) & 56) | fileOf(moveTo(move)); }

} // namespace helvan
