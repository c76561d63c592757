// SPDX-License-Identifier: MIT
//
// What the evaluation knows, as data: (opening, endgame) pairs in thousandths of a pawn, from the view of the side
// that they are credited to. The evaluation reads most directly and some through the tables that eval/tables builds:
// whoever changes a value has everything built anew (rebuildTables).
#pragma once

#include <array>
#include <span>

#include "board/packed_score.h"
#include "eval/clamped_table.h"

namespace helvan {

using SquareValues = std::array<PackedScore, 64>; // as printed: a8 first, h1 last, for a white piece
using RankValues = std::array<PackedScore, 8>;    // by relative rank: 0 is the side's own first rank
using PassedValues = std::array<PackedScore, 6>;  // by a passed pawn's rank, from the second (0) to the seventh (5)
using DistanceValues = std::array<PackedScore, 8>;
using CountValues = ClampedTable<PackedScore, 9>;

// By where a pawn stands from a king: rows from six ranks before the king, as the pawn's side sees it, to six behind;
// columns from the king's file to four files or more aside.
inline constexpr int offsetColumns = 5;
inline constexpr int mostRanksApart = 6;
using OffsetValues = std::array<PackedScore, offsetColumns*(2 * mostRanksApart + 1)>;

struct EvalParameters {
    std::array<PackedScore, 8> material; // by piece type
    std::array<SquareValues, 7> squares; // by piece type, without material; slot 0 is unused

    PackedScore kingSideRight; // castling right kept
    PackedScore queenSideRight;
    PackedScore trappedRook;        // a rook on g1, h1, g2 or h2, shut in by its king on f1 or g1; black's likewise
    PackedScore knightInBishopsAim; // a bishop aims at the enemy king through enemy knights only
    PackedScore bishopFacingPawn;   // an enemy pawn three ranks ahead on the bishop's file
    PackedScore bishopPair;
    PackedScore rooksOnLine;   // another own rook on the rook's rank or file
    PackedScore rookOnSeventh; // while the enemy king is on its first rank
    PackedScore rookOpenFile;
    PackedScore rookHalfOpenWeak; // the enemy's pawns on the file have no pawn to defend them
    PackedScore rookHalfOpen;
    PackedScore secondRook; // two rooks or more
    PackedScore rookAndQueen;
    PackedScore bishopBeforeKing;
    PackedScore pieceLead;       // two pieces more than the enemy, or more still
    PackedScore kingAtPromotion; // the king beside a passed pawn's promotion square
    PackedScore rookBehindPassed;
    PackedScore tempo;      // for the side to move
    PackedScore pawnIsland; // for each group of files with pawns but the first
    PackedScore manyPassed; // two passed pawns or more

    DistanceValues knightKingDistanceTable; // from the own king
    // By the number of own pawns, on all squares or on those of one colour, for each piece.
    CountValues knightPawnsTable;
    CountValues rookPawnsTable;
    CountValues bishopOwnColourPawnsTable;
    CountValues bishopOtherColourPawnsTable;
    CountValues threatTable;            // enemy pieces under threat
    CountValues knightBlockadeTable;    // knights before enemy pawns, out of reach of any other
    CountValues outpostTable;           // knights, bishops and rooks out of reach of enemy pawns
    CountValues blockedPawnTable;       // enemy pawns with any piece before them
    CountValues blockedCentrePawnTable; // enemy centre pawns at home with any piece before them
    CountValues pieceBehindPawnTable;   // knights and bishops behind own pawns
    PassedValues passedBaseTable;
    // The next six count from the fourth rank on, and while the square before the pawn is empty.
    PassedValues passedSupportTable;          // with an own pawn beside or behind it
    PassedValues passedFreeSafeTable;         // whose path is not attacked and wholly defended
    PassedValues passedFreeTable;             // whose path is not attacked
    PassedValues passedAttackedDefendedTable; // whose path is defended wherever it is attacked
    PassedValues passedAttackedTable;
    PassedValues passedUnblockedTable; // without an own piece on its path
    PassedValues candidateTable;       // a pawn that its neighbours can help to pass

    PackedScore doubledPawn;
    PackedScore isolatedPawn;
    PackedScore isolatedHalfOpen; // on a file without enemy pawns
    PackedScore backwardPawn;
    PackedScore backwardHalfOpen;
    // What a passed pawn is worth by where a king is, is a sum of three: by the king's steps to the square before the
    // pawn, these two; from the fourth rank on by the same steps and the rank, passedByOwnKingSteps and
    // passedByEnemyKingSteps; and by ranks and files from the pawn itself, passedByOwnKingOffset and
    // passedByEnemyKingOffset.
    PackedScore passedPerOwnKingStep;
    PackedScore passedPerEnemyKingStep;
    RankValues connectedPawn; // defended by a pawn
    RankValues phalanxPawn;   // with a pawn beside it
    RankValues shelter;       // an own pawn before the own king
    RankValues storm;         // an own pawn before the enemy king
    OffsetValues pawnByOwnKingOffset;
    OffsetValues pawnByEnemyKingOffset;
    OffsetValues passedByOwnKingOffset; // a passed pawn, beside the two above
    OffsetValues passedByEnemyKingOffset;

    int kingSafetyAggressiveness; // the option of that name: what the king-safety curve is multiplied by
};

extern EvalParameters evalParameters;

struct IndexRange {
    int first;
    int end; // the index behind the last
};

// The parameters by name, for programs that list or change them. Values in a row lie behind one another.
struct ParameterRow {
    const char* name;
    PackedScore* values;
    int count;
    IndexRange open;     // to be tuned; the others are known, or read by no term
    int columns = count; // of the table that the values are drawn as, row by row
};

std::span<const ParameterRow> parameterRows();

// What each piece counts in the comparison of material, by type: eighths are compared, and the low three bits tell an
// odd number of bishops.
inline constexpr int pieceWeights[7] = {0, 0, 24, 28, 40, 72, 0};
inline constexpr int decisivePieceLead = 2;

// Attack units against the enemy king.
inline constexpr int knightZoneUnits = 4;  // a knight attacks a square of the king's zone
inline constexpr int knightCheckUnits = 4; // a square from which a knight could give check
inline constexpr int bishopZoneUnits = 2;
inline constexpr int bishopCheckUnits = 3;
inline constexpr int rookZoneUnits = 3;
inline constexpr int rookCheckUnits = 3;
inline constexpr int queenZoneUnits = 2;
inline constexpr int queenDistantCheckUnits = 3;
inline constexpr int queenContactCheckUnits = 10; // beside the king, where the queen is safe
inline constexpr int queenLostContactCheckUnits = 1;
inline constexpr int mostQueenCheckUnits = queenContactCheckUnits * 2 + queenContactCheckUnits / 2;

// What the units are worth, in thousandths of a pawn before the aggressiveness; flat beyond the end.
extern const std::array<int, 128> kingSafetyCurve;

// Units for the square that the attacked king stands on: a1 first, for a white king.
extern const std::array<int, 64> kingExposureUnits;

// By the number of safe squares; those of a knight count twice where they are ahead of it.
extern const std::array<PackedScore, 16> knightMobility;
extern const std::array<PackedScore, 16> bishopMobility;
extern const std::array<PackedScore, 16> rookMobility;
extern const std::array<PackedScore, 32> queenMobility;

// By a passed pawn's rank, from the second (0) to the seventh (5), and a king's steps 0..8 to the square before the
// pawn.
extern const std::array<std::array<PackedScore, 9>, 6> passedByOwnKingSteps;
extern const std::array<std::array<PackedScore, 9>, 6> passedByEnemyKingSteps;

} // namespace helvan
