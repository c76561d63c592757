// SPDX-License-Identifier: MIT
//
// The static evaluation: what a quiet position is worth without search.
#pragma once

#include <cstdint>
#include <vector>

#include "board/packed_score.h"
#include "board/position.h"
#include "eval/eval_caches.h"

namespace helvan {

// Evaluations stay within this, well clear of the mate scores.
inline constexpr int largestEvaluation = 31000;

// Centipawns from the side to move's point of view. The position has one king of each colour and no pawn on the first
// or last rank, its pstScore and phase are up to date, and the tables are built. Draws by repetition or by the
// fifty-move rule are not seen.
int evaluate(const Position& position, EvalCaches& caches);

// How an evaluation comes about, for people who look into it.
struct EvalExplanation {
    struct Term {
        const char* name;
        PackedScore white; // what the term credits to each side
        PackedScore black;
    };

    bool special = false;     // a known ending was judged as a whole: only score is set
    std::vector<Term> terms;  // in the order of their computation
    int phase = 0;            // 0..96
    int endingBonus = 0;      // of a known ending, thousandths of a pawn, white's view
    std::int64_t blended = 0; // with that, thousandths of a pawn x 96, white's view
    int bishopScale = 1000;   // per mille, for bishops of opposite colours
    int materialScale = 1000; // per mille, for scarce material and known endings
    std::int64_t scaled = 0;  // thousandths of a pawn x 96, white's view
    int tempo = 0;            // thousandths of a pawn, for the side to move
    int score = 0;            // centipawns, the side to move's view
};

// Evaluates without caches. The same demands on the position as evaluate.
EvalExplanation explainEvaluation(const Position& position);

// The sum of all terms, opening and endgame, white's view, before it is blended and scaled. For whoever looks for
// better parameters: a parameter's change shows in it exactly. The same demands on the position, and no special ending.
PackedScore evaluateUnblended(const Position& position, EvalCaches& caches);

} // namespace helvan
