// SPDX-License-Identifier: MIT
//
// The terms of pieces, king attack and passed pawns once more, square by square on a board of letters and in plain
// sums, to hold the bitboard tricks and the packed arithmetic against.
#include <gtest/gtest.h>

#include <map>

#include "board/exchange.h"
#include "eval/evaluate.h"
#include "eval/parameters.h"
#include "eval/tables.h"
#include "support/boards.h"
#include "support/letter_board.h"

namespace helvan::testing {

namespace {

struct Sum {
    long long opening = 0;
    long long endgame = 0;

    Sum& operator+=(PackedScore score) {
        opening += score.opening();
        endgame += score.endgame();
        return *this;
    }
};

template <typename Predicate> int countSquares(Predicate predicate) {
    int count = 0;
    for (Square square = 0; square < 64; ++square) count += predicate(square);
    return count;
}

// The rows of an explanation that are worked out here.
using Rows = std::map<std::string, Sum>;
const Rows noRows = {{"knights", {}}, {"bishops", {}},        {"rooks", {}},
                     {"queens", {}},  {"attack on king", {}}, {"passed pawns", {}}};

// The terms of one side, added to the rows by colour: passed pawns bring something to the enemy, too.
class SlowTerms {
public:
    SlowTerms(const Position& evaluated, Colour side, Rows (&rowsByColour)[2])
        : position(evaluated), us(side), rows(rowsByColour[side]), enemyRows(rowsByColour[opponent(side)]),
          board(evaluated, side), enemyKing(board.find('k')) {
        units = kingExposureUnits[mirrored(enemyKing)];
        for (Square square = 0; square < 64; ++square) {
            switch (board[square]) {
            case 'P': pawn(square); break;
            case 'N': knight(square); break;
            case 'B': bishop(square); break;
            case 'R': rook(square); break;
            case 'Q': queen(square); break;
            default: break;
            }
        }
        if (board.count('B') == 2) rows["bishops"] += p.bishopPair;
        if (board.count('R') >= 2) rows["rooks"] += p.secondRook;
        if (board.count('R') >= 1 && board.count('Q') >= 1) rows["queens"] += p.rookAndQueen;
        rows["attack on king"] += evalTables.kingSafetyTable[units + std::min(queenUnits, mostQueenCheckUnits)];
    }

private:
    // Where the piece can move to without loss; what enemy knights guard counts for the major pieces alone.
    bool isSafe(char letter, Square from, Square to) const {
        if (!board.reaches(letter, from, to) || board[to] == 'P') return false;
        const char* guards = letter == 'R' || letter == 'Q' ? "pn" : "p";
        return board.holds("nbrqk", to) || !board.attackedBy(guards, to);
    }
    int safeSquares(char letter, Square from) const {
        return countSquares([&](Square to) { return isSafe(letter, from, to); });
    }

    // Whether the piece can go to the square and check the enemy king from it.
    bool isCheck(char letter, Square from, Square to) const {
        return board.reaches(letter, from, to) && board.reaches(letter, to, enemyKing) && !board.holds("PNBRQKk", to) &&
               (board.holds("pnbrq", to) || !board.attackedBy("p", to));
    }

    void attackKing(char letter, Square from, int zoneUnits, int checkUnits) {
        const auto presses = [&](Square to) {
            return board.reaches(letter, from, to) && kingDistance(to, enemyKing) == 1;
        };
        if (countSquares(presses) > 0) units += zoneUnits;
        units += checkUnits * countSquares([&](Square to) { return isCheck(letter, from, to); });
    }

    void knight(Square from) {
        const auto isSafeAhead = [&](Square to) { return isSafe('N', from, to) && rankOf(to) > rankOf(from); };
        Sum& row = rows["knights"];
        row += p.knightKingDistanceTable[kingDistance(from, board.find('K'))];
        row += knightMobility[safeSquares('N', from) + countSquares(isSafeAhead)];
        row += p.knightPawnsTable[board.count('P')];
        attackKing('N', from, knightZoneUnits, knightCheckUnits);
    }

    void bishop(Square from) {
        const auto isOnItsColour = [&](Square square) {
            return board[square] == 'P' && (fileOf(square) + rankOf(square) + fileOf(from) + rankOf(from)) % 2 == 0;
        };
        const int sameColour = countSquares(isOnItsColour);
        Sum& row = rows["bishops"];
        row += bishopMobility[safeSquares('B', from)];
        row += p.bishopOwnColourPawnsTable[sameColour];
        row += p.bishopOtherColourPawnsTable[board.count('P') - sameColour];
        if (from + 24 >= 32 && from + 24 < 64 && board[from + 24] == 'p') row += p.bishopFacingPawn;
        attackKing('B', from, bishopZoneUnits, bishopCheckUnits);
    }

    void rook(Square from) {
        Sum& row = rows["rooks"];
        row += rookMobility[safeSquares('R', from)];
        row += p.rookPawnsTable[board.count('P')];
        bool onLine = false, ownPawn = false, enemyPawn = false, defended = false;
        for (Square square = 0; square < 64; ++square) {
            const bool sameFile = fileOf(square) == fileOf(from);
            onLine |= square != from && board[square] == 'R' && (sameFile || rankOf(square) == rankOf(from));
            ownPawn |= sameFile && board[square] == 'P';
            enemyPawn |= sameFile && board[square] == 'p';
            defended |= sameFile && board[square] == 'p' && board.attackedBy("p", square);
        }
        if (onLine) row += p.rooksOnLine;
        if (rankOf(from) == 6 && rankOf(enemyKing) == 7) row += p.rookOnSeventh;
        if (!ownPawn && !enemyPawn) row += p.rookOpenFile;
        if (!ownPawn && enemyPawn) row += defended ? p.rookHalfOpen : p.rookHalfOpenWeak;
        attackKing('R', from, rookZoneUnits, rookCheckUnits);
    }

