// SPDX-License-Identifier: MIT
#include "eval/parameters.h"

#include <cstddef>

#include "board/types.h"

namespace helvan {

namespace {

constexpr PackedScore S(int opening, int endgame) { return packed(opening, endgame); }
constexpr PackedScore E(int endgame) { return packed(0, endgame); }

} // namespace

// clang-format off

EvalParameters evalParameters = {
    // none, pawn, knight, bishop, rook, queen, king, none
    .material = {S(0, 0), S(600, 800), S(2800, 3100), S(2880, 3200), S(4100, 5100), S(8000, 9600), S(0, 0), S(0, 0)},

    // Boards as white sees them: the eighth rank on top, the a-file to the left.
    .squares = {
        SquareValues{},
        // pawn
        SquareValues{{
         S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0),
         S( 229,  335), S( 262,  392), S( 555,  315), S( 637,  356), S( 637,  356), S( 555,  315), S( 262,  392), S( 229,  335),
         S(  59,  324), S( 137,  330), S( 279,  265), S( 361,  105), S( 361,  105), S( 279,  265), S( 137,  330), S(  59,  324),
         S(  12,  314), S(  28,  312), S(  60,  233), S( 162,  190), S( 162,  190), S(  60,  233), S(  28,  312), S(  12,  314),
         S( -72,  197), S(-108,  216), S( -33,  174), S(  -1,  133), S(  -1,  133), S( -33,  174), S(-108,  216), S( -72,  197),
         S(-142,  156), S(-158,  185), S(-161,  198), S(-127,  167), S(-127,  167), S(-161,  198), S(-158,  185), S(-142,  156),
         S(-118,  192), S(-115,  210), S( -78,  262), S( -81,  173), S( -81,  173), S( -78,  262), S(-115,  210), S(-118,  192),
         S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0)}},
        // knight
        SquareValues{{
         S(-834, -310), S(-386,   47), S(-572,  112), S(-294,  165), S(-294,  165), S(-572,  112), S(-386,   47), S(-834, -310),
         S(-108,  -44), S(-246,  -34), S(  73,   56), S(-154,  117), S(-154,  117), S(  73,   56), S(-246,  -34), S(-108,  -44),
         S(   6,  -21), S( -47,   -8), S(-167,   -7), S(  40,   31), S(  40,   31), S(-167,   -7), S( -47,   -8), S(   6,  -21),
         S( 220,   43), S(-137,  165), S(-119,   93), S( -95,  203), S( -95,  203), S(-119,   93), S(-137,  165), S( 220,   43),
         S(  20,  181), S( -56,  256), S( -49,  114), S( -70,  178), S( -70,  178), S( -49,  114), S( -56,  256), S(  20,  181),
         S( -62,   86), S( -96,  163), S(-130,  116), S( -99,  199), S( -99,  199), S(-130,  116), S( -96,  163), S( -62,   86),
         S(-176,   90), S(-177,   26), S(-200,   75), S(-195,   96), S(-195,   96), S(-200,   75), S(-177,   26), S(-176,   90),
         S(-394,  -97), S(-229,  -43), S(-335,    3), S(-202,   90), S(-202,   90), S(-335,    3), S(-229,  -43), S(-394,  -97)}},
        // bishop
        SquareValues{{
         S(-478,  -10), S(-226,   66), S(-425,   73), S(-342,   79), S(-342,   79), S(-425,   73), S(-226,   66), S(-478,  -10),
         S( -94, -133), S(-289,  -47), S(-128,  -33), S(-244,   21), S(-244,   21), S(-128,  -33), S(-289,  -47), S( -94, -133),
         S(  -3,   67), S(   2,    4), S(  -9,   -5), S( 130,  -63), S( 130,  -63), S(  -9,   -5), S(   2,    4), S(  -3,   67),
         S(-130,  -11), S(-113,  102), S( -31,   -6), S(  44,   -8), S(  44,   -8), S( -31,   -6), S(-113,  102), S(-130,  -11),
         S( -16,    9), S( -82,   35), S( -96,  111), S(   0,   39), S(   0,   39), S( -96,  111), S( -82,   35), S( -16,    9),
         S( -49,   94), S(  66,  122), S( -38,  101), S( -74,  177), S( -74,  177), S( -38,  101), S(  66,  122), S( -49,   94),
         S(   3,    3), S(   1,   27), S(  31,  -22), S(-146,   78), S(-146,   78), S(  31,  -22), S(   1,   27), S(   3,    3),
         S(  31,   75), S( 106,   48), S( -91,   27), S(-165,   63), S(-165,   63), S( -91,   27), S( 106,   48), S(  31,   75)}},
        // rook
        SquareValues{{
         S( -26,  320), S(   7,  335), S( -25,  395), S(  82,  338), S(  82,  338), S( -25,  395), S(   7,  335), S( -26,  320),
         S(-208,  306), S(-262,  367), S(-151,  342), S(-110,  313), S(-110,  313), S(-151,  342), S(-262,  367), S(-208,  306),
         S(-255,  370), S(  66,  251), S( -73,  311), S(  53,  208), S(  53,  208), S( -73,  311), S(  66,  251), S(-255,  370),
         S(-171,  336), S(-157,  340), S(-138,  361), S(-117,  286), S(-117,  286), S(-138,  361), S(-157,  340), S(-171,  336),
         S(-267,  330), S(-170,  325), S(-278,  432), S(-193,  303), S(-193,  303), S(-278,  432), S(-170,  325), S(-267,  330),
         S(-278,  324), S(-159,  267), S(-273,  313), S(-287,  318), S(-287,  318), S(-273,  313), S(-159,  267), S(-278,  324),
         S(-286,  218), S(-305,  227), S(-213,  299), S(-231,  212), S(-231,  212), S(-213,  299), S(-305,  227), S(-286,  218),
         S(-310,  291), S(-257,  286), S(-245,  299), S(-180,  216), S(-180,  216), S(-245,  299), S(-257,  286), S(-310,  291)}},
        // queen
        SquareValues{{
         S( -68,   38), S(  74,  -55), S(  12,  116), S(  76,  166), S(  76,  166), S(  12,  116), S(  74,  -55), S( -68,   38),
         S(  99,   13), S(-283,  197), S(-121,  283), S(-212,  295), S(-212,  295), S(-121,  283), S(-283,  197), S(  99,   13),
         S( -21,  122), S(  31,  158), S( -15,  332), S(-104,  432), S(-104,  432), S( -15,  332), S(  31,  158), S( -21,  122),
         S( 120,  -35), S( -68,  267), S( -83,  308), S(-102,  444), S(-102,  444), S( -83,  308), S( -68,  267), S( 120,  -35),
         S(  13,  154), S(  35,  132), S(  -3,  308), S( -24,  245), S( -24,  245), S(  -3,  308), S(  35,  132), S(  13,  154),
         S( 112, -194), S( 149,  -81), S( 123,  -16), S(  69,  -28), S(  69,  -28), S( 123,  -16), S( 149,  -81), S( 112, -194),
         S( 108, -171), S( 126, -301), S( 147, -245), S( 185, -334), S( 185, -334), S( 147, -245), S( 126, -301), S( 108, -171),
         S( 106, -391), S(  63, -320), S( 127, -480), S( 174, -462), S( 174, -462), S( 127, -480), S(  63, -320), S( 106, -391)}},
        // king
        SquareValues{{
         S(-405, -590), S(-214, -282), S(-426, -175), S(-505, -680), S(-505, -680), S(-426, -175), S(-214, -282), S(-405, -590),
         S(-342, -750), S(-147, -110), S(-332,    8), S(-436,  113), S(-436,  113), S(-332,    8), S(-147, -110), S(-342, -750),
         S(-245, -506), S(-131,  112), S(-315,  273), S(-474,  223), S(-474,  223), S(-315,  273), S(-131,  112), S(-245, -506),
         S(-117, -233), S(-149,   12), S(-511,  200), S(-561,  154), S(-561,  154), S(-511,  200), S(-149,   12), S(-117, -233),
         S( -21, -205), S(   5,  -56), S(-159,   47), S(-388,   86), S(-388,   86), S(-159,   47), S(   5,  -56), S( -21, -205),
         S( -72, -201), S( 179,  -82), S( -80,    2), S(-192,   23), S(-192,   23), S( -80,    2), S( 179,  -82), S( -72, -201),
         S(  15, -182), S( -88,  -92), S(-240,  -35), S(-250,  -64), S(-250,  -64), S(-240,  -35), S( -88,  -92), S(  15, -182),
         S( -42, -255), S( -65, -180), S(-213, -158), S(-568, -219), S(-568, -219), S(-213, -158), S( -65, -180), S( -42, -255)}}},

    .kingSideRight = S( 150,    0),
    .queenSideRight = S(  60,    0),
    .trappedRook = S(-300, -100),
    .knightInBishopsAim = S(  30,   40),
    .bishopFacingPawn = S(  15,   25),
    .bishopPair = S( 300,  500),
    .rooksOnLine = S(  20,   10),
    .rookOnSeventh = S(  65,  175),
    .rookOpenFile = S( 180,  180),
    .rookHalfOpenWeak = S(  70,   90),
    .rookHalfOpen = S(  30,   50),
    .secondRook = S(-125, -175),
    .rookAndQueen = S( -80, -120),
    .bishopBeforeKing = S(  55,    0),
    .pieceLead = S( 300,  300),
    .kingAtPromotion = S(   0,  100),
    .rookBehindPassed = S(  50,  300),
    .tempo = S( 100,   40),
    .pawnIsland = S( -30,  -60),
    .manyPassed = S(  30,   90),

    // By distance, 0 to 7.
    .knightKingDistanceTable = {
         S( 105,  132), S(  44,  150), S(   2,  141), S(   7,   96), S( -75,  103), S( -61,   59), S(-150,   56), S(-240,    5)},

    // By count, 0 to 8.
    .knightPawnsTable = {
         S(-127, -220), S( -71,  -48), S(-144,   32), S(-100,   27), S(-100,   79), S( -55,  107), S( -27,  167), S(  -4,  287), S(   6,  258)},
    .rookPawnsTable = {
         S( 684, -584), S(  92,  252), S(-171,  382), S(-185,  435), S(-178,  386), S(-168,  320), S(-141,  293), S(-108,  262), S(-101,  245)},
    .bishopOwnColourPawnsTable = {
         S( -29,  214), S(  19,  186), S(  -4,  148), S( -39,  132), S( -75,   81), S(-103,   27), S(-122,  -87), S(-118, -167), S( -36, -305)},
    .bishopOtherColourPawnsTable = {
         S(   1,   64), S( -37,  106), S( -48,  101), S( -59,  104), S( -45,  104), S( -46,  128), S( -39,  118), S(  -4,   34), S(  13,  -79)},
    .threatTable = {
         S(   0,    0), S( 115,  246), S( 479,  529), S( 774, 1030), S(1000, 1525), S(1236, 1990), S(1493, 2432), S(1752, 2867), S(2013, 3298)},
    .knightBlockadeTable = {
         S(   0,    0), S(  45,   38), S(  68,  124), S( 109,  219), S( 147,  304), S( 185,  383), S( 222,  461), S( 259,  539), S( 296,  616)},
    .outpostTable = {
         S(   0,    0), S(  30,   74), S(  81,  178), S(  92,  250), S( 125,  317), S( 146,  475), S( 161,  606), S( 184,  721), S( 209,  828)},
    .blockedPawnTable = {
         S(   0,    0), S(  23,  114), S(  55,  212), S( 102,  284), S( 165,  325), S( 166,  394), S( 235,  403), S( 335,  433), S( 203,  475)},
    .blockedCentrePawnTable = {
         S(   0,    0), S(  52,    6), S(  95,   41), S( 150,  120), S( 200,  180), S( 250,  232), S( 300,  281), S( 350,  329), S( 400,  376)},
    .pieceBehindPawnTable = {
         S(   0,    0), S(  50,   25), S(  95,   66), S( 122,   97), S( 145,  127), S( 205,  160), S( 254,  192), S( 299,  224), S( 343,  256)},

    // From the second to the seventh rank; 0 where the term is not asked for.
    .passedBaseTable = {
         S( -66,   58), S( -52,  137), S(  87,  333), S( 225,  486), S( 423,  878), S( 747, 1283)},
    .passedSupportTable = {
         S(   0,    0), S(   0,    0), S(  82,   10), S( 177,  -35), S( 292,   29), S( 417,   85)},
    .passedFreeSafeTable = {
         S(   0,    0), S(   0,    0), S( 173,  443), S( 352,  889), S( 672, 1639), S(1039, 2575)},
    .passedFreeTable = {
         S(   0,    0), S(   0,    0), S(-336,  289), S(-115,  465), S(  87,  826), S( 276, 1249)},
    .passedAttackedDefendedTable = {
         S(   0,    0), S(   0,    0), S(  50,  184), S( 121,  429), S( 324,  787), S( 483, 1123)},
    .passedAttackedTable = {
         S(   0,    0), S(   0,    0), S( 180,  -82), S( 152,  -16), S( 180,  -26), S( 314,   69)},
    .passedUnblockedTable = {
         S(   0,    0), S(   0,    0), S(-102,    8), S( -77,   -5), S( -69,   50), S( -50,   51)},
    .candidateTable = {
         S( -17,  -23), S(  17,  -10), S(  12,  101), S(  52,  168), S( 108,  335), S(   0,    0)},

    .doubledPawn = S(-142, -206),
    .isolatedPawn = S( -15,    5),
    .isolatedHalfOpen = S( -65,  -82),
    .backwardPawn = S(   0,  -36),
    .backwardHalfOpen = S(-128,  -58),
    .passedPerOwnKingStep = S( -39,  -22),
    .passedPerEnemyKingStep = S(  19,   17),

    // First to eighth rank.
    .connectedPawn = {
         S(   0,    0), S(   0,    0), S(  78,   57), S(  63,   52), S( 122,  106), S( 371,  303), S( 390,  556), S(   0,    0)},
    .phalanxPawn = {
         S(   0,    0), S(  20,   -2), S(  43,   13), S(  75,   31), S( 140,  217), S( 484,  324), S( 431,  264), S(   0,    0)},
    .shelter = {
         S(   0,    0), S( 128,  -60), S( 113,  -36), S(  83,  -18), S(  70,  -16), S( 100,   52), S(  39,   -8), S(   0,    0)},
    .storm = {
         S(   0,    0), S(  16,   -2), S( -12,   -3), S(   9,  -63), S(  32, -159), S( 162, -192), S(-178,   12), S(   0,    0)},

    // From six ranks before the king down to six behind it; on its file, then one to three files aside, and all beyond.
    .pawnByOwnKingOffset = {
         S( -96,  -14), S(-100,  -19), S( -99,  -59), S( -76,  -27), S( -34,  -56),
         S( -48,  -48), S( -92,  -51), S( -67,  -76), S( -74, -102), S( -63, -155),
         S(  59, -129), S( -24, -142), S( -39, -171), S( -39, -157), S( -60, -227),
         S(  54, -132), S( -23, -105), S(  -2, -130), S( -56, -125), S( -69, -192),
         S(  57,  -38), S(  18,  -41), S( -21,  -49), S( -65,  -76), S( -87, -143),
         S(  90,   34), S(  37,  -15), S( -33,    3), S( -28,  -25), S( -94,  -92),
         S(  46,   78), S(  57,   90), S( -48,   35), S( -48,   12), S(-140,  -48),
         S(  39,  188), S( -29,  113), S( -36,   41), S( -45,   32), S(-124,  -18),
         S(  35,  184), S(  -8,  159), S(  -2,   92), S( -37,   16), S(-100,    4),
         S(  48,  194), S(  36,  165), S(  12,   84), S(  -6,   -3), S( -32,   -3),
         S(  47,  171), S(  41,  128), S(  31,   74), S(  24,   40), S(  25,    4),
         S(  21,   79), S(  26,   92), S(  22,   59), S(  24,   58), S(  16,   14),
         S(   8,   33), S(  11,   39), S(  12,   39), S(  12,   50), S(  11,   39)},
    .pawnByEnemyKingOffset = {
         S(  -8,   -7), S( -10,  -16), S( -13,  -28), S( -17,  -41), S( -26,  -63),
         S( -12,   -1), S( -14,   -7), S( -14,  -10), S( -22,  -26), S( -41,  -20),
         S( -26,  -15), S( -21,    1), S( -25,   23), S( -33,   14), S( -57,   52),
         S( -41,  -39), S( -37,  -12), S( -38,   22), S( -56,   52), S( -91,   53),
         S( -75, -128), S( -78,  -88), S( -75,  -54), S( -93,  -33), S(-147,   15),
         S(-103, -167), S( -99, -111), S( -79,  -89), S(-100,  -27), S(-179,   34),
         S( -65,  -56), S( -53, -125), S( -27, -127), S( -84,  -30), S(-115,   87),
         S(-103,   68), S(  -7,    3), S(  22,  -49), S( -86,    9), S(-115,  100),
         S( -14,  122), S( 100,  124), S(  22,   70), S( -69,   18), S( -50,   71),
         S( -56,   25), S(  52,   70), S( -14,   28), S( -45,   10), S( -21,   52),
         S(   7,  -61), S(  14,    0), S(  15,  -17), S( -15,  -11), S(  26,   19),
         S( -17,  -78), S(  12,  -54), S(   9,  -39), S(  14,  -47), S(  51,    4),
         S( -22, -122), S(  -2, -103), S(  -8,  -70), S( -13,  -69), S(  60,  -67)},
    .passedByOwnKingOffset = {
         S(-124,   13), S(-101,    4), S( -79,  -32), S( -45,   -7), S(   6,  -34),
         S(-131,    9), S( -87,  -11), S( -19,   -9), S(  -6,  -72), S(  35, -100),
         S( -72,  -10), S( -27,  -54), S(  52,  -38), S(  34,  -75), S(  42, -143),
         S( -51,  -10), S( -15,  -74), S( -12, -106), S( -18, -121), S(  38,  -91),
         S(  35,  -32), S(  36,  -27), S(   8,  -98), S( -15, -151), S(  -6,  -83),
         S(  49,   70), S(  -6,    9), S(  40,    4), S( -21,  -59), S(  41,  -67),
         S(  29,   85), S(  16,  138), S(  33,   75), S(  -5,   10), S( -37,   -7),
         S(  51,  132), S(  40,  250), S(  16,  112), S( -13,   17), S( -60,   24),
         S(  43,  117), S(  42,  194), S(  12,   72), S( -16,   17), S( -44,   54),
         S(  30,   74), S(  29,   97), S(  14,   67), S(  -7,   14), S( -25,   -6),
         S(  18,   86), S(  19,   78), S(   7,   32), S(  -3,  -14), S(  -6,  -12),
         S(   8,   33), S(   8,   43), S(   5,   18), S(  -2,    1), S(  -4,   -8),
         S(   2,    8), S(   2,   11), S(   2,    6), S(   0,    6), S(  -3,   -7)},
    .passedByEnemyKingOffset = {
         S(  -6,   -1), S(  -8,  -10), S( -11,  -21), S( -15,  -34), S( -25,  -56),
         S(  -8,   11), S( -10,    4), S( -11,    2), S( -19,  -11), S( -38,   -5),
         S( -16,   16), S( -11,   28), S( -16,   46), S( -26,   40), S( -53,   69),
         S( -10,   55), S(  -9,   80), S( -11,   99), S( -33,  139), S( -73,  104),
         S( -23,   25), S( -33,   18), S( -23,   86), S( -48,  137), S(-111,   73),
         S( -31,    3), S( -26,   34), S(   0,  128), S( -35,  192), S(-121,   62),
         S( -37,   18), S(  -2,  -65), S(  36,   63), S( -30,  157), S(-100,   50),
         S(-116,  135), S( -11,  -41), S(  38,  -75), S( -48,   74), S(-103,   92),
         S(-151, -121), S(  24, -198), S(  45, -166), S(  -6,   19), S( -59,  103),
         S( -33, -108), S(  33, -161), S( -27,  -98), S(  10,    1), S( -21,   68),
         S(  66, -125), S( 141, -120), S(  -2,  -86), S(  25,   12), S(  17,   77),
         S( 157, -122), S( 174, -115), S(  67,  -38), S(  44,  -37), S(  74,   76),
         S( 135,  -97), S( 117, -126), S(  60, -106), S(  32,   27), S(  28,  142)},

    .kingSafetyAggressiveness = 6,
};

