// SPDX-License-Identifier: MIT
//
// The driver of the search: iterations, windows, ranks, and what a search takes over from the game and from others.
#include <algorithm>

#include "support/searching.h"

namespace helvan::testing {

namespace {

class Driver : public Searching {
protected:
    Driver() { drawn.fifty = 99; }

    PvLine thought(const Position& position, const SearchLimits& limits) {
        reporter.iterationEnds = [this](const Search& of, int, int score, const Move* pv) {
            iterations.push_back({0.0, of.nodes, score, pv[0]});
        };
        iterations.clear();
        search = std::make_unique<Search>(*tables, limits, reporter);
        if (poll) search->poll = poll;
        return think(*search, position);
    }

    Position drawn = positionOf("4k3/8/8/8/8/8/q7/4K3 w - -"); // whatever is played
    Reporter reporter;
    std::function<void()> poll;
    std::vector<IterationRecord> iterations;
    std::unique_ptr<Search> search;
};

} // namespace

// The window lies about the last score, the wider the more the scores have swung; one that failed begins at the score,
// half as wide again; a jump from one side to the other is for the full one. All moves draw, so that the option says
// what each search of the root scores.
TEST_F(Driver, SearchesAgainWhatFallsOutsideTheWindow) {
    // The scores of the iterations 2, 3 and 4; of the fifth one's searches, the last one for all later ones; their
    // number.
    constexpr int rows[][7] = {
        {0, 0, 0, 15, 15, 15, 1},     {0, 0, 0, 16, 16, 16, 2},     {0, 0, 0, -15, -15, -15, 1},
        {0, 0, 0, -16, -16, -16, 2},  {0, 40, 0, 39, 39, 39, 1},    {0, 40, 0, 40, 40, 40, 2},
        {41, 0, 0, 19, 19, 19, 1},    {41, 0, 0, 20, 20, 20, 2},    {0, 0, 41, 60, 60, 60, 1},
        {0, 0, 41, 61, 61, 61, 2},    {0, 0, 0, 20, 66, 66, 2},     {0, 0, 0, 20, 67, 137, 3},
        {0, 0, 0, 20, 67, 138, 4},    {0, 0, 0, 20, 20, 20, 2},     {0, 0, 0, -20, -66, -66, 2},
        {0, 0, 0, -20, -67, -137, 3}, {0, 0, 0, -20, -67, -138, 4}, {0, 0, 0, 20, 19, 5000, 3},
        {0, 0, 0, 20, 19, -5000, 3},  {0, 0, 0, -20, -19, 5000, 3}, {0, 0, 0, -20, -19, -5000, 3},
        {0, 0, 0, -20, -20, -20, 2}};
    for (const auto& row : rows) {
        int searches = 0;
        reporter.iterationBegins = [&](int iteration) {
            if (iteration > 1) searchSettings.drawScore = -row[std::min(iteration - 2, 3)];
        };
        reporter.lineFound = [&](const Search&, int, int score, const Move*) {
            EXPECT_EQ(score, row[3 + std::min(searches++, 2)]);
            searchSettings.drawScore = -row[3 + std::min(searches, 2)];
        };
        thought(drawn, {.depth = 5, .forget = true, .searchMoves = std::vector<Move>{encodeMove(e1, d1)}});
        EXPECT_EQ(stored(childOf(drawn, encodeMove(e1, d1)))->bound(), exactBound) << "the last score is in the window";
        EXPECT_EQ(searches, row[6]) << row[1] << ": " << row[3] << ' ' << row[5];
    }
}

TEST_F(Driver, WindowsAreFullInEarlyIterationsAndForSeveralRanks) {
    for (const auto& [jump, ranks, full] : {std::tuple{4, 1, true}, {5, 1, false}, {5, 2, true}}) {
        reporter.iterationBegins = [at = jump](int iteration) {
            searchSettings.drawScore = iteration >= at ? 5000 : 0;
        };
        thought(drawn, {.depth = jump, .ranks = ranks, .searchMoves = std::vector<Move>{encodeMove(e1, d1)}});
        const auto nodesOf = [&](int iteration) {
            return iterations[iteration - 1].nodes - iterations[iteration - 2].nodes;
        };
        EXPECT_EQ(iterations.back().score, -5000);
        EXPECT_EQ(nodesOf(jump) == nodesOf(3), full) << jump << ' ' << ranks;
    }
}

TEST_F(Driver, EveryRankDoesWithoutTheMovesBeforeIt) {
    std::vector<std::vector<PvLine>> found;
    reporter.iterationBegins = [&](int) { found.emplace_back(); };
    reporter.rankFound = [&](int rank, int iteration, const PvLine& at) {
        found.back().push_back(at);
        EXPECT_TRUE(rank == std::ssize(found.back()) && iteration == std::ssize(found));
    };
    for (const auto& [fen, ranks] : {std::pair{startFen, 3U}, {"7k/8/8/8/8/8/7r/3K4 w - -", 2U}}) {
        found.clear();
        const PvLine best = thought(positionOf(fen), {.depth = 4, .ranks = 3});
        for (std::size_t i = 0; i < 4; ++i) {
            std::vector<Move> moves;
            for (const PvLine& at : found[i]) moves.push_back(at.pv[0]);
            EXPECT_EQ(std::pair(moves[0], found[i][0].score), std::pair(iterations[i].bestMove, iterations[i].score));
            std::sort(moves.begin(), moves.end());
            EXPECT_EQ(std::unique(moves.begin(), moves.end()) - moves.begin(), i == 0 ? 1 : ranks);
        }
        EXPECT_EQ(std::pair(best.pv[0], best.score), std::pair(iterations.back().bestMove, iterations.back().score));
    }
}

TEST_F(Driver, EndsAtAMateOrAtTheDepthAskedFor) {
    for (const auto& [depth, count] : {std::pair{1, 1U}, {7, 7U}, {99, 99U}, {0, 99U}, {100, 99U}, {-1, 99U}}) {
        thought(drawn, {.depth = depth});
        EXPECT_EQ(iterations.size(), count) << depth;
    }
    for (const char* fen : {"r1b2k1r/ppp1bppp/8/1B1Q4/5q2/2P5/PPP2PPP/R3R1K1 w - -", "8/8/8/8/8/k7/3q1PPP/K7 w - -"}) {
        thought(positionOf(fen), {.depth = 8});
        for (const IterationRecord& at : iterations) {
            EXPECT_EQ(std::abs(at.score) >= mateBorder, &at == &iterations.back()) << fen;
        }
    }
}

TEST_F(Driver, WaitsForTheEndOfPondering) {
    for (const bool stops : {false, true}) {
        int polls = 0, waited = 0, waitedAtEnd = 0;
        poll = [&] {
            if (++polls < 1000 && (iterations.size() < 3 || ++waited < 3)) return;
            (stops ? search->stopSearch : search->pondering) = stops;
        };
        reporter.answers = [&](const Search&, const Move*) { waitedAtEnd = waited; };
        thought(positionOf(startFen), {.depth = 3, .goalSeconds = 0, .hardSeconds = 0, .ponder = true});
        EXPECT_EQ(iterations.size(), 3U) << "no clock runs";
        EXPECT_EQ(waitedAtEnd, 3);
    }
}

TEST_F(Driver, AnswersAWantedMoveHoweverSoonItIsStopped) {
    const std::vector<Move> wanted = {encodeMove(a2, a3), encodeMove(h2, h4, doublePush)};
    for (const bool byNodes : {true, false}) {
        const SearchLimits limits = {
            .nodes = byNodes ? 1 : unlimitedNodes, .searchMoves = wanted, .uninterruptedNodes = 0};
        search = std::make_unique<Search>(*tables, limits);
        search->checkCounter = 254; // it looks around when the root's first move is searched
        if (!byNodes) search->poll = [this] { search->stopSearch = true; };
        const PvLine best = think(*search, positionOf(startFen));
        EXPECT_TRUE(search->stopSearch);
        EXPECT_TRUE(best.pv[0] == wanted[0] || best.pv[0] == wanted[1]) << moveText(best.pv[0]);
        EXPECT_EQ(best.pv[1], nullMove);
    }
}

TEST_F(Driver, AStoppedIterationLeavesTheLineBeforeIt) {
    const PvLine two = thought(positionOf(startFen), {.depth = 2, .forget = true});
    reporter.iterationBegins = [this](int iteration) { search->stopSearch = iteration == 3; };
    const PvLine stopped = thought(positionOf(startFen), {.forget = true});
    EXPECT_EQ(iterations.size(), 2U);
    EXPECT_EQ(stopped.score, two.score);
    EXPECT_TRUE(std::equal(std::begin(two.pv), std::end(two.pv), stopped.pv));
}

TEST_F(Driver, KnowsTheGameBehindTheRootWhateverBecomesOfIt) {
    searchSettings.drawScore = -40;
    enum { asItIs, overwritten, progressMade };
    for (const int variant : {asItIs, overwritten, progressMade}) {
        std::vector<Position> game = play("4k3/8/8/8/8/8/8/Q3K3 w - -", "e1e2 e8e7");
        if (variant == progressMade) game.back().fifty = 1;
        reporter.iterationBegins = [&](int) {
            if (variant == overwritten) std::fill(game.begin(), game.end(), positionOf(startFen));
        };
        const Position root = game.back();
        const std::vector<Move> wanted = {encodeMove(e2, e1)}; // the reply may repeat where the game began
        const int score = thought(root, {.depth = 4, .forget = true, .searchMoves = wanted}).score;
        EXPECT_TRUE(variant == progressMade ? score > 500 : score == 40) << variant << ' ' << score;
    }
}

TEST_F(Driver, DrawsScoreAsTheOptionSays) {
    for (const auto& [option, used] : {std::pair{-50, -50}, {30, 30}, {99999, 30000}, {-99999, -30000}}) {
        searchSettings.drawScore = option;
        EXPECT_EQ(thought(drawn, {.depth = 4, .forget = true}).score, -used);
        EXPECT_EQ(thought(positionOf("4k3/8/8/8/8/8/2b5/4K3 b - -"), {.depth = 6, .forget = true}).score, used);
    }
}

TEST_F(Driver, FirstSearchesForgetAndThoseToldTo) {
    struct {
        bool hashOff, usedBefore, forgets, tableKept, historyKept, usedAfter;
    } const rows[] = {{false, true, false, true, true, true},   {false, false, false, false, false, true},
                      {false, true, true, false, false, true},  {true, true, false, true, true, true},
                      {true, false, false, true, false, false}, {true, true, true, true, false, true}};
    for (const auto& row : rows) {
        TranspositionTable& table = tables->transpositionTable;
        table.clear();
        table.generation = 7;
        table.store(1, 1, 1, exactBound, 1, 0);
        tables->moveHistory.history[0][0] = 5;
        tables->usedBefore = row.usedBefore;
        thought(positionOf("7k/5K2/6Q1/8/8/8/8/8 b - -"),
                {.depth = 1, .hashOff = row.hashOff, .forget = row.forgets}); // stores nothing
        EXPECT_EQ(table.probe(1) != nullptr, row.tableKept);
        EXPECT_EQ(tables->moveHistory.history[0][0] == 5, row.historyKept);
        EXPECT_EQ(tables->usedBefore, row.usedAfter);
        EXPECT_EQ(table.generation, row.hashOff ? 7U : row.tableKept ? 8U : 1U);
    }
}

} // namespace helvan::testing
