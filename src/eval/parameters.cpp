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
         S( 276,  359), S( 330,  411), S( 633,  313), S( 721,  342), S( 721,  342), S( 633,  313), S( 330,  411), S( 276,  359),
         S(  98,  362), S( 183,  371), S( 302,  299), S( 383,  141), S( 383,  141), S( 302,  299), S( 183,  371), S(  98,  362),
         S( -19,  320), S(   4,  317), S(  24,  248), S( 126,  203), S( 126,  203), S(  24,  248), S(   4,  317), S( -19,  320),
         S(-110,  179), S(-151,  197), S( -69,  157), S( -39,  116), S( -39,  116), S( -69,  157), S(-151,  197), S(-110,  179),
         S(-177,  121), S(-197,  147), S(-199,  164), S(-163,  134), S(-163,  134), S(-199,  164), S(-197,  147), S(-177,  121),
         S(-160,  148), S(-152,  160), S(-112,  222), S(-124,  130), S(-124,  130), S(-112,  222), S(-152,  160), S(-160,  148),
         S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0)}},
        // knight
        SquareValues{{
         S(-925, -260), S(-482,  166), S(-698,  207), S(-430,  278), S(-430,  278), S(-698,  207), S(-482,  166), S(-925, -260),
         S(-147,   -6), S(-291,   13), S(  38,   94), S(-241,  164), S(-241,  164), S(  38,   94), S(-291,   13), S(-147,   -6),
         S( -42,   20), S( -98,   41), S(-213,   33), S(  -3,   70), S(  -3,   70), S(-213,   33), S( -98,   41), S( -42,   20),
         S( 207,   67), S(-158,  186), S(-145,  113), S(-109,  218), S(-109,  218), S(-145,  113), S(-158,  186), S( 207,   67),
         S(   9,  213), S( -91,  287), S( -68,  135), S( -87,  200), S( -87,  200), S( -68,  135), S( -91,  287), S(   9,  213),
         S( -77,  126), S(-115,  183), S(-143,  126), S(-119,  211), S(-119,  211), S(-143,  126), S(-115,  183), S( -77,  126),
         S(-183,  139), S(-185,   33), S(-216,   83), S(-206,   94), S(-206,   94), S(-216,   83), S(-185,   33), S(-183,  139),
         S(-417,  -57), S(-239,  -45), S(-349,   13), S(-212,  101), S(-212,  101), S(-349,   13), S(-239,  -45), S(-417,  -57)}},
        // bishop
        SquareValues{{
         S(-543,   58), S(-319,  135), S(-524,  133), S(-509,  157), S(-509,  157), S(-524,  133), S(-319,  135), S(-543,   58),
         S(-132,  -81), S(-353,    8), S(-185,   24), S(-353,   82), S(-353,   82), S(-185,   24), S(-353,    8), S(-132,  -81),
         S( -39,   97), S( -24,   51), S( -33,   38), S(  95,  -25), S(  95,  -25), S( -33,   38), S( -24,   51), S( -39,   97),
         S(-162,   24), S(-139,  135), S( -61,   29), S(  15,   25), S(  15,   25), S( -61,   29), S(-139,  135), S(-162,   24),
         S( -36,   39), S(-111,   59), S(-121,  146), S( -24,   73), S( -24,   73), S(-121,  146), S(-111,   59), S( -36,   39),
         S( -67,  120), S(  47,  152), S( -55,  130), S( -92,  199), S( -92,  199), S( -55,  130), S(  47,  152), S( -67,  120),
         S( -13,   27), S( -16,   41), S(  12,   10), S(-163,  101), S(-163,  101), S(  12,   10), S( -16,   41), S( -13,   27),
         S(  15,   84), S(  91,   70), S(-104,   44), S(-182,   78), S(-182,   78), S(-104,   44), S(  91,   70), S(  15,   84)}},
        // rook
        SquareValues{{
         S(-105,  405), S( -66,  418), S(-142,  473), S( -33,  427), S( -33,  427), S(-142,  473), S( -66,  418), S(-105,  405),
         S(-300,  388), S(-352,  447), S(-248,  413), S(-202,  389), S(-202,  389), S(-248,  413), S(-352,  447), S(-300,  388),
         S(-344,  448), S( -19,  337), S(-149,  388), S( -23,  278), S( -23,  278), S(-149,  388), S( -19,  337), S(-344,  448),
         S(-260,  406), S(-243,  411), S(-200,  420), S(-194,  355), S(-194,  355), S(-200,  420), S(-243,  411), S(-260,  406),
         S(-343,  406), S(-251,  400), S(-337,  498), S(-261,  373), S(-261,  373), S(-337,  498), S(-251,  400), S(-343,  406),
         S(-336,  397), S(-224,  335), S(-335,  375), S(-353,  386), S(-353,  386), S(-335,  375), S(-224,  335), S(-336,  397),
         S(-341,  293), S(-368,  303), S(-259,  354), S(-286,  272), S(-286,  272), S(-259,  354), S(-368,  303), S(-341,  293),
         S(-358,  336), S(-309,  335), S(-296,  347), S(-233,  269), S(-233,  269), S(-296,  347), S(-309,  335), S(-358,  336)}},
        // queen
        SquareValues{{
         S( -32,  119), S( 120,  -17), S(   9,  221), S(  73,  294), S(  73,  294), S(   9,  221), S( 120,  -17), S( -32,  119),
         S( 126,  124), S(-280,  356), S(-116,  445), S(-240,  480), S(-240,  480), S(-116,  445), S(-280,  356), S( 126,  124),
         S(  -6,  267), S(  31,  322), S( -31,  519), S(-132,  646), S(-132,  646), S( -31,  519), S(  31,  322), S(  -6,  267),
         S( 147,   35), S( -55,  420), S( -72,  478), S( -91,  609), S( -91,  609), S( -72,  478), S( -55,  420), S( 147,   35),
         S(  55,  231), S(  64,  233), S(  31,  419), S(   9,  348), S(   9,  348), S(  31,  419), S(  64,  233), S(  55,  231),
         S( 166, -202), S( 198,  -56), S( 165,   36), S( 119,   19), S( 119,   19), S( 165,   36), S( 198,  -56), S( 166, -202),
         S( 174, -229), S( 191, -343), S( 197, -217), S( 229, -315), S( 229, -315), S( 197, -217), S( 191, -343), S( 174, -229),
         S( 202, -563), S( 142, -424), S( 186, -530), S( 225, -444), S( 225, -444), S( 186, -530), S( 142, -424), S( 202, -563)}},
        // king
        SquareValues{{
         S(-202, -878), S(  54, -477), S(-141, -353), S(-178, -865), S(-178, -865), S(-141, -353), S(  54, -477), S(-202, -878),
         S(-138, -940), S(  98, -294), S( -74, -173), S(-171,  -48), S(-171,  -48), S( -74, -173), S(  98, -294), S(-138, -940),
         S( -58, -626), S(  41,  -32), S(-160,  147), S(-328,  115), S(-328,  115), S(-160,  147), S(  41,  -32), S( -58, -626),
         S(  45, -319), S( -52,  -78), S(-469,  135), S(-524,  100), S(-524,  100), S(-469,  135), S( -52,  -78), S(  45, -319),
         S(  66, -221), S(  75,  -71), S( -88,   35), S(-348,   82), S(-348,   82), S( -88,   35), S(  75,  -71), S(  66, -221),
         S(-130, -146), S( 157,  -32), S( -83,   41), S(-180,   59), S(-180,   59), S( -83,   41), S( 157,  -32), S(-130, -146),
         S( -32,  -94), S(-145,    1), S(-294,   47), S(-331,   23), S(-331,   23), S(-294,   47), S(-145,    1), S( -32,  -94),
         S( -55, -134), S( -95,  -42), S(-250,  -25), S(-614,  -95), S(-614,  -95), S(-250,  -25), S( -95,  -42), S( -55, -134)}}},

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
         S(  72,  189), S(   3,  218), S( -43,  210), S( -34,  160), S(-118,  166), S(-102,  111), S(-197,  108), S(-293,   40)},

    // By count, 0 to 8.
    .knightPawnsTable = {
         S(-213, -321), S( -38,  -83), S(-181,   30), S(-108,   44), S(-134,  132), S( -98,  188), S( -69,  285), S( -53,  461), S( -53,  494)},
    .rookPawnsTable = {
         S(1781, -867), S(  -6,  320), S(-395,  500), S(-345,  576), S(-318,  558), S(-297,  513), S(-253,  521), S(-198,  496), S(-176,  524)},
    .bishopOwnColourPawnsTable = {
         S( -69,  201), S( -14,  208), S( -43,  205), S( -81,  221), S(-127,  203), S(-163,  192), S(-187,  112), S(-185,  141), S(  -8,  -33)},
    .bishopOtherColourPawnsTable = {
         S( -13,   42), S( -63,  122), S( -83,  151), S(-100,  188), S( -95,  221), S(-102,  296), S(-107,  379), S( -75,  390), S(-116,  222)},
    .threatTable = {
         S(   0,    0), S( 105,  237), S( 496,  469), S( 836,  911), S(1060, 1426), S(1267, 1934), S(1519, 2394), S(1771, 2840), S(2029, 3276)},
    .knightBlockadeTable = {
         S(   0,    0), S(  44,   25), S(  50,   72), S(  97,  185), S( 140,  282), S( 180,  369), S( 219,  451), S( 257,  532), S( 294,  610)},
    .outpostTable = {
         S(   0,    0), S(  36,   58), S( 104,  144), S( 127,  193), S( 181,  139), S( 219,  346), S( 211,  516), S( 222,  657), S( 241,  774)},
    .blockedPawnTable = {
         S(   0,    0), S(  18,  132), S(  51,  257), S(  96,  348), S( 163,  406), S( 144,  524), S( 224,  539), S( 384,  551), S( -24,  570)},
    .blockedCentrePawnTable = {
         S(   0,    0), S(  53,  -13), S( 106,  -49), S( 164,   66), S( 209,  144), S( 256,  208), S( 303,  265), S( 352,  317), S( 402,  366)},
    .pieceBehindPawnTable = {
         S(   0,    0), S(  49,   19), S(  94,   55), S( 114,   83), S( 127,  110), S( 193,  148), S( 246,  184), S( 294,  218), S( 339,  251)},

    // From the second to the seventh rank; 0 where the term is not asked for.
    .passedBaseTable = {
         S(-180,   53), S(-171,  151), S(  70,  352), S( 224,  487), S( 438,  861), S( 903, 1261)},
    .passedSupportTable = {
         S(   0,    0), S(   0,    0), S(  77,   16), S( 211,  -54), S( 350,   51), S( 507,  150)},
    .passedFreeSafeTable = {
         S(   0,    0), S(   0,    0), S( 142,  594), S( 249,  951), S( 562, 1703), S( 902, 2749)},
    .passedFreeTable = {
         S(   0,    0), S(   0,    0), S(-667,  321), S(-298,  491), S( -20,  806), S( 231, 1238)},
    .passedAttackedDefendedTable = {
         S(   0,    0), S(   0,    0), S(  45,  165), S(  66,  428), S( 354,  763), S( 523, 1029)},
    .passedAttackedTable = {
         S(   0,    0), S(   0,    0), S( 193, -104), S( 131,  -13), S( 144,  -57), S( 289,   77)},
    .passedUnblockedTable = {
         S(   0,    0), S(   0,    0), S(-122,   23), S( -75,    4), S( -74,   99), S( -67,   94)},
    .candidateTable = {
         S( -10,  -27), S(  30,  -10), S(  16,  116), S(  59,  169), S( 170,  407), S(   0,    0)},

    .doubledPawn = S(-136, -186),
    .isolatedPawn = S( -14,   -4),
    .isolatedHalfOpen = S( -54,  -90),
    .backwardPawn = S(  -3,  -34),
    .backwardHalfOpen = S(-120,  -56),
    .passedOwnKing = S( -30,    8),
    .passedEnemyKing = S(  18,   -3),

    // First to eighth rank.
    .connectedPawn = {
         S(   0,    0), S(   0,    0), S(  78,   63), S(  65,   59), S( 126,  104), S( 350,  316), S( 319,  622), S(   0,    0)},
    .phalanxPawn = {
         S(   0,    0), S(  23,    5), S(  45,   13), S(  75,   35), S( 131,  228), S( 538,  309), S( 486,  206), S(   0,    0)},
    .shelter = {
         S(   0,    0), S( 123,  -56), S( 115,  -36), S(  85,  -13), S(  71,  -17), S( 113,   50), S( 119,  -32), S(   0,    0)},
    .storm = {
         S(   0,    0), S(  33,   -5), S(   1,  -16), S(   9,  -72), S(  21, -176), S( 113, -196), S(-224,   44), S(   0,    0)},

    // From six ranks before the king down to six behind it; on its file, then one to four files aside.
    .pawnFromOwnKing = {
         S(-286,  -47), S(-263,  -60), S(-254, -140), S(-211,  -68), S(-113, -148),
         S(-104, -113), S(-152, -111), S(-124, -164), S(-145, -186), S(-123, -259),
         S(  89, -225), S( -17, -220), S( -33, -266), S( -35, -229), S( -56, -299),
         S(  61, -184), S( -27, -138), S(   1, -167), S( -59, -160), S( -71, -241),
         S(  48,  -60), S(   4,  -57), S( -32,  -62), S( -78,  -96), S( -93, -174),
         S(  76,   27), S(  17,  -21), S( -55,   -4), S( -42,  -34), S(-116, -104),
         S(  22,   96), S(  43,   98), S( -70,   47), S( -68,   15), S(-164,  -48),
         S(  -9,  246), S(-136,  134), S(-105,   52), S(-109,   49), S(-203,   -3),
         S( -22,  222), S(-128,  188), S( -81,  115), S(-158,   30), S(-307,   49),
         S(  25,  256), S( -21,  201), S( -71,   96), S(-107,  -11), S(-207,   40),
         S(  54,  278), S(  29,  165), S(  10,   91), S( -11,   68), S( -28,   23),
         S(  18,  147), S(  16,  171), S(  11,  110), S(   7,  125), S( -28,   53),
         S( -15,   56), S(  -3,   79), S(  -7,   97), S(  -6,  147), S( -25,  131)},
    .pawnFromEnemyKing = {
         S(-108,  -38), S(-119,  -73), S(-131, -112), S(-145, -147), S(-177, -176),
         S(-114,   -4), S(-124,  -33), S(-131,  -47), S(-155,  -89), S(-222,  -47),
         S(-160,  -36), S(-151,  -11), S(-162,   45), S(-190,   10), S(-258,   93),
         S(-198,  -91), S(-186,  -44), S(-186,   18), S(-240,   64), S(-317,   59),
         S(-273, -224), S(-272, -143), S(-254, -105), S(-288, -107), S(-393,   29),
         S(-309, -250), S(-295, -146), S(-220, -146), S(-266,  -95), S(-405,   57),
         S(-173,  -85), S(-112, -127), S( -68, -186), S(-180,  -66), S(-201,  100),
         S(-183,   64), S( -37,    2), S(  16,  -62), S(-160,    3), S(-186,  105),
         S( -10,  147), S( 115,  140), S( -17,   81), S(-118,    7), S( -79,   69),
         S( -87,   32), S(  40,   82), S( -42,   25), S( -67,    7), S( -40,   48),
         S(  -6,  -58), S(  -1,   10), S(   7,  -24), S( -32,  -18), S(  17,   11),
         S( -29,  -79), S(  -1,  -56), S(   5,  -49), S(   8,  -58), S(  55,   -8),
         S( -27, -145), S(  -7, -117), S(   8,  -83), S(  -5,  -83), S(  75,  -97)},
    .passedFromOwnKing = {
         S(-376,   22), S(-289,  -11), S(-224,  -83), S(-149,  -37), S( -35, -112),
         S(-311,   15), S(-192,  -45), S( -56,  -29), S( -29, -155), S(  46, -176),
         S(-130,  -16), S( -41, -106), S(  69,  -72), S(  36, -125), S(  44, -220),
         S(-115,   -2), S( -32, -110), S( -21, -149), S( -40, -166), S(  35, -148),
         S(  98,  -40), S(  61,  -31), S(  43, -122), S(   7, -192), S(  -9, -141),
         S(  96,  110), S(  -5,   39), S( 108,   28), S( -23,  -60), S(  77, -137),
         S(  87,  144), S(  58,  215), S( 100,  113), S(   9,   26), S( -84,  -41),
         S( 147,  204), S(  99,  382), S(  45,  174), S( -31,   29), S(-163,    4),
         S( 147,  196), S( 129,  336), S(  46,  136), S( -60,   37), S(-159,   77),
         S( 112,  125), S(  96,  180), S(  46,  160), S( -29,   53), S(-107,  -37),
         S(  57,  204), S(  66,  188), S(  27,   87), S( -14,  -45), S( -40,  -45),
         S(  33,   99), S(  27,  117), S(  21,   58), S(  -9,   -2), S( -29,  -30),
         S(   8,   26), S(  11,   39), S(   8,   22), S(  -7,   17), S( -24,  -35)},
    .passedFromEnemyKing = {
         S( -84,   -4), S( -98,  -43), S(-115,  -83), S(-134, -117), S(-171, -147),
         S( -81,   46), S( -96,    9), S(-111,   -7), S(-143,  -40), S(-215,   -1),
         S(-103,   59), S(-100,   65), S(-127,  102), S(-175,   74), S(-258,  137),
         S( -77,  158), S( -86,  192), S(-108,  194), S(-191,  290), S(-304,  190),
         S( -97,   91), S(-129,   27), S(-120,  145), S(-202,  269), S(-364,  131),
         S( -84,   11), S( -83,   42), S( -26,  193), S(-133,  329), S(-315,  105),
         S( -77,   -8), S(  30, -164), S(  83,   59), S( -95,  219), S(-215,   69),
         S(-224,  146), S(  -9, -104), S(  73, -145), S(-113,   90), S(-199,  139),
         S(-292, -184), S(  74, -304), S(  83, -259), S( -24,    3), S(-110,  151),
         S( -65, -149), S(  53, -220), S( -74, -142), S(  -1,  -12), S( -44,  101),
         S( 128, -173), S( 252, -178), S( -16, -109), S(  44,    7), S(  16,  125),
         S( 332, -200), S( 352, -172), S( 145,  -40), S( 125,  -74), S( 139,  109),
         S( 315, -167), S( 249, -218), S( 166, -189), S(  90,   77), S(  57,  248)},
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

