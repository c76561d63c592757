// SPDX-License-Identifier: MIT
//
// The terms of pieces, king attack and passed pawns once more, square by square on a board of letters and in plain
// sums, to hold the bitboard tricks and the packed arithmetic against.
#include <gtest/gtest.h>

#include <cctype>
#include <cstring>
#include <map>

#include "board/exchange.h"
#include "eval/evaluate.h"
#include "eval/parameters.h"
#include "eval/pawn_structure.h"
#include "eval/tables.h"
#include "support/boards.h"

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

// The board as one side sees it: upper case its own men, the first rank its own.
class SideBoard {
public:
    SideBoard(const Position& position, Colour us) {
        for (Square square = 0; square < 64; ++square) {
            const char letter = pieceLetterAt(position, us == white ? square : mirrored(square));
            const bool own = std::isupper(static_cast<unsigned char>(letter)) != 0;
            board[square] = letter == '-' ? '-'
                            : us == white ? letter
                            : own         ? static_cast<char>(std::tolower(letter))
                                          : static_cast<char>(std::toupper(letter));
        }
    }

    char at(Square square) const { return board[square]; }
    bool own(Square square) const { return board[square] >= 'A' && board[square] <= 'Z'; }
    bool enemy(Square square) const { return board[square] >= 'a'; }
    bool enemyPiece(Square square) const { return enemy(square) && board[square] != 'p'; }

    Square find(char letter) const {
        for (Square square = 0; square < 64; ++square) {
            if (board[square] == letter) return square;
        }
        return -1;
    }
    int count(char letter) const {
        int found = 0;
        for (const char on : board) found += on == letter;
        return found;
    }

    // Whether a man of the letter's kind on one square attacks the other.
    bool reaches(char letter, Square from, Square to) const {
        const int dx = fileOf(to) - fileOf(from), dy = rankOf(to) - rankOf(from);
        const int files = std::abs(dx), ranks = std::abs(dy);
        const bool straight = (dx == 0) != (dy == 0), diagonal = files == ranks && dx != 0;
        switch (letter) {
        case 'P': return files == 1 && dy == 1;
        case 'p': return files == 1 && dy == -1;
        case 'N':
        case 'n': return files * ranks == 2;
        case 'K':
        case 'k': return std::max(files, ranks) == 1;
        case 'B':
        case 'b': return diagonal && clear(from, to);
        case 'R':
        case 'r': return straight && clear(from, to);
        case 'Q':
        case 'q': return (straight || diagonal) && clear(from, to);
        default: return false;
        }
    }

    bool attackedBy(const char* letters, Square square) const {
        for (Square from = 0; from < 64; ++from) {
            if (std::strchr(letters, board[from]) != nullptr && reaches(board[from], from, square)) return true;
        }
        return false;
    }

    bool clear(Square from, Square to) const {
        const int dx = (fileOf(to) > fileOf(from)) - (fileOf(to) < fileOf(from));
        const int dy = (rankOf(to) > rankOf(from)) - (rankOf(to) < rankOf(from));
        for (Square square = from + dx + 8 * dy; square != to; square += dx + 8 * dy) {
            if (board[square] != '-') return false;
        }
        return true;
    }

private:
    char board[64];
};

// The terms of one side, as rows of an explanation.
class SlowTerms {
public:
    SlowTerms(const Position& evaluated, Colour side)
        : position(evaluated), us(side), board(evaluated, side), enemyKing(board.find('k')) {
        units = kingExposureUnits[mirrored(enemyKing)];
        for (Square square = 0; square < 64; ++square) {
            switch (board.at(square)) {
            case 'N': knight(square); break;
            case 'B': bishop(square); break;
            case 'R': rook(square); break;
            case 'Q': queen(square); break;
            default: break;
            }
        }
        if (board.count('B') == 2) rows["bishops"] += evalParameters.bishopPair;
        if (board.count('R') >= 2) rows["rooks"] += evalParameters.secondRook;
        if (board.count('R') >= 1 && board.count('Q') >= 1) rows["queens"] += evalParameters.rookAndQueen;
        rows["attack on king"] += evalTables.kingSafetyTable[units + std::min(queenUnits, mostQueenCheckUnits)];
    }

