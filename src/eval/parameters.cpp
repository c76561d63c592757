// SPDX-License-Identifier: MIT
#include "eval/parameters.h"

#include "board/types.h"

namespace helvan {

namespace {

constexpr PackedScore S(int opening, int endgame) { return packed(opening, endgame); }

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
         S( 211,  317), S( 229,  382), S( 502,  318), S( 579,  367), S( 579,  367), S( 502,  318), S( 229,  382), S( 211,  317),
         S(  56,  260), S( 100,  277), S( 254,  204), S( 328,   69), S( 328,   69), S( 254,  204), S( 100,  277), S(  56,  260),
         S(  38,  264), S(  21,  280), S(  72,  176), S( 183,  139), S( 183,  139), S(  72,  176), S(  21,  280), S(  38,  264),
         S( -32,  224), S( -64,  269), S(  17,  202), S(  64,  149), S(  64,  149), S(  17,  202), S( -64,  269), S( -32,  224),
         S( -92,  204), S(-118,  267), S(-104,  249), S( -52,  210), S( -52,  210), S(-104,  249), S(-118,  267), S( -92,  204),
         S( -68,  248), S( -73,  315), S( -35,  344), S(  -2,  212), S(  -2,  212), S( -35,  344), S( -73,  315), S( -68,  248),
         S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0)}},
        // knight
        SquareValues{{
         S(-761, -330), S(-342,  -23), S(-518,   45), S(-238,   87), S(-238,   87), S(-518,   45), S(-342,  -23), S(-761, -330),
         S( -83,  -73), S(-222,  -69), S(  92,   28), S( -97,   92), S( -97,   92), S(  92,   28), S(-222,  -69), S( -83,  -73),
         S(  28,  -44), S(  -6,  -45), S(-120,  -35), S(  73,    9), S(  73,    9), S(-120,  -35), S(  -6,  -45), S(  28,  -44),
         S( 204,   33), S(-105,  153), S(-101,   88), S( -92,  203), S( -92,  203), S(-101,   88), S(-105,  153), S( 204,   33),
         S(  30,  152), S( -23,  228), S( -23,   90), S( -35,  164), S( -35,  164), S( -23,   90), S( -23,  228), S(  30,  152),
         S( -63,   41), S( -83,  125), S(-123,  112), S( -78,  186), S( -78,  186), S(-123,  112), S( -83,  125), S( -63,   41),
         S(-173,   34), S(-177,    1), S(-204,   60), S(-176,   91), S(-176,   91), S(-204,   60), S(-177,    1), S(-173,   34),
         S(-382, -133), S(-207,  -63), S(-324,  -18), S(-195,   50), S(-195,   50), S(-324,  -18), S(-207,  -63), S(-382, -133)}},
        // bishop
        SquareValues{{
         S(-430,  -63), S(-180,   -6), S(-390,   -3), S(-270,   -3), S(-270,   -3), S(-390,   -3), S(-180,   -6), S(-430,  -63),
         S( -59, -166), S(-244, -103), S(-104, -100), S(-187,  -26), S(-187,  -26), S(-104, -100), S(-244, -103), S( -59, -166),
         S(  34,   33), S(   9,  -45), S( -18,  -48), S( 136,  -76), S( 136,  -76), S( -18,  -48), S(   9,  -45), S(  34,   33),
         S(-103,  -47), S( -82,   63), S( -14,  -30), S(  62,  -22), S(  62,  -22), S( -14,  -30), S( -82,   63), S(-103,  -47),
         S(   6,  -23), S( -63,   14), S( -73,   83), S(  11,    8), S(  11,    8), S( -73,   83), S( -63,   14), S(   6,  -23),
         S( -44,   70), S(  67,   95), S( -24,   76), S( -56,  163), S( -56,  163), S( -24,   76), S(  67,   95), S( -44,   70),
         S(  17,   -8), S(  16,   25), S(  41,  -47), S(-133,   65), S(-133,   65), S(  41,  -47), S(  16,   25), S(  17,   -8),
         S(  46,   67), S(  88,   27), S( -78,    3), S(-159,   44), S(-159,   44), S( -78,    3), S(  88,   27), S(  46,   67)}},
        // rook
        SquareValues{{
         S(   4,  241), S(  44,  268), S(  31,  327), S( 140,  267), S( 140,  267), S(  31,  327), S(  44,  268), S(   4,  241),
         S(-128,  266), S(-186,  323), S( -81,  294), S( -44,  272), S( -44,  272), S( -81,  294), S(-186,  323), S(-128,  266),
         S(-178,  324), S( 128,  193), S( -18,  252), S( 104,  165), S( 104,  165), S( -18,  252), S( 128,  193), S(-178,  324),
         S( -89,  285), S( -76,  294), S( -84,  317), S( -51,  251), S( -51,  251), S( -84,  317), S( -76,  294), S( -89,  285),
         S(-190,  262), S(-100,  263), S(-209,  375), S(-122,  240), S(-122,  240), S(-209,  375), S(-100,  263), S(-190,  262),
         S(-222,  253), S( -99,  204), S(-213,  250), S(-209,  245), S(-209,  245), S(-213,  250), S( -99,  204), S(-222,  253),
         S(-220,  142), S(-240,  152), S(-165,  263), S(-178,  144), S(-178,  144), S(-165,  263), S(-240,  152), S(-220,  142),
         S(-260,  229), S(-198,  228), S(-193,  254), S(-113,  162), S(-113,  162), S(-193,  254), S(-198,  228), S(-260,  229)}},
        // queen
        SquareValues{{
         S( -74,    6), S(  59,  -77), S(   8,   53), S(  75,  101), S(  75,  101), S(   8,   53), S(  59,  -77), S( -74,    6),
         S(  96,  -31), S(-268,  123), S(-113,  197), S(-198,  196), S(-198,  196), S(-113,  197), S(-268,  123), S(  96,  -31),
         S( -13,   64), S(  32,   79), S(   4,  234), S( -74,  319), S( -74,  319), S(   4,  234), S(  32,   79), S( -13,   64),
         S( 112,  -60), S( -72,  191), S( -82,  212), S(-104,  339), S(-104,  339), S( -82,  212), S( -72,  191), S( 112,  -60),
         S( -22,  126), S(  19,   87), S( -30,  244), S( -42,  181), S( -42,  181), S( -30,  244), S(  19,   87), S( -22,  126),
         S(  62, -168), S(  93,  -73), S(  86,  -21), S(  29,  -31), S(  29,  -31), S(  86,  -21), S(  93,  -73), S(  62, -168),
         S(  39, -129), S(  67, -249), S(  96, -217), S( 137, -292), S( 137, -292), S(  96, -217), S(  67, -249), S(  39, -129),
         S(  50, -287), S( -10, -242), S(  59, -411), S( 125, -417), S( 125, -417), S(  59, -411), S( -10, -242), S(  50, -287)}},
        // king
        SquareValues{{
         S(-426, -385), S(-269, -134), S(-487,  -40), S(-580, -517), S(-580, -517), S(-487,  -40), S(-269, -134), S(-426, -385),
         S(-368, -503), S(-201,  105), S(-397,  194), S(-501,  267), S(-501,  267), S(-397,  194), S(-201,  105), S(-368, -503),
         S(-286, -308), S(-169,  338), S(-352,  454), S(-502,  392), S(-502,  392), S(-352,  454), S(-169,  338), S(-286, -308),
         S(-167, -106), S(-167,  159), S(-505,  322), S(-557,  268), S(-557,  268), S(-505,  322), S(-167,  159), S(-167, -106),
         S( -62, -210), S( -25,  -63), S(-187,   51), S(-400,  103), S(-400,  103), S(-187,   51), S( -25,  -63), S( -62, -210),
         S( -64, -326), S( 182, -205), S( -74,  -94), S(-195,  -70), S(-195,  -70), S( -74,  -94), S( 182, -205), S( -64, -326),
         S(   9, -371), S( -51, -287), S(-185, -211), S(-140, -208), S(-140, -208), S(-185, -211), S( -51, -287), S(   9, -371),
         S( -88, -464), S( -51, -416), S(-137, -361), S(-451, -399), S(-451, -399), S(-137, -361), S( -51, -416), S( -88, -464)}}},

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
         S( 132,   92), S(  99,   69), S(  66,   46), S(  33,   23), S(   0,    0), S( -33,  -23), S( -66,  -46), S( -99,  -69)},

    // By count, 0 to 8.
    .knightPawnsTable = {
         S( -80,    0), S( -64,    0), S( -48,    0), S( -32,    0), S( -16,    0), S(   0,    0), S(  16,    0), S(  32,    0), S(  48,    0)},
    .rookPawnsTable = {
         S( 180,   85), S( 144,   68), S( 108,   51), S(  72,   34), S(  36,   17), S(   0,    0), S( -36,  -17), S( -72,  -34), S(-108,  -51)},
    .bishopOwnColourPawnsTable = {
         S(  66,  228), S(  44,  152), S(  22,   76), S(   0,    0), S( -22,  -76), S( -44, -152), S( -66, -228), S( -88, -304), S(-110, -380)},
    .bishopOtherColourPawnsTable = {
         S( -24,   96), S( -16,   64), S(  -8,   32), S(   0,    0), S(   8,  -32), S(  16,  -64), S(  24,  -96), S(  32, -128), S(  40, -160)},
    .threatTable = {
         S(   0,    0), S( 175,  287), S( 437,  717), S( 700, 1148), S( 962, 1578), S(1225, 2009), S(1487, 2439), S(1750, 2870), S(2012, 3300)},
    .knightBlockadeTable = {
         S(   0,    0), S(  37,   77), S(  74,  154), S( 111,  231), S( 148,  308), S( 185,  385), S( 222,  462), S( 259,  539), S( 296,  616)},
    .outpostTable = {
         S(   0,    0), S(  26,  104), S(  52,  208), S(  78,  312), S( 104,  416), S( 130,  520), S( 156,  624), S( 182,  728), S( 208,  832)},
    .blockedPawnTable = {
         S(   0,    0), S(  38,   58), S(  76,  116), S( 114,  174), S( 152,  232), S( 190,  290), S( 228,  348), S( 266,  406), S( 304,  464)},
    .blockedCentrePawnTable = {
         S(   0,    0), S(  50,   47), S( 100,   94), S( 150,  141), S( 200,  188), S( 250,  235), S( 300,  282), S( 350,  329), S( 400,  376)},
    .pieceBehindPawnTable = {
         S(   0,    0), S(  43,   32), S(  86,   64), S( 129,   96), S( 172,  128), S( 215,  160), S( 258,  192), S( 301,  224), S( 344,  256)},

    // From the second to the seventh rank; 0 where the term is not asked for.
    .passedBaseTable = {
         S(   0,    0), S(  31,   67), S(  95,  202), S( 223,  473), S( 414,  879), S( 638, 1353)},
    .passedSupportTable = {
         S(   0,    0), S(   0,    0), S(  58,   12), S( 136,   29), S( 252,   55), S( 389,   85)},
    .passedFreeSafeTable = {
         S(   0,    0), S(   0,    0), S( 157,  369), S( 367,  862), S( 683, 1601), S(1051, 2464)},
    .passedFreeTable = {
         S(   0,    0), S(   0,    0), S(  48,  196), S( 113,  458), S( 209,  852), S( 323, 1311)},
    .passedAttackedDefendedTable = {
         S(   0,    0), S(   0,    0), S(  70,  173), S( 164,  405), S( 305,  752), S( 470, 1158)},
    .passedAttackedTable = {
         S(   0,    0), S(   0,    0), S(  45,    4), S( 106,   10), S( 198,   19), S( 305,   30)},
    .passedUnblockedTable = {
         S(   0,    0), S(   0,    0), S( -10,    0), S( -24,   -1), S( -45,   -2), S( -70,   -4)},
    .candidateTable = {
         S(   0,    0), S(   4,   22), S(  12,   66), S(  29,  154), S(  55,  286), S(   0,    0)},

    .doubledPawn = S(-154, -289),
    .isolatedPawn = S( -10,   40),
    .isolatedHalfOpen = S( -89,  -20),
    .backwardPawn = S(   8,  -49),
    .backwardHalfOpen = S(-138,  -43),
    .passedOwnKing = S( -42,  -65),
    .passedEnemyKing = S(  15,   53),

    // First to eighth rank.
    .connectedPawn = {
         S(   0,    0), S(   0,    0), S(  87,   26), S(  64,   32), S( 130,  101), S( 391,  292), S( 411,  507), S(   0,    0)},
    .phalanxPawn = {
         S(   0,    0), S(  17,  -17), S(  43,   14), S(  70,   30), S( 128,  185), S( 448,  306), S( 411,  273), S(   0,    0)},
    .shelter = {
         S(   0,    0), S( 209,  -32), S( 177,  -22), S( 134,   -5), S( 122,   -6), S( 100,   70), S(   8,   11), S(   0,    0)},
    .storm = {
         S(   0,    0), S(   2,  -17), S( -36,    9), S(  -9,  -11), S(  56,  -61), S( 258,  -85), S( -99,   48), S(   0,    0)},
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

