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

// Whether the stage defers its losing moves.
constexpr bool holdsBack(PickerStage stage) {
    constexpr unsigned stages =
        1U << static_cast<int>(captures) | 1U << static_cast<int>(evasions) | 1U << static_cast<int>(quietChecks);
    return (stages >> static_cast<int>(stage) & 1) != 0;
}

// Scores: history stays between these marks.
constexpr std::int32_t tacticalScore = 1 << 22;
constexpr std::int32_t castlingScore = 1 << 22;
constexpr std::int32_t underPromotionScore = -(1 << 22);

constexpr int scoreShift = 8;
constexpr int placeBits = maxMoves - 1;
static_assert(maxMoves == 1 << scoreShift);

void append(MovePicker& picker, Move move, PieceType mover, PieceType victim, std::int32_t score) {
    if (picker.batchCount == maxMoves) return;
    const int place = picker.batchCount++;
    picker.ranks[place] = score * (1 << scoreShift) + (maxMoves - 1 - place);
    picker.batch[place] = {static_cast<std::uint16_t>(move), static_cast<std::uint8_t>(mover),
                           static_cast<std::uint8_t>(victim)};
}

// By victim, the most valuable first, and among equal victims by the least valuable attacker.
std::int32_t victimScore(PieceType victim, PieceType attacker) {
    return tacticalScore + victim * 8 + (king - attacker);
}

// Whether a move captures what is worth as much as its attacker: it cannot lose.
bool takesItsLike(const PickedMove& picked) { return exchangeValues[picked.victim] >= exchangeValues[picked.mover]; }

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

PieceType victimOf(const MovePicker& picker, Move move) {
    return pieceTypeAt(picker.position, opponent(picker.position.sideToMove()), moveTo(move));
}

void appendTactical(MovePicker& picker, Move move, PieceType type) {
    const PieceType victim = moveKind(move) == enPassant ? pawn : victimOf(picker, move);
    append(picker, move, type, victim, victim == phantom ? queenPushScore : victimScore(victim, type));
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
    for (int i = 0; i < count; ++i) append(picker, moves[i], king, phantom, castlingScore);
}

void appendUnderPromotions(MovePicker& picker, Bitboard captureTargets, Bitboard pushTargets) {
    generateUnderPromotions(picker.position, captureTargets, pushTargets, [&](Move move, PieceType type) {
        append(picker, move, type, victimOf(picker, move), underPromotionScore);
    });
}

void generateQuiets(MovePicker& picker) {
    const Position& position = picker.position;
    const Bitboard empty = ~position.occupied();
    const auto add = [&](Move move, PieceType type) {
        append(picker, move, type, phantom, quietScore(picker.quietOrder, move, type));
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
            append(picker, move, type, phantom, quietScore(picker.quietOrder, move, type));
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
        append(picker, move, type, phantom, quietScore(picker.quietOrder, move, type));
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
    const auto add = [&](Move move, PieceType type) { append(picker, move, type, phantom, 0); };
    const Bitboard diagonalChecks = bishopAttacks(kingSquare, occupied) & ~occupied;
    eachPieceStep<bishop>(position.of(us, bishop), occupied, diagonalChecks, add);
    eachPieceStep<queen>(position.of(us, queen), occupied, diagonalChecks, add);
    eachPieceStep<knight>(position.of(us, knight), occupied, knightAttacks[kingSquare] & ~occupied, add);
    const Bitboard pawnChecks = pawnAttacks(opponent(us), enemyKing) & ~occupied;
    generatePawnPushes(position, pawnChecks, add);
    generateDoublePushes(position, pawnChecks, add);
}

bool wasHandedOut(const MovePicker& picker, Move move) {
    for (int i = 0; i < picker.handedOutCount; ++i) {
        if (picker.handedOut[i] == move) return true;
    }
    return false;
}

Move handOut(MovePicker& picker, PickedMove picked) {
    picker.last = picked;
    if (picker.handedOutCount < maxMoves) picker.handedOut[picker.handedOutCount++] = picked.move;
    return picked.move;
}

// Hands a single move out ahead of the batches, which skip what the slot holds. 0 if the position does not have the
// move or it has been handed out.
Move handOutAhead(MovePicker& picker, Move move, Move& slot) {
    if (move == nullMove) return nullMove; // the usual case, without a call
    if (isPseudoLegal(picker.position, move) == 0 || wasHandedOut(picker, move)) return nullMove;
    slot = move;
    const PieceType mover = pieceTypeAt(picker.position, picker.position.sideToMove(), moveFrom(move));
    return handOut(picker, {static_cast<std::uint16_t>(move), static_cast<std::uint8_t>(mover),
                            static_cast<std::uint8_t>(victimOf(picker, move))});
}

// Takes the batch's next move. What stood first goes where the best has stood.
PickedMove takeFromBatch(MovePicker& picker) {
    const int first = picker.batchNext++;
    if (!picker.ordered || picker.batchNext == picker.batchCount) return picker.batch[first];
    Rank bests[batchStep];
    std::fill(std::begin(bests), std::end(bests), handedOutRank);
    for (int i = first & -batchStep; i < picker.batchCount; i += batchStep) {
        for (int lane = 0; lane < batchStep; ++lane) bests[lane] = std::max(bests[lane], picker.ranks[i + lane]);
    }
    Rank largest = bests[0];
    for (const Rank rank : bests) largest = std::max(largest, rank);
    const int placeBitsOfBest = largest & placeBits;
    const int place = maxMoves - 1 - placeBitsOfBest;
    const PickedMove best = picker.batch[place];
    picker.ranks[place] = (picker.ranks[first] & ~placeBits) | placeBitsOfBest;
    picker.batch[place] = picker.batch[first];
    picker.ranks[first] = handedOutRank;
    return best;
}

bool isHeldBack(MovePicker& picker, const PickedMove& picked) {
    if (!picker.holdsBack) return false;
    const Move move = picked.move;
    if (moveKind(move) > doublePush || takesItsLike(picked)) return false;
    if (picker.kingStepsAreSafe && picked.mover == king) return false;
    if (!losesMaterial(picker.position, move, picked.mover, picked.victim)) return false;
    if (picker.deferredCount < maxMoves) picker.deferred[picker.deferredCount++] = picked;
    return true;
}

void openDeferred(MovePicker& picker) {
    std::copy_n(picker.deferred, picker.deferredCount, picker.batch);
    picker.batchCount = picker.deferredCount;
}

// Answers the next stage's move if that is a single one; else 0, with the stage's batch made.
Move openNextStage(MovePicker& picker) {
    picker.stage = stageLists[static_cast<int>(picker.kind)][picker.stageIndex++];
    picker.batchCount = 0;
    picker.batchNext = 0;
    picker.ordered = false;
    picker.holdsBack = holdsBack(picker.stage);
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
            const PickedMove picked = takeFromBatch(picker);
            const Move move = picked.move;
            // Batches share no moves with one another, so the moves handed out ahead of theirs are all there
            // is to skip.
            const bool wasAhead = (move == picker.aheadOfBatch[0]) | (move == picker.aheadOfBatch[1]) |
                                  (move == picker.aheadOfBatch[2]); // one branch
            if (wasAhead) continue;
            if (isHeldBack(picker, picked)) continue;
            return handOut(picker, picked);
        }
        if (picker.stage == end) return nullMove;
        const Move single = openNextStage(picker);
        if (single != nullMove) return single;
    }
}

} // namespace helvan
