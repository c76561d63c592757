// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <set>
#include <string>

#include "board/bits.h"
#include "board/keys.h"
#include "board/packed_score.h"
#include "support/boards.h"

namespace helvan::testing {

TEST(PackedScore, LanesNeverDisturbEachOther) {
    Random random(1);
    const auto value = [&] { return below(random, 1 << 24) - (1 << 23); };
    for (int i = 0; i < 100000; ++i) {
        const int a = value(), b = value(), c = value(), d = value(), factor = below(random, 41) - 20;
        const PackedScore sum = packed(a, b) + packed(c, d);
        ASSERT_EQ(sum.opening(), a + c);
        ASSERT_EQ(sum.endgame(), b + d);
        const PackedScore difference = packed(a, b) - packed(c, d);
        ASSERT_EQ(difference.opening(), a - c);
        ASSERT_EQ(difference.endgame(), b - d);
        const PackedScore product = packed(a, b) * factor;
        ASSERT_EQ(product.opening(), a * factor);
        ASSERT_EQ(product.endgame(), b * factor);
        ASSERT_EQ(difference.bits & PackedScore::carryBits, 0u);
    }
}

TEST(PackedScore, LanesWrapModuloTwoToThe31) {
    constexpr int largest = (1 << 30) - 1;
    EXPECT_EQ((packed(largest, -1) + packed(1, 1)), packed(-largest - 1, 0));
}

TEST(Bits, RoundedSquareRootIsTheNearestInteger) {
    const auto check = [](std::int64_t n) {
        const std::int64_t root = roundedSquareRoot(static_cast<int>(n));
        const auto miss = [&](std::int64_t k) { return std::llabs(k * k - n); };
        // The square nearest in value belongs to the root nearest to the true one but for squares as far apart
        // as n itself: both readings agree for integers.
        ASSERT_LE(miss(root), miss(root + 1)) << n;
        if (root > 0) {
            ASSERT_LE(miss(root), miss(root - 1)) << n;
        }
    };
    for (int n = 0; n < 100000; ++n) check(n);
    for (std::int64_t n = 0x7fffffff; n > 0x7fffffff - 1000; --n) check(n);
    EXPECT_EQ(roundedSquareRoot(-5), 0);
}

TEST(Keys, EveryCastlingSituationHasItsOwnIndex) {
    const Square homes[] = {a1, e1, h1, a8, e8, h8};
    std::set<int> seen;
    for (int subset = 0; subset < 64; ++subset) {
        Bitboard touched = 0x0000ffffffff0000; // squares that no right hangs on
        for (int i = 0; i < 6; ++i) {
            if ((subset >> i & 1) != 0) touched |= bit(homes[i]);
        }
        seen.insert(castlingIndex(touched));
    }
    EXPECT_EQ(seen.size(), 64u);
}

TEST(Keys, AreAllDifferent) {
    std::set<Key> seen;
    const auto insert = [&](const auto& keys) {
        for (const Key key : keys) {
            if (key != 0) {
                EXPECT_TRUE(seen.insert(key).second);
            }
        }
    };
    insert(pieceKeys);
    insert(pawnKeys);
    insert(epKeys);
    insert(castleKeys);
    insert(materialKeys);
    EXPECT_EQ(seen.size(), 1024u + 4 * 64 + 64 + 64 + 10);
}

// The evaluation knows these endings by the low bits of their signature; each needs a slot of its own.
TEST(Keys, KnownEndingsHaveDistinctSlots) {
    const char* endings[] = {"",   "B",  "BBb", "BBn", "BN",  "BNb", "BNn", "BP", "NP", "Bb",
                             "Bn", "Bp", "N",   "NN",  "NNb", "NNn", "Nn",  "Np", "P",  "Q",
                             "Qb", "Qn", "Qq",  "Qr",  "R",   "RNr", "Rb",  "Rn", "Rr"};
    const std::string letters = "PNBRQ";
    std::map<Key, Key> slots;
    for (const std::string ending : endings) {
        for (Colour firstSide : {white, black}) {
            Key signature = 0;
            for (const char letter : ending) {
                const bool upper = letter < 'a';
                const auto index = letters.find(upper ? letter : static_cast<char>(letter - 'a' + 'A'));
                const PieceType type = static_cast<PieceType>(index) + pawn;
                signature += materialKeys[materialIndex(upper ? firstSide : opponent(firstSide), type)];
            }
            const auto [slot, isNew] = slots.emplace(signature & 4095, signature);
            EXPECT_TRUE(isNew || slot->second == signature) << ending;
        }
    }
}

} // namespace helvan::testing
