// SPDX-License-Identifier: MIT
#include "tools/tune/linear_model.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <span>

#include "board/piece_square.h"
#include "eval/endings.h"
#include "eval/evaluate.h"
#include "eval/parameters.h"
#include "eval/tables.h"
#include "tools/tune/slices.h"

namespace helvan {

namespace {

constexpr double thousandthsPerPawn = 1000.0;
constexpr double perMille = 1000.0;
constexpr std::size_t positionsAtOnce = 1 << 18; // whose columns are in memory together

constexpr int filesPerRank = 8;

bool isBoard(const ParameterRow& row) { return row.count == 64; }

// Of a square's index in a board, the index in the same rank on the other side.
int acrossTheBoard(int index) { return index ^ (filesPerRank - 1); }

using Column = std::vector<std::int8_t>; // of one open value, by position: how often it counts

// Where a piece stands is all that its square's value depends on: no need to evaluate.
Column squareColumn(std::span<const Position> positions, PieceType type, int index) {
    const Square left = mirrored(index); // boards begin with a8
    const Bitboard squares = bit(left) | bit(acrossTheBoard(left));
    const Bitboard forBlack = bit(mirrored(left)) | bit(mirrored(acrossTheBoard(left)));
    Column column;
    for (const Position& position : positions) {
        const int count = popCount(position.of(white, type) & squares) - popCount(position.of(black, type) & forBlack);
        column.push_back(static_cast<std::int8_t>(count));
    }
    return column;
}

// Endgame lanes of the evaluations' sums: they tell for both, a value counts as often in the one as in the other.
std::vector<int> endgameSums(std::span<const Position> positions, std::vector<EvalCaches>& caches) {
    std::vector<int> sums(positions.size());
    const auto threads = static_cast<int>(caches.size());
    for (EvalCaches& cache : caches) clearPawnTable(cache);
    forSlices({0, positions.size()}, threads, [&](std::size_t slice, Range range) {
        EvalCaches& cache = caches[slice % caches.size()]; // each thread's own
        for (std::size_t i = range.first; i < range.end; ++i) {
            sums[i] = evaluateUnblended(positions[i], cache).endgame();
        }
    });
    return sums;
}

// Several values are probed at once, raised by different powers of the radix: the digits of the difference are their
// coefficients.
constexpr int probeRadix = 128; // twice what a coefficient can be: eight pawns count seven steps each
constexpr std::size_t probedAtOnce = 4;

void appendProbedColumns(std::span<const Position> positions, std::span<const OpenValue> values,
                         const std::vector<int>& sums, std::vector<EvalCaches>& caches, std::vector<Column>& columns) {
    int raise = 1;
    for (const OpenValue& value : values) {
        *value.value += packed(0, raise);
        raise *= probeRadix;
    }
    initEvalTables();
    const std::vector<int> raisedSums = endgameSums(positions, caches);
    raise = 1;
    for (const OpenValue& value : values) {
        *value.value -= packed(0, raise);
        raise *= probeRadix;
    }
    const std::size_t first = columns.size();
    columns.resize(first + values.size(), Column(positions.size()));
    for (std::size_t i = 0; i < positions.size(); ++i) {
        int difference = raisedSums[i] - sums[i];
        for (std::size_t k = 0; k < values.size(); ++k) {
            const int above = difference + probeRadix / 2;
            const int quotient = above >= 0 ? above / probeRadix : -((-above + probeRadix - 1) / probeRadix);
            columns[first + k][i] = static_cast<std::int8_t>(difference - quotient * probeRadix);
            difference = quotient;
        }
    }
}

PieceType boardOf(const PackedScore* value) {
    for (PieceType type = pawn; type <= king; ++type) {
        const SquareValues& board = evalParameters.squares[type];
        if (value >= board.data() && value < board.data() + board.size()) return type;
    }
    return allPieces;
}

std::vector<Column> columnsOf(std::span<const Position> positions, const std::vector<OpenValue>& open,
                              std::vector<EvalCaches>& caches) {
    const std::vector<int> sums = endgameSums(positions, caches);
    std::vector<Column> columns;
    while (columns.size() < open.size()) {
        const std::size_t first = columns.size();
        const PieceType type = boardOf(open[first].value);
        if (type != allPieces) {
            const int index = static_cast<int>(open[first].value - evalParameters.squares[type].data());
            columns.push_back(squareColumn(positions, type, index));
            continue;
        }
        std::size_t end = first + 1;
        while (end < open.size() && end < first + probedAtOnce && boardOf(open[end].value) == allPieces) ++end;
        appendProbedColumns(positions, {&open[first], end - first}, sums, caches, columns);
    }
    initEvalTables();
    return columns;
}

// Adds the positions' rows to the matrix.
void appendRows(LinearModel& model, std::span<const Position> positions, const std::vector<OpenValue>& open,
                std::vector<EvalCaches>& caches) {
    const std::vector<Column> columns = columnsOf(positions, open, caches);
    for (std::size_t i = 0; i < positions.size(); ++i) {
        for (std::size_t variable = 0; variable < columns.size(); ++variable) {
            if (columns[variable][i] == 0) continue;
            model.variables.push_back(static_cast<std::uint16_t>(variable));
            model.coefficients.push_back(columns[variable][i]);
        }
        model.begin.push_back(model.coefficients.size());
    }
}

double tempoInPawns(const EvalExplanation& explanation, Colour sideToMove) {
    return (sideToMove == white ? explanation.tempo : -explanation.tempo) / thousandthsPerPawn;
}

// The factor for scarce material if the colour is ahead: the evaluation's own, once it is given a great lead.
float scaleWithLead(Position position, Colour colour) {
    constexpr int greatLead = 100'000;
    const PackedScore lead = packed(greatLead, greatLead);
    position.pstScore += colour == white ? lead : -lead;
    const EvalExplanation explanation = explainEvaluation(position);
    return static_cast<float>(explanation.bishopScale / perMille * (explanation.materialScale / perMille));
}

void addConstants(LinearModel& model, const Position& position) {
    const EvalExplanation explanation = explainEvaluation(position);
    const double blended = static_cast<double>(explanation.blended) / fullPhase;
    model.unchanged.push_back(static_cast<float>(blended / thousandthsPerPawn));
    model.openingShare.push_back(static_cast<float>(explanation.phase) / fullPhase);
    model.tempo.push_back(static_cast<float>(tempoInPawns(explanation, position.sideToMove())));
    for (const Colour colour : {white, black}) model.scale[colour].push_back(scaleWithLead(position, colour));
}

bool touch(int a, int b, int columns) {
    return std::abs(a % columns - b % columns) + std::abs(a / columns - b / columns) == 1;
}

std::vector<SmoothnessTerm> smoothnessTermsAmong(const std::vector<OpenValue>& open) {
    std::vector<SmoothnessTerm> found;
    const auto ofRow = [&](std::size_t value, const ParameterRow* row) {
        return value < open.size() && open[value].row == row;
    };
    const auto indexOf = [&](std::size_t value) {
        return static_cast<int>(open[value].value - open[value].row->values);
    };
    for (std::size_t first = 0; first < open.size(); ++first) {
        const ParameterRow* const row = open[first].row;
        const auto a = static_cast<std::uint16_t>(first);
        if (row->columns == row->count) {
            if (!ofRow(first + 2, row)) continue;
            found.push_back({{a, static_cast<std::uint16_t>(a + 1), static_cast<std::uint16_t>(a + 2)}, {1, -2, 1}});
            continue;
        }
        for (std::size_t second = first + 1; ofRow(second, row); ++second) {
            if (!touch(indexOf(first), indexOf(second), row->columns)) continue;
            found.push_back({{a, static_cast<std::uint16_t>(second), a}, {1, -1, 0}});
        }
    }
    return found;
}

PackedScore changed(PackedScore value, Change change) {
    return packed(value.opening() + std::lround(change.opening * thousandthsPerPawn),
                  value.endgame() + std::lround(change.endgame * thousandthsPerPawn));
}

} // namespace

std::vector<OpenValue> openValues() {
    std::vector<OpenValue> open;
    for (const ParameterRow& row : parameterRows()) {
        for (int i = row.open.first; i < row.open.end; ++i) {
            if (!isBoard(row)) {
                open.push_back({row.values + i, nullptr, &row});
            } else if (i < acrossTheBoard(i)) {
                open.push_back({row.values + i, row.values + acrossTheBoard(i), &row});
            }
        }
    }
    return open;
}

void dropSpecialEndings(TrainingSet& set) {
    set.keepIf([](const Position& position) {
        const EndingEntry* ending = findEnding(position.materialKey);
        return ending == nullptr || ending->evaluator == nullptr;
    });
}

LinearModel linearModelOf(const TrainingSet& set, const std::vector<OpenValue>& open, int threads, bool showProgress) {
    LinearModel model;
    model.valueCount = open.size();
    for (const OpenValue& value : open) {
        model.present.push_back(
            {value.value->opening() / thousandthsPerPawn, value.value->endgame() / thousandthsPerPawn});
    }
    model.smoothnessTerms = smoothnessTermsAmong(open);
    for (auto* perPosition :
         {&model.unchanged, &model.openingShare, &model.tempo, &model.scale[white], &model.scale[black]}) {
        perPosition->reserve(set.size());
    }
    for (const Position& position : set.positions) addConstants(model, position);
    std::vector<EvalCaches> caches(static_cast<std::size_t>(threads));
    model.begin.push_back(0);
    for (std::size_t first = 0; first < set.size(); first += positionsAtOnce) {
        const std::size_t count = std::min(positionsAtOnce, set.size() - first);
        appendRows(model, {&set.positions[first], count}, open, caches);
        if (showProgress) std::fprintf(stderr, "\rprobed %zu of %zu positions", first + count, set.size());
    }
    if (showProgress) std::fprintf(stderr, "\n");
    return model;
}

double LinearModel::unscaled(std::size_t position, const std::vector<Change>& changes) const {
    double opening = 0.0, endgame = 0.0;
    for (std::size_t at = begin[position]; at < begin[position + 1]; ++at) {
        const Change& change = changes[variables[at]];
        opening += change.opening * coefficients[at];
        endgame += change.endgame * coefficients[at];
    }
    const double share = openingShare[position];
    return unchanged[position] + share * opening + (1.0 - share) * endgame;
}

double LinearModel::predicted(std::size_t position, const std::vector<Change>& changes) const {
    const double value = unscaled(position, changes);
    return value * scaleOf(position, value) + tempo[position];
}

double evaluationInPawns(Position position) {
    refreshPieceSums(position); // they may be of other parameters
    const EvalExplanation explanation = explainEvaluation(position);
    const double scaled = static_cast<double>(explanation.scaled) / fullPhase;
    return scaled / thousandthsPerPawn + tempoInPawns(explanation, position.sideToMove());
}

void applyChanges(const std::vector<OpenValue>& open, const std::vector<Change>& changes) {
    for (std::size_t i = 0; i < open.size(); ++i) {
        *open[i].value = changed(*open[i].value, changes[i]);
        if (open[i].twin != nullptr) *open[i].twin = *open[i].value;
    }
    initAllEvaluation();
}

} // namespace helvan
