// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <set>

#include "board/keys.h"
#include "board/packed_score.h"
#include "support/random.h"

namespace helvan::testing {

TEST(PackedScore, LanesNeverDisturbEachOther) {
    Random random(1);
    const auto value = [&] { return below(random, 1 << 24) - (1 << 23); };
    for (int i = 0; i < 100000; ++i) {
        const int a = value(), b = value(), c = value(), d = value(), factor = below(random, 41) - 20;
        ASSERT_EQ(packed(a, b).opening(), a);
        ASSERT_EQ(packed(a, b).endgame(), b);
        ASSERT_EQ(packed(a, b) + packed(c, d), packed(a + c, b + d));
        ASSERT_EQ(packed(a, b) - packed(c, d), packed(a - c, b - d));
        ASSERT_EQ(packed(a, b) * factor, packed(a * factor, b * factor));
    }
    constexpr int largest = (1 << 30) - 1;
    EXPECT_EQ(packed(largest, -1) + packed(1, 1), packed(-largest - 1, 0)); // wraps round
}

TEST(Keys, EveryCastlingSituationHasItsOwnIndex) {
    const Square homes[] = {a1, e1, h1, a8, e8, h8};
    std::set<int> seen;
    for (int subset = 0; subset < 64; ++subset) {
        Bitboard touched = ~(rank1 | rank8); // squares that no right hangs on
        for (int i = 0; i < 6; ++i) {
            if ((subset >> i & 1) != 0) touched |= bit(homes[i]);
        }
        seen.insert(castlingIndex(touched));
    }
    EXPECT_EQ(seen.size(), 64U);
}

TEST(Keys, AreAllDifferent) {
    std::set<Key> seen;
    const auto insert = [&](const auto& keys) { seen.insert(keys.begin(), keys.end()); };
    insert(pieceKeys);
    insert(pawnKeys);
    insert(epKeys);
    insert(castleKeys);
    insert(materialKeys);
    seen.erase(0); // the keys of no piece
    EXPECT_EQ(seen.size(), 1024U + 4 * 64 + 64 + 64 + 10);
}

} // namespace helvan::testing
