// SPDX-License-Identifier: MIT
//
// When each term applies, and for whom: a parameter alone is given the value 1, all others 0, and what the position
// then scores more than with none counts how often the term was credited to white and debited to black.
#include <gtest/gtest.h>

#include <functional>

#include "eval/eval_cache.h"
#include "eval/evaluate.h"
#include "eval/parameters.h"
#include "eval/tables.h"
#include "support/boards.h"

namespace helvan::testing {

namespace {

using Choose = std::function<PackedScore&(EvalParameters&)>;

Choose the(PackedScore EvalParameters::*pair) {
    return [pair](EvalParameters& p) -> PackedScore& { return p.*pair; };
}
Choose rank(RankValues EvalParameters::*ranks, int number) {
    return [=](EvalParameters& p) -> PackedScore& { return (p.*ranks)[number - 1]; };
}

class Terms : public ::testing::Test {
protected:
    ~Terms() override {
        evalParameters = saved;
        kingSafetyAggressiveness = 6;
        initEvalTables();
    }

    static int sum(const char* fen) {
        initEvalTables();
        int total = 0;
        for (const auto& term : explainEvaluation(positionOf(fen)).terms) total += (term.white - term.black).opening();
        return total;
    }

    // The credits to white less those to black, in units of the parameter.
    static int credits(const Choose& parameter, const char* fen, int value = 1) {
        evalParameters = EvalParameters{};
        kingSafetyAggressiveness = 0;
        const int without = sum(fen);
        parameter(evalParameters) = packed(value, value);
        return sum(fen) - without;
    }

private:
    EvalParameters saved = evalParameters;
};

using P = EvalParameters;

} // namespace

TEST_F(Terms, KingAndCastling) {
    EXPECT_EQ(credits(the(&P::kingSideRight), "r3k2r/p7/8/8/8/8/P7/R3K2R w Kq -"), 1);
    EXPECT_EQ(credits(the(&P::queenSideRight), "r3k2r/p7/8/8/8/8/P7/R3K2R w Kq -"), -1);
    EXPECT_EQ(credits(the(&P::trappedRook), "4k3/p7/8/8/8/8/P7/5K1R w - -"), 1);
    EXPECT_EQ(credits(the(&P::trappedRook), "6kr/p7/8/8/8/8/P7/5RK1 w - -"), -1);
    EXPECT_EQ(credits(the(&P::trappedRook), "4k3/p7/8/8/8/8/P7/R6K w - -"), 0);
    EXPECT_EQ(credits(the(&P::bishopBeforeKing), "4k3/p3b3/8/8/8/4B3/P7/4K3 w - -"), -1);
    EXPECT_EQ(credits(the(&P::pieceLead), "4k3/p7/8/8/8/8/P7/NN2K3 w - -"), 1);
    EXPECT_EQ(credits(the(&P::pieceLead), "nnn1k3/p7/8/8/8/8/P7/NN2K3 w - -"), 0);
}

TEST_F(Terms, Pieces) {
    EXPECT_EQ(credits(the(&P::knightInBishopsAim), "4k3/8/2n5/1B6/8/8/P7/4K3 w - -"), 1);
    EXPECT_EQ(credits(the(&P::knightInBishopsAim), "4k3/8/2r5/1B6/8/8/P7/4K3 w - -"), 0);
    EXPECT_EQ(credits(the(&P::knightInBishopsAim), "4k3/8/2N5/1B6/8/8/P7/4K3 w - -"), 0);
    EXPECT_EQ(credits(the(&P::knightInBishopsAim), "4k3/8/8/1B6/8/8/P7/4K3 b - -"), 0); // a check
    EXPECT_EQ(credits(the(&P::bishopFacingPawn), "4k3/8/4p3/8/8/4B3/8/4K3 w - -"), 1);
    EXPECT_EQ(credits(the(&P::bishopFacingPawn), "4k3/8/8/4p3/8/4B3/8/4K3 w - -"), 0);
    EXPECT_EQ(credits(the(&P::bishopPair), "4k3/1b6/4p3/8/8/4BB2/8/4K3 w - -"), 1);
    EXPECT_EQ(credits(the(&P::rooksOnLine), "4k3/p7/8/8/R3N2R/8/P7/4K3 w - -"), 2);
    EXPECT_EQ(credits(the(&P::rookOnSeventh), "4k3/p6R/8/8/8/8/P6r/4K3 w - -"), 0); // both have one
    EXPECT_EQ(credits(the(&P::rookOnSeventh), "8/p2k3R/8/8/8/8/P6r/4K3 w - -"), -1);
    EXPECT_EQ(credits(the(&P::rookOpenFile), "4k3/p7/8/8/8/8/P7/R2RK3 w - -"), 1);
    EXPECT_EQ(credits(the(&P::rookHalfOpenWeak), "4k3/3p4/8/8/8/8/P7/3RK3 w - -"), 1);
    EXPECT_EQ(credits(the(&P::rookHalfOpen), "4k3/4p3/3p4/8/8/8/P7/3RK3 w - -"), 1);
    EXPECT_EQ(credits(the(&P::secondRook), "r3k3/p7/8/8/8/8/P7/R2RK3 w - -"), 1);
    EXPECT_EQ(credits(the(&P::rookAndQueen), "q3k2r/p7/8/8/8/8/P7/Q3K3 w - -"), -1);
    // Five own pawns are usual; a knight wants more of them, a bishop fewer on its colour.
    EXPECT_EQ(credits(the(&P::knightPawns), "4k3/p7/8/8/8/8/PPPPPPP1/N3K3 w - -"), 2);
    EXPECT_EQ(credits(the(&P::rookPawns), "4k3/p7/8/8/8/8/PPP5/R3K3 w - -"), -2);
    EXPECT_EQ(credits(the(&P::bishopOwnColourPawns), "4k3/p7/8/8/8/8/PPPPPPPP/2B1K3 w - -"), 1);
    EXPECT_EQ(credits(the(&P::bishopOtherColourPawns), "4k3/p7/8/8/8/8/P1P5/2B1K3 w - -"), -1);
    EXPECT_EQ(credits(the(&P::knightKingDistance), "4k3/p7/8/8/8/8/P7/3NK3 w - -"), 3);
}

TEST_F(Terms, SquaresAreDrawnWithTheEighthRankOnTop) {
    const Choose topLeft = [](EvalParameters& p) -> PackedScore& { return p.squares[knight][0]; };
    EXPECT_EQ(credits(topLeft, "N3k3/p7/8/8/8/8/P7/4K3 w - -"), 1);
    EXPECT_EQ(credits(topLeft, "4k3/p7/8/8/8/8/P7/n3K3 w - -"), -1);
}

TEST_F(Terms, Threats) {
    constexpr int one = 2, two = 5;                                                  // halves of the value 2
    EXPECT_EQ(credits(the(&P::threat), "4k3/p7/8/3n4/4P3/8/8/4K3 w - -", 2), one);   // by a pawn
    EXPECT_EQ(credits(the(&P::threat), "4k3/8/2p5/3p4/4P3/8/8/4K3 w - -", 2), 0);    // of a defended pawn
    EXPECT_EQ(credits(the(&P::threat), "4k3/8/2p5/3r4/8/4N3/P7/4K3 w - -", 2), one); // a rook by a knight
    EXPECT_EQ(credits(the(&P::threat), "4k3/8/2p5/3r4/8/2N5/P7/K7 w - -", 2), one);
    EXPECT_EQ(credits(the(&P::threat), "4k3/8/2p5/3q4/8/8/P2R4/K7 w - -", 2), one - one); // each looks at the other
    EXPECT_EQ(credits(the(&P::threat), "4k3/8/8/2n5/8/K7/P1R5/8 w - -", 2), one);         // loose
    EXPECT_EQ(credits(the(&P::threat), "4k3/8/8/r1n5/8/8/P1R5/K7 w - -", 2), 0);
    EXPECT_EQ(credits(the(&P::threat), "4k3/8/8/2n2n2/1P2P3/8/8/K7 w - -", 2), two - one); // e4 is loose
}

TEST_F(Terms, PiecesAndPawns) {
    EXPECT_EQ(credits(the(&P::knightBlockade), "4k3/8/3p4/3N4/8/8/P7/4K3 w - -"), 1);
    EXPECT_EQ(credits(the(&P::knightBlockade), "4k3/2p5/3p4/3N4/8/8/P7/4K3 w - -"), 0); // c6 drives it off
    EXPECT_EQ(credits(the(&P::outpost), "4k3/2p5/8/3N2R1/8/8/P7/4K3 w - -"), 1);        // the rook
    EXPECT_EQ(credits(the(&P::blockedPawn), "4k3/3p4/3N4/8/8/8/P7/4K3 w - -"), 1);
    EXPECT_EQ(credits(the(&P::blockedCentrePawn), "2k5/1p1p4/1N1N4/8/8/8/P7/4K3 w - -"), 1);
    EXPECT_EQ(credits(the(&P::blockedCentrePawn), "6k1/1p1p4/1N1N4/8/8/8/P7/4K3 w - -"), 2);
    EXPECT_EQ(credits(the(&P::blockedCentrePawn), "4k3/p7/8/8/8/7b/7P/2K5 w - -"), 0);
    EXPECT_EQ(credits(the(&P::blockedCentrePawn), "4k3/p7/8/8/8/6n1/3b2P1/2K5 w - -"), -1); // g2
    EXPECT_EQ(credits(the(&P::pieceBehindPawn), "4k3/p2b4/3p4/8/4P3/4N3/8/4K3 w - -"), 0);  // one each
    EXPECT_EQ(credits(the(&P::pieceBehindPawn), "4k3/p7/3p4/3b4/4P3/4N3/8/4K3 w - -"), 1);
}

TEST_F(Terms, PawnStructure) {
    EXPECT_EQ(credits(the(&P::doubledPawn), "4k3/8/8/8/4P3/4P3/4P3/4K3 w - -"), 2);
    EXPECT_EQ(credits(the(&P::isolatedPawn), "4k3/pp6/8/8/8/8/P7/4K3 w - -"), 1);
    EXPECT_EQ(credits(the(&P::isolatedHalfOpen), "4k3/1p6/8/8/8/8/3P4/4K3 w - -"), 0);
    EXPECT_EQ(credits(the(&P::isolatedHalfOpen), "4k3/pp6/8/8/8/8/3P4/4K3 w - -"), 1);
    EXPECT_EQ(credits(the(&P::backwardPawn), "4k3/3p4/4p3/8/2P5/3P4/8/4K3 w - -"), 0);
    EXPECT_EQ(credits(the(&P::backwardPawn), "4k3/8/3p4/4p3/2P5/3P4/8/4K3 w - -"), 0);
    EXPECT_EQ(credits(the(&P::backwardHalfOpen), "4k3/8/8/4p3/2P5/3P4/8/4K3 w - -"), 1);
    EXPECT_EQ(credits(the(&P::pawnIsland), "4k3/pp6/8/8/8/8/P1P1P3/4K3 w - -"), 2);
    EXPECT_EQ(credits(the(&P::manyPassed), "4k3/7p/8/8/8/8/P2P4/4K3 w - -"), 1);
    EXPECT_EQ(credits(rank(&P::connectedPawn, 4), "4k3/p7/8/8/3P4/2P5/8/4K3 w - -"), 1);
    EXPECT_EQ(credits(rank(&P::phalanxPawn, 3), "4k3/p7/3pp3/8/8/2P5/8/4K3 w - -"), -2);
    EXPECT_EQ(credits(rank(&P::phalanxPawn, 3), "4k3/p7/8/3pp3/8/2PP4/8/4K3 w - -"), 2);
    EXPECT_EQ(credits(the(&P::passedOwnKing), "4k3/8/8/8/P7/8/7p/K7 w - -"), 4 - 7);   // a1 to a5, e8 to h1
    EXPECT_EQ(credits(the(&P::passedEnemyKing), "4k3/8/8/8/P7/8/7p/K7 w - -"), 4 - 7); // e8 to a5, a1 to h1
    EXPECT_EQ(credits(the(&P::candidate), "4k3/3p4/8/8/8/8/2P1P3/4K3 w - -", 20), 0);  // on its second rank
    EXPECT_EQ(credits(the(&P::candidate), "4k3/5p2/8/8/3PP3/8/8/K7 w - -", 20), 3);    // the e-pawn; d4 is passed
    EXPECT_EQ(credits(the(&P::passedBase), "4k3/8/8/8/3PP3/8/8/K7 w - -", 20), 6);
    EXPECT_EQ(credits(the(&P::passedBase), "4k3/4p3/8/8/3PP3/8/8/K7 w - -", 20), 0); // a neighbour holds both
}

TEST_F(Terms, ShelterAndStorm) {
    EXPECT_EQ(credits(rank(&P::shelter, 2), "4k3/p7/8/8/8/8/5PPP/6K1 w - -"), 4);   // its own file's counts twice
    EXPECT_EQ(credits(rank(&P::shelter, 2), "4k3/p7/8/8/8/8/PPP3PP/4K3 w - -"), 3); // as if it had castled: g and h
    EXPECT_EQ(credits(rank(&P::shelter, 2), "4k3/p7/8/8/8/8/3PPP2/4K3 w - -"), 4);  // better where it stands
    EXPECT_EQ(credits(rank(&P::shelter, 2), "4k3/p7/8/8/8/8/3PPP2/3K4 w - -"), 3);
    EXPECT_EQ(credits(rank(&P::storm, 5), "6k1/p7/8/5PP1/8/8/8/K7 w - -"), 2);
    EXPECT_EQ(credits(rank(&P::storm, 5), "k7/7p/8/5PP1/8/8/8/K7 w - -"), 0);
}

TEST_F(Terms, PassedPawnsAndTheirNeighbours) {
    EXPECT_EQ(credits(the(&P::rookBehindPassed), "4k3/8/8/P7/8/8/8/R3K3 w - -"), 1);
    EXPECT_EQ(credits(the(&P::rookBehindPassed), "4k3/8/8/P7/8/8/8/r3K3 b - -"), -1);
    EXPECT_EQ(credits(the(&P::rookBehindPassed), "4k3/8/8/8/P7/8/8/R3K3 w - -"), 0); // deliberately
    EXPECT_EQ(credits(the(&P::kingAtPromotion), "8/1K6/8/P7/8/8/8/4k3 w - -"), 0);   // a known ending
    EXPECT_EQ(credits(the(&P::kingAtPromotion), "8/1K6/8/P7/8/8/7p/6k1 w - -"), 0);  // both kings
    EXPECT_EQ(credits(the(&P::kingAtPromotion), "8/1K6/8/P7/7p/8/8/4k3 w - -"), 1);
}

} // namespace helvan::testing