const std::array<int, 128> kingSafetyCurve = {
       0,    1,    3,    6,   11,   17,   25,   34,   44,   55,   68,   81,   96,  112,  129,  147,
     166,  185,  205,  227,  248,  270,  293,  317,  340,  364,  388,  413,  438,  463,  487,  512,
     537,  562,  587,  611,  636,  660,  684,  708,  731,  754,  777,  799,  821,  842,  863,  884,
     904,  924,  943,  962,  980,  998, 1016, 1033, 1049, 1065, 1081, 1096, 1111, 1125, 1139, 1152,
    1165, 1178, 1190, 1201, 1213, 1224, 1234, 1245, 1254, 1264, 1273, 1282, 1291, 1299, 1307, 1314,
    1322, 1329, 1336, 1342, 1349, 1355, 1360, 1366, 1371, 1377, 1382, 1387, 1391, 1396, 1400, 1404,
    1408, 1412, 1415, 1419, 1422, 1425, 1428, 1431, 1434, 1437, 1439, 1442, 1444, 1447, 1449, 1451,
    1453, 1455, 1457, 1459, 1460, 1462, 1464, 1465, 1467, 1468, 1469, 1471, 1472, 1473, 1474, 1475};

const std::array<int, 64> kingExposureUnits = {
    1, 0, 1, 3, 3, 1, 0, 1,
    1, 1, 2, 4, 4, 2, 1, 1,
    4, 5, 6, 6, 6, 6, 6, 4,
    8, 8, 8, 8, 8, 8, 8, 8,
    8, 8, 8, 8, 8, 8, 8, 8,
    8, 8, 8, 8, 8, 8, 8, 8,
    8, 8, 8, 8, 8, 8, 8, 8,
    8, 8, 8, 8, 8, 8, 8, 8};

