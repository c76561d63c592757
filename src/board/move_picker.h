// SPDX-License-Identifier: MIT
//
// The staged move generator: hands out one pseudo-legal move at a time and generates a class of moves only
// when the one before it is used up, so that a cut-off by an early move costs no further generation.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "board/exchange.h"
#include "board/moves.h"
#include "board/position.h"

namespace helvan {

// Which moves a picker yields.
enum class PickerKind : int {
    everyMove = 0,              // every pseudo-legal move exactly once, maxMoves of a stage at most
    capturesAndChecks = 1,      // captures, queen promotions, some quiet checks (below); the losing ones last
    soundCapturesAndChecks = 2, // the same without the losing ones
    soundCaptures = 3,          // captures and queen promotions without the losing ones
    evasions = 4                // for a side in check: every move that can be legal
};

enum class PickerStage : std::uint8_t {
    start = 0,
    hashMove = 1,
    captures = 2, // with queen promotions
    firstKiller = 3,
    secondKiller = 4,
    quietMoves = 5, // with under-promotions, at their end
    evasions = 6,
    quietChecks = 7, // given by the piece that moves: by pawns, by knights and along diagonals
    deferred = 8,    // what stages 2, 6 and 7 held back because it loses material
    end = 9
};

// A move of a batch by its rank, so that the largest is the next to be handed out: its score in bits 8..31, then the
// earlier of equal ones first by maxMoves - 1 - place in the batch in bits 0..7.
using Rank = std::int32_t;

// The search for the best move of a batch keeps this many maxima, independent of one another, which compilers turn into
// vector instructions.
inline constexpr int batchStep = 8;

inline constexpr Rank handedOutRank = std::numeric_limits<Rank>::min(); // below every move's

// A move with what the picker knows of it.
struct PickedMove {
    std::uint16_t move;
    std::uint8_t mover;  // type of the piece that moves
    std::uint8_t victim; // type of the enemy piece on the to-square, phantom for none
};

// What orders quiet moves: counters by type x 64 + to-square, 512 each, the higher the earlier. Without history the
// moves come as generated. The other two are given both or neither, and only with history. The sum stays below 2^22
// in size.
struct QuietOrder {
    const std::int32_t* history = nullptr;
    const std::int16_t* replies = nullptr;   // to the enemy's last move
    const std::int16_t* followUps = nullptr; // to the side's own last move
};

struct MovePicker {
    // The hash move and the killers may be any number: what is not pseudo-legal is passed over. The position and the
    // counters must outlive the picker.
    MovePicker(const Position& from, PickerKind of, Move hash = nullMove, Move killer = nullMove,
               Move otherKiller = nullMove, QuietOrder order = {})
        : position(from), kind(of), stageIndex(hash == nullMove ? 1 : 0), hashMove(hash), killers{killer, otherKiller},
          quietOrder(order) {}

    MovePicker(const MovePicker&) = delete;
    MovePicker& operator=(const MovePicker&) = delete;

    const Position& position;
    PickerKind kind;
    int stageIndex; // of the next stage in the kind's list, which begins with the hash move's
    PickerStage stage = PickerStage::start;
    bool ordered = false;          // whether the batch is handed out by score instead of as generated
    bool holdsBack = false;        // whether the batch's losing moves are deferred
    bool kingStepsAreSafe = false; // those of the batch lead to squares that nobody attacks
    int batchCount = 0;
    int batchNext = 0;
    Move hashMove;
    Move killers[2];
    Move aheadOfBatch[3] = {}; // hash move and killers, once handed out: batches skip them
    QuietOrder quietOrder;
    PickedMove last{}; // handed out
    int deferredCount = 0;
    int handedOutCount = 0;
    // Left uninitialised up to their counts.
    alignas(32) Rank ranks[maxMoves + batchStep]; // of the batch, by place
    PickedMove batch[maxMoves];
    PickedMove deferred[maxMoves];
    Move handedOut[maxMoves]; // every move returned so far, in order
};

// Fills the last step of a batch that is looked through in steps.
inline void closeBatch(MovePicker& picker) { std::fill_n(picker.ranks + picker.batchCount, batchStep, handedOutRank); }

// The next move, or 0 when all stages are used up.
Move nextMove(MovePicker& picker);

// Drops the moves of the batch under way that dull() answers true for, as if they had been passed over one by one, but
// that moves of one rank may change places. What is dropped does not count as handed out.
template <typename Dull> void dropFromBatch(MovePicker& picker, Dull dull) {
    int kept = picker.batchNext;
    for (int i = picker.batchNext; i < picker.batchCount; ++i) {
        if (dull(picker.batch[i])) continue;
        picker.batch[kept] = picker.batch[i];
        picker.ranks[kept] = picker.ranks[i] + i - kept; // the place stands in the low bits
        ++kept;
    }
    picker.batchCount = kept;
    closeBatch(picker);
}

// losesMaterial of the ordinary move or double push handed out last, sooner where its stage has told it already.
inline bool pickedMoveLoses(const MovePicker& picker, Move move) {
    if (picker.stage == PickerStage::deferred) return true;
    return !picker.holdsBack && losesMaterial(picker.position, move, picker.last.mover, picker.last.victim);
}

} // namespace helvan
