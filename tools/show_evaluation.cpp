// SPDX-License-Identifier: MIT
#include <cstdio>

#include "eval/evaluate.h"
#include "eval/tables.h"
#include "tools/debug_tools.h"

namespace helvan {

namespace {

constexpr double thousandths = 1000.0;
constexpr double perMille = 1000.0;

// A pair's three columns, in pawns.
void printPair(PackedScore score, int phase) {
    const int blended = (fullPhase - phase) * score.endgame() + phase * score.opening();
    std::printf("  %7.2f %7.2f %7.2f", score.opening() / thousandths, score.endgame() / thousandths,
                blended / (thousandths * fullPhase));
}

void printRow(const char* name, PackedScore whiteScore, PackedScore blackScore, int phase) {
    std::printf("%-18s", name);
    printPair(whiteScore, phase);
    printPair(blackScore, phase);
    printPair(whiteScore - blackScore, phase);
    std::printf("\n");
}

} // namespace

void showEvaluation(const Position& position) {
    const EvalExplanation explanation = explainEvaluation(position);
    if (explanation.special) {
        std::printf("A known ending, judged as a whole.\n");
    } else {
        std::printf("In pawns.         %12s %12s %12s %10s %14s\n", "white", "", "black", "", "white - black");
        std::printf("%-18s", "term");
        for (int column = 0; column < 3; ++column) std::printf("  %7s %7s %7s", "opening", "endgame", "blended");
        std::printf("\n");
        PackedScore sums[2];
        for (const EvalExplanation::Term& term : explanation.terms) {
            sums[white] += term.white;
            sums[black] += term.black;
            printRow(term.name, term.white, term.black, explanation.phase);
        }
        printRow("sum", sums[white], sums[black], explanation.phase);
        std::printf("\nphase %d of %d\n", explanation.phase, fullPhase);
        if (explanation.endingBonus != 0) {
            std::printf("known ending %+.2f pawns for white\n", explanation.endingBonus / thousandths);
        }
        std::printf("blended %.2f pawns for white\n",
                    static_cast<double>(explanation.blended) / (thousandths * fullPhase));
        std::printf("scaled %.3f for opposite bishops, %.3f for the material: %.2f pawns\n",
                    explanation.bishopScale / perMille, explanation.materialScale / perMille,
                    static_cast<double>(explanation.scaled) / (thousandths * fullPhase));
        std::printf("tempo %.2f for the side to move\n", explanation.tempo / thousandths);
    }
    std::printf("score %d centipawns for %s, who is to move\n", explanation.score,
                position.sideToMove() == white ? "white" : "black");
}

} // namespace helvan