const std::array<PackedScore, 16> knightMobility = {
     S(-548, -470), S(-452, -387), S(-373, -320), S(-305, -261), S(-244, -209), S(-188, -162), S(-137, -117), S( -88,  -76),
     S( -43,  -37), S(   0,    0), S(  41,   35), S(  80,   68), S( 118,  101), S( 154,  132), S( 190,  162), S( 224,  191)};

const std::array<PackedScore, 16> bishopMobility = {
     S(-443, -443), S(-350, -350), S(-274, -274), S(-208, -208), S(-150, -150), S( -96,  -96), S( -46,  -46), S(   0,    0),
     S(  44,   44), S(  85,   85), S( 125,  125), S( 163,  163), S( 199,  199), S( 234,  234), S( 268,  268), S( 301,  301)};

const std::array<PackedScore, 16> rookMobility = {
     S(-251, -343), S(-203, -278), S(-164, -224), S(-130, -178), S(-100, -136), S( -72,  -99), S( -46,  -64), S( -22,  -31),
     S(   0,    0), S(  22,   29), S(  42,   57), S(  62,   84), S(  81,  109), S(  99,  134), S( 116,  158), S( 133,  181)};

const std::array<PackedScore, 32> queenMobility = {
     S(-320, -469), S(-278, -408), S(-244, -358), S(-215, -314), S(-188, -275), S(-164, -240), S(-142, -207), S(-121, -177),
     S(-101, -148), S( -82, -120), S( -65,  -94), S( -48,  -69), S( -31,  -45), S( -15,  -22), S(   0,    0), S(  15,   22),
     S(  29,   43), S(  43,   63), S(  56,   83), S(  70,  103), S(  82,  121), S(  95,  140), S( 107,  158), S( 119,  176),
     S( 131,  193), S( 143,  210), S( 154,  227), S( 165,  243), S( 176,  259), S( 187,  275), S( 198,  290), S( 208,  306)};

