// SPDX-License-Identifier: MIT
#include "eval/endings.h"

#include <cstdio>

#include "board/geometry.h"
#include "eval/pawn_bitbase.h"
#include "platform/end_process.h"

namespace helvan {

std::array<EndingEntry, endingSlots> EndingTables;

namespace {

// clang-format off
constexpr EndingRecord endingRecords[] = {
    {"",       0,     0, nullptr},
    {"B",      0,     0, nullptr},
    {"BBb",  200, -3000, nullptr},
    {"BBn",  500, -3000, nullptr},
    {"BN",  1000,     0, evaluateBishopKnightMate},
    {"BNb",  150, -3000, nullptr},
    {"BNn",  200, -3000, nullptr},
    {"BP",  1000,     0, evaluateBishopPawnEnding},
    {"NP",  1000,     0, evaluateKnightPawnEnding},
    {"Bb",    10,     0, nullptr},
    {"Bn",    10,     0, nullptr},
    {"Bp",   200, -3200, nullptr},
    {"N",      0,     0, nullptr},
    {"NN",   200, -7000, nullptr},
    {"NNb",   50, -3000, nullptr},
    {"NNn",   50, -3000, nullptr},
    {"Nn",    10,     0, nullptr},
    {"Np",   300, -3200, nullptr},
    {"P",   1000,     0, evaluatePawnEnding},
    {"Q",    700,     0, nullptr},
    {"Qb",   800,     0, nullptr},
    {"Qn",   700,     0, nullptr},
    {"Qq",    50,     0, nullptr},
    {"Qr",   500, -1000, nullptr},
    {"R",    800,     0, nullptr},
    {"RNr",  200, -2000, nullptr},
    {"Rb",   300, -1500, nullptr},
    {"Rn",   200, -1500, nullptr},
    {"Rr",    50,     0, nullptr},
    {"-",      0,     0, nullptr}, // the end
};
// clang-format on

// What the evaluators know, in centipawns; steps are a king's.
constexpr int pawnWin = 450;
constexpr int pawnWinPerRank = 16; // that the pawn has advanced
constexpr int pawnDraw = 3;

constexpr int mateInCorner = 400;
constexpr int lostPerCornerStep = 20; // of the lone king from where it can be mated, along ranks and files
constexpr int lostPerKingStep = 4;    // between the kings
constexpr int lostPerKnightStep = 2;  // between knight and lone king

constexpr int bishopPawnWin = 440;
constexpr int knightPawnWin = 420; // a knight escorts the pawn more slowly than a bishop
constexpr int wonPerStep = 2;      // that the lone king is farther from the promotion square than the other
constexpr int pawnStepWeight = 5;  // a step that the pawn still has to go counts as so many of a king
constexpr int heldRookPawn = 12;

int fromWhite(Colour owner, int score) { return owner == white ? score : -score; }

Colour ownerOf(const Position& position, PieceType type) { return position.of(white, type) != 0 ? white : black; }

bool haveOneKingEach(const Position& position) {
    return popCount(position.of(white, king)) == 1 && popCount(position.of(black, king)) == 1;
}

// King, pawn and minor piece against king: how far everybody is from the pawn's promotion square.
struct PawnEscort {
    explicit PawnEscort(const Position& position)
        : owner(ownerOf(position, pawn)), pawnSquare(lowestBit(position.of(owner, pawn))),
          goal(relativeSquare(owner, a8 + fileOf(pawnSquare))), stepsLeft(7 - relativeRankOf(owner, pawnSquare)),
          strongSteps(kingDistance(lowestBit(position.of(owner, king)), goal)),
          loneSteps(kingDistance(lowestBit(position.of(opponent(owner), king)), goal)),
          loneMove(position.sideToMove() == owner ? 0 : 1) {}

    Colour owner;
    Square pawnSquare;
    Square goal;
    int stepsLeft; // of the pawn
    int strongSteps;
    int loneSteps;
    int loneMove; // 1 if the lone king has the move: the step that it is ahead

    bool isRookPawn() const { return (bit(pawnSquare) & (fileA | fileH)) != 0; }
    bool loneKingMeetsPawn() const { return loneSteps <= stepsLeft + loneMove; }
    bool loneKingIsFirst() const { return loneSteps < strongSteps + loneMove; }

