// SPDX-License-Identifier: MIT
//
// An opening and an endgame value in one 64-bit word, so that one addition adds both.
#pragma once

#include <cstdint>

namespace helvan {

// Two lanes of 31 bits in two's complement, which wrap modulo 2^31: the opening value times 2^32 plus the endgame
// value. Sums, differences and multiples of words are those of the lanes: what a negative endgame value borrows from
// the upper half is given back where the lane is read. True as long as no endgame value leaves 32 bits: those of
// evaluations stay far inside.
struct PackedScore {
    std::uint64_t bits = 0;

    constexpr int opening() const { return laneValue(static_cast<std::uint32_t>((bits + borrowed) >> 32)); }
    constexpr int endgame() const { return laneValue(static_cast<std::uint32_t>(bits)); }

    constexpr PackedScore& operator+=(PackedScore other) {
        bits += other.bits;
        return *this;
    }
    constexpr PackedScore& operator-=(PackedScore other) {
        bits -= other.bits;
        return *this;
    }
    friend constexpr PackedScore operator+(PackedScore a, PackedScore b) { return a += b; }
    friend constexpr PackedScore operator-(PackedScore a, PackedScore b) { return a -= b; }
    friend constexpr PackedScore operator-(PackedScore a) { return PackedScore{} - a; }
    friend constexpr PackedScore operator*(PackedScore a, int factor) {
        return {a.bits * static_cast<std::uint64_t>(std::int64_t{factor})};
    }
    friend constexpr bool operator==(PackedScore a, PackedScore b) {
        return a.opening() == b.opening() && a.endgame() == b.endgame();
    }

    // Doubling moves a lane's sign bit 30 to bit 31; the arithmetic shift back extends it.
    static constexpr int laneValue(std::uint32_t lane) { return static_cast<std::int32_t>(lane << 1) >> 1; }

private:
    static constexpr std::uint64_t borrowed = 0x80000000;
};

// Packs two values; each is taken modulo 2^31.
constexpr PackedScore packed(std::int64_t opening, std::int64_t endgame) {
    const std::int64_t lower = PackedScore::laneValue(static_cast<std::uint32_t>(endgame));
    return {(static_cast<std::uint64_t>(opening) << 32) + static_cast<std::uint64_t>(lower)};
}

} // namespace helvan