const std::array<std::array<PackedScore, 9>, 6> passedByOwnKingSteps = {{
    {},
    {},
    {{E(    0), E(  -39), E(  -69), E(  -95), E( -118), E( -138), E( -157), E( -175), E( -191)}},
    {{E(    0), E( -118), E( -210), E( -287), E( -355), E( -416), E( -473), E( -526), E( -575)}},
    {{E(    0), E( -238), E( -421), E( -575), E( -711), E( -834), E( -947), E(-1052), E(-1151)}},
    {{E(    0), E( -397), E( -702), E( -959), E(-1186), E(-1391), E(-1579), E(-1754), E(-1919)}}}};

const std::array<std::array<PackedScore, 9>, 6> passedByEnemyKingSteps = {{
    {},
    {},
    {{E(    0), E(   60), E(  105), E(  144), E(  178), E(  209), E(  237), E(  263), E(  288)}},
    {{E(    0), E(  179), E(  316), E(  432), E(  534), E(  626), E(  711), E(  790), E(  864)}},
    {{E(    0), E(  358), E(  632), E(  864), E( 1068), E( 1252), E( 1422), E( 1580), E( 1728)}},
    {{E(    0), E(  596), E( 1054), E( 1440), E( 1780), E( 2087), E( 2370), E( 2633), E( 2880)}}}};

