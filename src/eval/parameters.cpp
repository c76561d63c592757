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
         S( 110,  300), S( 160,  290), S( 220,  280), S( 300,  270), S( 300,  270), S( 220,  280), S( 160,  290), S( 110,  300),
         S(  50,  190), S( 100,  180), S( 190,  170), S( 280,  160), S( 280,  160), S( 190,  170), S( 100,  180), S(  50,  190),
         S(   0,  100), S(  50,   90), S( 150,   80), S( 270,   70), S( 270,   70), S( 150,   80), S(  50,   90), S(   0,  100),
         S( -40,   50), S(  10,   40), S( 100,   30), S( 200,   20), S( 200,   20), S( 100,   30), S(  10,   40), S( -40,   50),
         S( -60,   30), S( -10,   20), S(  20,   10), S(  90,    0), S(  90,    0), S(  20,   10), S( -10,   20), S( -60,   30),
         S( -30,   20), S( -10,   10), S(   5,    0), S( -35,  -10), S( -35,  -10), S(   5,    0), S( -10,   10), S( -30,   20),
         S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0)}},
        // knight
        SquareValues{{
         S(-340, -260), S(-255, -185), S(-170, -110), S( -85,  -35), S( -85,  -35), S(-170, -110), S(-255, -185), S(-340, -260),
         S(-155, -165), S( -70,  -90), S(  15,  -15), S( 100,   60), S( 100,   60), S(  15,  -15), S( -70,  -90), S(-155, -165),
         S(   0,  -50), S(  85,   25), S( 170,  100), S( 255,  175), S( 255,  175), S( 170,  100), S(  85,   25), S(   0,  -50),
         S(  85,   25), S( 170,  100), S( 255,  175), S( 340,  250), S( 340,  250), S( 255,  175), S( 170,  100), S(  85,   25),
         S(  55,    5), S( 140,   80), S( 225,  155), S( 310,  230), S( 310,  230), S( 225,  155), S( 140,   80), S(  55,    5),
         S( -60,  -90), S(  25,  -15), S( 110,   60), S( 195,  135), S( 195,  135), S( 110,   60), S(  25,  -15), S( -60,  -90),
         S(-195, -165), S(-110,  -90), S( -25,  -15), S(  60,   60), S(  60,   60), S( -25,  -15), S(-110,  -90), S(-195, -165),
         S(-320, -240), S(-235, -165), S(-150,  -90), S( -65,  -15), S( -65,  -15), S(-150,  -90), S(-235, -165), S(-320, -240)}},
        // bishop
        SquareValues{{
         S(-120,  -90), S( -90,  -60), S( -60,  -30), S( -30,    0), S( -30,    0), S( -60,  -30), S( -90,  -60), S(-120,  -90),
         S( -70,  -60), S( -40,  -30), S( -10,    0), S(  20,   30), S(  20,   30), S( -10,    0), S( -40,  -30), S( -70,  -60),
         S( -10,  -30), S(  20,    0), S(  50,   30), S(  80,   60), S(  80,   60), S(  50,   30), S(  20,    0), S( -10,  -30),
         S(  30,    0), S(  60,   30), S(  90,   60), S( 120,   90), S( 120,   90), S(  90,   60), S(  60,   30), S(  30,    0),
         S(  30,    0), S(  60,   30), S(  90,   60), S( 120,   90), S( 120,   90), S(  90,   60), S(  60,   30), S(  30,    0),
         S(  10,  -30), S(  40,    0), S(  70,   30), S( 100,   60), S( 100,   60), S(  70,   30), S(  40,    0), S(  10,  -30),
         S( -40,  -60), S(  40,  -30), S(  20,    0), S(  50,   30), S(  50,   30), S(  20,    0), S(  40,  -30), S( -40,  -60),
         S(-140,  -90), S(-110,  -60), S( -80,  -30), S( -50,    0), S( -50,    0), S( -80,  -30), S(-110,  -60), S(-140,  -90)}},
        // rook
        SquareValues{{
         S( -40,   20), S( -15,   20), S(  10,   20), S(  35,   20), S(  35,   20), S(  10,   20), S( -15,   20), S( -40,   20),
         S( -20,   25), S(   5,   25), S(  30,   25), S(  55,   25), S(  55,   25), S(  30,   25), S(   5,   25), S( -20,   25),
         S( -30,   25), S(  -5,   25), S(  20,   25), S(  45,   25), S(  45,   25), S(  20,   25), S(  -5,   25), S( -30,   25),
         S( -40,   20), S( -15,   20), S(  10,   20), S(  35,   20), S(  35,   20), S(  10,   20), S( -15,   20), S( -40,   20),
         S( -50,   10), S( -25,   10), S(   0,   10), S(  25,   10), S(  25,   10), S(   0,   10), S( -25,   10), S( -50,   10),
         S( -60,   -5), S( -35,   -5), S( -10,   -5), S(  15,   -5), S(  15,   -5), S( -10,   -5), S( -35,   -5), S( -60,   -5),
         S( -65,  -20), S( -40,  -20), S( -15,  -20), S(  10,  -20), S(  10,  -20), S( -15,  -20), S( -40,  -20), S( -65,  -20),
         S( -50,  -20), S( -25,  -20), S(   0,  -20), S(  25,  -20), S(  25,  -20), S(   0,  -20), S( -25,  -20), S( -50,  -20)}},
        // queen
        SquareValues{{
         S( -40,  -80), S( -30,  -60), S( -20,  -35), S( -10,  -15), S( -10,  -15), S( -20,  -35), S( -30,  -60), S( -40,  -80),
         S( -30,  -50), S( -20,  -25), S( -10,   -5), S(   0,   20), S(   0,   20), S( -10,   -5), S( -20,  -25), S( -30,  -50),
         S( -20,  -25), S( -10,    0), S(   0,   20), S(  10,   40), S(  10,   40), S(   0,   20), S( -10,    0), S( -20,  -25),
         S(   0,    0), S(  10,   20), S(  20,   40), S(  30,   65), S(  30,   65), S(  20,   40), S(  10,   20), S(   0,    0),
         S(  10,   -5), S(  20,   15), S(  30,   40), S(  40,   60), S(  40,   60), S(  30,   40), S(  20,   15), S(  10,   -5),
         S(  10,  -35), S(  20,  -15), S(  30,   10), S(  40,   30), S(  40,   30), S(  30,   10), S(  20,  -15), S(  10,  -35),
         S(   0,  -60), S(  10,  -35), S(  20,  -15), S(  30,   10), S(  30,   10), S(  20,  -15), S(  10,  -35), S(   0,  -60),
         S( -30,  -90), S( -20,  -70), S( -10,  -45), S(   0,  -25), S(   0,  -25), S( -10,  -45), S( -20,  -70), S( -30,  -90)}},
        // king
        SquareValues{{
         S(-420, -245), S(-380, -190), S(-580, -125), S(-680, -100), S(-680, -100), S(-580, -125), S(-380, -190), S(-420, -245),
         S(-420, -145), S(-380,  -90), S(-580,  -25), S(-680,    0), S(-680,    0), S(-580,  -25), S(-380,  -90), S(-420, -145),
         S(-400,  -85), S(-360,  -30), S(-560,   35), S(-660,   60), S(-660,   60), S(-560,   35), S(-360,  -30), S(-400,  -85),
         S(-360,  -85), S(-320,  -30), S(-520,   35), S(-620,   60), S(-620,   60), S(-520,   35), S(-320,  -30), S(-360,  -85),
         S(-280, -115), S(-240,  -60), S(-440,    5), S(-540,   30), S(-540,   30), S(-440,    5), S(-240,  -60), S(-280, -115),
         S(-140, -165), S(-100, -110), S(-300,  -45), S(-400,  -20), S(-400,  -20), S(-300,  -45), S(-100, -110), S(-140, -165),
         S(  90, -235), S( 130, -180), S( -70, -115), S(-170,  -90), S(-170,  -90), S( -70, -115), S( 130, -180), S(  90, -235),
         S( 240, -305), S( 280, -250), S(  80, -185), S( -20, -160), S( -20, -160), S(  80, -185), S( 280, -250), S( 240, -305)}}},

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

    .knightKingDistance = S(   8,    8),
    .knightPawns = S(  25,   30),
    .rookPawns = S( -20,  -20),
    .bishopOwnColourPawns = S( -30,  -50),
    .bishopOtherColourPawns = S(   8,   12),
    .threat = S( 140,  160),
    .knightBlockade = S(  60,   80),
    .outpost = S(  90,   50),
    .blockedPawn = S(  20,   30),
    .blockedCentrePawn = S(  80,   20),
    .pieceBehindPawn = S(  40,   10),
    .passedBase = S( 400,  800),
    .passedSupport = S( 200,  400),
    .passedFreeSafe = S(1200, 2400),
    .passedFree = S( 800, 1600),
    .passedAttackedDefended = S( 400,  800),
    .passedAttacked = S( 120,  250),
    .passedUnblocked = S( 100,  200),
    .candidate = S( 150,  300),
    .doubledPawn = S( -60, -130),
    .isolatedPawn = S( -80, -100),
    .isolatedHalfOpen = S(-160, -150),
    .backwardPawn = S( -60,  -70),
    .backwardHalfOpen = S(-140, -110),
    .passedOwnKing = S(   0,  -12),
    .passedEnemyKing = S(   0,   20),

    // First to eighth rank.
    .connectedPawn = {
         S(   0,    0), S(   0,    0), S(  50,   30), S(  60,   40), S( 110,   80), S( 220,  170), S( 400,  300), S(   0,    0)},
    .phalanxPawn = {
         S(   0,    0), S(  10,    0), S(  40,   20), S(  60,   40), S( 140,  110), S( 280,  220), S( 400,  320), S(   0,    0)},
    .shelter = {
         S(   0,    0), S( 180,    0), S( 110,    0), S(  40,    0), S(  10,    0), S(   0,    0), S(   0,    0), S(   0,    0)},
    .storm = {
         S(   0,    0), S(   0,    0), S(   0,    0), S(  40,    0), S(  90,    0), S( 110,    0), S(  60,    0), S(   0,    0)},
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

