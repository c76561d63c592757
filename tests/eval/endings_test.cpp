// SPDX-License-Identifier: MIT
#include "eval/endings.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdlib>
#include <string>
#include <vector>

#include "board/geometry.h"
#include "eval/evaluate.h"
#include "eval/pawn_bitbase.h"
#include "eval/scaling.h"
#include "support/boards.h"
#include "support/eval_parameters.h"

namespace helvan::testing {

namespace {

int scoreOf(const Position& position) { return findEnding(position.materialKey)->evaluator(position); }

// The men on random squares of their own, pawns on the ranks where they can stand.
Position scattered(const std::string& men, Random& random) {
    std::string board(64, '1');
    for (const char man : men) {
        int at;
        do {
            at = man == 'P' || man == 'p' ? 8 + below(random, 48) : below(random, 64);
        } while (board[at] != '1');
        board[at] = man;
    }
    return positionOf(board + (random() % 2 == 0 ? " w - -" : " b - -"));
}

// King and white pawn against king.
struct Placement {
    Square pawnSquare;
    Square strong;
    Square weak;
    Colour side; // to move

    bool isPossible() const {
        const bool weakAttacked = (pawnAttacks(white, bit(pawnSquare)) & bit(weak)) != 0;
        return strong != pawnSquare && weak != pawnSquare && kingDistance(strong, weak) > 1 &&
               !(side == white && weakAttacked);
    }
};

template <typename Visit> void forPlacements(Visit visit) {
    for (Square pawnSquare = a2; pawnSquare <= h7; ++pawnSquare) {
        for (int kings = 0; kings < 64 * 64; ++kings) {
            for (Colour side : {white, black}) visit(Placement{pawnSquare, kings / 64, kings % 64, side});
        }
    }
}

// Solved anew, move by move, until nothing more is won.
class PawnEndingSolver {
public:
    PawnEndingSolver() {
        for (bool news = true; news;) {
            news = false;
            forPlacements([&](const Placement& at) {
                if (isWon(at) || !at.isPossible() || !becomesWon(at)) return;
                won[indexOf(at)] = true;
                news = true;
            });
        }
    }

    bool isWon(const Placement& at) const { return won[indexOf(at)]; }

private:
    std::vector<bool> won = std::vector<bool>(64 * 64 * 64 * 2); // never where the placement is impossible

    static std::size_t indexOf(const Placement& at) {
        return ((at.pawnSquare * 64 + at.strong) * 64 + at.weak) * 2 + at.side;
    }

    bool becomesWon(const Placement& at) const { return at.side == white ? ownerWins(at) : loneKingLoses(at); }

    bool ownerWins(const Placement& at) const {
        for (Square to = 0; to < 64; ++to) {
            if (kingDistance(at.strong, to) == 1 && isWon({at.pawnSquare, to, at.weak, black})) return true;
        }
        const Square front = at.pawnSquare + 8;
        if (front == at.strong || front == at.weak) return false;
        // A queen wins, or a rook where she would be stalemate, unless the lone king takes it.
        if (rankOf(front) == 7) return kingDistance(at.weak, front) > 1 || kingDistance(at.strong, front) == 1;
        return isWon({front, at.strong, at.weak, black}) ||
               (rankOf(front) == 2 && isWon({front + 8, at.strong, at.weak, black}));
    }