    std::map<std::string, Sum> rows;

private:
    int safeSquares(char letter, Square from, bool major, bool onlyBefore = false) const {
        int safe = 0;
        for (Square to = 0; to < 64; ++to) {
            if (!board.reaches(letter, from, to) || board.at(to) == 'P') continue;
            if (onlyBefore && rankOf(to) <= rankOf(from)) continue;
            if (board.attackedBy(major ? "pn" : "p", to) && !board.enemyPiece(to)) continue;
            ++safe;
        }
        return safe;
    }

    void pressZone(char letter, Square from, int points) {
        for (Square to = 0; to < 64; ++to) {
            if (board.reaches(letter, from, to) && kingDistance(to, enemyKing) == 1) {
                units += points;
                return;
            }
        }
    }

    // Squares that the piece can go to and check the enemy king from.
    template <typename Visit> void eachCheck(char letter, Square from, Visit visit) const {
        for (Square to = 0; to < 64; ++to) {
            if (!board.reaches(letter, from, to) || !board.reaches(letter, to, enemyKing)) continue;
            if (board.own(to) || to == enemyKing) continue;
            if (board.attackedBy("p", to) && !board.enemy(to)) continue;
            visit(to);
        }
    }

    void knight(Square from) {
        Sum& row = rows["knights"];
        row += evalTables.knightKingDistanceTable[kingDistance(from, board.find('K'))];
        row += knightMobility[safeSquares('N', from, false) + safeSquares('N', from, false, true)];
        row += evalTables.knightPawnsTable[board.count('P')];
        pressZone('N', from, knightZoneUnits);
        eachCheck('N', from, [&](Square) { units += knightCheckUnits; });
    }

    void bishop(Square from) {
        Sum& row = rows["bishops"];
        row += bishopMobility[safeSquares('B', from, false)];
        int sameColour = 0, otherColour = 0;
        for (Square square = 0; square < 64; ++square) {
            if (board.at(square) != 'P') continue;
            const bool same = (fileOf(square) + rankOf(square) + fileOf(from) + rankOf(from)) % 2 == 0;
            ++(same ? sameColour : otherColour);
        }
        row += evalTables.bishopOwnColourPawnsTable[sameColour];
        row += evalTables.bishopOtherColourPawnsTable[otherColour];
        if (from + 24 >= 32 && from + 24 < 64 && board.at(from + 24) == 'p') row += evalParameters.bishopFacingPawn;
        pressZone('B', from, bishopZoneUnits);
        eachCheck('B', from, [&](Square) { units += bishopCheckUnits; });
    }

    void rook(Square from) {
        Sum& row = rows["rooks"];
        row += rookMobility[safeSquares('R', from, true)];
        row += evalTables.rookPawnsTable[board.count('P')];
        bool onLine = false, ownPawn = false, enemyPawn = false, defended = false;
        for (Square square = 0; square < 64; ++square) {
            const bool sameFile = fileOf(square) == fileOf(from);
            onLine |= square != from && board.at(square) == 'R' && (sameFile || rankOf(square) == rankOf(from));
            ownPawn |= sameFile && board.at(square) == 'P';
            enemyPawn |= sameFile && board.at(square) == 'p';
            defended |= sameFile && board.at(square) == 'p' && board.attackedBy("p", square);
        }
        if (onLine) row += evalParameters.rooksOnLine;
        if (rankOf(from) == 6 && rankOf(enemyKing) == 7) row += evalParameters.rookOnSeventh;
        if (!ownPawn && !enemyPawn) row += evalParameters.rookOpenFile;
        if (!ownPawn && enemyPawn) row += defended ? evalParameters.rookHalfOpen : evalParameters.rookHalfOpenWeak;
        pressZone('R', from, rookZoneUnits);
        eachCheck('R', from, [&](Square) { units += rookCheckUnits; });
    }

    void queen(Square from) {
        rows["queens"] += queenMobility[safeSquares('Q', from, true)];
        pressZone('Q', from, queenZoneUnits);
        eachCheck('Q', from, [&](Square to) {
            const Square realFrom = us == white ? from : mirrored(from), realTo = us == white ? to : mirrored(to);
            const bool lost = see(position, encodeMove(realFrom, realTo), us ^ position.sideToMove()) < 0;
            const int contact = lost ? queenLostContactCheckUnits : queenContactCheckUnits;
            queenUnits += kingDistance(to, enemyKing) == 1 ? contact : queenDistantCheckUnits;
        });
    }

    const Position& position;
    Colour us;
    SideBoard board;
    Square enemyKing;
    int units = 0;
    int queenUnits = 0;
};

