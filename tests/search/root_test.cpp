// SPDX-License-Identifier: MIT
#include "search/root.h"

#include <algorithm>

#include "board/exchange.h"
#include "board/piece_square.h"
#include "search/stopping.h"
#include "support/known_children.h"

namespace helvan::testing {

namespace {

class RootNodes : public KnownChildren {
protected:
    // Begins a search of the position, in which no move is searched yet; the given ones then come first.
    void begin(const Position& position, const std::vector<Move>& first = {}, const SearchLimits& limits = {}) {
        root = {};
        root.position = position;
        search = std::make_unique<Search>(*tables, limits, reporter);
        search->nodes = 7;
        EXPECT_EQ(searched(1), -infiniteScore) << "nothing is wanted";
        EXPECT_EQ(root.pv[0], nullMove);
        EXPECT_EQ(search->nodes, legalMovesOf(position).size()) << "after the list is made it is 0";
        root.wanted = legalMovesOf(position);
        const auto rankOf = [&](const RootMove& at) { return std::find(first.begin(), first.end(), at.move); };
        std::stable_sort(root.moves.list, root.moves.list + root.moves.count,
                         [&](const RootMove& one, const RootMove& other) { return rankOf(one) < rankOf(other); });
    }
    int searched(int iteration, Window window = fullWindow) { return searchRoot(*search, root, iteration, window); }

    std::vector<Move> listed() const {
        std::vector<Move> moves;
        for (int i = 0; i < root.moves.count; ++i) moves.push_back(root.moves.list[i].move);
        return moves;
    }

