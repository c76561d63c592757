// SPDX-License-Identifier: MIT
#include "book/book.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>

#include "book/polyglot_key.h"
#include "book/settings.h"
#include "platform/log.h"
#include "support/boards.h"
#include "support/session.h"

namespace helvan::testing {

namespace {

// Polyglot's own encoding of a move given as text.
unsigned encodedForBook(const std::string& move) {
    const auto square = [&](int at) { return static_cast<unsigned>(move[at] - 'a' + 8 * (move[at + 1] - '1')); };
    const std::size_t promotion = move.size() > 4 ? std::string(" nbrq").find(move[4]) : 0;
    return square(2) | square(0) << 6 | static_cast<unsigned>(promotion) << 12;
}

class Books : public ::testing::Test {
protected:
    Books() { std::srand(1); }
    ~Books() override {
        std::remove(name.c_str());
        bookSettings = {};
        reopenBook(session().book);
    }

    void add(std::uint64_t key, unsigned move, unsigned weight) {
        const auto append = [&](std::uint64_t value, int length) {
            for (int shift = 8 * (length - 1); shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift);
        };
        append(key, 8);
        append(move, 2);
        append(weight, 2);
        append(0, 4);
    }
    void open() {
        std::ofstream(name, std::ios::binary) << bytes;
        answerTo("setoption name Book File value " + name);
    }

    static std::string probe(const Position& position) {
        const Move move = probeBook(session().book, position);
        return move == nullMove ? "" : moveText(move);
    }

    std::map<std::string, int> answersToProbes(int probes) {
        std::map<std::string, int> answers;
        for (int i = 0; i < probes; ++i) ++answers[probe(start)];
        return answers;
    }

    // What the position gets from a book with these moves and weights for it alone.
    std::string answerOf(const Position& position, const std::vector<std::pair<std::string, unsigned>>& moves) {
        bytes.clear();
        for (const auto& [move, weight] : moves) add(polyglotKey(position), encodedForBook(move), weight);
        open();
        return probe(position);
    }

    std::string bytes;
    std::string name = ::testing::TempDir() + "helvan_book_" + std::to_string(getpid()) + ".bin";
    Position start = positionOf(startFen);
};

} // namespace

TEST(PolyglotKey, AgreesWithThePublishedKeys) {
    std::ifstream file(HELVAN_TEST_DATA "/polyglot-keys.txt");
    int checked = 0;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line[0] == '#') continue;
        const std::size_t keyAt = line.rfind(' ') + 1;
        const std::string moves = line[0] == '-' ? "" : line.substr(0, keyAt);
        EXPECT_EQ(polyglotKey(play(startFen, moves).back()), std::stoull(line.substr(keyAt), nullptr, 16)) << line;
        ++checked;
    }
    EXPECT_EQ(checked, 9);
}

TEST_F(Books, WeightsAreChances) {
    answerOf(start, {{"e2e4", 20}, {"d2d4", 30}, {"c2c4", 0}, {"g1f3", 30}});
    std::map<std::string, int> best = answersToProbes(700);
    EXPECT_EQ(best.size(), 2U);
    EXPECT_NEAR(best["d2d4"], 350, 66); // five standard deviations
    EXPECT_NEAR(best["g1f3"], 350, 66);
    bookSettings.bestLineOnly = 0;
    std::map<std::string, int> all = answersToProbes(700);
    EXPECT_EQ(all.size(), 3U);
    EXPECT_NEAR(all["e2e4"], 175, 57);
    answerOf(start, {{"e2e4", 1}, {"d2d4", 1}});
    EXPECT_EQ(answersToProbes(50).size(), 2U);
    answerTo("setoption name OwnBook value false");
    EXPECT_EQ(probe(start), "");
}

TEST_F(Books, IsPlayedFromWithoutSearch) {
    answerTo("position startpos");
    EXPECT_EQ(answerOf(start, {{"c2c5", 1}}), "");
    EXPECT_TRUE(contains(answerTo("go depth 1"), "info depth 1"));
    EXPECT_EQ(answerOf(start, {{"c2c4", 1}}), "c2c4");
    EXPECT_EQ(answerTo("go wtime 1000 btime 1000"), "info nodes 0\nbestmove c2c4\n");
    EXPECT_TRUE(contains(answerTo("go depth 1 searchmoves a2a3"), "bestmove a2a3"));
}

TEST_F(Books, WrittenAnewInPlaceIsReadAnew) {
    EXPECT_EQ(answerOf(start, {{"e2e4", 1}, {"e2e4", 1}, {"e2e4", 1}}), "e2e4");
    for (const char* moves : {"d2d4 d2d4", "c2c4", "g1f3 g1f3 g1f3 g1f3", "b1c3 b1c3 b1c3 b1c3"}) {
        bytes.clear();
        for (std::size_t at = 0; at < std::strlen(moves); at += 5) {
            add(polyglotKey(start), encodedForBook(std::string(moves + at, 4)), 1);
        }
        std::ofstream(name, std::ios::binary) << bytes; // the same file, cut or grown
        EXPECT_EQ(probe(start), std::string(moves, 4));
    }
}