    // Without a move it is stalemated: a pawn alone does not mate.
    bool loneKingLoses(const Placement& at) const {
        bool canMove = false;
        for (Square to = 0; to < 64; ++to) {
            if (kingDistance(at.weak, to) != 1) continue;
            if (to == at.pawnSquare && kingDistance(at.strong, to) > 1) return false;
            const Placement next = {at.pawnSquare, at.strong, to, white};
            if (!next.isPossible()) continue;
            if (!isWon(next)) return false;
            canMove = true;
        }
        return canMove;
    }
};

} // namespace

TEST(PawnBitbase, AgreesWithPlayingItOut) {
    const PawnEndingSolver solver;
    int wins = 0, winsToMove = 0;
    forPlacements([&](const Placement& at) {
        const bool won = solver.isWon(at);
        const Square p = mirrored(at.pawnSquare), s = mirrored(at.strong), w = mirrored(at.weak);
        ASSERT_EQ(pawnEndingWon(p, s, w, at.side == white), won) << p << ' ' << s << ' ' << w << ' ' << at.side;
        if (fileOf(p) >= 4) return;
        const int index = 2 * ((4 * (rankOf(p) - 1) + fileOf(p)) * 4096 + s * 64 + w) + (at.side == white);
        ASSERT_EQ(pawnBitbase[index / 8] >> index % 8 & 1, won);
        wins += won;
        winsToMove += won && at.side == white;
    });
    EXPECT_EQ(wins, 111282); // the known numbers
    EXPECT_EQ(winsToMove, 62480);
}

TEST(Endings, ARowScalesAndCorrectsTheScoreOfEitherColour) {
    for (const int scale : {250, fullScale}) { // a full one leaves the rules of scarce material in force
        const EndingRecord records[] = {{"RNq", scale, -1500, nullptr}, {"-", 0, 0, nullptr}};
        for (const bool swapped : {false, true}) {
            const Position plain = positionOf("k7/8/RNq5/8/8/8/8/7K w - -");
            const Position position = swapped ? transformed(plain, 56, true) : plain;
            const EvalExplanation without = explainEvaluation(position);
            fillEndingTables(records);
            const EvalExplanation with = explainEvaluation(position);
            initEndingTables();
            EXPECT_EQ(with.blended - without.blended, (swapped ? 1500 : -1500) * fullPhase);
            EXPECT_EQ(with.materialScale, scale == fullScale ? without.materialScale : scale);
            EXPECT_EQ(with.scaled, scaled(with.blended, with.materialScale));
        }
    }
}

// Summed over boards on which the men stand anywhere.
TEST(Endings, KnownDrawsScoreNearerToZeroAndKnownWinsFarther) {
    constexpr EndingRecord nothing[] = {{"-", 0, 0, nullptr}};
    const auto sumOfScores = [](const std::string& men) {
        Random random(4);
        std::int64_t sum = 0;
        for (int i = 0; i < 200; ++i) {
            const Position position = scattered("Kk" + men, random);
            sum += std::abs(explainEvaluation(i % 2 == 0 ? position : transformed(position, 56, true)).scaled);
        }
        return sum;
    };
    const auto knowledge = [&](const std::string& men) {
        const std::int64_t known = sumOfScores(men);
        fillEndingTables(nothing);
        const std::int64_t unknown = sumOfScores(men);
        initEndingTables();
        return known - unknown;
    };
    for (const char* men : {"",   "B",  "N",  "NN",  "Bb",  "Bn",  "Nn",  "Qq",  "Rr",  "Rb",
                            "Rn", "Bp", "Qr", "NNb", "NNn", "BNb", "BNn", "BBb", "BBn", "RNr"}) {
        EXPECT_LT(knowledge(men), 0) << men;
    }
    for (const char* men : {"R", "Q", "Qb", "Qn"}) EXPECT_GT(knowledge(men), 0) << men;
    EXPECT_LE(explainEvaluation(positionOf("7k/8/8/8/3N4/p2K4/8/8 w - -")).score, 0); // the pawn alone may win
}

TEST(Endings, OtherMaterialIsUnknown) {
    for (const char* unknown : {"NNp5", "BBp5", "PP6", "QQ6", "RR6", "Pp6"}) {
        const Position position = positionOf(std::string("k7/8/") + unknown + "/8/8/8/8/7K w - -");
        EXPECT_EQ(findEnding(position.materialKey), nullptr) << unknown;
    }
}

// Signatures are sums of random numbers: somewhere a material and its mirror image differ, but not in their slots.
TEST(Endings, AMirrorImageInTheSameSlotIsNoClash) {
    const auto keyOfPieces = [](const std::string& pieces) {
        const std::string empty = std::to_string(8 - pieces.size());
        return positionOf("k7/8/" + pieces + (empty == "0" ? "" : empty) + "/8/8/8/8/7K w - -").materialKey;
    };
    Random random(1);
    std::string pieces, mirrorImage;
    do {
        pieces.clear();
        mirrorImage.clear();
        for (int i = 0; i < 8; ++i) {
            const char letter = oneOf(random, std::string("PNBRQpnbrq"));
            pieces += letter;
            mirrorImage += static_cast<char>(std::isupper(letter) ? std::tolower(letter) : std::toupper(letter));
        }
    } while (keyOfPieces(pieces) == keyOfPieces(mirrorImage) ||
             endingSlotOf(keyOfPieces(pieces)) != endingSlotOf(keyOfPieces(mirrorImage)));
    const EndingRecord records[] = {{pieces.c_str(), 70, 5, nullptr}, {"-", 0, 0, nullptr}};
    fillEndingTables(records); // a clash would end the process
    ASSERT_NE(findEnding(keyOfPieces(pieces)), nullptr);
    EXPECT_EQ(findEnding(keyOfPieces(pieces))->scale, 70);
    EXPECT_EQ(findEnding(keyOfPieces(mirrorImage)), nullptr);
    const EndingRecord clashing[] = {records[0], {mirrorImage.c_str(), 80, 5, nullptr}, {"-", 0, 0, nullptr}};
    EXPECT_EXIT(fillEndingTables(clashing), ::testing::ExitedWithCode(1), "Hash conflict in ending tables\n");
    initEndingTables();
}

TEST(Endings, BareKingsScoreTheTempoAlone) {
    EXPECT_EQ(explainEvaluation(positionOf(startFen)).score, 10); // the opening's
    EXPECT_EQ(explainEvaluation(positionOf("4k3/8/8/8/8/8/8/4K3 w - -")).score, 4);
    EXPECT_EQ(explainEvaluation(positionOf("8/8/8/2k5/8/8/3KB3/8 b - -")).score, 4);
}

TEST(Endings, TheEvaluatorsSeeBothColoursAlike) {
    Random random(3);
    for (const char* men : {"KPk", "KBNk", "KBPk", "KNPk"}) {
        for (int i = 0; i < 20000; ++i) {
            const Position position = scattered(men, random);
            ASSERT_EQ(evaluated(position), evaluated(transformed(position, 56, true)));
            ASSERT_EQ(scoreOf(position), position.sideToMove() == white ? evaluated(position) : -evaluated(position));
            // Left and right are the same, too, but that a bishop changes its colour with its file: so does its pawn.
            ASSERT_EQ(scoreOf(position), scoreOf(transformed(position, 7, false)));
        }
    }
}

// A material key knows nothing of kings, nor of where a pawn can stand.
TEST(Endings, TheEvaluatorsBearBoardsThatNoGameReaches) {
    for (const std::string pieces : {"P7", "BN6", "BP6", "NP6", "p7", "bn6", "bp6", "np6"}) {
        for (const std::string kings : {"8", "7k", "K7", "KK5k", "Kk5k", "kk6", "KK6"}) {
            for (const std::string side : {" w - -", " b - -"}) {
                EXPECT_EQ(scoreOf(positionOf(kings + "/8/8/" + pieces + "/8/8/8/8" + side)), 0) << pieces << kings;
            }
        }
    }
    EXPECT_LT(std::abs(scoreOf(positionOf("P6k/8/8/8/8/8/8/K7 w - -"))), 50);
    EXPECT_LT(std::abs(scoreOf(positionOf("7k/8/8/8/8/8/8/K6P w - -"))), 50);
}

TEST(Endings, TheEvaluatorsTellWinsFromDraws) {
    const char* draws[] = {"8/8/8/8/8/4k3/4P3/4K3 w - -",  // the pawn does not get away
                           "4k3/8/4P3/4K3/8/8/8/8 b - -",  // the lone king takes the opposition
                           "k7/8/8/P7/8/2K5/8/2B5 w - -",  // dark bishop, light corner
                           "7k/8/8/7P/8/5K2/8/5B2 w - -",  // light bishop, dark corner
                           "4k3/8/8/P7/8/4K3/8/2B5 b - -", // the lone king is in time for the pawn
                           "8/3k4/8/1K6/8/8/P7/2B5 b - -", // and before the other
                           "k7/P7/8/1N6/3K4/8/8/8 w - -"}; // a rook pawn on its seventh rank
    const char* wins[] = {"4k3/8/4K3/4P3/8/8/8/8 w - -",   //
                          "k7/8/8/P7/8/2K5/8/5B2 w - -",   // the bishop takes the corner
                          "1k6/8/8/1P6/8/2K5/8/2B5 w - -", // no rook pawn
                          "8/1K6/8/P2k4/8/8/8/2B5 w - -",  // the owner's king holds the corner
                          "4k3/8/8/P7/8/4K3/8/2B5 w - -",  // the lone king comes a move too late
                          "8/3k4/8/1K6/8/8/P7/2B5 w - -",  //
                          "k7/8/P7/1N6/3K4/8/8/8 w - -",   // not on its seventh rank yet
                          "1k6/1P6/8/N7/3K4/8/8/8 w - -",  // no rook pawn
                          "8/P7/8/1N6/3K4/8/6k1/8 b - -",  // nobody stops it
                          "2k5/P7/1K6/N7/8/8/8/8 b - -"};  // beside the corner is not in it
    for (const char* fen : draws) EXPECT_LT(std::abs(scoreOf(positionOf(fen))), 50) << fen;
    for (const char* fen : wins) EXPECT_GT(scoreOf(positionOf(fen)), 300) << fen;
    const auto advanced = [](const char* fen) { return scoreOf(positionOf(fen)); };
    EXPECT_GT(advanced("8/4P3/8/8/8/k7/8/2K5 w - -"), advanced("8/8/4P3/8/8/k7/8/2K5 w - -"));
    EXPECT_GT(advanced("8/8/3K4/8/3P4/8/8/B6k w - -"), advanced("8/8/8/8/3P4/3K4/8/B6k w - -")); // the king leads it
    EXPECT_EQ(advanced("8/8/3K4/8/3P4/8/8/B6k w - -"), advanced("8/8/3K4/8/3P4/8/8/B6k b - -")); // won all the same
}

TEST(Endings, BishopAndKnightDriveTheKingToTheBishopsCorner) {
    // Along the a-file from the wrong corner to the right one, the others standing off.
    int last = 0;
    for (const char* fen :
         {"k7/8/8/4KN2/3B4/8/8/8", "8/k7/8/4KN2/3B4/8/8/8", "8/8/k7/4KN2/3B4/8/8/8", "8/8/8/k3KN2/3B4/8/8/8",
          "8/8/8/4KN2/k2B4/8/8/8", "8/8/8/4KN2/3B4/k7/8/8", "8/8/8/4KN2/3B4/8/k7/8", "8/8/8/4KN2/3B4/8/8/k7"}) {
        const int score = scoreOf(positionOf(std::string(fen) + " w - -"));
        EXPECT_GT(score, last) << fen;
        last = score;
    }
    const auto standingOff = [](const char* fen) { return scoreOf(positionOf(fen)); };
    EXPECT_GT(standingOff("8/8/8/5N2/3B4/2K5/8/k7 w - -"), standingOff("8/8/8/4KN2/3B4/8/8/k7 w - -"));
    EXPECT_GT(standingOff("8/8/8/4K3/3B4/3N4/8/k7 w - -"), standingOff("8/8/8/4KN2/3B4/8/8/k7 w - -"));
}

} // namespace helvan::testing
