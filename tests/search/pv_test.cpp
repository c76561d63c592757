// SPDX-License-Identifier: MIT
//
// The rules of the nodes of the principal variation.
#include "search/pv.h"

#include <algorithm>

#include "board/move_picker.h"
#include "search/draws.h"
#include "support/eval_parameters.h"
#include "support/known_children.h"

namespace helvan::testing {

namespace {

class PvNodes : public KnownChildren {
protected:
    static constexpr int ply = 1;

    void knowMove(const Position& position, Move move, int depth, int score = 0, Bound bound = noBound) {
        tables->transpositionTable.store(position.key, depth, score, bound, move, 0);
    }
    int searched(Position& position, int alpha, int beta, int depth, int fromRoot = ply) {
        search = std::make_unique<Search>(*tables);
        search->killers.killerPrimary[ply] = killer;
        return searchPv(*search, position, alpha, beta, depth, fromRoot, line);
    }
    // Every move reaches beta.
    Move firstMove(Position position, int depth) {
        searched(position, -6000, -5000, depth);
        return line[0];
    }

    // The table says that every move reaches the window, and the search that then follows says that none does; it
    // stores how deep it was. A node without a known move would look for one first.
    int extension(Position position, Move move, int depth, Move known) {
        forget();
        knowMove(position, known, depth);
        knowAll(position, low);
        searched(position, 5000, 6000, depth);
        return depthStored(position, move) - (depth - 2);
    }
    int firstDepth(const Position& position, Move move, int depth, Move known, int alpha = 5000) {
        return depthAsked(position, move, [&] {
            knowMove(position, known, depth);
            std::fill_n(tables->moveHistory.history[position.sideToMove()], 512, latest != nullMove ? 1000 : 0);
            tables->moveHistory.history[position.sideToMove()][counterOf(position, latest)] = 0;
            Position copy = position;
            searched(copy, alpha, 6000, depth);
            return search->nodes;
        });
    }
    static int counterOf(const Position& position, Move move) {
        return pieceTypeAt(position, position.sideToMove(), moveFrom(move)) * 64 + moveTo(move);
    }