const int passedOwnKingDistance[6][9] = {
    {0},
    {0},
    {    0,   -39,   -69,   -95,  -118,  -138,  -157,  -175,  -191},
    {    0,  -118,  -210,  -287,  -355,  -416,  -473,  -526,  -575},
    {    0,  -238,  -421,  -575,  -711,  -834,  -947, -1052, -1151},
    {    0,  -397,  -702,  -959, -1186, -1391, -1579, -1754, -1919}};

const int passedEnemyKingDistance[6][9] = {
    {0},
    {0},
    {    0,    60,   105,   144,   178,   209,   237,   263,   288},
    {    0,   179,   316,   432,   534,   626,   711,   790,   864},
    {    0,   358,   632,   864,  1068,  1252,  1422,  1580,  1728},
    {    0,   596,  1054,  1440,  1780,  2087,  2370,  2633,  2880}};

namespace {

constexpr IndexRange known = {0, 0};           // nothing to estimate
constexpr IndexRange countsAboveNone = {1, 9}; // what is not there is worth nothing
constexpr IndexRange farPassed = {2, 6};       // from the fourth rank

constexpr ParameterRow rows[] = {
    {"material", evalParameters.material.data(), 8, known},
    {"pawnSquares", evalParameters.squares[pawn].data(), 64, {8, 56}},
    {"knightSquares", evalParameters.squares[knight].data(), 64, {0, 64}},
    {"bishopSquares", evalParameters.squares[bishop].data(), 64, {0, 64}},
    {"rookSquares", evalParameters.squares[rook].data(), 64, {0, 64}},
    {"queenSquares", evalParameters.squares[queen].data(), 64, {0, 64}},
    {"kingSquares", evalParameters.squares[king].data(), 64, {0, 64}},
    {"kingSideRight", &evalParameters.kingSideRight, 1, known},
    {"queenSideRight", &evalParameters.queenSideRight, 1, known},
    {"trappedRook", &evalParameters.trappedRook, 1, known},
    {"knightInBishopsAim", &evalParameters.knightInBishopsAim, 1, known},
    {"bishopFacingPawn", &evalParameters.bishopFacingPawn, 1, known},
    {"bishopPair", &evalParameters.bishopPair, 1, known},
    {"rooksOnLine", &evalParameters.rooksOnLine, 1, known},
    {"rookOnSeventh", &evalParameters.rookOnSeventh, 1, known},
    {"rookOpenFile", &evalParameters.rookOpenFile, 1, known},
    {"rookHalfOpenWeak", &evalParameters.rookHalfOpenWeak, 1, known},
    {"rookHalfOpen", &evalParameters.rookHalfOpen, 1, known},
    {"secondRook", &evalParameters.secondRook, 1, known},
    {"rookAndQueen", &evalParameters.rookAndQueen, 1, known},
    {"bishopBeforeKing", &evalParameters.bishopBeforeKing, 1, known},
    {"pieceLead", &evalParameters.pieceLead, 1, known},
    {"kingAtPromotion", &evalParameters.kingAtPromotion, 1, known},
    {"rookBehindPassed", &evalParameters.rookBehindPassed, 1, known},
    {"tempo", &evalParameters.tempo, 1, known},
    {"pawnIsland", &evalParameters.pawnIsland, 1, known},
    {"manyPassed", &evalParameters.manyPassed, 1, known},
    {"knightKingDistanceTable", evalParameters.knightKingDistanceTable.data(), 8, {0, 8}},
    {"knightPawnsTable", evalParameters.knightPawnsTable.entries.data(), 9, {0, 9}},
    {"rookPawnsTable", evalParameters.rookPawnsTable.entries.data(), 9, {0, 9}},
    {"bishopOwnColourPawnsTable", evalParameters.bishopOwnColourPawnsTable.entries.data(), 9, {0, 9}},
    {"bishopOtherColourPawnsTable", evalParameters.bishopOtherColourPawnsTable.entries.data(), 9, {0, 9}},
    {"threatTable", evalParameters.threatTable.entries.data(), 9, countsAboveNone},
    {"knightBlockadeTable", evalParameters.knightBlockadeTable.entries.data(), 9, countsAboveNone},
    {"outpostTable", evalParameters.outpostTable.entries.data(), 9, countsAboveNone},
    {"blockedPawnTable", evalParameters.blockedPawnTable.entries.data(), 9, countsAboveNone},
    {"blockedCentrePawnTable", evalParameters.blockedCentrePawnTable.entries.data(), 9, countsAboveNone},
    {"pieceBehindPawnTable", evalParameters.pieceBehindPawnTable.entries.data(), 9, countsAboveNone},
    {"passedBaseTable", evalParameters.passedBaseTable.data(), 6, {0, 6}},
    {"passedSupportTable", evalParameters.passedSupportTable.data(), 6, farPassed},
    {"passedFreeSafeTable", evalParameters.passedFreeSafeTable.data(), 6, farPassed},
    {"passedFreeTable", evalParameters.passedFreeTable.data(), 6, farPassed},
    {"passedAttackedDefendedTable", evalParameters.passedAttackedDefendedTable.data(), 6, farPassed},
    {"passedAttackedTable", evalParameters.passedAttackedTable.data(), 6, farPassed},
    {"passedUnblockedTable", evalParameters.passedUnblockedTable.data(), 6, farPassed},
    {"candidateTable", evalParameters.candidateTable.data(), 6, {0, 5}},
    {"doubledPawn", &evalParameters.doubledPawn, 1, {0, 1}},
    {"isolatedPawn", &evalParameters.isolatedPawn, 1, {0, 1}},
    {"isolatedHalfOpen", &evalParameters.isolatedHalfOpen, 1, {0, 1}},
    {"backwardPawn", &evalParameters.backwardPawn, 1, {0, 1}},
    {"backwardHalfOpen", &evalParameters.backwardHalfOpen, 1, {0, 1}},
    {"passedOwnKing", &evalParameters.passedOwnKing, 1, {0, 1}},
    {"passedEnemyKing", &evalParameters.passedEnemyKing, 1, {0, 1}},
    {"connectedPawn", evalParameters.connectedPawn.data(), 8, {2, 7}},
    {"phalanxPawn", evalParameters.phalanxPawn.data(), 8, {1, 7}},
    {"shelter", evalParameters.shelter.data(), 8, {1, 7}},
    {"storm", evalParameters.storm.data(), 8, {1, 7}},
};

} // namespace

// clang-format on

std::span<const ParameterRow> parameterRows() { return rows; }

} // namespace helvan
