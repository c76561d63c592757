// SPDX-License-Identifier: MIT
//
// Positions for tests: from text and moves, turned about, and by the thousand from seeded random play.
#pragma once

#include <gtest/gtest.h>

#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "board/advance.h"
#include "board/apply_move.h"
#include "board/attacks.h"
#include "board/fen.h"
#include "board/move_text.h"
#include "board/moves.h"
#include "board/piece_square.h"
#include "support/random.h"

namespace helvan::testing {

inline Position positionOf(const std::string& fen) {
    Position position{};
    EXPECT_EQ(setupFromFen(position, fen.c_str()), nullptr) << fen;
    refreshPieceSums(position);
    return position;
}

inline std::vector<Move> movesOf(const Position& position) {
    std::vector<Move> moves(maxMoves);
    moves.resize(allMoves(position, moves.data()));
    return moves;
}

inline Position childOf(const Position& parent, Move move) {
    Position child;
    advance(parent, child, move);
    child.inCheck = static_cast<std::uint16_t>(inCheck(child, child.sideToMove()));
    return child;
}

inline bool isLegal(const Position& position, Move move) { return !moverLeftInCheck(childOf(position, move)); }

inline std::vector<Move> legalMovesOf(const Position& position) {
    std::vector<Move> moves = movesOf(position);
    std::erase_if(moves, [&](Move move) { return !isLegal(position, move); });
    return moves;
}

// The game from the position through the moves, which are separated by blanks.
inline std::vector<Position> play(const std::string& fen, const std::string& moves) {
    std::istringstream text(moves);
    const std::vector<std::string> words(std::istream_iterator<std::string>(text), {});
    std::vector<Position> game(words.size() + 1); // each links to the one before it, so all stay in place
    game[0] = positionOf(fen);
    for (std::size_t ply = 0; ply < words.size(); ++ply) {
        EXPECT_EQ(applyMoveText(game[ply], game[ply + 1], words[ply].c_str()), 1) << words[ply];
    }
    return game;
}

// The position with every square moved and every piece's colour changed as told.
inline Position transformed(const Position& position, int squareXor, bool swapColours) {
    Position result = position;
    const auto movedSet = [&](Bitboard set) {
        Bitboard moved = 0;
        while (set != 0) moved |= bit(popLowestBit(set) ^ squareXor);
        return moved;
    };
    for (Colour colour : {white, black}) {
        for (PieceType type = allPieces; type <= king; ++type) {
            result.of(swapColours ? opponent(colour) : colour, type) = movedSet(position.of(colour, type));
        }
    }
    result.touched = movedSet(position.touched);
    result.epSquare = movedSet(position.epSquare);
    if (swapColours) ++result.ply;
    result.key = keyOf(result);
    result.pawnKey = pawnKeyOf(result);
    result.materialKey = materialKeyOf(result);
    refreshPieceSums(result);
    return result;
}

// Where games begin: openings, and positions rich in castlings, promotions, pins and en passant.
inline const std::vector<std::string> gameStarts = {startFen,
                                                    "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq -",
                                                    "8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - -",
                                                    "r3k2r/Pppp1ppp/1b3nbN/nP6/BBP1P3/q4N2/Pp1P2PP/R2Q1RK1 w kq -",
                                                    "rnbq1k1r/pp1Pbppp/2p5/8/2B5/8/PPP1NnPP/RNBQK2R w KQ -",
                                                    "n1n5/PPPk4/8/8/8/8/4Kppp/5N1N b - -",
                                                    "4k3/pppppppp/8/8/8/8/PPPPPPPP/4K3 w - -",
                                                    "1k6/1b6/8/8/7R/8/8/4K2R b K -"};

// Plays random legal moves until visit(position) has seen the given number of positions. Each links to the
// game before it. Ends early when the test has failed.
template <typename Visit> void forRandomPositions(int count, std::uint64_t seed, Visit visit) {
    constexpr int longestGame = 160;
    Random random(seed);
    std::vector<Position> game(longestGame + 1);
    while (count > 0) {
        game[0] = positionOf(oneOf(random, gameStarts));
        for (int ply = 0; count > 0; ++ply) {
            visit(static_cast<const Position&>(game[ply]), random);
            --count;
            if (::testing::Test::HasFatalFailure()) return;
            const std::vector<Move> moves = legalMovesOf(game[ply]);
            if (moves.empty() || ply == longestGame) break;
            advanceLegally(game[ply], game[ply + 1], oneOf(random, moves));
        }
    }
}

} // namespace helvan::testing
