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
         S( -47,  266), S( -66,  319), S(  55,  230), S( 290,  261), S( 290,  261), S(  55,  230), S( -66,  319), S( -47,  266),
         S(-116,  351), S( -29,  291), S(  20,  245), S( 118,  145), S( 118,  145), S(  20,  245), S( -29,  291), S(-116,  351),
         S(-149,  282), S(-121,  255), S( -91,  156), S( -32,  111), S( -32,  111), S( -91,  156), S(-121,  255), S(-149,  282),
         S(-199,  134), S(-228,  142), S(-147,   82), S(-124,   68), S(-124,   68), S(-147,   82), S(-228,  142), S(-199,  134),
         S(-243,   67), S(-230,   77), S(-247,   94), S(-231,   82), S(-231,   82), S(-247,   94), S(-230,   77), S(-243,   67),
         S(-217,  116), S(-163,  110), S(-165,  162), S(-188,   97), S(-188,   97), S(-165,  162), S(-163,  110), S(-217,  116),
         S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0), S(   0,    0)}},
        // knight
        SquareValues{{
         S(-596, -414), S(-318,   28), S(-169,   83), S( -41,  202), S( -41,  202), S(-169,   83), S(-318,   28), S(-596, -414),
         S( -47,   -2), S(-136,   70), S(  69,   55), S( -30,  118), S( -30,  118), S(  69,   55), S(-136,   70), S( -47,   -2),
         S( -43,   31), S(  -7,   30), S(-137,   93), S(  14,   95), S(  14,   95), S(-137,   93), S(  -7,   30), S( -43,   31),
         S( 169,   99), S( -61,  134), S( -69,  140), S( -47,  206), S( -47,  206), S( -69,  140), S( -61,  134), S( 169,   99),
         S( 140,  104), S(  19,  158), S(  52,  124), S(  25,  177), S(  25,  177), S(  52,  124), S(  19,  158), S( 140,  104),
         S(  44,   29), S(  50,   71), S(  12,   39), S(  28,  117), S(  28,  117), S(  12,   39), S(  50,   71), S(  44,   29),
         S( -62,  -15), S( -29,   17), S( -68,   -3), S( -62,   25), S( -62,   25), S( -68,   -3), S( -29,   17), S( -62,  -15),
         S(-212,  -58), S(-118, -101), S(-189,  -62), S( -64,   12), S( -64,   12), S(-189,  -62), S(-118, -101), S(-212,  -58)}},
        // bishop
        SquareValues{{
         S(-285,   15), S(-311,   84), S(-365,   69), S(-357,   80), S(-357,   80), S(-365,   69), S(-311,   84), S(-285,   15),
         S( -90,  -36), S(-233,   11), S(-207,   54), S(-200,   47), S(-200,   47), S(-207,   54), S(-233,   11), S( -90,  -36),
         S( -40,   52), S( -47,   68), S( -18,   52), S(  56,   17), S(  56,   17), S( -18,   52), S( -47,   68), S( -40,   52),
         S(-121,   24), S( -57,  108), S(  -6,   54), S(  62,   74), S(  62,   74), S(  -6,   54), S( -57,  108), S(-121,   24),
         S(  20,    2), S( -48,   65), S( -37,  108), S(  55,   70), S(  55,   70), S( -37,  108), S( -48,   65), S(  20,    2),
         S(  17,   27), S( 142,   93), S(  53,   86), S(  20,  134), S(  20,  134), S(  53,   86), S( 142,   93), S(  17,   27),
         S(  84,   20), S(  94,   20), S(  93,   -9), S( -51,   53), S( -51,   53), S(  93,   -9), S(  94,   20), S(  84,   20),
         S(  45,  -12), S(  62,   18), S( -12,   28), S( -23,   30), S( -23,   30), S( -12,   28), S(  62,   18), S(  45,  -12)}},
        // rook
        SquareValues{{
         S( -95,  296), S( -84,  314), S( -36,  306), S(  39,  229), S(  39,  229), S( -36,  306), S( -84,  314), S( -95,  296),
         S(-195,  294), S(-280,  334), S(-162,  291), S( -90,  234), S( -90,  234), S(-162,  291), S(-280,  334), S(-195,  294),
         S(-159,  304), S(  12,  241), S( -50,  246), S(  46,  192), S(  46,  192), S( -50,  246), S(  12,  241), S(-159,  304),
         S(-158,  270), S(-112,  269), S( -53,  266), S( -93,  199), S( -93,  199), S( -53,  266), S(-112,  269), S(-158,  270),
         S(-237,  232), S(-160,  237), S(-203,  272), S(-160,  204), S(-160,  204), S(-203,  272), S(-160,  237), S(-237,  232),
         S(-251,  169), S(-130,  166), S(-190,  196), S(-199,  160), S(-199,  160), S(-190,  196), S(-130,  166), S(-251,  169),
         S(-271,  118), S(-205,  118), S(-194,  159), S(-167,  104), S(-167,  104), S(-194,  159), S(-205,  118), S(-271,  118),
         S(-254,  149), S(-194,  148), S(-154,  157), S(-107,   97), S(-107,   97), S(-154,  157), S(-194,  148), S(-254,  149)}},
        // queen
        SquareValues{{
         S(-914, 1541), S(-956, 1646), S(-951, 1657), S(-918, 1681), S(-918, 1681), S(-951, 1657), S(-956, 1646), S(-914, 1541),
         S(-827, 1500), S(-1186, 1679), S(-1054, 1698), S(-1058, 1747), S(-1058, 1747), S(-1054, 1698), S(-1186, 1679), S(-827, 1500),
         S(-875, 1516), S(-931, 1629), S(-919, 1698), S(-948, 1776), S(-948, 1776), S(-919, 1698), S(-931, 1629), S(-875, 1516),
         S(-817, 1455), S(-922, 1623), S(-934, 1682), S(-1025, 1827), S(-1025, 1827), S(-934, 1682), S(-922, 1623), S(-817, 1455),
         S(-796, 1345), S(-851, 1497), S(-829, 1543), S(-891, 1605), S(-891, 1605), S(-829, 1543), S(-851, 1497), S(-796, 1345),
         S(-777, 1179), S(-680, 1176), S(-728, 1296), S(-738, 1207), S(-738, 1207), S(-728, 1296), S(-680, 1176), S(-777, 1179),
         S(-762,  967), S(-701,  930), S(-673,  882), S(-646,  860), S(-646,  860), S(-673,  882), S(-701,  930), S(-762,  967),
         S(-720,  824), S(-720,  795), S(-711,  747), S(-652,  707), S(-652,  707), S(-711,  747), S(-720,  795), S(-720,  824)}},
        // king
        SquareValues{{
         S(  60, -441), S( 110, -109), S( 143,   73), S( 143,   80), S( 143,   80), S( 143,   73), S( 110, -109), S(  60, -441),
         S(  72, -168), S( 172,  139), S( 195,  236), S( 187,  175), S( 187,  175), S( 195,  236), S( 172,  139), S(  72, -168),
         S(  72,  -72), S( 196,  247), S( 241,  281), S( 233,  188), S( 233,  188), S( 241,  281), S( 196,  247), S(  72,  -72),
         S(  69,  -87), S( 179,  125), S( 170,  156), S( 142,  133), S( 142,  133), S( 170,  156), S( 179,  125), S(  69,  -87),
         S(   5, -149), S( 163,   -4), S( 121,   35), S(  29,   72), S(  29,   72), S( 121,   35), S( 163,   -4), S(   5, -149),
         S( -58, -154), S( 108,  -23), S( -47,   24), S( -89,   42), S( -89,   42), S( -47,   24), S( 108,  -23), S( -58, -154),
         S( -74, -162), S(-167,  -85), S(-327,  -11), S(-396,   21), S(-396,   21), S(-327,  -11), S(-167,  -85), S( -74, -162),
         S(-243, -239), S(-254, -129), S(-428, -103), S(-727,  -91), S(-727,  -91), S(-428, -103), S(-254, -129), S(-243, -239)}}},

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
         S( 105,  132), S(-154,  298), S(-198,  294), S(-194,  254), S(-270,  251), S(-259,  198), S(-325,  184), S(-482,  124)},

    // By count, 0 to 8.
    .knightPawnsTable = {
         S(-384,  -37), S(-324,  140), S(-263,  132), S(-202,  131), S(-202,  154), S(-168,  197), S(-134,  234), S(-107,  317), S( -97,  334)},
    .rookPawnsTable = {
         S(-318,  586), S(-452,  871), S(-587,  952), S(-600,  951), S(-574,  865), S(-554,  761), S(-524,  707), S(-482,  654), S(-457,  624)},
    .bishopOwnColourPawnsTable = {
         S(-170,  386), S(-132,  348), S(-137,  275), S(-152,  243), S(-192,  200), S(-216,  136), S(-246,   49), S(-254,  -33), S(-206, -101)},
    .bishopOtherColourPawnsTable = {
         S(-217,  182), S(-231,  226), S(-224,  214), S(-229,  195), S(-212,  179), S(-203,  175), S(-171,  163), S(-143,  114), S( -76,   56)},
    .threatTable = {
         S(   0,    0), S( 182,  205), S( 508,  515), S( 881,  825), S(1091,  994), S(1139, 1009), S(1081,  934), S( 970,  815), S( 842,  682)},
    .knightBlockadeTable = {
         S(   0,    0), S(  51,   31), S(  31,  117), S(  16,  155), S(   5,  162), S(  -3,  150), S( -10,  126), S( -15,   99), S( -20,   69)},
    .outpostTable = {
         S(   0,    0), S(  53,   67), S( 114,  137), S( 145,  204), S( 181,  237), S( 223,  210), S( 226,  133), S( 216,   55), S( 202,  -22)},
    .blockedPawnTable = {
         S(   0,    0), S(  22,   73), S(  59,  141), S( 103,  197), S( 155,  236), S( 205,  269), S( 260,  338), S( 333,  452), S( 271,  529)},
    .blockedCentrePawnTable = {
         S(   0,    0), S(  48,   16), S(  88,  -56), S( 150, -105), S( 208, -151), S( 250,  232), S( 300,  281), S( 350,  329), S( 400,  376)},
    .pieceBehindPawnTable = {
         S(   0,    0), S(  28,   39), S(  52,  121), S(  87,  208), S( 118,  227), S( 127,  216), S( 123,  188), S( 113,  152), S( 100,  115)},

    // From the second to the seventh rank; 0 where the term is not asked for.
    .passedBaseTable = {
         S(-174,    6), S(-178,  113), S( -65,  296), S(  26,  480), S( 205,  821), S( 614, 1203)},
    .passedSupportTable = {
         S(   0,    0), S(   0,    0), S(  43,    8), S( 111,  -38), S( 188,  -43), S( 251,  -85)},
    .passedFreeSafeTable = {
         S(   0,    0), S(   0,    0), S(-308,  390), S(-178,  945), S(  -8, 1552), S( 202, 2242)},
    .passedFreeTable = {
         S(   0,    0), S(   0,    0), S(-371,  269), S(-225,  431), S(  20,  716), S( 350,  932)},
    .passedAttackedDefendedTable = {
         S(   0,    0), S(   0,    0), S( -42,  176), S( -21,  387), S( 116,  580), S( 182,  712)},
    .passedAttackedTable = {
         S(   0,    0), S(   0,    0), S(  10,   -2), S( -37,   18), S(-148,  -93), S(-188, -184)},
    .passedUnblockedTable = {
         S(   0,    0), S(   0,    0), S(  -1,    9), S(  47,   50), S( 240,  202), S( 561,  393)},
    .candidateTable = {
         S(  -7,  -20), S(  20,   29), S(  16,  132), S(  58,  167), S( 157,  610), S(   0,    0)},

    .doubledPawn = S(-106, -181),
    .isolatedPawn = S(   0,  -11),
    .isolatedHalfOpen = S( -44,  -84),
    .backwardPawn = S(  -1,  -39),
    .backwardHalfOpen = S(-109,  -75),
    .passedPerOwnKingStep = S( -11,  -13),
    .passedPerEnemyKingStep = S(  10,   17),

    // First to eighth rank.
    .connectedPawn = {
         S(   0,    0), S(   0,    0), S(  90,   77), S(  71,   61), S( 123,  131), S( 306,  304), S( 554,  497), S(   0,    0)},
    .phalanxPawn = {
         S(   0,    0), S(  16,   -6), S(  46,   24), S(  71,   49), S( 126,  221), S( 323,  562), S( 414,  728), S(   0,    0)},
    .shelter = {
         S(   0,    0), S(  86,  -57), S(  69,  -31), S(  42,  -20), S(  40,   -2), S( 100,   50), S( 127,  120), S(   0,    0)},
    .storm = {
         S(   0,    0), S(  22,   48), S( -16,   43), S(  -8,  -11), S( -12, -103), S(  36, -129), S(-173,  -11), S(   0,    0)},

    // From six ranks before the king down to six behind it; on its file, then one to three files aside, and all beyond.
    .pawnByOwnKingOffset = {
         S(-132,   43), S( -88,   75), S(-140,   31), S( -50,    6), S( -60,  -23),
         S( -22,  -16), S( -71,   -7), S( -43,  -28), S( -31,  -57), S( -21, -100),
         S(  97,  -70), S(  14,  -78), S( -12,  -72), S(  -6,  -99), S( -31, -167),
         S( 139,    0), S(  39,  -15), S(  23,  -38), S( -19,  -61), S( -49, -108),
         S( 157,   62), S(  84,   50), S(  17,   26), S( -27,  -19), S( -67,  -48),
         S( 197,  108), S( 104,   52), S(  -7,   71), S( -11,   44), S( -84,   -4),
         S( 149,  142), S( 120,  146), S( -35,   97), S( -39,   63), S(-127,   29),
         S( 133,  175), S( -28,  156), S( -80,  101), S( -50,   99), S(-102,   60),
         S( -14,  187), S(  -6,  179), S(-135,  140), S(-191,   98), S(-179,   96),
         S(  -3,  206), S( -32,  171), S(-120,  139), S(-180,  136), S(-186,   60),
         S( -22,  164), S( -66,  175), S(-104,  107), S(-127,  113), S(-134,  129),
         S( -43,  194), S( -78,  200), S(-107,  117), S(-107,  111), S(-100,  166),
         S( -69,  166), S( -81,  166), S(-105,  115), S(-102,  106), S(-102,   80)},
    .pawnByEnemyKingOffset = {
         S(-103,  125), S(-107,  132), S(-117,  123), S(-130,  128), S(-141,  114),
         S(-101,  124), S(-107,  128), S(-115,  122), S(-137,  117), S(-147,  110),
         S( -89,  133), S( -89,  172), S(-113,  160), S(-152,  141), S(-176,  200),
         S( -84,   97), S( -84,  142), S(-126,  144), S(-170,  151), S(-212,  234),
         S( -91,  -87), S(-104,    3), S(-127,   33), S(-140,  102), S(-190,  204),
         S( -60, -187), S( -57, -119), S(   7,  -70), S( -64,   52), S(-171,  179),
         S(  29, -131), S( 106, -187), S(  76, -126), S( -16,   11), S( -74,  163),
         S(  43,  -22), S( 104,  -33), S(  84,  -30), S( -35,   66), S( -25,  137),
         S(  74,  139), S( 187,  106), S(  86,  103), S(  11,   69), S(  -8,  139),
         S( -12,   46), S(  94,   81), S(  18,   75), S(   3,   83), S(  23,  124),
         S(   1,   -3), S(  36,   36), S(  27,   42), S(   8,   76), S(  48,  100),
         S( -42,  -15), S(   8,   11), S(  16,   48), S(  21,   54), S(  64,   74),
         S( -51,  -44), S( -18,  -27), S(  -2,    7), S(   2,   44), S(  60,   24)},
    .passedByOwnKingOffset = {
         S(-219,   49), S(-121,   95), S(-131,   64), S( -20,   73), S( -32,   52),
         S(-164,  -22), S( -94,   13), S( -12,  -18), S(  21,   40), S(   7,  -16),
         S( -24,  -45), S(   8,  -23), S(  41,  -54), S(  39,  -39), S(  47,  -81),
         S(  24,  -34), S(  28,  -23), S(  13,  -64), S(  31, -107), S(  57,  -92),
         S(  68,   15), S(  31,   27), S(  73,  -85), S(  70, -120), S( -14,  -52),
         S( 111,  118), S(  32,   61), S(  81,   50), S( -26,  -25), S(   6,   -4),
         S(  99,  134), S(  82,  174), S(  96,  107), S(  40,   33), S( -71,   64),
         S( 105,  114), S(  57,  256), S(  28,  152), S( -52,   25), S(-138,   35),
         S(  91,  156), S(  89,  208), S(  14,   99), S( -31,   53), S( -96,   50),
         S(  43,  108), S(  42,  151), S(  13,   95), S( -25,   33), S( -62,   33),
         S(  42,  111), S(  28,  117), S(   9,   60), S( -10,   41), S( -33,   33),
         S(  43,  122), S(  33,  116), S(  12,   62), S(  -3,   40), S( -14,   29),
         S(  35,  106), S(  28,   92), S(  13,   65), S(   2,   56), S( -10,   39)},
    .passedByEnemyKingOffset = {
         S( -87,  165), S( -89,  174), S( -97,  164), S(-107,  163), S(-116,  145),
         S( -86,  163), S( -89,  173), S( -96,  169), S(-112,  153), S(-119,  137),
         S( -78,  167), S( -77,  204), S( -89,  216), S(-119,  191), S(-144,  205),
         S( -82,  124), S( -69,  182), S( -87,  224), S(-122,  250), S(-172,  271),
         S( -78,   35), S( -68,   68), S( -59,  214), S( -79,  277), S(-142,  164),
         S( -53,  -18), S( -25,   77), S(  46,  126), S( -18,  163), S( -91,   72),
         S( -12,   -3), S( 104, -125), S( 107,   -3), S(  34,  106), S( -19,   57),
         S( -88,  134), S(  56,  -87), S( 108, -145), S(  88,    4), S(  25,   44),
         S( -34, -208), S( 101, -215), S(  91, -156), S(  96,  -60), S( 109,   29),
         S(  27, -161), S( 110, -158), S(  93, -109), S( 138,  -71), S(  99,   18),
         S( 102, -165), S( 160, -115), S(  72,  -87), S( 127,  -20), S(  87,   30),
         S(  86, -112), S( 179, -126), S( 130,  -39), S( 125,  -28), S( 135,   67),
         S(  64, -112), S( 172,  -79), S( 119,  -80), S( 134,    3), S( 108,   72)},

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
