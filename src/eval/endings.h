// SPDX-License-Identifier: MIT
//
// Endings known by their material: how far their normal evaluation is to be trusted, or who evaluates them instead.
// The table is addressed by the low bits of a position's material key; no two known endings share a slot.
#pragma once

#include <array>
#include <cstdint>

#include "board/position.h"

namespace helvan {

// States of a slot.
inline constexpr std::uint32_t freeSlot = 0xffffffff;
inline constexpr std::uint32_t usedSlot = 1;

// From white's point of view, in centipawns.
using EndingEvaluator = int (*)(const Position& position);

struct EndingEntry {
    Key key = 1; // the material key; 1 is nobody's
    std::uint32_t state = freeSlot;
    std::int32_t scale = 1024;           // of the normal evaluation, per mille; 1000 leaves it as it is
    std::int32_t score = 0;              // added to it, in thousandths of a pawn from white's point of view
    EndingEvaluator evaluator = nullptr; // when not null, it alone decides
};

// Upper-case letters are the pieces of one side, lower-case letters those of the other; kings go without saying. The
// score is for the upper-case side, which may be either colour.
struct EndingRecord {
    const char* pieces;
    std::int32_t scale; // per mille
    std::int32_t score; // thousandths of a pawn
    EndingEvaluator evaluator;
};

inline constexpr int endingSlots = 4096;

extern std::array<EndingEntry, endingSlots> EndingTables;

// Fills the table with the known endings, and the pawn bitbase unless that has been done.
void initEndingTables();

// Fills the table with these records alone, up to one whose pieces begin with "-". Two endings in one slot, a fault of
// the list, end the process with a message on standard error; only the two colours of one record may share theirs.
void fillEndingTables(const EndingRecord* records);

constexpr int endingSlotOf(Key materialKey) { return static_cast<int>(materialKey & (endingSlots - 1)); }

// The ending with this material key, or null if it is none of the known ones.
inline const EndingEntry* findEnding(Key materialKey) {
    const EndingEntry& entry = EndingTables[endingSlotOf(materialKey)];
    return entry.key == materialKey ? &entry : nullptr;
}

// The evaluators, each for the material that its name says against a bare king, whichever colour owns it. Material
// keys leave kings out: a board without one king a side, which no game reaches, scores 0.
int evaluatePawnEnding(const Position& position);
int evaluateBishopKnightMate(const Position& position);
int evaluateBishopPawnEnding(const Position& position);
int evaluateKnightPawnEnding(const Position& position);

} // namespace helvan
