// SPDX-License-Identifier: MIT
#include "board/moves.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "board/checks.h"
#include "board/exchange.h"
#include "board/move_picker.h"
#include "support/boards.h"
#include "support/letter_board.h"

namespace helvan::testing {

namespace {

std::vector<Move> drain(MovePicker& picker) {
    std::vector<Move> moves;
    while (const Move move = nextMove(picker)) moves.push_back(move);
    EXPECT_EQ(nextMove(picker), nullMove) << "moves after the end";
    EXPECT_TRUE(std::equal(moves.begin(), moves.end(), picker.handedOut, picker.handedOut + picker.handedOutCount));
    return moves;
}

std::vector<Move> picked(const Position& position, PickerKind kind, Move hash = nullMove) {
    MovePicker picker(position, kind, hash);
    return drain(picker);
}

std::vector<Move> sorted(std::vector<Move> moves) {
    std::sort(moves.begin(), moves.end());
    return moves;
}

template <typename Predicate> std::vector<Move> sortedWithout(std::vector<Move> moves, Predicate predicate) {
    std::erase_if(moves, predicate);
    return sorted(moves);
}

// Whether pickers hold the move back.
bool isLosing(const Position& position, Move move) { return moveKind(move) <= doublePush && see(position, move) < 0; }

// Whether the moved piece itself checks, but for straight checks (and for kings that stand side by side).
bool isDirectCheck(const Position& position, Move move) {
    if (moveKind(move) > doublePush) return false;
    const Position child = childOf(position, move);
    const Bitboard to = bit(moveTo(move));
    const Bitboard diagonals = bishopLines[lowestBit(child.of(child.sideToMove(), king))];
    const bool counts = child.movedPiece <= bishop || (child.movedPiece == queen && (diagonals & to) != 0);
    return counts && (checkersOf(child, child.sideToMove()) & to) != 0;
}

// Captures come by victim, then by attacker, a pawn that promotes by a push between queen and rook.
std::pair<int, int> captureRank(const Position& position, Move move) {
    const PieceType attacker = pieceTypeAt(position, position.sideToMove(), moveFrom(move));
    const PieceType victim = pieceTypeAt(position, opponent(position.sideToMove()), moveTo(move));
    if (moveKind(move) == enPassant) return {-2 * pawn, pawn};
    return {victim == phantom ? -2 * rook - 1 : -2 * victim, attacker};
}

// A move of the position, one of another position, or any number.
Move hostileMove(Random& random, const Position& position) {
    const std::vector<Move> moves = movesOf(position);
    if (random() % 3 != 0 && !moves.empty()) return oneOf(random, moves);
    return static_cast<Move>(random() % 4 == 0 ? random() : random() % (moveBits + 1));
}

} // namespace

// Every one of the 15-bit numbers, and some beyond: exactly the listed moves pass, en passant apart.
TEST(PseudoLegal, AcceptsExactlyTheListedMoves) {
    forRandomPositions(400, 6, [](const Position& position, Random&) {
        const std::vector<Move> listed = sorted(movesOf(position));
        ASSERT_EQ(std::adjacent_find(listed.begin(), listed.end()), listed.end()) << "a move is listed twice";
        for (Move move = -5; move <= 2 * moveBits; ++move) {
            const bool expected = moveKind(move) != enPassant && std::binary_search(listed.begin(), listed.end(), move);
            ASSERT_EQ(isPseudoLegal(position, move) != 0, expected) << moveText(move) << " kind " << moveKind(move);
        }
    });
}

TEST(Castling, NeedsItsRightAndAnEmptyPathThatNobodyAttacks) {
    const auto expectCastlings = [](const std::string& fen, bool kingSide, bool queenSide) {
        for (const int home : {0, 56}) { // as it is, and for black
            const Position position = home == 0 ? positionOf(fen) : transformed(positionOf(fen), home, true);
            std::vector<Move> expected, moves(2);
            if (kingSide) expected.push_back(encodeMove(e1 ^ home, g1 ^ home, castling));
            if (queenSide) expected.push_back(encodeMove(e1 ^ home, c1 ^ home, castling));
            moves.resize(castlingMoves(position, position.sideToMove(), moves.data()));
            EXPECT_EQ(moves, expected) << fen << " with home " << home;
        }
    };
    for (const std::string others : {"-", "kq"}) {
        for (const std::string own : {"", "K", "Q", "KQ"}) {
            expectCastlings("r3k2r/8/8/8/8/8/8/R3K2R w " + others + own + " -", own.find('K') != std::string::npos,
                            own.find('Q') != std::string::npos);
        }
    }
    for (int file = 0; file < 8; ++file) {
        std::string rank = "R111K11R", attacker = "11111111";
        attacker[file] = 'r';
        expectCastlings("4k3/8/8/" + attacker + "/8/8/8/" + rank + " w KQ -", file < 4 || file > 6,
                        file < 2 || file > 4);
        if (rank[file] != '1') continue;
        rank[file] = 'N';
        expectCastlings("4k3/8/8/8/8/8/8/" + rank + " w KQ -", file<4, file> 4);
    }
}

TEST(AdvancedPawns, OnTheSeventhRankOrBeyondTheReachOfEnemyPawns) {
    forRandomPositions(5000, 17, [](const Position& position, Random&) {
        const LetterBoard board(position, position.sideToMove());
        const auto seen = [&](Square square) { return position.sideToMove() == white ? square : mirrored(square); };
        const bool onSeventh = std::count(board.begin() + a7, board.begin() + a8, 'P') != 0;
        ASSERT_EQ(hasPawnOnSeventh(position, position.sideToMove()), onSeventh);
        for (const Move move : movesOf(position)) {
            const Square to = seen(moveTo(move));
            bool isFree = board[seen(moveFrom(move))] == 'P' && rankOf(to) >= 4;
            for (Square on = 0; on < 64; ++on) {
                if (board[on] == 'p' && rankOf(on) > rankOf(to) && std::abs(fileOf(on) - fileOf(to)) == 1)
                    isFree = false;
            }
            ASSERT_EQ(isFreePawnPush(position, move), isFree) << moveText(move);
        }
    });
}

TEST(GivesCheck, AgreesWithMakingTheMove) {
    forRandomPositions(100000, 7, [](const Position& position, Random&) {
        const KingLines lines(position, position.inCheck != 0);
        for (const Move move : movesOf(position)) {
            const Position child = childOf(position, move);
            ASSERT_EQ(lines.leavesInCheck(child), moverLeftInCheck(child)) << moveText(move);
            if (moverLeftInCheck(child)) continue;
            ASSERT_EQ(givesCheck(position, move), child.inCheck != 0) << moveText(move);
            ASSERT_EQ(lines.givesCheck(position, move, child.movedPiece), child.inCheck != 0) << moveText(move);
        }
    });
}

// What random play reaches too rarely.
TEST(GivesCheck, RareCases) {
    const auto gives = [](const char* fen, Move move) { return givesCheck(positionOf(fen), move); };
    EXPECT_TRUE(gives("5k2/8/8/8/8/8/8/4K2R w K -", encodeMove(e1, g1, castling)));
    EXPECT_TRUE(gives("8/8/8/8/8/8/8/R3K2k w Q -", encodeMove(e1, c1, castling)));
    EXPECT_FALSE(gives("6k1/8/8/8/8/8/8/4K2R w K -", encodeMove(e1, g1, castling)));
    // The promoted piece looks back through the square the pawn left.
    EXPECT_TRUE(gives("8/3P4/8/3k4/8/8/8/4K3 w - -", encodeMove(d7, d8, promoteQueen)));
    // En passant opens the rank by taking both pawns off it, and a diagonal by taking the victim.
    EXPECT_TRUE(gives("8/8/8/R2pP2k/8/8/8/4K3 w - -", encodeMove(e5, d6, enPassant)));
    EXPECT_TRUE(gives("6k1/8/8/3pP3/8/1B6/8/4K3 w - -", encodeMove(e5, d6, enPassant)));
    EXPECT_FALSE(gives("7k/8/8/3pP3/8/1B6/8/4K3 w - -", encodeMove(e5, d6, enPassant)));
}

TEST(MovePicker, EveryMoveExactlyOnceWhateverIsOffered) {
    std::int32_t history[512];
    Random fill(8);
    for (std::int32_t& counter : history) counter = below(fill, 1 << 17);
    std::int16_t sequels[2][512];
    for (auto& row : sequels) {
        for (std::int16_t& counter : row) counter = static_cast<std::int16_t>(below(fill, 32001) - 16000);
    }
    const QuietOrder orders[] = {{}, {history}, {history, sequels[0], sequels[1]}};
    forRandomPositions(100000, 9, [&](const Position& position, Random& random) {
        const std::vector<Move> expected = sorted(movesOf(position));
        ASSERT_EQ(sorted(picked(position, PickerKind::everyMove)), expected);
        const Move hash = hostileMove(random, position);
        const Move killer = hostileMove(random, position);
        const Move other = random() % 4 == 0 ? killer : hostileMove(random, position);
        MovePicker picker(position, PickerKind::everyMove, hash, killer, other, orders[below(random, 3)]);
        const std::vector<Move> moves = drain(picker);
        ASSERT_EQ(sorted(moves), expected) << moveText(hash) << ' ' << moveText(killer) << ' ' << moveText(other);
        if (isPseudoLegal(position, hash) != 0) {
            ASSERT_EQ(moves.front(), hash);
        }
    });
}

TEST(MovePicker, EvasionsHoldEveryLegalMoveInCheck) {
    int checks = 0;
    forRandomPositions(100000, 10, [&](const Position& position, Random& random) {
        if (position.inCheck == 0) return;
        ++checks;
        const std::vector<Move> expected = sorted(legalMovesOf(position));
        const Move hash = hostileMove(random, position);
        for (const Move offered : {nullMove, hash}) {
            const std::vector<Move> moves = picked(position, PickerKind::evasions, offered);
            ASSERT_EQ(sortedWithout(moves, [&](Move move) { return !isLegal(position, move); }), expected);
            const auto isSound = [&](Move move) { return move == offered || !isLosing(position, move); };
            ASSERT_TRUE(std::is_partitioned(moves.begin(), moves.end(), isSound)) << "losing moves come last";
        }
    });
    EXPECT_GT(checks, 2000);
}

TEST(MovePicker, ReducedKindsHoldCapturesAndSafeQuietChecks) {
    forRandomPositions(8000, 11, [](const Position& position, Random&) {
        if (position.inCheck != 0) return;
        const Bitboard enemies = position.of(opponent(position.sideToMove()), allPieces);
        const auto isTactical = [&](Move move) {
            const bool captures = (enemies & bit(moveTo(move))) != 0;
            return (captures && !isUnderPromotion(move)) || moveKind(move) == enPassant ||
                   moveKind(move) == promoteQueen;
        };
        const auto isQuiet = [&](Move move) { return !isTactical(move); };
        const auto loses = [&](Move move) { return isLosing(position, move); };
        const std::vector<Move> tactical = sortedWithout(movesOf(position), isQuiet);
        const std::vector<Move> all = picked(position, PickerKind::capturesAndChecks);
        const auto isNeither = [&](Move move) { return isQuiet(move) && !isDirectCheck(position, move); };
        ASSERT_EQ(sorted(all), sortedWithout(movesOf(position), isNeither));
        const auto firstLosing = std::find_if(all.begin(), all.end(), loses);
        ASSERT_TRUE(std::all_of(firstLosing, all.end(), loses)) << "losing moves come last";
        for (const std::vector<Move>& part :
             {std::vector(all.begin(), firstLosing), std::vector(firstLosing, all.end())}) {
            const auto firstQuiet = std::find_if(part.begin(), part.end(), isQuiet);
            ASSERT_TRUE(std::is_sorted(part.begin(), firstQuiet, [&](Move a, Move b) {
                return captureRank(position, a) < captureRank(position, b);
            }));
            ASSERT_TRUE(std::all_of(firstQuiet, part.end(), isQuiet)) << "checks come behind captures";
        }
        ASSERT_EQ(sorted(picked(position, PickerKind::soundCaptures)), sortedWithout(tactical, loses));
        ASSERT_EQ(sorted(picked(position, PickerKind::soundCapturesAndChecks)), sortedWithout(all, loses));
    });
}

TEST(MovePicker, DroppingMovesOfABatchIsPassingThemOver) {
    forRandomPositions(8000, 12, [](const Position& position, Random& random) {
        std::int32_t history[512];
        for (std::int32_t& counter : history) counter = below(random, 1 << 20);
        const Bitboard dullSquares = random();
        const auto isPlain = [](PickedMove move) {
            return move.victim == phantom && moveKind(move.move) <= doublePush;
        };
        const auto isDull = [&](PickedMove move) {
            return isPlain(move) && (dullSquares & bit(moveTo(move.move))) != 0;
        };
        // By what ranks them: moves of one rank may change places.
        const auto moversAndTargets = [&](bool drops) {
            MovePicker picker(position, PickerKind::everyMove, nullMove, nullMove, nullMove, {.history = history});
            std::vector<int> kept;
            while (nextMove(picker) != nullMove) {
                if (drops && isDull(picker.last)) dropFromBatch(picker, isDull);
                if (isPlain(picker.last) && !isDull(picker.last)) {
                    kept.push_back(picker.last.mover * 64 + moveTo(picker.last.move));
                }
            }
            return kept;
        };
        ASSERT_EQ(moversAndTargets(true), moversAndTargets(false));
    });
}

TEST(MovePicker, StagesComeInTheirOrder) {
    const Position position = positionOf("r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq -");
    std::int32_t history[512] = {};
    history[knight * 64 + a4] = 50;
    history[bishop * 64 + c4] = 70;
    std::int16_t replies[512] = {}, followUps[512] = {};
    replies[knight * 64 + g4] = 30; // weighs more than the history does
    followUps[knight * 64 + a4] = -20;
    const Move hash = encodeMove(e1, g1, castling), killer = encodeMove(a2, a3), other = encodeMove(c3, b1);
    MovePicker picker(position, PickerKind::everyMove, hash, killer, other, QuietOrder{history, replies, followUps});
    const std::vector<Move> moves = drain(picker);
    const auto placeOf = [&](Move move) { return std::find(moves.begin(), moves.end(), move) - moves.begin(); };
    EXPECT_EQ(placeOf(hash), 0);
    EXPECT_EQ(placeOf(encodeMove(e2, a6)), 1);                           // takes a bishop with a bishop
    EXPECT_LT(placeOf(encodeMove(e2, a6)), placeOf(encodeMove(g2, h3))); // a bishop before a pawn
    EXPECT_LT(placeOf(encodeMove(g2, h3)), placeOf(killer));
    EXPECT_EQ(placeOf(other), placeOf(killer) + 1);
    EXPECT_EQ(placeOf(encodeMove(e1, c1, castling)), placeOf(other) + 1); // castling leads the quiet moves
    EXPECT_EQ(placeOf(encodeMove(e5, g4)), placeOf(other) + 2);           // which follow their histories
    EXPECT_EQ(placeOf(encodeMove(e2, c4)), placeOf(other) + 3);
    EXPECT_GT(placeOf(encodeMove(c3, a4)), placeOf(encodeMove(e2, d1)));
    EXPECT_LT(placeOf(encodeMove(e2, d1)), placeOf(encodeMove(f3, f6))); // a queen for a knight comes last
    EXPECT_LT(see(position, moves.back()), 0);
}

} // namespace helvan::testing