    void queen(Square from) {
        rows["queens"] += queenMobility[safeSquares('Q', from)];
        attackKing('Q', from, queenZoneUnits, 0);
        for (Square to = 0; to < 64; ++to) {
            if (!isCheck('Q', from, to)) continue;
            const Move check = us == white ? encodeMove(from, to) : encodeMove(mirrored(from), mirrored(to));
            const bool lost = see(position, check, us ^ position.sideToMove()) < 0;
            const int contact = lost ? queenLostContactCheckUnits : queenContactCheckUnits;
            queenUnits += kingDistance(to, enemyKing) == 1 ? contact : queenDistantCheckUnits;
        }
    }

    bool isPassed(Square square) const {
        const auto stops = [&](Square other) {
            const int files = std::abs(fileOf(other) - fileOf(square));
            return files <= 1 && rankOf(other) > rankOf(square) && board.holds(files == 0 ? "Pp" : "p", other);
        };
        return countSquares(stops) == 0;
    }

    void pawn(Square square) {
        if (!isPassed(square)) return;
        const int r = rankOf(square) - 1;
        const Square stop = square + 8, promotion = 56 + fileOf(square), ownKing = board.find('K');
        Sum &own = rows["passed pawns"], &enemy = enemyRows["passed pawns"];
        own += p.passedBaseTable[r];
        if (r <= 1) return;
        own.endgame += passedByOwnKingSteps[r][kingDistance(ownKing, stop)].endgame();
        own.endgame += passedByEnemyKingSteps[r][kingDistance(enemyKing, stop)].endgame();
        if (kingDistance(ownKing, promotion) <= 1) own += p.kingAtPromotion;
        if (kingDistance(enemyKing, promotion) <= 1) enemy += p.kingAtPromotion;
        bool ownRook = false, enemyRook = false, pursued = false;
        for (Square behind = square - 8; behind >= 0; behind -= 8) {
            ownRook |= board[behind] == 'R';
            enemyRook |= board[behind] == 'r';
            pursued |= board.holds("rq", behind) && board.clear(behind, square);
        }
        if (r != 2 && ownRook) own += p.rookBehindPassed;
        if (r != 2 && enemyRook) enemy += p.rookBehindPassed;
        if (board[stop] == '-') path(square, r, pursued);
    }

    void path(Square square, int r, bool pursued) {
        Sum& own = rows["passed pawns"];
        const auto isDefended = [&](Square on) { return board.attackedBy("PNBRQ", on); };
        const auto isAttacked = [&](Square on) {
            return pursued || board.attackedBy("pnbrq", on) || board.holds("pnbrqk", on);
        };
        bool attacked = false, lost = false, defended = true, blocked = false;
        for (Square on = square + 8; on < 64; on += 8) {
            attacked |= isAttacked(on);
            lost |= isAttacked(on) && !isDefended(on);
            defended &= isDefended(on);
            blocked |= board.holds("PNBRQK", on);
        }
        const bool left = fileOf(square) > 0 && board[square - 1] == 'P';
        const bool right = fileOf(square) < 7 && board[square + 1] == 'P';
        if (left || right || board[square - 8] == 'P') own += p.passedSupportTable[r];
        if (!attacked) {
            own += defended ? p.passedFreeSafeTable[r] : p.passedFreeTable[r];
        } else {
            own += lost ? p.passedAttackedTable[r] : p.passedAttackedDefendedTable[r];
        }
        if (!blocked) own += p.passedUnblockedTable[r];
    }

    const EvalParameters& p = evalParameters;
    const Position& position;
    Colour us;
    Rows& rows;
    Rows& enemyRows;
    LetterBoard board;
    Square enemyKing;
    int units = 0;
    int queenUnits = 0;
};

void compareTerms(const Position& position) {
    const EvalExplanation explanation = explainEvaluation(position);
    if (explanation.special) return;
    Rows rows[2] = {noRows, noRows};
    for (const Colour us : {white, black}) SlowTerms(position, us, rows);
    std::size_t compared = 0;
    for (const EvalExplanation::Term& term : explanation.terms) {
        if (!noRows.contains(term.name)) continue;
        ++compared;
        for (const Colour us : {white, black}) {
            const PackedScore credit = us == white ? term.white : term.black;
            ASSERT_EQ(credit.opening(), rows[us][term.name].opening) << term.name << " for " << us;
            ASSERT_EQ(credit.endgame(), rows[us][term.name].endgame) << term.name << " for " << us;
        }
    }
    ASSERT_EQ(compared, noRows.size());
}

} // namespace

TEST(SlowTerms, AgreeWithTheEvaluation) {
    forRandomPositions(6000, 24, [](const Position& position, Random&) { compareTerms(position); });
}

// Queens that check beside the king, guarded only by what an exchange uncovers.
TEST(SlowTerms, AgreeWhereGuardsAreHidden) {
    for (const char* fen : {"Q5rk/8/8/6r1/8/8/6R1/K5R1 w - -", "Q5rk/5p1p/5p1p/6r1/8/5P1P/PP4R1/K5R1 w - -",
                            "3b1q2/1R1PP1R1/3p3K/kp2r1Q1/2P1b1rP/5P2/p2p2pn/5B2 b - -",
                            "6k1/1n3b1q/4P2R/1P1PQr1R/1K1p1rb1/2P3p1/1B4P1/2nN4 w - -"}) {
        SCOPED_TRACE(fen);
        compareTerms(positionOf(fen));
    }
}

} // namespace helvan::testing
