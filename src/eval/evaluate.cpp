// SPDX-License-Identifier: MIT
#include "eval/evaluate.h"

#include <algorithm>

#include "board/bits.h"

namespace helvan {

int evaluate(const Position& position) {
    constexpr int thousandthsPerCentipawn = 10;
    const int phase = minimum(position.phase, fullPhase);
    const std::int64_t blended = std::int64_t{fullPhase - phase} * position.pstScore.endgame() +
                                 std::int64_t{phase} * position.pstScore.opening();
    const auto score = static_cast<int>(std::clamp<std::int64_t>(blended / (fullPhase * thousandthsPerCentipawn),
                                                                 -largestEvaluation, largestEvaluation));
    return position.sideToMove() == white ? score : -score;
}

} // namespace helvan