    int winScore(int base) const {
        return fromWhite(owner, base + wonPerStep * (loneSteps - strongSteps - pawnStepWeight * stepsLeft));
    }
    // A draw that its owner may go on playing for a win in, so not all placements are the same to it.
    int drawScore() const { return fromWhite(owner, heldRookPawn - strongSteps + loneSteps - stepsLeft); }
};

Key signatureOf(const char* pieces, Colour upperCaseSide) {
    constexpr char letters[] = "PNBRQpnbrq";
    constexpr int types = 5;
    Key signature = 0;
    for (; *pieces != '\0'; ++pieces) {
        for (int i = 0; i < 2 * types; ++i) {
            if (*pieces != letters[i]) continue;
            const Colour side = i < types ? upperCaseSide : opponent(upperCaseSide);
            signature += materialKeys[materialIndex(side, pawn + i % types)];
        }
    }
    return signature;
}

void store(Key signature, const EndingRecord& record, std::int32_t score) {
    EndingEntry& slot = EndingTables[endingSlotOf(signature)];
    if (slot.state < freeSlot) {
        std::fprintf(stderr, "Hash conflict in ending tables\n");
        endProcess(1);
    }
    slot = {signature, usedSlot, record.scale, score, record.evaluator};
}

} // namespace

void initEndingTables() {
    initPawnBitbase();
    fillEndingTables(endingRecords);
}

void fillEndingTables(const EndingRecord* records) {
    EndingTables.fill({});
    for (const EndingRecord* record = records; record->pieces[0] != '-'; ++record) {
        const Key signature = signatureOf(record->pieces, white);
        const Key swapped = signatureOf(record->pieces, black);
        store(signature, *record, record->score);
        // Material that is the same for both sides is stored once. The slots are compared, not the keys, deliberately.
        if (endingSlotOf(swapped) != endingSlotOf(signature)) store(swapped, *record, -record->score);
    }
}

int evaluatePawnEnding(const Position& position) {
    if (!haveOneKingEach(position)) return 0;
    const Colour owner = ownerOf(position, pawn);
    const Square pawnSquare = lowestBit(position.of(owner, pawn));
    // The bitbase's pawn runs towards rank 1, as black's do.
    const auto seen = [&](Square square) { return relativeSquare(opponent(owner), square); };
    const bool won = pawnEndingWon(seen(pawnSquare), seen(lowestBit(position.of(owner, king))),
                                   seen(lowestBit(position.of(opponent(owner), king))), position.sideToMove() == owner);
    return fromWhite(owner, won ? pawnWin + pawnWinPerRank * relativeRankOf(owner, pawnSquare) : pawnDraw);
}

// Mate is possible only in the corners of the bishop's colour: the lone king is driven to the nearer one.
int evaluateBishopKnightMate(const Position& position) {
    if (!haveOneKingEach(position)) return 0;
    const Colour owner = ownerOf(position, bishop);
    const Square loneKing = lowestBit(position.of(opponent(owner), king));
    const bool isDark = (position.of(owner, bishop) & darkSquares) != 0;
    const int cornerSteps =
        minimum(manhattanDistance(loneKing, isDark ? a1 : a8), manhattanDistance(loneKing, isDark ? h8 : h1));
    const int kingSteps = kingDistance(loneKing, lowestBit(position.of(owner, king)));
    const int knightSteps = kingDistance(loneKing, lowestBit(position.of(owner, knight)));
    return fromWhite(owner, mateInCorner - lostPerCornerStep * cornerSteps - lostPerKingStep * kingSteps -
                                lostPerKnightStep * knightSteps);
}

// A bishop cannot drive the lone king out of a corner of the other colour: there a rook pawn does not promote.
int evaluateBishopPawnEnding(const Position& position) {
    if (!haveOneKingEach(position)) return 0;
    const PawnEscort escort(position);
    const bool isGoalDark = (bit(escort.goal) & darkSquares) != 0;
    const bool isBishopDark = (position.of(escort.owner, bishop) & darkSquares) != 0;
    const bool isDrawn =
        escort.isRookPawn() && isGoalDark != isBishopDark && escort.loneKingMeetsPawn() && escort.loneKingIsFirst();
    return isDrawn ? escort.drawScore() : escort.winScore(bishopPawnWin);
}

// With a rook pawn on its seventh rank a lone king in the corner before it can only be stalemated; earlier the knight
// takes the corner from it.
int evaluateKnightPawnEnding(const Position& position) {
    if (!haveOneKingEach(position)) return 0;
    const PawnEscort escort(position);
    const bool isDrawn = escort.isRookPawn() && escort.stepsLeft == 1 && escort.loneSteps == 0;
    return isDrawn ? escort.drawScore() : escort.winScore(knightPawnWin);
}

} // namespace helvan
