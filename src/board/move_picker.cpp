// SPDX-License-Identifier: MIT
#include "board/move_picker.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include "board/attacks.h"
#include "board/exchange.h"
#include "board/generate.h"

namespace helvan {

namespace {

using enum PickerStage;

constexpr int longestStageList = 7;

// By PickerKind.
// clang-format off
constexpr PickerStage stageLists[][longestStageList] = {
    {hashMove, captures, firstKiller, secondKiller, quietMoves, deferred, end},
    {hashMove, captures, quietChecks, deferred, end},
    {hashMove, captures, quietChecks, end},
    {hashMove, captures, end},
    {hashMove, evasions, deferred, end}};
// clang-format on

// Scores: history stays between these marks.
constexpr std::int32_t tacticalScore = 1 << 24;
constexpr std::int32_t castlingScore = 1 << 24;
constexpr std::int32_t underPromotionScore = -(1 << 24);

constexpr int scoreShift = 32;
constexpr int placeShift = 16;
constexpr RankedMove placeBits = RankedMove{0xffff} << placeShift;

constexpr RankedMove handedOutMark = std::numeric_limits<RankedMove>::min(); // below every move

constexpr Move moveOf(RankedMove ranked) { return static_cast<Move>(ranked & moveBits); }

void append(MovePicker& picker, Move move, std::int32_t score) {
    if (picker.batchCount == maxMoves) return;
    const RankedMove place = maxMoves - 1 - picker.batchCount;
    picker.storage[picker.batchCount++] = RankedMove{score} << scoreShift | place << placeShift | move;
}

// By victim, the most valuable first, and among equal victims by the least valuable attacker.
std::int32_t victimScore(PieceType victim, PieceType attacker) {
    return tacticalScore + victim * 8 + (king - attacker);
}

// Whether an ordinary move's score says that it captures what is worth as much as its attacker: it cannot lose.
bool takesItsLike(std::int32_t score) {
    const int exchange = score - tacticalScore;
    return exchange > 0 && exchangeValues[exchange / 8] >= exchangeValues[king - exchange % 8];
}

// A pawn that promotes without capture goes between the captures of queens and those of rooks.
constexpr std::int32_t queenPushScore = tacticalScore + queen * 8 - 1;

std::int32_t quietScore(const QuietOrder& order, Move move, PieceType type) {
    constexpr int sequelWeight = 4;
    if (order.history == nullptr) return 0;
    const int counter = type * 64 + moveTo(move);
    std::int32_t score = order.history[counter];
    if (order.replies != nullptr) score += sequelWeight * (order.replies[counter] + order.followUps[counter]);
    return score;
}

void appendTactical(MovePicker& picker, Move move, PieceType type) {
    const Colour enemy = opponent(picker.position.sideToMove());
    const PieceType victim = moveKind(move) == enPassant ? pawn : pieceTypeAt(picker.position, enemy, moveTo(move));
    append(picker, move, victim == phantom ? queenPushScore : victimScore(victim, type));
}

// Captures onto the targets and queen promotions, but for the king's.
void generateTactical(MovePicker& picker, Bitboard captureTargets, Bitboard pushTargets, bool withEnPassant) {
    const auto add = [&](Move move, PieceType type) { appendTactical(picker, move, type); };
    generatePawnTactics(picker.position, captureTargets, pushTargets, add);
    if (withEnPassant) generateEnPassant(picker.position, add);
    generatePieces(picker.position, captureTargets, add);
}

void generateCaptures(MovePicker& picker) {
    const Position& position = picker.position;
    const Bitboard enemies = position.of(opponent(position.sideToMove()), allPieces);
    generateTactical(picker, enemies, ~position.occupied(), true);
    generateKing(position, enemies, [&](Move move, PieceType type) { appendTactical(picker, move, type); });
    picker.ordered = true;
}

void appendCastling(MovePicker& picker) {
    Move moves[2];
    const int count = castlingMoves(picker.position, picker.position.sideToMove(), moves);
    for (int i = 0; i < count; ++i) append(picker, moves[i], castlingScore);
}

void appendUnderPromotions(MovePicker& picker, Bitboard captureTargets, Bitboard pushTargets) {
    generateUnderPromotions(picker.position, captureTargets, pushTargets,
                            [&](Move move, PieceType) { append(picker, move, underPromotionScore); });
}

void generateQuiets(MovePicker& picker) {
    const Position& position = picker.position;
    const Bitboard empty = ~position.occupied();
    const auto add = [&](Move move, PieceType type) {
        append(picker, move, quietScore(picker.quietOrder, move, type));
    };
    appendCastling(picker);
    generatePawnPushes(position, empty, add);
    generatePieces(position, empty, add);
    generateKing(position, empty, add);
    generateDoublePushes(position, empty, add);
    appendUnderPromotions(picker, position.of(opponent(position.sideToMove()), allPieces), empty);
    picker.ordered = picker.quietOrder.history != nullptr;
}

// Steps to squares that the enemy does not attack once the king has left its own: a slider reaches through it.
void appendKingEvasions(MovePicker& picker, Bitboard enemies, Bitboard empty) {
    const Position& position = picker.position;
    const Colour enemy = opponent(position.sideToMove());
    const Bitboard withoutKing = position.occupied() & ~position.of(position.sideToMove(), king);
    generateKing(position, enemies | empty, [&](Move move, PieceType type) {
        if (attackersOf(position, moveTo(move), enemy, withoutKing) != 0) return;
        if ((enemies & bit(moveTo(move))) != 0) {
            appendTactical(picker, move, type);
        } else {
            append(picker, move, quietScore(picker.quietOrder, move, type));
        }
    });
}

void generateEvasions(MovePicker& picker) {
    const Position& position = picker.position;
    const Colour us = position.sideToMove();
    const Bitboard enemies = position.of(opponent(us), allPieces);
    const Bitboard empty = ~position.occupied();
    const Bitboard kings = position.of(us, king);
    const Bitboard checkers = checkersOf(position, us);
    const auto addQuiet = [&](Move move, PieceType type) {
        append(picker, move, quietScore(picker.quietOrder, move, type));
    };
    picker.ordered = true;

    Bitboard captureTargets = enemies;
    Bitboard blockTargets = empty;
    if (checkers != 0 && !moreThanOne(kings)) {
        appendKingEvasions(picker, enemies, empty);
        picker.kingStepsAreSafe = true;
        if (moreThanOne(checkers)) return; // only the king can escape from two attackers
        captureTargets = checkers;
        blockTargets = between[lowestBit(kings)][lowestBit(checkers)];
    } else {
        // No check to evade, or a board with several kings: all moves.
        appendCastling(picker);
        generateKing(position, enemies, [&](Move move, PieceType type) { appendTactical(picker, move, type); });
        generateKing(position, empty, addQuiet);
    }
    generateTactical(picker, captureTargets, blockTargets, true);
    generatePawnPushes(position, blockTargets, addQuiet);
    generatePieces(position, blockTargets, addQuiet);
    generateDoublePushes(position, blockTargets, addQuiet);
    appendUnderPromotions(picker, captureTargets, blockTargets);
}

// Quiet moves onto the squares from which the piece attacks the enemy king. Straight checks are left out, which
// are many and rarely decide, and so are checks that a move uncovers.
void generateQuietChecks(MovePicker& picker) {
    const Position& position = picker.position;
    const Colour us = position.sideToMove();
    const Bitboard enemyKing = position.of(opponent(us), king);
    if (enemyKing == 0) return;
    const Square kingSquare = lowestBit(enemyKing);
    const Bitboard occupied = position.occupied();
    const auto add = [&](Move move, PieceType) { append(picker, move, 0); };
    const Bitboard diagonalChecks = bishopAttacks(kingSquare, occupied) & ~occupied;
    eachPieceStep(bishop, position.of(us, bishop), occupied, diagonalChecks, add);
    eachPieceStep(queen, position.of(us, queen), occupied, diagonalChecks, add);
    eachPieceStep(knight, position.of(us, knight), occupied, knightAttacks[kingSquare] & ~occupied, add);
    const Bitboard pawnChecks = pawnAttacks(opponent(us), enemyKing) & ~occupied;
    generatePawnPushes(position, pawnChecks, add);
    generateDoublePushes(position, pawnChecks, add);
}

void openDeferred(MovePicker& picker) {
    picker.batch = picker.deferred;
    picker.batchCount = picker.deferredCount;
}

bool wasHandedOut(const MovePicker& picker, Move move) {
    for (int i = 0; i < picker.handedOutCount; ++i) {
        if (picker.handedOut[i] == move) return true;
    }
    return false;
}

Move handOut(MovePicker& picker, Move move) {
    if (picker.handedOutCount < maxMoves) picker.handedOut[picker.handedOutCount++] = move;
    return move;
}

// Hands a single move out ahead of the batches, which skip what the slot holds. 0 if the position does not have the
// move or it has been handed out.
Move handOutAhead(MovePicker& picker, Move move, Move& slot) {
    if (move == nullMove) return nullMove; // the usual case, without a call
    if (isPseudoLegal(picker.position, move) == 0 || wasHandedOut(picker, move)) return nullMove;
    slot = move;
    return handOut(picker, move);
}

// Fills the last step of a batch that is looked through in steps.
void closeBatch(MovePicker& picker) { std::fill_n(picker.storage + picker.batchCount, batchStep, handedOutMark); }

RankedMove takeFromBatch(MovePicker& picker) {
    RankedMove* const batch = picker.batch;
    const int first = picker.batchNext++;
    const RankedMove next = batch[first];
    if (!picker.ordered) return next;
    RankedMove bests[batchStep];
    std::fill(std::begin(bests), std::end(bests), handedOutMark);
    for (int i = first & -batchStep; i < picker.batchCount; i += batchStep) {
        for (int lane = 0; lane < batchStep; ++lane) bests[lane] = std::max(bests[lane], batch[i + lane]);
    }
    const RankedMove best = *std::max_element(std::begin(bests), std::end(bests));
    // What stood here goes where the best has stood.
    const RankedMove place = best & placeBits;
    batch[maxMoves - 1 - (place >> placeShift)] = (next & ~placeBits) | place;
    batch[first] = handedOutMark;
    return best;
}

bool isHeldBack(MovePicker& picker, RankedMove ranked) {
    if (!picker.holdsBack) return false;
    const Move move = moveOf(ranked);
    if (moveKind(move) > doublePush || takesItsLike(static_cast<std::int32_t>(ranked >> scoreShift))) return false;
    if (picker.kingStepsAreSafe && (bit(moveFrom(move)) & picker.position.of(picker.position.sideToMove(), king)) != 0) {
        return false;
    }
    if (!losesMaterial(picker.position, move)) return false;
    if (picker.deferredCount < maxMoves) picker.deferred[picker.deferredCount++] = move;
    return true;
}

// Answers the next stage's move if that is a single one; else 0, with the stage's batch made.
Move openNextStage(MovePicker& picker) {
    picker.stage = stageLists[static_cast<int>(picker.kind)][picker.stageIndex++];
    picker.batchCount = 0;
    picker.batchNext = 0;
    picker.ordered = false;
    picker.holdsBack = picker.stage == captures || picker.stage == evasions || picker.stage == quietChecks;
    switch (picker.stage) {
    case hashMove: return handOutAhead(picker, picker.hashMove, picker.aheadOfBatch[0]);
    case captures: generateCaptures(picker); break;
    case firstKiller: return handOutAhead(picker, picker.killers[0], picker.aheadOfBatch[1]);
    case secondKiller: return handOutAhead(picker, picker.killers[1], picker.aheadOfBatch[2]);
    case quietMoves: generateQuiets(picker); break;
    case evasions: generateEvasions(picker); break;
    case quietChecks: generateQuietChecks(picker); break;
    case deferred: openDeferred(picker); break;
    case start:
    case end: break;
    }
    if (picker.ordered) closeBatch(picker);
    return nullMove;
}

} // namespace

Move nextMove(MovePicker& picker) {
    for (;;) {
        while (picker.batchNext < picker.batchCount) {
            const RankedMove ranked = takeFromBatch(picker);
            const Move move = moveOf(ranked);
            // Batches share no moves with one another, so the moves handed out ahead of theirs are all there
            // is to skip.
            const bool wasAhead = (move == picker.aheadOfBatch[0]) | (move == picker.aheadOfBatch[1]) |
                                  (move == picker.aheadOfBatch[2]); // one branch
            if (wasAhead) continue;
            if (isHeldBack(picker, ranked)) continue;
            return handOut(picker, move);
        }
        if (picker.stage == end) return nullMove;
        const Move single = openNextStage(picker);
        if (single != nullMove) return single;
    }
}

} // namespace helvan