constexpr int filesPerRank = 8;

constexpr ParameterRow rows[] = {
    {"material", evalParameters.material.data(), 8, known},
    {"pawnSquares", evalParameters.squares[pawn].data(), 64, {8, 56}, filesPerRank},
    {"knightSquares", evalParameters.squares[knight].data(), 64, {0, 64}, filesPerRank},
    {"bishopSquares", evalParameters.squares[bishop].data(), 64, {0, 64}, filesPerRank},
    {"rookSquares", evalParameters.squares[rook].data(), 64, {0, 64}, filesPerRank},
    {"queenSquares", evalParameters.squares[queen].data(), 64, {0, 64}, filesPerRank},
    {"kingSquares", evalParameters.squares[king].data(), 64, {0, 64}, filesPerRank},
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
    {"pawnFromOwnKing", evalParameters.pawnFromOwnKing.data(), 65, {0, 65}, offsetColumns},
    {"pawnFromEnemyKing", evalParameters.pawnFromEnemyKing.data(), 65, {0, 65}, offsetColumns},
    {"passedFromOwnKing", evalParameters.passedFromOwnKing.data(), 65, {0, 65}, offsetColumns},
    {"passedFromEnemyKing", evalParameters.passedFromEnemyKing.data(), 65, {0, 65}, offsetColumns},
};

} // namespace

// clang-format on

std::span<const ParameterRow> parameterRows() { return rows; }

} // namespace helvan
