// SPDX-License-Identifier: MIT
//
// An opening and an endgame value in one 64-bit word, so that one addition adds both.
#pragma once

#include <cstdint>

namespace helvan {

// Opening value in bits 32..62, endgame value in bits 0..30, each a 31-bit two's-complement lane. Bits 31 and
// 63 are always 0: they take the lanes' carries, which the mask then drops, so lanes wrap modulo 2^31 and
// never disturb each other.
struct PackedScore {
    std::uint64_t bits = 0;

    static constexpr std::uint64_t laneMask = 0x7fffffff7fffffff;
    static constexpr std::uint64_t carryBits = 0x8000000080000000;

    constexpr int opening() const { return laneValue(static_cast<std::uint32_t>(bits >> 32)); }
    constexpr int endgame() const { return laneValue(static_cast<std::uint32_t>(bits)); }

    constexpr PackedScore& operator+=(PackedScore other) {
        bits = (bits + other.bits) & laneMask;
        return *this;
    }
    constexpr PackedScore& operator-=(PackedScore other) {
        bits = (bits + ((carryBits - other.bits) & laneMask)) & laneMask;
        return *this;
    }
    friend constexpr PackedScore operator+(PackedScore a, PackedScore b) { return a += b; }
    friend constexpr PackedScore operator-(PackedScore a, PackedScore b) { return a -= b; }
    friend constexpr PackedScore operator-(PackedScore a) { return PackedScore{} - a; }
    friend constexpr bool operator==(PackedScore a, PackedScore b) = default;

private:
    // Doubling moves the lane's sign bit 30 to bit 31; the arithmetic shift back extends it.
    static constexpr int laneValue(std::uint32_t lane) { return static_cast<std::int32_t>(lane << 1) >> 1; }
};

// Packs two values; each is taken modulo 2^31.
constexpr PackedScore packed(std::int64_t opening, std::int64_t endgame) {
    return {(static_cast<std::uint64_t>(opening) << 32 | (static_cast<std::uint64_t>(endgame) & 0x7fffffff)) &
            PackedScore::laneMask};
}

// Both lanes times the same factor.
constexpr PackedScore operator*(PackedScore score, int factor) {
    return packed(std::int64_t{score.opening()} * factor, std::int64_t{score.endgame()} * factor);
}

} // namespace helvan
