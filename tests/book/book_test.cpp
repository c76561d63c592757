// SPDX-License-Identifier: MIT
#include "book/book.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <sstream>

#include "board/apply_move.h"
#include "book/polyglot_key.h"
#include "book/settings.h"
#include "protocol/log.h"
#include "support/boards.h"

namespace helvan::testing {

namespace {

Position afterMoves(const std::string& moves) {
    std::array<Position, 32> game;
    game[0] = positionOf(startFen);
    std::size_t ply = 0;
    std::istringstream words(moves);
    for (std::string word; words >> word; ++ply) {
        EXPECT_EQ(applyMoveText(game[ply], game[ply + 1], word.c_str()), 1) << word;
    }
    return game[ply];
}

// Polyglot's own encoding of a move given as text.
unsigned encodedForBook(const std::string& move) {
    const auto square = [&](int at) { return static_cast<unsigned>(move[at] - 'a' + 8 * (move[at + 1] - '1')); };
    const std::size_t promotion = move.size() > 4 ? std::string(" nbrq").find(move[4]) : 0;
    return square(2) | square(0) << 6 | static_cast<unsigned>(promotion) << 12;
}

// A legal move that books write as the engine does: no castling.
Move quietMove(const Position& position) {
    const std::vector<Move> moves = legalMovesOf(position);
    return *std::find_if(moves.begin(), moves.end(), [](Move move) { return moveKind(move) != castling; });
}

class Book : public ::testing::Test {
protected:
    Book() { std::srand(1); }
    ~Book() override {
        std::remove(name.c_str());
        bestLineOnly = 1;
        ownBook = 1;
        std::strcpy(bookFileName, "helvan.bin");
        reopenBook();
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
    void add(const Position& position, const std::string& move, unsigned weight) {
        add(polyglotKey(position), encodedForBook(move), weight);
    }

    void open() {
        std::ofstream(name, std::ios::binary) << bytes;
        std::snprintf(bookFileName, bookFileCapacity, "%s", name.c_str());
        reopenBook();
    }

    std::string probe(const Position& position) {
        const Move move = probeBook(position);
        return move == nullMove ? "" : textOf(move);
    }

    std::map<std::string, int> answersOf(const Position& position, int probes) {
        std::map<std::string, int> answers;
        for (int i = 0; i < probes; ++i) ++answers[probe(position)];
        return answers;
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
        EXPECT_EQ(polyglotKey(afterMoves(moves)), std::stoull(line.substr(keyAt), nullptr, 16)) << line;
        ++checked;
    }
    EXPECT_EQ(checked, 9);
}

TEST_F(Book, WeightsAreChances) {
    add(start, "e2e4", 10);
    add(start, "d2d4", 30);
    add(start, "c2c4", 0);
    add(start, "g1f3", 30);
    open();
    std::map<std::string, int> best = answersOf(start, 700);
    EXPECT_EQ(best.size(), 2u);
    EXPECT_NEAR(best["d2d4"], 350, 66); // five standard deviations
    EXPECT_NEAR(best["g1f3"], 350, 66);
    bestLineOnly = 0;
    std::map<std::string, int> all = answersOf(start, 700);
    EXPECT_EQ(all.size(), 3u);
    EXPECT_NEAR(all["e2e4"], 100, 46);
    ownBook = 0;
    reopenBook();
    EXPECT_EQ(probe(start), "");
}

TEST_F(Book, FindsEveryEntryOfASortedBook) {
    std::vector<std::pair<std::uint64_t, std::string>> entries;
    std::vector<Position> positions;
    forRandomPositions(300, 5, [&](const Position& position, Random&) {
        if (legalMovesOf(position).empty()) return;
        positions.push_back(position);
        entries.emplace_back(polyglotKey(position), textOf(quietMove(position)));
    });
    std::sort(entries.begin(), entries.end());
    for (const auto& [key, move] : entries) add(key, encodedForBook(move), 1);
    open();
    for (const Position& position : positions) {
        const std::pair<std::uint64_t, std::string> entry(polyglotKey(position), probe(position));
        ASSERT_TRUE(std::binary_search(entries.begin(), entries.end(), entry)) << entry.second;
    }
}

TEST_F(Book, CastlingAndPromotionsAreTranslated) {
    const Position castlings = positionOf("r3k2r/8/8/8/8/8/8/R3K2R w KQkq -");
    const Position black = positionOf("r3k2r/8/8/8/8/8/8/R3K2R b KQkq -");
    const Position promotion = positionOf("8/P7/8/8/8/4k3/8/4K3 w - -");
    const Position rook = positionOf("4k3/8/8/8/8/8/8/4R1K1 w - -"); // a rook moves from e1 to h1
    for (const auto& [position, inBook, own] :
         {std::tuple{&castlings, "e1h1", "e1g1"}, std::tuple{&castlings, "e1a1", "e1c1"},
          std::tuple{&black, "e8h8", "e8g8"}, std::tuple{&black, "e8a8", "e8c8"},
          std::tuple{&promotion, "a7a8n", "a7a8n"}, std::tuple{&promotion, "a7a8q", "a7a8q"},
          std::tuple{&promotion, "a7a8", ""}, std::tuple{&rook, "e1f1", "e1f1"}, std::tuple{&rook, "e1h1", ""}}) {
        bytes.clear();
        add(*position, inBook, 1);
        open();
        EXPECT_EQ(probe(*position), own) << inBook;
    }
}

TEST_F(Book, OneIllegalMoveSpoilsThePosition) {
    const std::string logName = name + ".log";
    openLog(logName.c_str());
    add(start, "e2e4", 30);
    add(start, "e2e5", 1);
    open();
    EXPECT_EQ(probe(start), "");
    std::ifstream file(logName);
    const std::string log((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    EXPECT_EQ(log, "book: e2e4     30\nHey, book seems broken\n");
    std::remove(logName.c_str());
    openLog("/"); // no file: closes the log
    bytes.clear();
    add(start, "e2e4", 30);
    add(start, "e2e5", 0); // never looked at
    add(start, "e2e4", 30);
    open();
    EXPECT_EQ(probe(start), "e2e4");
    // A move that does not even name a promotion.
    bytes.clear();
    add(polyglotKey(start), encodedForBook("e2e4") | 7u << 12, 1);
    open();
    EXPECT_EQ(probe(start), "");
}

// Whatever the file holds, the answer is a legal move of the position or none.
TEST_F(Book, SurvivesFilesThatAreNoBooks) {
    open();
    EXPECT_EQ(probe(start), "");
    std::strcpy(bookFileName, ::testing::TempDir().c_str());
    reopenBook();
    EXPECT_EQ(probe(start), "");
    std::strcpy(bookFileName, "/no/such/book");
    reopenBook();
    EXPECT_EQ(probe(start), "");

    Random random(3);
    const std::uint64_t key = polyglotKey(start);
    for (int i = 0; i < 2000; ++i) {
        bytes.clear();
        for (int entries = below(random, 12); entries > 0; --entries) {
            add(below(random, 2) == 0 ? key : random(), random() & 0xffff, random() & 0xffff);
        }
        bytes.resize(bytes.size() - std::min<std::size_t>(bytes.size(), below(random, 40)));
        open();
        const Move move = probeBook(start);
        ASSERT_TRUE(move == nullMove || isLegal(start, move));
    }
    // More entries than any position has moves.
    bytes.clear();
    for (int i = 0; i < 100000; ++i) add(start, "e2e4", 65535);
    open();
    EXPECT_EQ(probe(start), "e2e4");
    EXPECT_EQ(probe(afterMoves("e2e4")), "");
    // Only entries of the position, up to the end of the file and a part of an entry beyond it.
    bytes.clear();
    for (int i = 0; i < 3; ++i) add(start, "e2e4", 1);
    add(start, "d2d4", 1);
    bytes.resize(bytes.size() - 4);
    open();
    EXPECT_EQ(probe(start), "e2e4");
}

} // namespace helvan::testing
