// SPDX-License-Identifier: MIT
#include "eval/evaluate.h"

#include <algorithm>
#include <cstring>

#include "board/attacks.h"
#include "board/castling.h"
#include "board/geometry.h"
#include "board/piece_square.h"
#include "eval/endings.h"
#include "eval/eval_caches.h"
#include "eval/evaluation.h"
#include "eval/parameters.h"
#include "eval/passed_pawns.h"
#include "eval/pawn_structure.h"
#include "eval/piece_terms.h"
#include "eval/scaling.h"
#include "eval/tables.h"

namespace helvan {

namespace {

// Who watches the terms come in: nobody, or an explanation. Inlined away where it is nobody.
struct NobodyWatches {
    void operator()(const char* /*term*/, const Evaluation& /*soFar*/) const {}
};

struct TermWatcher {
    std::vector<EvalExplanation::Term>& terms;
    PackedScore before[2] = {};

    // The pieces come twice, for white and for black: one row for both.
    void operator()(const char* name, const Evaluation& e) {
        auto row = std::find_if(terms.begin(), terms.end(),
                                [&](const auto& term) { return std::strcmp(term.name, name) == 0; });
        if (row == terms.end()) row = terms.insert(row, {name, {}, {}});
        row->white += e.credit[white] - before[white];
        row->black += e.credit[black] - before[black];
        before[white] = e.credit[white];
        before[black] = e.credit[black];
    }
};

template <Colour us> void setUp(Evaluation& e) {
    const Position& position = e.position;
    e.kingSquare[us] = lowestBit(position.of(us, king));
    e.pawnCount[us] = popCount(position.of(us, pawn));
    for (PieceType type = knight; type <= queen; ++type) {
        const int count = popCount(position.of(us, type));
        e.pieceWeight[us] += count * pieceWeights[type];
        e.pieceCount[us] += count;
    }
    e.attacks[us][pawn] = pawnAttacks(us, position.of(us, pawn));
    e.attacks[us][king] = kingAttacks[e.kingSquare[us]];
    e.attacks[us][knight] = 0;
    for (Bitboard knights = position.of(us, knight); knights != 0;) {
        e.attacks[us][knight] |= knightAttacks[popLowestBit(knights)];
    }
}

template <Colour us> void evaluateCastlingRights(Evaluation& e) {
    constexpr const CastlingRight& kingSide = castlingRights[2 * us];
    constexpr const CastlingRight& queenSide = castlingRights[2 * us + 1];
    if (stands(kingSide, e.position.touched)) e.credit[us] += evalParameters.kingSideRight;
    if (stands(queenSide, e.position.touched)) e.credit[us] += evalParameters.queenSideRight;
}

template <Colour us> void evaluateTrappedRook(Evaluation& e) {
    constexpr int toOwnRank = us == white ? 0 : 56;
    constexpr Bitboard kings = (bit(f1) | bit(g1)) << toOwnRank;
    constexpr Bitboard corner =
        us == white ? bit(g1) | bit(h1) | bit(g2) | bit(h2) : bit(g8) | bit(h8) | bit(g7) | bit(h7);
    if ((e.position.of(us, king) & kings) != 0 && (e.position.of(us, rook) & corner) != 0) {
        e.credit[us] += evalParameters.trappedRook;
    }
}

template <Colour us, typename Watcher> void evaluatePieces(Evaluation& e, Watcher& watch) {
    const PieceContext context = preparePieces<us>(e);
    evaluateKnightPins<us>(e);
    watch("aims at king", e);
    evaluateKnights<us>(e, context);
    watch("knights", e);
    evaluateBishops<us>(e, context);
    watch("bishops", e);
    evaluateRooks<us>(e, context);
    watch("rooks", e);
    evaluateQueens<us>(e, context);
    watch("queens", e);
    evaluateKingSafety<us>(e);
    watch("attack on king", e);
}

// Enemy pieces that the side would win something for: taken by less, or left without a defender.
template <Colour us> void evaluateThreats(Evaluation& e) {
    constexpr Colour them = opponent(us);
    const Position& position = e.position;
    const Bitboard(&own)[boardsPerColour] = e.attacks[us];
    const Bitboard(&enemy)[boardsPerColour] = e.attacks[them];
    const Bitboard enemies = position.of(them, allPieces);
    const Bitboard defended = enemy[pawn] | enemy[knight] | enemy[bishop] | enemy[rook] | enemy[queen] | enemy[king];
    const Bitboard byLess = (own[pawn] & ~position.of(them, pawn)) |
                            ((own[knight] | own[bishop]) & position.straightSliders(them)) |
                            (own[rook] & position.of(them, queen));
    const Bitboard loose =
        ~defended & ((own[bishop] & ~position.of(them, bishop)) | (own[queen] & ~position.of(them, queen)) | own[king] |
                     own[knight] | (own[rook] & ~position.of(them, rook)));
    e.credit[us] += evalParameters.threatTable[popCount(enemies & (byLess | loose))];
}

// How pieces and pawns stand to one another.
template <Colour us> void evaluatePawnRelations(Evaluation& e) {
    constexpr Colour them = opponent(us);
    const Position& position = e.position;
    const Bitboard outOfReach = ~pawnAttackSpan(them, position.of(them, pawn));
    const Bitboard beforeEnemyPawns = pawnSteps(them, position.of(them, pawn));
    const Bitboard minors = position.of(us, knight) | position.of(us, bishop);
    PackedScore score = evalParameters.outpostTable[popCount((minors | position.of(us, rook)) & outOfReach)];
    score += evalParameters.knightBlockadeTable[popCount(position.of(us, knight) & beforeEnemyPawns & outOfReach)];

    const Bitboard blocked = position.of(them, pawn) & pawnSteps(us, e.occupied);
    score += evalParameters.blockedPawnTable[popCount(blocked)];
    // The pawns that the enemy would open its game with: away from its king.
    constexpr int fromSeventhToSecond = b7 - b2; // squares
    const Bitboard leftCentre = bit(b7) | bit(c7) | bit(d7) | bit(e7);
    const Bitboard rightCentre = bit(d7) | bit(e7) | bit(f7) | bit(g7);
    const Bitboard centre = fileOf(e.kingSquare[them]) >= fileOf(e1) ? leftCentre : rightCentre;
    const Bitboard home = us == white ? centre : centre >> fromSeventhToSecond;
    score += evalParameters.blockedCentrePawnTable[popCount(blocked & home)];

    score += evalParameters.pieceBehindPawnTable[popCount(minors & pawnSteps(them, position.of(us, pawn)))];
    if ((position.of(us, bishop) & pawnSteps(us, position.of(us, king))) != 0) {
        score += evalParameters.bishopBeforeKing;
    }
    e.credit[us] += score;
}

void evaluatePieceLead(Evaluation& e) {
    const int lead = e.pieceCount[white] - e.pieceCount[black];
    if (lead >= decisivePieceLead) e.credit[white] += evalParameters.pieceLead;
    if (lead <= -decisivePieceLead) e.credit[black] += evalParameters.pieceLead;
}

bool haveOppositeBishops(const Evaluation& e) {
    constexpr int oddBishops = 4; // in the low three bits of a weight
    const Bitboard bishops = e.position.of(white, bishop) | e.position.of(black, bishop);
    return (e.pieceWeight[white] & 7) == oddBishops && (e.pieceWeight[black] & 7) == oddBishops &&
           (bishops & darkSquares) != 0 && (bishops & ~darkSquares) != 0;
}

ScaledSide scaledSide(const Evaluation& e, Colour us) {
    const auto& list = e.pawns->passed[us];
    const auto passed = std::find(std::begin(list), std::end(list), 0) - std::begin(list);
    return {e.pieceWeight[us], e.pawnCount[us], static_cast<int>(passed)};
}

struct Scaling {
    int bishopScale;
    int materialScale;
    std::int64_t value;
};

Scaling scaleByMaterial(const Evaluation& e, std::int64_t blended, int phase, int endingScale) {
    const ScaledSide sides[2] = {scaledSide(e, white), scaledSide(e, black)};
    const auto stronger = [](std::int64_t value) { return value < 0 ? black : white; };
    OppositeBishopScale bishops = {fullScale, true};
    if (haveOppositeBishops(e)) bishops = oppositeBishopScale(sides, stronger(blended), phase);
    const std::int64_t afterBishops = scaled(blended, bishops.scale);
    const bool rules = bishops.materialRules && endingScale == fullScale;
    const int materialScale = rules ? scarceMaterialScale(sides, stronger(afterBishops)) : endingScale;
    return {bishops.scale, materialScale, scaled(afterBishops, materialScale)};
}

// Centipawns for the side to move.
int finish(std::int64_t scaledValue, Colour sideToMove, int tempo) {
    const std::int64_t whiteView = roundedQuotient<fullPhase>(scaledValue);
    const std::int64_t view = (sideToMove == white ? whiteView : -whiteView) + tempo;
    return static_cast<int>(std::clamp<std::int64_t>(roundedQuotient<thousandthsPerCentipawn>(view), -largestEvaluation,
                                                     largestEvaluation));
}

// pawnsOf() answers the entry of the position's pawns; asked late, when a prefetched one has come.
template <typename PawnsOf, typename Watcher> void evaluateTerms(Evaluation& e, PawnsOf pawnsOf, Watcher& watch) {
    setUp<white>(e);
    setUp<black>(e);
    evaluateCastlingRights<white>(e);
    evaluateCastlingRights<black>(e);
    watch("castling rights", e);
    evaluateTrappedRook<white>(e);
    evaluateTrappedRook<black>(e);
    watch("trapped rook", e);
    evaluatePieces<white>(e, watch);
    evaluatePieces<black>(e, watch);
    evaluateThreats<white>(e);
    evaluateThreats<black>(e);
    watch("threats", e);
    e.pawns = &pawnsOf();
    evaluatePassedPawns<white>(e);
    evaluatePassedPawns<black>(e);
    watch("passed pawns", e);
    evaluatePawnRelations<white>(e);
    evaluatePawnRelations<black>(e);
    watch("pawns and pieces", e);
    evaluatePieceLead(e);
    watch("piece lead", e);
}

PackedScore total(const Evaluation& e) {
    return e.credit[white] - e.credit[black] + e.position.pstScore + e.pawns->score;
}

// A known ending that is judged as a whole, for the side to move.
int specialScore(const EndingEntry& ending, const Position& position) {
    const int whiteView = ending.evaluator(position);
    return position.sideToMove() == white ? whiteView : -whiteView;
}

constexpr EndingEntry noEnding = {.scale = fullScale};

const EndingEntry& endingOf(const Position& position) {
    const EndingEntry* ending = findEnding(position.materialKey);
    return ending != nullptr ? *ending : noEnding;
}

// Thousandths of a pawn x 96, white's view.
std::int64_t blendedValue(const Evaluation& e, const EndingEntry& ending, int phase) {
    return blendByPhase(total(e), phase) + std::int64_t{ending.score} * fullPhase;
}

} // namespace

int evaluate(const Position& position, EvalCaches& caches) {
    EvalCacheEntry& slot = caches.evalCache[position.key & evalCacheMask];
    if (slot.key == position.key) return slot.score;
    const EndingEntry& ending = endingOf(position);
    if (ending.evaluator != nullptr) return specialScore(ending, position);

    prefetchPawns(caches, position.pawnKey);
    Evaluation e(position);
    NobodyWatches nobody;
    evaluateTerms(
        e, [&]() -> const PawnEntry& { return evaluatePawns(position, caches); }, nobody);
    const int phase = minimum(position.phase, fullPhase);
    const Scaling scaling = scaleByMaterial(e, blendedValue(e, ending, phase), phase, ending.scale);
    const int score = finish(scaling.value, position.sideToMove(), evalTables.tempoByPhase[phase]);
    slot = {position.key, score};
    return score;
}

EvalExplanation explainEvaluation(const Position& position) {
    EvalExplanation explanation;
    const EndingEntry& ending = endingOf(position);
    if (ending.evaluator != nullptr) {
        explanation.special = true;
        explanation.score = specialScore(ending, position);
        return explanation;
    }
    Evaluation e(position);
    TermWatcher watcher{explanation.terms};
    const PawnEntry pawns = pawnEntryOf(position);
    evaluateTerms(
        e, [&]() -> const PawnEntry& { return pawns; }, watcher);
    explanation.terms.push_back({"material, squares", pstOf(position, white), -pstOf(position, black)});
    explanation.terms.push_back({"pawn structure", pawnStructureOf(position, white), pawnStructureOf(position, black)});
    explanation.endingBonus = ending.score;
    explanation.phase = minimum(position.phase, fullPhase);
    explanation.blended = blendedValue(e, ending, explanation.phase);
    const Scaling scaling = scaleByMaterial(e, explanation.blended, explanation.phase, ending.scale);
    explanation.bishopScale = scaling.bishopScale;
    explanation.materialScale = scaling.materialScale;
    explanation.scaled = scaling.value;
    explanation.tempo = evalTables.tempoByPhase[explanation.phase];
    explanation.score = finish(scaling.value, position.sideToMove(), explanation.tempo);
    return explanation;
}

PackedScore evaluateUnblended(const Position& position, EvalCaches& caches) {
    Evaluation e(position);
    NobodyWatches nobody;
    evaluateTerms(
        e, [&]() -> const PawnEntry& { return evaluatePawns(position, caches); }, nobody);
    return total(e);
}

} // namespace helvan