// What the passed pawns of a side bring to it and to its enemy.
struct PassedSums {
    Sum own;
    Sum enemy;
};

PassedSums slowPassedPawns(const Position& position, Colour us) {
    const SideBoard board(position, us);
    const Square ownKing = board.find('K'), enemyKing = board.find('k');
    PassedSums sums;
    for (const std::uint8_t listed : evaluatePawns(position).passed[us]) {
        if (listed == 0) break;
        const Square square = us == white ? listed : mirrored(listed);
        const int r = rankOf(square) - 1;
        sums.own += evalTables.passedBaseTable[r];
        if (r <= 1) continue;
        const Square stop = square + 8, promotion = 56 + fileOf(square);
        sums.own.endgame += passedOwnKingDistance[r][kingDistance(ownKing, stop)];
        sums.own.endgame += passedEnemyKingDistance[r][kingDistance(enemyKing, stop)];
        if (kingDistance(ownKing, promotion) <= 1) sums.own += evalParameters.kingAtPromotion;
        if (kingDistance(enemyKing, promotion) <= 1) sums.enemy += evalParameters.kingAtPromotion;
        bool ownRook = false, enemyRook = false, pursued = false;
        for (Square behind = square - 8; behind >= 0; behind -= 8) {
            ownRook |= board.at(behind) == 'R';
            enemyRook |= board.at(behind) == 'r';
            pursued |= (board.at(behind) == 'r' || board.at(behind) == 'q') && board.clear(behind, square);
        }
        if (r != 2 && ownRook) sums.own += evalParameters.rookBehindPassed;
        if (r != 2 && enemyRook) sums.enemy += evalParameters.rookBehindPassed;
        if (board.at(stop) != '-') continue;
        bool attacked = false, attackedUndefended = false, undefended = false, blocked = false;
        for (Square on = stop; on < 64; on += 8) {
            const bool attackedHere = pursued || board.attackedBy("pnbrq", on) || board.enemy(on);
            const bool defendedHere = board.attackedBy("PNBRQ", on);
            attacked |= attackedHere;
            attackedUndefended |= attackedHere && !defendedHere;
            undefended |= !defendedHere;
            blocked |= board.own(on);
        }
        const bool left = fileOf(square) > 0 && board.at(square - 1) == 'P';
        const bool right = fileOf(square) < 7 && board.at(square + 1) == 'P';
        if (left || right || board.at(square - 8) == 'P') sums.own += evalTables.passedSupportTable[r];
        if (!attacked) {
            sums.own += undefended ? evalTables.passedFreeTable[r] : evalTables.passedFreeSafeTable[r];
        } else {
            sums.own +=
                attackedUndefended ? evalTables.passedAttackedTable[r] : evalTables.passedAttackedDefendedTable[r];
        }
        if (!blocked) sums.own += evalTables.passedUnblockedTable[r];
    }
    return sums;
}

void expectTerm(const EvalExplanation& explanation, const std::string& name, const Sum& forWhite, const Sum& forBlack) {
    for (const EvalExplanation::Term& term : explanation.terms) {
        if (term.name != name) continue;
        ASSERT_EQ(term.white.opening(), forWhite.opening) << name;
        ASSERT_EQ(term.white.endgame(), forWhite.endgame) << name;
        ASSERT_EQ(term.black.opening(), forBlack.opening) << name;
        ASSERT_EQ(term.black.endgame(), forBlack.endgame) << name;
        return;
    }
    FAIL() << "no term " << name;
}

} // namespace

TEST(SlowTerms, AgreeWithTheEvaluation) {
    forRandomPositions(6000, 24, [](const Position& position, Random&) {
        const EvalExplanation explanation = explainEvaluation(position);
        if (explanation.special) return;
        SlowTerms forWhite(position, white), forBlack(position, black);
        for (const char* name : {"knights", "bishops", "rooks", "queens", "attack on king"}) {
            expectTerm(explanation, name, forWhite.rows[name], forBlack.rows[name]);
        }
        const PassedSums byWhite = slowPassedPawns(position, white), byBlack = slowPassedPawns(position, black);
        const auto both = [](const Sum& a, const Sum& b) { return Sum{a.opening + b.opening, a.endgame + b.endgame}; };
        expectTerm(explanation, "passed pawns", both(byWhite.own, byBlack.enemy), both(byBlack.own, byWhite.enemy));
    });
}

} // namespace helvan::testing
