// SPDX-License-Identifier: MIT
#include "search/transposition_table.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/memory.h"
#include "support/boards.h"

namespace helvan::testing {

namespace {

class Table : public ::testing::Test {
protected:
    Table() { table.allocate(1); }
    ~Table() override { table.release(); }

    // The n-th key of the first bucket, from 1.
    Key keyOf(std::uint64_t n) const { return n * table.bucketCount; }
    void storeNth(std::uint64_t n, int depth) { table.store(keyOf(n), depth, 0, exactBound, 1, 0); }

    TranspositionTable table;
};

} // namespace

TEST(TableSize, IsThePowerOfTwoNearestBelow) {
    constexpr std::uint64_t bucketsPerMegabyte = 16384;
    const int sizes[][2] = {{1, 1}, {2, 2}, {64, 64}, {100, 64}, {125, 64}, {127, 128}, {4096, 4096}};
    for (const auto& [asked, given] : sizes) EXPECT_EQ(bucketCountFor(asked), given * bucketsPerMegabyte) << asked;
}

TEST_F(Table, FirstEntryIsNeverGivenAway) {
    storeNth(1, 0);
    for (int n = 2; n < 60; ++n) {
        if (n % 5 == 0) table.newGeneration();
        storeNth(n, n % 7);
        ASSERT_NE(table.probe(keyOf(1)), nullptr);
        ASSERT_NE(table.probe(keyOf(n)), nullptr) << "the newest is always stored";
    }
    table.clear();
    EXPECT_EQ(table.probe(keyOf(1)), nullptr);
}

TEST_F(Table, ClaimingKeepsWhatClearingForgets) {
    for (const int megabytes : {1, 4, 128}) {
        table.allocate(megabytes);
        const Key farthest = table.bucketCount - 1;
        const int allPieces = std::max(megabytes / 2, 1);
        const auto claimedNow = [&] {
            const std::size_t before = table.claimed;
            table.claimAllPages();
            return static_cast<int>((table.claimed - before + claimedPiece - 1) / claimedPiece);
        };
        for (int pass = 0; pass < 3; ++pass) {
            for (int n = 1; n <= 3; ++n) storeNth(n, n);
            table.store(farthest, 9, 0, exactBound, 1, 0);
            if (pass > 0) {
                EXPECT_EQ(claimedNow(), pass == 1 || megabytes > 64 ? allPieces : 0);
            }
            EXPECT_EQ(table.probe(keyOf(3))->depth, 3);
            EXPECT_EQ(table.probe(farthest)->depth, 9);
            table.clear();
            EXPECT_EQ(table.probe(keyOf(3)), nullptr);
            EXPECT_EQ(table.probe(farthest), nullptr);
        }
        EXPECT_EQ(table.claimPages(), megabytes > 64) << "small tables are wiped, large ones get new pages";
    }
    table.release();
    EXPECT_FALSE(table.claimPages());
}

TEST_F(Table, OldAndShallowEntriesGoFirst) {
    for (int n = 1; n <= 4; ++n) storeNth(n, 20 - n);
    table.newGeneration();
    storeNth(3, 2); // fresh again, if shallow
    storeNth(5, 1);
    EXPECT_NE(table.probe(keyOf(3)), nullptr);
    EXPECT_EQ(table.probe(keyOf(2)), nullptr); // old, and shallower than the first
    EXPECT_NE(table.probe(keyOf(4)), nullptr); // no less old, but rated no higher than the choice before it
}

TEST_F(Table, AmongFreshEntriesTheFirstShallowerOneGoesWhole) {
    const int depths[] = {5, 7, 6, 5};
    for (int n = 1; n <= 4; ++n) storeNth(n, depths[n - 1]);
    table.store(keyOf(5), 1, 0, exactBound, nullMove, 3);
    for (int n = 1; n <= 5; ++n) EXPECT_EQ(table.probe(keyOf(n)) != nullptr, n != 3) << n;
    EXPECT_EQ(table.probe(keyOf(5))->move, nullMove);
    EXPECT_EQ(table.probe(keyOf(5))->boundAndTag, exactBound | 3 << 4);
}

TEST_F(Table, EntriesAreToldFromOldOnesAfterAnyNumberOfSearches) {
    for (int searches = 0; searches < 300; ++searches) table.newGeneration();
    for (int n = 1; n <= 4; ++n) storeNth(n, 20 - n);
    table.newGeneration();
    storeNth(2, 2);
    storeNth(5, 1);
    EXPECT_NE(table.probe(keyOf(2)), nullptr);
    EXPECT_EQ(table.probe(keyOf(4)), nullptr);
}

TEST_F(Table, SameKeyIsUpdatedInPlace) {
    table.store(7, 10, 50, lowerBound, 1234, 0);
    for (std::uint64_t n = 1; n <= 4; ++n) storeNth(n, 9);
    table.store(keyOf(5), 3, 0, exactBound, 1, 5);
    table.store(keyOf(5), 4, 0, lowerBound, 1, 6);
    EXPECT_EQ(table.probe(keyOf(5))->boundAndTag, lowerBound | 5 << 4); // the tag is that of the first
    table.store(7, 3, -20, upperBound, nullMove, 0);
    const TTEntry* entry = table.probe(7);
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->depth, 3);
    EXPECT_EQ(entry->score, -20);
    EXPECT_EQ(entry->bound(), upperBound);
    EXPECT_EQ(entry->move, 1234); // no new move: the old one stays
    table.store(7, 3, 0, exactBound, 99, 0);
    EXPECT_EQ(table.probe(7)->move, 99);
}

TEST_F(Table, RefusesScoresThatNoSearchHas) {
    for (const int score : {32501, -32501}) table.store(7, 1, score, exactBound, 1, 0);
    EXPECT_EQ(table.probe(7), nullptr);
    table.store(7, 1, 32500, exactBound, 1, 0);
    EXPECT_NE(table.probe(7), nullptr);
}

TEST_F(Table, SeededLinesNameTheirMovesUpToTheFirstThatCannotBeMade) {
    const std::vector<Position> game = play(startFen, "e2e4 d7d5");
    table.store(game[1].key, 5, 33, exactBound, encodeMove(d1, d8), 0);
    const Move line[] = {game[1].lastMove, game[2].lastMove, encodeMove(d1, d8), nullMove};
    table.seedPv(game[0], line);
    for (int i = 0; i < 2; ++i) {
        const TTEntry* entry = table.probe(game[i].key);
        ASSERT_NE(entry, nullptr);
        EXPECT_EQ(entry->move, line[i]);
        EXPECT_EQ(entry->depth, -99);
        EXPECT_EQ(entry->bound(), noBound);
    }
    EXPECT_EQ(table.probe(game[2].key), nullptr);
}

TEST(TableScores, MatesCountFromThePosition) {
    EXPECT_EQ(scoreToTable(31990, 5), 31995);
    EXPECT_EQ(scoreFromTable(31995, 9), 31986);
    for (const int score : {31999, 31901, 31800, 31799, 300, 0}) {
        EXPECT_EQ(scoreToTable(-score, 7), -scoreToTable(score, 7));
        EXPECT_EQ(scoreToTable(score, 7) != score, score > 31799);
        for (int ply = 0; ply < 100; ++ply) EXPECT_EQ(scoreFromTable(scoreToTable(-score, ply), ply), -score);
    }
}

} // namespace helvan::testing