    RootSearch root;
    Reporter reporter;
    std::unique_ptr<Search> search;
};

constexpr Window above = {5000, 6000};

} // namespace

TEST_F(RootNodes, ListTheirMovesByTheSquaresOfThePiecesAndLosingOnesLast) {
    for (const std::string& fen : gameStarts) {
        const Position position = positionOf(fen);
        begin(position);
        const auto scoreOf = [&](Move move) {
            const Position child = childOf(position, move);
            const PackedScore sum = pstOf(child);
            const int phase = std::min<int>(phaseOf(child), 96);
            const int score = (sum.opening() * phase + sum.endgame() * (96 - phase)) / 960;
            return (position.sideToMove() == white ? score : -score) - (see(position, move) < 0 ? 500 : 0);
        };
        std::vector<Move> expected = legalMovesOf(position);
        std::stable_sort(expected.begin(), expected.end(),
                         [&](Move one, Move other) { return scoreOf(one) > scoreOf(other); });
        for (std::size_t i = 0; i < expected.size(); ++i) {
            EXPECT_EQ(root.moves.list[i].orderScore, scoreOf(expected[i])) << fen << ' ' << moveText(expected[i]);
        }
        EXPECT_EQ(listed(), expected) << fen;
    }
}

TEST_F(RootNodes, SearchWhatIsWantedUntilAMoveReachesBeta) {
    const Position start = positionOf(startFen);
    begin(start);
    root.wanted = {encodeMove(a2, a3), encodeMove(h2, h3)};
    for (const int beta : {5000, -5000}) {
        forget();
        EXPECT_GE(searched(3, {-6000, beta}), -5000);
        int count = 0;
        for (const Move move : listed()) count += depthStored(start, move) == 4;
        EXPECT_EQ(count, beta > 0 ? 2 : 1);
        EXPECT_EQ(depthStored(start, root.pv[0]), 4);
        EXPECT_TRUE(root.pv[0] == root.wanted[0] || root.pv[0] == root.wanted[1]);
    }
    EXPECT_LE(searched(3, above), above.alpha);
    EXPECT_NE(root.pv[0], nullMove) << "the best of those that do not reach the window";
}

TEST_F(RootNodes, WithoutAMoveAreMateOrStalemate) {
    for (const auto& [fen, score] :
         {std::pair{"7k/5KQ1/8/8/8/8/8/8 b - -", -mateScore}, {"7k/5K2/6Q1/8/8/8/8/8 b - -", 0}}) {
        Search fresh(*tables);
        root.position = positionOf(fen);
        EXPECT_EQ(searchRoot(fresh, root, 1, fullWindow), score);
        EXPECT_EQ(root.pv[0], nullMove);
    }
}

TEST_F(RootNodes, ExtendForcingMovesAndCarryQuartersFromMoveToMove) {
    for (const ForcingMove& row : forcingMoves) {
        const std::vector<Position> game = play(row.fen, row.before);
        forget();
        begin(game.back());
        knowAll(game.back(), low); // so that every move is searched again with an open window
        searched(4, above);
        EXPECT_EQ(depthStored(game.back(), moveOf(game.back(), row.move)) - 6, row.atRoot)
            << row.fen << ' ' << row.move;
    }
    const Position start = positionOf(startFen);
    begin(start);
    root.moves.extensionCarry = 3;
    knowAll(start, low);
    searched(4, above);
    for (const Move move : listed()) EXPECT_EQ(depthStored(start, move), move == listed()[0] ? 7 : 6);
    EXPECT_EQ(root.moves.extensionCarry, 1);
}

TEST_F(RootNodes, SearchLateQuietMovesLessDeepUntilAnInterestingOneIsMet) {
    const char *const forcing = "4k3/7p/2p5/3p4/8/8/3R3P/4K3 w - -", *const mated = "8/8/8/8/8/k7/3q1PPP/K7 w - -";
    struct {
        const char* fen;
        std::vector<const char*> order; // the last one is looked at
        int iteration, asked;
        int useLmr = 1, alpha = 5000;
    } const rows[] = {
        {startFen, {"a2a3", "b2b3"}, 4, 6},
        {startFen, {"a2a3", "b2b3", "c2c3"}, 4, 4},
        {startFen, {"a2a3", "b2b3", "c2c3"}, 3, 4},
        {startFen, {"a2a3", "b2b3", "c2c3"}, 5, 6},
        {startFen, {"a2a3", "b2b3", "c2c3"}, 4, 6, 0},
        {forcing, {"d2a2", "d2d5", "h2h3"}, 4, 4}, // behind a capture that loses
        {forcing, {"d2a2", "d2b2", "d2d5"}, 4, 6},
        {forcing, {"d2a2", "d2e2", "h2h3"}, 4, 6}, // behind a check
        {forcing, {"d2a2", "d2b2", "d2e2"}, 4, 8},
        {"4k3/7p/8/3p4/8/8/3R3P/4K3 w - -", {"d2a2", "d2d5", "h2h3"}, 4, 6}, // behind one that loses nothing
        {"4k3/7p/8/P7/8/8/7P/4K3 w - -", {"e1f1", "a5a6", "h2h3"}, 4, 6},
        {"4k3/4r2p/8/8/8/8/7P/4K3 w - -", {"e1f1", "e1d1", "e1d2"}, 4, 6}, // out of check
        {mated, {"f2f3", "h2h3", "g2g3"}, 4, 4},
        {mated, {"f2f3", "h2h3", "g2g3"}, 4, 6, 1, -31950}, // all are mated
    };
    for (const auto& row : rows) {
        const Position position = positionOf(row.fen);
        std::vector<Move> order;
        for (const char* text : row.order) order.push_back(moveOf(position, text));
        searchSettings.useLmr = row.useLmr;
        const int asked = depthAsked(position, order.back(), [&] {
            begin(position, order);
            searched(row.iteration, {row.alpha, 6000});
            return search->nodes;
        });
        EXPECT_EQ(asked, row.asked) << row.fen << ' ' << row.order.back();
    }
    // Where the reduced search reaches the window the full one follows, with an open window.
    const Position start = positionOf(startFen);
    forget();
    begin(start);
    knowAll(start, high);
    know(start, listed()[2], low, 4);
    searched(4, above);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(depthStored(start, listed()[i]), i == 0 || i == 2 ? 6 : everyDepth) << i;
}

TEST_F(RootNodes, PutTheBestMoveFirstAndShareOutTheNodes) {
    const Position position = positionOf("4k3/5p2/8/3q4/8/2N5/5P2/4K3 w - -");
    const Move wins = encodeMove(c3, d5);
    std::vector<Move> order = legalMovesOf(position);
    std::erase(order, wins);
    begin(position, order);
    order.insert(order.begin(), wins);
    ASSERT_EQ(listed().back(), wins);
    std::uint64_t best = 0, others = 0;
    for (const int iteration : {2, 3}) {
        EXPECT_GT(searched(iteration), 0);
        EXPECT_EQ(root.pv[0], wins);
        EXPECT_EQ(listed(), order);
        for (const RootMove* move = root.moves.list; move != root.moves.list + root.moves.count; ++move) {
            (move->move == wins ? best : others) += move->nodes;
        }
        EXPECT_EQ(std::pair(root.shares.best, root.shares.others), std::pair(best, others));
        EXPECT_EQ(search->nodes, iteration * order.size() + best + others) << "and the root's own";
    }
    EXPECT_TRUE(best > 0 && others > 0 && best != others);
}

TEST_F(RootNodes, StoppedOnesAnswerNothing) {
    begin(positionOf(startFen), {}, {.nodes = 300});
    const std::vector<Move> before = listed();
    for (const int iteration : {8, 1}) {
        EXPECT_EQ(searched(iteration), 0);
        EXPECT_EQ(search->nodes, 300U);
        EXPECT_EQ(listed(), before);
        EXPECT_EQ(root.shares.best + root.shares.others, 0U);
    }
}

TEST_F(RootNodes, ReportMovesAndLinesOfLateIterations) {
    std::vector<Move> begun, found;
    reporter.moveBegins = [&](Move move, int number) {
        begun.push_back(move);
        EXPECT_EQ(number, static_cast<int>(begun.size()));
    };
    int shownIteration = 0, shownScore = 0;
    reporter.lineFound = [&](const Search&, int iteration, int score, const Move* pv) {
        found.push_back(pv[0]);
        std::tie(shownIteration, shownScore) = std::pair(iteration, score);
    };
    const Move poor = encodeMove(e1, f1), good = encodeMove(c3, d5);
    const std::vector<Move> none, both = {poor, good};
    for (const auto& [iteration, ranks, seconds, moves, lines] : {std::tuple{4, 1, 0.3, none, none},
                                                                  {5, 1, 0.3, none, both},
                                                                  {6, 1, 0.0, none, both},
                                                                  {6, 1, 0.3, both, both},
                                                                  {6, 2, 0.3, none, none}}) {
        forget();
        begun = found = none;
        begin(positionOf("4k3/5p2/8/3q4/8/2N5/5P2/4K3 w - -"), both, {.ranks = ranks});
        root.wanted = both;
        search->searchStartTime = now() - seconds;
        const int score = searched(iteration);
        EXPECT_EQ(std::pair(begun, found), std::pair(moves, lines)) << iteration;
        EXPECT_TRUE(lines == none || (shownIteration == iteration && shownScore == score));
    }
}

} // namespace helvan::testing
