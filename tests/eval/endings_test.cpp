// SPDX-License-Identifier: MIT
#include "eval/endings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <set>
#include <string>
#include <vector>

#include "eval/geometry.h"
#include "eval/pawn_bitbase.h"
#include "support/boards.h"

namespace helvan::testing {

namespace {

struct Placed {
    Colour colour;
    PieceType type;
    Square square;
};

Position positionWith(const std::vector<Placed>& pieces, Colour sideToMove) {
    Position position{};
    position.touched = rank1 | rank8;
    position.ply = static_cast<std::int16_t>(sideToMove);
    for (const Placed& piece : pieces) {
        position.of(piece.colour, piece.type) |= bit(piece.square);
        position.of(piece.colour, allPieces) |= bit(piece.square);
    }
    position.key = keyOf(position);
    position.pawnKey = pawnKeyOf(position);
    position.materialKey = materialKeyOf(position);
    position.inCheck = static_cast<std::uint16_t>(inCheck(position, sideToMove));
    refreshPieceSums(position);
    return position;
}

// The signature of a piece text with its upper-case letters for the given colour.
Key signatureOf(const std::string& pieces, Colour upperCaseSide) {
    const std::string letters = "PNBRQ";
    Key signature = 0;
    for (const char letter : pieces) {
        const bool upper = letter < 'a';
        const auto index = letters.find(upper ? letter : static_cast<char>(letter - 'a' + 'A'));
        signature += materialKeys[materialIndex(upper ? upperCaseSide : opponent(upperCaseSide),
                                                static_cast<PieceType>(index) + pawn)];
    }
    return signature;
}

// King and pawn against king solved anew by plain iteration over the engine's own legal moves, on real boards: the
// pawn is white and on the files e to h.
class PawnEndingSolver {
public:
    PawnEndingSolver() {
        for (int file = 4; file < 8; ++file) {
            for (int rank = 1; rank < 7; ++rank) {
                for (Square strong = 0; strong < 64; ++strong) {
                    for (Square weak = 0; weak < 64; ++weak) {
                        for (Colour side : {white, black}) addNode(8 * rank + file, strong, weak, side);
                    }
                }
            }
        }
        for (bool news = true; news;) {
            news = false;
            for (Node& node : nodes) {
                if (!node.isWon && becomesWon(node)) news = node.isWon = true;
            }
        }
    }

    bool isWon(Square pawnSquare, Square strong, Square weak, Colour side) const {
        return nodes[indexOf(pawnSquare, strong, weak, side)].isWon;
    }

private:
    struct Node {
        Colour side = white;
        bool isWon = false;
        bool isSettled = true; // for better or worse, or not a position at all
        std::vector<int> next;
    };
    std::vector<Node> nodes = std::vector<Node>(64 * 64 * 64 * 2);

    static int indexOf(Square pawnSquare, Square strong, Square weak, Colour side) {
        return ((pawnSquare * 64 + strong) * 64 + weak) * 2 + side;
    }
    static int indexOf(const Position& position) {
        return indexOf(lowestBit(position.of(white, pawn)), lowestBit(position.of(white, king)),
                       lowestBit(position.of(black, king)), position.sideToMove());
    }

    // A queen or rook wins if the lone king has been mated, or has a move and none that takes it.
    static bool isWonByPromoting(const Position& child, Move promotion) {
        if (promotedType(moveKind(promotion)) != queen && promotedType(moveKind(promotion)) != rook) return false;
        const std::vector<Move> replies = legalMovesOf(child);
        if (replies.empty()) return child.inCheck != 0;
        return std::none_of(replies.begin(), replies.end(),
                            [&](Move reply) { return moveTo(reply) == moveTo(promotion); });
    }