TEST_F(Books, FindsEveryEntryOfASortedBook) {
    std::map<std::uint64_t, std::string> entries;
    std::vector<Position> positions;
    forRandomPositions(300, 5, [&](const Position& position, Random& random) {
        std::vector<Move> moves = legalMovesOf(position);
        std::erase_if(moves, [](Move move) { return moveKind(move) == castling; }); // which books write otherwise
        if (moves.empty() || !entries.emplace(polyglotKey(position), moveText(oneOf(random, moves))).second) return;
        positions.push_back(position);
    });
    for (const auto& [key, move] : entries) add(key, encodedForBook(move), 1);
    open();
    for (const Position& position : positions) EXPECT_EQ(probe(position), entries[polyglotKey(position)]);
}

TEST_F(Books, CastlingAndPromotionsAreTranslated) {
    const char* castlings = "r3k2r/8/8/8/8/8/8/R3K2R w KQkq -";
    const char* black = "r3k2r/8/8/8/8/8/8/R3K2R b KQkq -";
    const char* promotion = "8/P7/8/8/8/4k3/8/4K3 w - -";
    const char* rook = "4k3/8/8/8/8/8/8/4R1K1 w - -"; // a rook moves from e1 to h1
    const char* rows[][3] = {{castlings, "e1h1", "e1g1"}, {castlings, "e1a1", "e1c1"},   {black, "e8h8", "e8g8"},
                             {black, "e8a8", "e8c8"},     {promotion, "a7a8n", "a7a8n"}, {promotion, "a7a8q", "a7a8q"},
                             {promotion, "a7a8", ""},     {rook, "e1f1", "e1f1"},        {rook, "e1h1", ""}};
    for (const auto& [fen, inBook, own] : rows) EXPECT_EQ(answerOf(positionOf(fen), {{inBook, 1}}), own) << inBook;
}

TEST_F(Books, OneIllegalMoveSpoilsThePosition) {
    const std::string logName = name + ".log";
    openLog(logName.c_str());
    EXPECT_EQ(answerOf(start, {{"e2e4", 30}, {"e2e5", 1}}), "");
    openLog("/"); // no file: closes the log
    std::ifstream file(logName);
    const std::string log((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    EXPECT_TRUE(contains(log, "\nbook: e2e4     30\nHey, book seems broken\n")) << log;
    std::remove(logName.c_str());
    EXPECT_EQ(answerOf(start, {{"e2e4", 30}, {"e2e5", 0}, {"e2e4", 30}}),
              "e2e4"); // without weight it is never looked at
    // A move that does not even name a promotion.
    bytes.clear();
    add(polyglotKey(start), encodedForBook("e2e4") | 7U << 12, 1);
    open();
    EXPECT_EQ(probe(start), "");
}

// Whatever the file holds, the answer is a legal move of the position or none.
TEST_F(Books, SurvivesFilesThatAreNoBooks) {
    EXPECT_EQ(answerOf(start, {}), "");
    for (const std::string& noFile : {::testing::TempDir(), std::string("/no/such/book")}) {
        std::strcpy(bookSettings.bookFileName, noFile.c_str());
        reopenBook(session().book);
        EXPECT_EQ(probe(start), "") << noFile;
    }
    Random random(3);
    const std::uint64_t key = polyglotKey(start);
    for (int i = 0; i < 2000; ++i) {
        bytes.clear();
        for (int entries = below(random, 12); entries > 0; --entries) {
            add(below(random, 2) == 0 ? key : random(), random() & 0xffff, random() & 0xffff);
        }
        bytes.resize(bytes.size() - std::min<std::size_t>(bytes.size(), below(random, 40)));
        open();
        const Move move = probeBook(session().book, start);
        ASSERT_TRUE(move == nullMove || isLegal(start, move));
    }
    // More entries than any position has moves.
    EXPECT_EQ(answerOf(start, std::vector(100000, std::pair(std::string("e2e4"), 65535U))), "e2e4");
    EXPECT_EQ(probe(play(startFen, "e2e4").back()), "");
    // Only entries of the position, up to the end of the file and a part of an entry beyond it.
    answerOf(start, {{"e2e4", 1}, {"e2e4", 1}, {"e2e4", 1}, {"d2d4", 1}});
    bytes.resize(bytes.size() - 4);
    open();
    EXPECT_EQ(probe(start), "e2e4");
}

} // namespace helvan::testing