// clang-format on

namespace {

constexpr IndexRange known = {0, 0};           // nothing to estimate
constexpr IndexRange countsAboveNone = {1, 9}; // what is not there is worth nothing
constexpr IndexRange farPassed = {2, 6};       // from the fourth rank

constexpr int filesPerRank = 8;

// A parameter is one value, an array or a table by counts.

constexpr ParameterRow row(const char* name, PackedScore& value, IndexRange open) { return {name, &value, 1, open}; }

template <std::size_t size>
constexpr ParameterRow row(const char* name, std::array<PackedScore, size>& values, IndexRange open,
                           int columns = size) {
    return {name, values.data(), size, open, columns};
}

template <int size>
constexpr ParameterRow row(const char* name, ClampedTable<PackedScore, size>& table, IndexRange open) {
    return row(name, table.entries, open);
}

constexpr ParameterRow rows[] = {
    row("material", evalParameters.material, known),
    row("pawnSquares", evalParameters.squares[pawn], {8, 56}, filesPerRank),
    row("knightSquares", evalParameters.squares[knight], {0, 64}, filesPerRank),
    row("bishopSquares", evalParameters.squares[bishop], {0, 64}, filesPerRank),
    row("rookSquares", evalParameters.squares[rook], {0, 64}, filesPerRank),
    row("queenSquares", evalParameters.squares[queen], {0, 64}, filesPerRank),
    row("kingSquares", evalParameters.squares[king], {0, 64}, filesPerRank),
    row("kingSideRight", evalParameters.kingSideRight, known),
    row("queenSideRight", evalParameters.queenSideRight, known),
    row("trappedRook", evalParameters.trappedRook, known),
    row("knightInBishopsAim", evalParameters.knightInBishopsAim, known),
    row("bishopFacingPawn", evalParameters.bishopFacingPawn, known),
    row("bishopPair", evalParameters.bishopPair, known),
    row("rooksOnLine", evalParameters.rooksOnLine, known),
    row("rookOnSeventh", evalParameters.rookOnSeventh, known),
    row("rookOpenFile", evalParameters.rookOpenFile, known),
    row("rookHalfOpenWeak", evalParameters.rookHalfOpenWeak, known),
    row("rookHalfOpen", evalParameters.rookHalfOpen, known),
    row("secondRook", evalParameters.secondRook, known),
    row("rookAndQueen", evalParameters.rookAndQueen, known),
    row("bishopBeforeKing", evalParameters.bishopBeforeKing, known),
    row("pieceLead", evalParameters.pieceLead, known),
    row("kingAtPromotion", evalParameters.kingAtPromotion, known),
    row("rookBehindPassed", evalParameters.rookBehindPassed, known),
    row("tempo", evalParameters.tempo, known),
    row("pawnIsland", evalParameters.pawnIsland, known),
    row("manyPassed", evalParameters.manyPassed, known),
    row("knightKingDistanceTable", evalParameters.knightKingDistanceTable, {1, 8}),
    row("knightPawnsTable", evalParameters.knightPawnsTable, {0, 9}),
    row("rookPawnsTable", evalParameters.rookPawnsTable, {0, 9}),
    row("bishopOwnColourPawnsTable", evalParameters.bishopOwnColourPawnsTable, {0, 9}),
    row("bishopOtherColourPawnsTable", evalParameters.bishopOtherColourPawnsTable, {0, 9}),
    row("threatTable", evalParameters.threatTable, countsAboveNone),
    row("knightBlockadeTable", evalParameters.knightBlockadeTable, countsAboveNone),
    row("outpostTable", evalParameters.outpostTable, countsAboveNone),
    row("blockedPawnTable", evalParameters.blockedPawnTable, countsAboveNone),
    row("blockedCentrePawnTable", evalParameters.blockedCentrePawnTable, {1, 5}),
    row("pieceBehindPawnTable", evalParameters.pieceBehindPawnTable, countsAboveNone),
    row("passedBaseTable", evalParameters.passedBaseTable, {0, 6}),
    row("passedSupportTable", evalParameters.passedSupportTable, farPassed),
    row("passedFreeSafeTable", evalParameters.passedFreeSafeTable, farPassed),
    row("passedFreeTable", evalParameters.passedFreeTable, farPassed),
    row("passedAttackedDefendedTable", evalParameters.passedAttackedDefendedTable, farPassed),
    row("passedAttackedTable", evalParameters.passedAttackedTable, farPassed),
    row("passedUnblockedTable", evalParameters.passedUnblockedTable, farPassed),
    row("candidateTable", evalParameters.candidateTable, {0, 5}),
    row("doubledPawn", evalParameters.doubledPawn, {0, 1}),
    row("isolatedPawn", evalParameters.isolatedPawn, {0, 1}),
    row("isolatedHalfOpen", evalParameters.isolatedHalfOpen, {0, 1}),
    row("backwardPawn", evalParameters.backwardPawn, {0, 1}),
    row("backwardHalfOpen", evalParameters.backwardHalfOpen, {0, 1}),
    row("passedPerOwnKingStep", evalParameters.passedPerOwnKingStep, {0, 1}),
    row("passedPerEnemyKingStep", evalParameters.passedPerEnemyKingStep, {0, 1}),
    row("connectedPawn", evalParameters.connectedPawn, {2, 7}),
    row("phalanxPawn", evalParameters.phalanxPawn, {1, 7}),
    row("shelter", evalParameters.shelter, {1, 7}),
    row("storm", evalParameters.storm, {1, 7}),
    row("pawnByOwnKingOffset", evalParameters.pawnByOwnKingOffset, {0, 65}, offsetColumns),
    row("pawnByEnemyKingOffset", evalParameters.pawnByEnemyKingOffset, {0, 65}, offsetColumns),
    row("passedByOwnKingOffset", evalParameters.passedByOwnKingOffset, {0, 65}, offsetColumns),
    row("passedByEnemyKingOffset", evalParameters.passedByEnemyKingOffset, {0, 65}, offsetColumns),
};

} // namespace

std::span<const ParameterRow> parameterRows() { return rows; }

} // namespace helvan