    void addNode(Square pawnSquare, Square strong, Square weak, Colour side) {
        if (strong == weak || strong == pawnSquare || weak == pawnSquare) return;
        const Position position =
            positionWith({{white, pawn, pawnSquare}, {white, king, strong}, {black, king, weak}}, side);
        if (inCheck(position, opponent(side)) != 0) return;
        Node& node = nodes[indexOf(position)];
        node.side = side;
        node.isSettled = false;
        for (const Move move : legalMovesOf(position)) {
            const Position child = childOf(position, move);
            if (isPromotion(move)) {
                if (isWonByPromoting(child, move)) node.isWon = true;
            } else if (child.of(white, pawn) == 0) {
                node.isSettled = true;
            } else {
                node.next.push_back(indexOf(child));
            }
        }
        if (side == black && node.next.empty()) { // mate, stalemate, or only the pawn to take
            node.isWon = !node.isSettled && position.inCheck != 0;
            node.isSettled = true;
        }
    }

    bool becomesWon(const Node& node) const {
        const auto won = [&](int index) { return nodes[index].isWon; };
        if (node.isSettled) return false;
        return node.side == white ? std::any_of(node.next.begin(), node.next.end(), won)
                                  : std::all_of(node.next.begin(), node.next.end(), won);
    }
};

int scoreOf(const std::string& fen) {
    const Position position = positionOf(fen);
    return findEnding(position.materialKey)->evaluator(position);
}

} // namespace

TEST(PawnBitbase, HoldsTheKnownNumberOfWins) {
    int wins = 0, winsToMove = 0;
    for (const std::uint8_t byte : pawnBitbase) {
        wins += std::popcount(byte);
        winsToMove += std::popcount(static_cast<std::uint8_t>(byte & 0xaa)); // odd bits
    }
    EXPECT_EQ(wins, 111282);
    EXPECT_EQ(winsToMove, 62480);
}

TEST(PawnBitbase, AgreesWithPlayingItOut) {
    const PawnEndingSolver solver;
    for (Square pawnSquare = a2; pawnSquare <= h7; ++pawnSquare) {
        if (fileOf(pawnSquare) < 4) continue;
        for (Square strong = 0; strong < 64; ++strong) {
            for (Square weak = 0; weak < 64; ++weak) {
                for (Colour side : {white, black}) {
                    const bool won = solver.isWon(pawnSquare, strong, weak, side);
                    const Square p = mirrored(pawnSquare), s = mirrored(strong), w = mirrored(weak);
                    ASSERT_EQ(pawnEndingWon(p, s, w, side == white), won)
                        << pawnSquare << ' ' << strong << ' ' << weak << ' ' << side;
                    ASSERT_EQ(pawnEndingWon(p ^ 7, s ^ 7, w ^ 7, side == white), won);
                    // The same bit where the layout has it.
                    const int index =
                        2 * ((4 * (rankOf(p) - 1) + fileOf(p ^ 7)) * 4096 + (s ^ 7) * 64 + (w ^ 7)) + (side == white);
                    ASSERT_EQ(pawnBitbase[index / 8] >> index % 8 & 1, won);
                }
            }
        }
    }
}

TEST(Endings, EveryRowIsStoredForBothColours) {
    struct Row {
        const char* pieces;
        int scale;
        int score;
        EndingEvaluator evaluator = nullptr;
    };
    // From dead drawn to won, the special ones last.
    const Row rows[] = {{"", 0, 0},
                        {"B", 0, 0},
                        {"N", 0, 0},
                        {"Bb", 10, 0},
                        {"Bn", 10, 0},
                        {"Nn", 10, 0},
                        {"Qq", 50, 0},
                        {"Rr", 50, 0},
                        {"NNb", 50, -3000},
                        {"NNn", 50, -3000},
                        {"BNb", 150, -3000},
                        {"BNn", 200, -3000},
                        {"BBb", 200, -3000},
                        {"BBn", 500, -3000},
                        {"NN", 200, -7000},
                        {"Bp", 200, -3200},
                        {"Np", 300, -3200},
                        {"RNr", 200, -2000},
                        {"Rb", 300, -1500},
                        {"Rn", 200, -1500},
                        {"Qr", 500, -1000},
                        {"Qb", 800, 0},
                        {"Qn", 700, 0},
                        {"Q", 700, 0},
                        {"R", 800, 0},
                        {"P", 1000, 0, evaluatePawnEnding},
                        {"BN", 1000, 0, evaluateBishopKnightMate},
                        {"BP", 1000, 0, evaluateBishopPawnEnding},
                        {"NP", 1000, 0, evaluateKnightPawnEnding}};
    std::set<Key> signatures;
    for (const Row& row : rows) {
        for (Colour side : {white, black}) {
            const Key signature = signatureOf(row.pieces, side);
            signatures.insert(signature);
            const EndingEntry* entry = findEnding(signature);
            ASSERT_NE(entry, nullptr) << row.pieces << " for " << side;
            EXPECT_EQ(entry->state, usedSlot) << row.pieces;
            EXPECT_EQ(entry->scale, row.scale) << row.pieces;
            EXPECT_EQ(entry->score, side == white ? row.score : -row.score) << row.pieces << " for " << side;
            EXPECT_EQ(entry->evaluator, row.evaluator) << row.pieces;
        }
    }
    const auto used = std::count_if(EndingTables.begin(), EndingTables.end(),
                                    [](const EndingEntry& entry) { return entry.state != freeSlot; });
    EXPECT_EQ(used, static_cast<std::ptrdiff_t>(signatures.size()));
    for (const char* unknown : {"NNp", "BBp", "PP", "QQ", "RR", "Pp"}) {
        EXPECT_EQ(findEnding(signatureOf(unknown, white)), nullptr) << unknown;
    }
}

TEST(Endings, TheEvaluatorsSeeBothColoursAlike) {
    const std::vector<std::vector<PieceType>> materials = {{pawn}, {bishop, knight}, {bishop, pawn}, {knight, pawn}};
    Random random(3);
    for (const auto& material : materials) {
        for (int i = 0; i < 20000; ++i) {
            std::vector<Placed> pieces = {{white, king, 0}, {black, king, 0}};
            for (const PieceType type : material) pieces.push_back({white, type, 0});
            std::set<Square> taken;
            for (Placed& piece : pieces) {
                do {
                    piece.square = piece.type == pawn ? 8 + below(random, 48) : below(random, 64);
                } while (!taken.insert(piece.square).second);
            }
            const Colour side = below(random, 2);
            const Position position = positionWith(pieces, side);
            for (Placed& piece : pieces) piece = {opponent(piece.colour), piece.type, mirrored(piece.square)};
            const Position flipped = positionWith(pieces, opponent(side));
            const EndingEntry* ending = findEnding(position.materialKey);
            ASSERT_EQ(ending->evaluator(position), -ending->evaluator(flipped));
            // Left and right are the same, too, but that a bishop changes its colour with its file: so does its pawn.
            for (Placed& piece : pieces) piece.square ^= 7;
            ASSERT_EQ(ending->evaluator(flipped), ending->evaluator(positionWith(pieces, opponent(side))));
        }
    }
}

// A material key knows nothing of kings, nor of where a pawn can stand.
TEST(Endings, TheEvaluatorsBearBoardsThatNoGameReaches) {
    for (const std::string pieces : {"P", "BN", "BP", "NP", "p", "bn", "bp", "np"}) {
        for (const std::string kings : {"8", "7k", "K7", "KK5k", "Kk5k", "kk6", "KK6"}) {
            const std::string row = pieces + std::to_string(8 - pieces.size());
            for (const std::string side : {" w - -", " b - -"}) {
                EXPECT_EQ(scoreOf(kings + "/8/8/" + row + "/8/8/8/8" + side), 0) << pieces << ' ' << kings;
            }
        }
    }
    EXPECT_LT(std::abs(scoreOf("P6k/8/8/8/8/8/8/K7 w - -")), 50);
    EXPECT_LT(std::abs(scoreOf("7k/8/8/8/8/8/8/K6P w - -")), 50);
}

TEST(PawnEnding, TellsWinsFromDraws) {
    const auto isDraw = [](const char* fen) { return std::abs(scoreOf(fen)) < 50; };
    EXPECT_TRUE(isDraw("8/8/8/8/8/4k3/4P3/4K3 w - -"));
    EXPECT_TRUE(isDraw("k7/8/1K6/P7/8/8/8/8 w - -"));   // a rook pawn and its corner
    EXPECT_TRUE(isDraw("4k3/8/4P3/4K3/8/8/8/8 b - -")); // the lone king takes the opposition
    EXPECT_GT(scoreOf("4k3/8/4K3/4P3/8/8/8/8 w - -"), 400);
    EXPECT_LT(scoreOf("8/8/8/8/4p3/4k3/8/4K3 b - -"), -400);
    EXPECT_GT(scoreOf("8/4P3/8/8/8/k7/8/2K5 w - -"), scoreOf("8/8/4P3/8/8/k7/8/2K5 w - -"));
}

TEST(BishopKnightMate, DrivesTheKingToTheBishopsCorner) {
    for (const Square bishopSquare : {d4, e4}) {
        const bool isDark = (bit(bishopSquare) & darkSquares) != 0;
        // Along the a-file from the wrong corner to the right one, the others standing off.
        int last = 0;
        for (int steps = 0; steps < 8; ++steps) {
            const Square loneKing = isDark ? a8 - 8 * steps : a1 + 8 * steps;
            const int score = evaluateBishopKnightMate(positionWith(
                {{white, king, e5}, {white, bishop, bishopSquare}, {white, knight, f5}, {black, king, loneKing}},
                white));
            EXPECT_GT(score, last) << loneKing;
            last = score;
        }
    }
}

TEST(BishopPawnEnding, IsDrawnInTheWrongCornerOnly) {
    const auto isDraw = [](const char* fen) { return std::abs(scoreOf(fen)) < 50; };
    EXPECT_TRUE(isDraw("k7/8/8/P7/8/2K5/8/2B5 w - -")); // dark bishop, light corner
    EXPECT_TRUE(isDraw("7k/8/8/7P/8/5K2/8/5B2 w - -"));
    EXPECT_FALSE(isDraw("k7/8/8/P7/8/2K5/8/5B2 w - -"));
    EXPECT_FALSE(isDraw("1k6/8/8/1P6/8/2K5/8/2B5 w - -")); // no rook pawn
    EXPECT_FALSE(isDraw("8/1K6/8/P2k4/8/8/8/2B5 w - -"));  // the owner's king holds the corner
    // The pawn is, or is not, faster than the lone king by the one move.
    EXPECT_FALSE(isDraw("4k3/8/8/P7/8/4K3/8/2B5 w - -"));
    EXPECT_TRUE(isDraw("4k3/8/8/P7/8/4K3/8/2B5 b - -"));
    // And so is the owner's king.
    EXPECT_FALSE(isDraw("8/3k4/8/1K6/8/8/P7/2B5 w - -"));
    EXPECT_TRUE(isDraw("8/3k4/8/1K6/8/8/P7/2B5 b - -"));
}

TEST(KnightPawnEnding, IsDrawnOnTheSeventhRankOnly) {
    EXPECT_LT(std::abs(scoreOf("k7/P7/8/1N6/3K4/8/8/8 w - -")), 50);
    EXPECT_GT(scoreOf("k7/8/P7/1N6/3K4/8/8/8 w - -"), 300);
    EXPECT_GT(scoreOf("1k6/1P6/8/N7/3K4/8/8/8 w - -"), 300);
    EXPECT_GT(scoreOf("8/P7/8/1N6/3K4/8/6k1/8 b - -"), 300);
    EXPECT_GT(scoreOf("2k5/P7/1K6/N7/8/8/8/8 b - -"), 300); // beside the corner is not in it
}

} // namespace helvan::testing