constexpr ParameterRow rows[] = {
    {"material", evalParameters.material.data(), 8, true},
    {"pawnSquares", evalParameters.squares[pawn].data(), 64, false},
    {"knightSquares", evalParameters.squares[knight].data(), 64, false},
    {"bishopSquares", evalParameters.squares[bishop].data(), 64, false},
    {"rookSquares", evalParameters.squares[rook].data(), 64, false},
    {"queenSquares", evalParameters.squares[queen].data(), 64, false},
    {"kingSquares", evalParameters.squares[king].data(), 64, false},
    {"kingSideRight", &evalParameters.kingSideRight, 1, true},
    {"queenSideRight", &evalParameters.queenSideRight, 1, true},
    {"trappedRook", &evalParameters.trappedRook, 1, true},
    {"knightInBishopsAim", &evalParameters.knightInBishopsAim, 1, true},
    {"bishopFacingPawn", &evalParameters.bishopFacingPawn, 1, true},
    {"bishopPair", &evalParameters.bishopPair, 1, true},
    {"rooksOnLine", &evalParameters.rooksOnLine, 1, true},
    {"rookOnSeventh", &evalParameters.rookOnSeventh, 1, true},
    {"rookOpenFile", &evalParameters.rookOpenFile, 1, true},
    {"rookHalfOpenWeak", &evalParameters.rookHalfOpenWeak, 1, true},
    {"rookHalfOpen", &evalParameters.rookHalfOpen, 1, true},
    {"secondRook", &evalParameters.secondRook, 1, true},
    {"rookAndQueen", &evalParameters.rookAndQueen, 1, true},
    {"bishopBeforeKing", &evalParameters.bishopBeforeKing, 1, true},
    {"pieceLead", &evalParameters.pieceLead, 1, true},
    {"kingAtPromotion", &evalParameters.kingAtPromotion, 1, true},
    {"rookBehindPassed", &evalParameters.rookBehindPassed, 1, true},
    {"tempo", &evalParameters.tempo, 1, true},
    {"pawnIsland", &evalParameters.pawnIsland, 1, true},
    {"manyPassed", &evalParameters.manyPassed, 1, true},
    {"knightKingDistance", &evalParameters.knightKingDistance, 1, false},
    {"knightPawns", &evalParameters.knightPawns, 1, false},
    {"rookPawns", &evalParameters.rookPawns, 1, false},
    {"bishopOwnColourPawns", &evalParameters.bishopOwnColourPawns, 1, false},
    {"bishopOtherColourPawns", &evalParameters.bishopOtherColourPawns, 1, false},
    {"threat", &evalParameters.threat, 1, false},
    {"knightBlockade", &evalParameters.knightBlockade, 1, false},
    {"outpost", &evalParameters.outpost, 1, false},
    {"blockedPawn", &evalParameters.blockedPawn, 1, false},
    {"blockedCentrePawn", &evalParameters.blockedCentrePawn, 1, false},
    {"pieceBehindPawn", &evalParameters.pieceBehindPawn, 1, false},
    {"passedBase", &evalParameters.passedBase, 1, false},
    {"passedSupport", &evalParameters.passedSupport, 1, false},
    {"passedFreeSafe", &evalParameters.passedFreeSafe, 1, false},
    {"passedFree", &evalParameters.passedFree, 1, false},
    {"passedAttackedDefended", &evalParameters.passedAttackedDefended, 1, false},
    {"passedAttacked", &evalParameters.passedAttacked, 1, false},
    {"passedUnblocked", &evalParameters.passedUnblocked, 1, false},
    {"candidate", &evalParameters.candidate, 1, false},
    {"doubledPawn", &evalParameters.doubledPawn, 1, false},
    {"isolatedPawn", &evalParameters.isolatedPawn, 1, false},
    {"isolatedHalfOpen", &evalParameters.isolatedHalfOpen, 1, false},
    {"backwardPawn", &evalParameters.backwardPawn, 1, false},
    {"backwardHalfOpen", &evalParameters.backwardHalfOpen, 1, false},
    {"passedOwnKing", &evalParameters.passedOwnKing, 1, false},
    {"passedEnemyKing", &evalParameters.passedEnemyKing, 1, false},
    {"connectedPawn", evalParameters.connectedPawn.data(), 8, false},
    {"phalanxPawn", evalParameters.phalanxPawn.data(), 8, false},
    {"shelter", evalParameters.shelter.data(), 8, false},
    {"storm", evalParameters.storm.data(), 8, false},
};

} // namespace

// clang-format on

std::span<const ParameterRow> parameterRows() { return rows; }

} // namespace helvan