    Move killer = nullMove;
    Move latest = nullMove; // of quiet moves
    Move line[pvCapacity] = {};
    std::unique_ptr<Search> search = std::make_unique<Search>(*tables);
};

// As the search tries them.
std::vector<Move> inOrder(const Position& position) {
    std::vector<Move> moves;
    MovePicker picker(position, PickerKind::everyMove);
    for (Move move = nextMove(picker); move > 0; move = nextMove(picker)) moves.push_back(move);
    std::erase_if(moves, [&](Move move) { return !isLegal(position, move); });
    return moves;
}

} // namespace

TEST_F(PvNodes, DrawsAreScoredForWhoeverMovesAtTheRoot) {
    searchSettings.drawScore = -37;
    for (const int fromRoot : {2, 3, 4}) {
        const int standing = fromRoot % 2 == 0 ? -37 : 37;
        Position bare = positionOf("4k3/8/8/8/8/2N5/8/4K3 w - -"), last = positionOf("4k3/8/8/8/8/8/q7/4K3 w - -");
        last.fifty = 99; // every move draws
        EXPECT_EQ(searched(last, -6000, 6000, 8, fromRoot), -standing);
        const int score = searched(bare, -6000, 6000, 8, fromRoot);
        EXPECT_TRUE(fromRoot == 2 ? search->nodes > 0 : search->nodes == 0 && score == standing) << score;
    }
}

TEST_F(PvNodes, EndWithoutMovesOrTooFarFromTheRoot) {
    Position mated = positionOf("7k/5KQ1/8/8/8/8/8/8 b - -"), stalemated = positionOf("7k/5K2/6Q1/8/8/8/8/8 b - -");
    EXPECT_EQ(searched(mated, -32001, 32001, 4, 5), matedScore(5));
    EXPECT_EQ(searched(stalemated, -32001, 32001, 4, 5), 0);
    Position start = positionOf(startFen);
    EXPECT_EQ(searched(start, -6000, 6000, 4, maxPly), evaluated(start));
    EXPECT_EQ(search->nodes, 0U);
    searched(start, -6000, 6000, 4, 3);
    EXPECT_EQ(start.pvPly, 3) << "for the scouts below";
}

TEST_F(PvNodes, AreExtendedOnceAtAHorizonNearTheWindow) {
    const char* const fens[] = {"4k3/5ppp/8/8/8/8/5PPP/4K3 w - -", "4k3/5ppp/8/8/3p4/4N3/5PPP/4K3 w - -"};
    struct {
        int alpha, beta; // from the evaluation
        bool extended, underThreat;
    } const rows[] = {{-500, 99, true, true}, {-500, 100, false, true}, {-500, 1, true, true},
                      {-500, 0, false, true}, {-500, -99, false, true}, {-500, -100, false, false},
                      {0, 300, false, true},  {1, 300, false, false}};
    for (const auto& row : rows) {
        for (int variant = 0; variant < 24; ++variant) {
            const bool threat = variant & 1, mark = variant & 2, capture = variant & 4; // which adds to the evaluation
            const int depth = variant / 8 - 1;
            forget();
            Position position = positionOf(fens[threat]);
            position.horizonMark = mark;
            position.capturedPiece = capture ? pawn : 0;
            const int eval = evaluated(position) + (capture ? 5 : 0);
            searched(position, eval + row.alpha, eval + row.beta, depth);
            const bool expected = depth >= 0 && !mark && (threat ? row.underThreat : row.extended);
            EXPECT_EQ(position.horizonMark == 1, expected || mark) << row.alpha << ' ' << row.beta;
            EXPECT_EQ(stored(position) != nullptr ? stored(position)->depth : -1, expected ? depth + 2 : -1);
        }
    }
}

TEST_F(PvNodes, TakeFromTheTableTheirFirstMoveOnly) {
    Position start = positionOf(startFen);
    const Move known = encodeMove(h2, h3);
    for (const int shallower : {6, 7}) {
        forget();
        knowMove(start, known, 8 - shallower, 1234, exactBound);
        EXPECT_EQ(firstMove(start, 8) == known, shallower == 6);
    }
    knowMove(start, known, everyDepth, 1234, exactBound);
    EXPECT_LT(searched(start, -6000, 6000, 4), 500);
    killer = encodeMove(g2, g3); // else, after captures
    forget();
    EXPECT_EQ(firstMove(start, 4), killer);
}

TEST_F(PvNodes, DeepOnesWithoutAMoveSearchForOneFirst) {
    const Position position = positionOf("6k1/5ppp/8/8/8/8/8/R5K1 w - -");
    const Move mates = encodeMove(a1, a8), otherwiseFirst = inOrder(position)[0];
    ASSERT_NE(otherwiseFirst, mates);
    for (const auto& [depth, known, depthOfOther] :
         {std::tuple{9, false, 7}, {10, false, 4}, {11, false, 5}, {11, true, -1}}) {
        forget();
        if (known) knowMove(position, mates, depth);
        Position copy = position;
        EXPECT_EQ(searched(copy, -6000, 6000, depth), -matedScore(ply + 1));
        EXPECT_EQ(depthStored(position, otherwiseFirst), depthOfOther) << depth;
    }
}

TEST_F(PvNodes, ExtendForcingMoves) {
    for (const ForcingMove& row : forcingMoves) {
        const std::vector<Position> game = play(row.fen, row.before);
        const Move move = moveOf(game.back(), row.move);
        EXPECT_EQ(extension(game.back(), move, 8, move), row.onPv) << row.fen << ' ' << row.move;
    }
    const char *const check = forcingMoves[1].fen, *const push = forcingMoves[2].fen;
    struct {
        const char *fen, *move;
        int depth, carry, phase, extended;
    } const rows[] = {{check, "a1a2", 8, 1, 4, 0},
                      {check, "a1a2", 8, 2, 4, 1},
                      {check, "a1a8", 8, 1, 4, 1},
                      {check, "a1a8", 8, 2, 4, 2},
                      {push, "e4e5", 8, 0, 32, 1},
                      {push, "e4e5", 8, 0, 33, 0},
                      {"7k/7p/8/8/8/7N/6PP/r6K w - -", "h3g1", 13, 0, 9, 0}, // the only reply to a check
                      {"7k/7p/8/8/8/7N/6PP/r6K w - -", "h3g1", 14, 0, 9, 1},
                      {"7k/7p/8/8/8/5N2/6PP/r6K w - -", "f3g1", 14, 0, 9, 0},
                      {"8/k6p/8/8/8/8/6PB/r6K w - -", "h2g1", 14, 0, 9, 2}};
    for (const auto& [fen, text, depth, carry, phase, extended] : rows) {
        Position position = positionOf(fen);
        position.extensionCarry = static_cast<std::uint8_t>(carry);
        position.phase = static_cast<std::uint16_t>(phase);
        const Move move = moveOf(position, text);
        EXPECT_EQ(extension(position, move, depth, move), extended) << fen << ' ' << text << ' ' << depth;
    }
    Position captures = positionOf("4k3/8/8/1p1p1p1p/P1P1P1P1/8/8/4K3 w - -"); // seven
    captures.phase = 40;
    const std::vector<Move> moves = inOrder(captures);
    for (int i = 0; i < 7; ++i) EXPECT_EQ(extension(captures, moves[i], 8, moves[0]), i < 3 ? 1 : 0) << i;
}

// But for the capture every move draws, as the fifty moves are over.
TEST_F(PvNodes, ExtendTheTablesMoveWhereAllOthersAreWorse) {
    searchSettings.drawScore = -50;
    Position position = positionOf("4k3/8/8/3p4/8/2N2p2/5P2/4K3 w - -");
    position.fifty = 99;
    const Move capture = encodeMove(c3, d5);
    struct {
        int depth, score;
        Bound bound;
        int extended; // the capture by itself: 1
    } const rows[] = {{16, -29, lowerBound, 2}, {16, -30, lowerBound, 1}, {16, -29, exactBound, 2},
                      {16, -29, upperBound, 1}, {15, -29, lowerBound, 1}, {16, 31900, lowerBound, 1}};
    for (const auto& [depth, score, bound, extended] : rows) {
        forget();
        knowMove(position, capture, depth - 6, score, bound);
        Position copy = position;
        searched(copy, 5000, 6000, depth);
        EXPECT_EQ(depthStored(position, capture) - (depth - 2), extended) << depth << ' ' << score << ' ' << bound;
    }
    // A score from the node's own first search counts if it is above alpha.
    for (const bool proven : {true, false}) {
        forget();
        Position copy = position;
        searched(copy, proven ? -6000 : 5000, proven ? 0 : 6000, 16);
        EXPECT_EQ(depthStored(position, capture), proven ? 16 : 15);
    }
}

TEST_F(PvNodes, SearchLaterMovesWithAZeroWindowAndLateOnesLessDeep) {
    const Position start = positionOf(startFen);
    const std::vector<Move> moves = inOrder(start);
    knowAll(start, high);
    Position copy = start;
    searched(copy, 5000, 6000, 8);
    for (const Move move : moves) EXPECT_EQ(depthStored(start, move), move == moves[0] ? 6 : everyDepth);
    struct {
        int depth, number, asked;
    } const rows[] = {{7, 20, 5}, {8, 4, 6}, {8, 5, 4}, {8, 9, 4}, {8, 10, 0}, {8, 20, 0}, {10, 10, 5}, {10, 20, 4}};
    for (const auto& [depth, number, asked] : rows) {
        EXPECT_EQ(firstDepth(start, moves[number - 1], depth, moves[0]), asked) << depth << ' ' << number;
    }
    searchSettings.useLmr = 0;
    EXPECT_EQ(firstDepth(start, moves[19], 10, moves[0]), 8);
    searchSettings = {.nullMovePruning = 0};
    forget();
    knowAll(start, high);
    know(start, moves[4], low, 4);
    searched(copy, 5000, 6000, 8);
    EXPECT_EQ(depthStored(start, moves[4]), 6) << "where the reduced search reaches the window the full one follows";
}

TEST_F(PvNodes, SearchLateMovesOfConsequenceToTheirFullDepth) {
    const char *const lone = "4k3/7p/2p5/3p4/8/8/3R3P/4K3 w - -", *const threat = "4k3/7p/8/n7/8/8/7P/3RK3 w - -";
    const char *const takes = "4k3/8/8/1p1p1p1p/P1P1P1P1/8/8/4K3 w - -", *const mate = "8/8/8/8/8/k7/3q1PPP/K7 w - -";
    const char *const escape = "4k3/7p/8/8/p7/1N6/7P/4K3 w - -", *const safe = "4k3/7p/8/8/8/1N6/7P/4K3 w - -";
    const char* const evades = "7k/7p/8/8/8/2NB1N2/7P/r3K3 w - -";
    constexpr int usual = 5000, mated = -31950; // the window's beginning
    struct {
        const char *fen, *move;
        int depth;
        bool reduced, kills = false;
        int alpha = usual;
    } const rows[] = {{lone, "d2a2", 8, true},         {lone, "d2e2", 8, false},
                      {lone, "d2d5", 8, false},        {takes, "e1d1", 8, true},
                      {takes, "e1d1", 8, false, true}, {evades, "d3b1", 8, false},
                      {mate, "h2h4", 8, true},         {mate, "h2h4", 8, false, false, mated},
                      {threat, "d1a1", 9, false},      {threat, "d1a1", 10, true},
                      {safe, "b3c1", 10, true},        {escape, "b3c1", 10, false},
                      {escape, "b3c1", 15, false},     {escape, "b3c1", 16, true}};
    for (const auto& [fen, move, depth, reduced, kills, alpha] : rows) {
        const Position position = positionOf(fen);
        latest = moveOf(position, move);
        killer = kills ? latest : nullMove;
        const int asked = firstDepth(position, latest, depth, inOrder(position)[0], alpha);
        EXPECT_EQ(asked < depth - 2, reduced) << fen << ' ' << move << ' ' << asked;
    }
}

TEST_F(PvNodes, StoreWhatTheirScoreProves) {
    for (const auto& [alpha, beta, bound] :
         {std::tuple{-6000, 6000, exactBound}, {-6000, -5000, lowerBound}, {5000, 6000, upperBound}}) {
        forget();
        Position position = positionOf(startFen);
        const int score = searched(position, alpha, beta, 6);
        const TTEntry* entry = stored(position);
        ASSERT_NE(entry, nullptr);
        EXPECT_EQ(std::tuple(entry->bound(), entry->score, entry->depth), std::tuple(bound, score, 6));
        EXPECT_EQ(entry->move, bound == upperBound ? nullMove : line[0]);
    }
    Position mates = positionOf("6k1/5ppp/8/8/8/8/8/R5K1 w - -");
    EXPECT_EQ(searched(mates, -6000, 6000, 4, 7), -matedScore(8));
    EXPECT_EQ(stored(mates)->score, -matedScore(1));
}

TEST_F(PvNodes, RememberQuietMovesThatReachBeta) {
    Position position = positionOf("rnbqkbnr/pppp1ppp/8/4p3/8/5P2/PPPPP1PP/RNBQKBNR w KQkq -");
    const Move blunder = encodeMove(g2, g4, doublePush); // is tried first, and mated
    knowMove(position, blunder, 6);
    searched(position, -6000, -5000, 6);
    ASSERT_NE(line[0], blunder);
    EXPECT_EQ(search->killers.killerPrimary[ply], line[0]);
    EXPECT_EQ(counterMoveOf(tables->moveHistory, position), line[0]);
    const QuietOrder order = quietOrderOf(tables->moveHistory, position);
    EXPECT_GT(order.history[counterOf(position, line[0])], 0);
    EXPECT_LT(order.replies[counterOf(position, blunder)], 0);
    // But no captures, nor draws that the fifty moves make.
    for (const char* fen : {"4k3/5p2/8/3q4/8/2N5/5P2/4K3 w - -", "4k3/8/8/8/8/8/8/4K2R w - -"}) {
        Position other = positionOf(fen);
        other.fifty = 99;
        EXPECT_NE(firstMove(other, 6), nullMove);
        EXPECT_EQ(search->killers.killerPrimary[ply], nullMove) << fen;
    }
}

TEST_F(PvNodes, StoppedOnesAnswerNothing) {
    Position start = positionOf(startFen);
    Search limited(*tables, {.nodes = 300});
    EXPECT_EQ(searchPv(limited, start, -6000, 6000, 12, ply, line), 0);
    EXPECT_EQ(limited.nodes, 300U);
    EXPECT_EQ(stored(start), nullptr);
}

} // namespace helvan::testing
