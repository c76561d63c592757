// SPDX-License-Identifier: MIT
#include "tools/tune/linear_model.h"

#include <cmath>
#include <cstdio>
#include <memory>

#include "board/piece_square.h"
#include "eval/endings.h"
#include "eval/evaluate.h"
#include "eval/parameters.h"
#include "eval/tables.h"

namespace helvan {

namespace {

constexpr double thousandthsPerPawn = 1000.0;
constexpr double perMille = 1000.0;

constexpr int filesPerRank = 8;

bool isBoard(const ParameterRow& row) { return row.count == 64; }

// Of a square's index in a board, the index in the same rank on the other side.
int acrossTheBoard(int index) { return index ^ (filesPerRank - 1); }

struct Coefficient {
    std::uint32_t position;
    float value;
};

using Column = std::vector<Coefficient>; // of one open value, by position

// Where a piece stands is all that its square's value depends on: no need to evaluate.
Column squareColumn(const TrainingSet& set, PieceType type, int index) {
    const Square left = mirrored(index); // boards begin with a8
    const Bitboard squares = bit(left) | bit(acrossTheBoard(left));
    const Bitboard forBlack = bit(mirrored(left)) | bit(mirrored(acrossTheBoard(left)));
    Column column;
    for (std::size_t i = 0; i < set.size(); ++i) {
        const Position& position = set.positions[i];
        const int count = popCount(position.of(white, type) & squares) - popCount(position.of(black, type) & forBlack);
        if (count != 0) column.push_back({static_cast<std::uint32_t>(i), static_cast<float>(count)});
    }
    return column;
}

Column probedColumn(const TrainingSet& set, const std::vector<PackedScore>& sums, PackedScore& value,
                    EvalCaches& caches) {
    const PackedScore before = value;
    value += packed(1, 1);
    initEvalTables();
    clearPawnTable(caches);
    Column column;
    for (std::size_t i = 0; i < set.size(); ++i) {
        // The endgame lane tells for both: a value counts as often in the one as in the other.
        const int difference = evaluateUnblended(set.positions[i], caches).endgame() - sums[i].endgame();
        if (difference != 0) {
            column.push_back({static_cast<std::uint32_t>(i), static_cast<float>(difference)});
        }
    }
    value = before;
    return column;
}

std::vector<PackedScore> unblendedSums(const TrainingSet& set, EvalCaches& caches) {
    std::vector<PackedScore> sums;
    for (const Position& position : set.positions) sums.push_back(evaluateUnblended(position, caches));
    return sums;
}

PieceType boardOf(const PackedScore* value) {
    for (PieceType type = pawn; type <= king; ++type) {
        const SquareValues& board = evalParameters.squares[type];
        if (value >= board.data() && value < board.data() + board.size()) return type;
    }
    return allPieces;
}

std::vector<Column> columnsOf(const TrainingSet& set, const std::vector<OpenValue>& open, bool showProgress) {
    const auto caches = std::make_unique<EvalCaches>();
    const std::vector<PackedScore> sums = unblendedSums(set, *caches);
    std::vector<Column> columns;
    for (const OpenValue& value : open) {
        const PieceType type = boardOf(value.value);
        if (type == allPieces) {
            columns.push_back(probedColumn(set, sums, *value.value, *caches));
        } else {
            const int index = static_cast<int>(value.value - evalParameters.squares[type].data());
            columns.push_back(squareColumn(set, type, index));
        }
        const bool report = showProgress && (columns.size() % 10 == 0 || columns.size() == open.size());
        if (report) std::fprintf(stderr, "\rprobing value %zu of %zu", columns.size(), open.size());
    }
    initEvalTables();
    if (showProgress) std::fprintf(stderr, "\n");
    return columns;
}

// Turns columns into the matrix's rows.
void transpose(LinearModel& model, const std::vector<Column>& columns, std::size_t rows) {
    model.begin.assign(rows + 1, 0);
    for (const Column& column : columns) {
        for (const Coefficient& coefficient : column) ++model.begin[coefficient.position + 1];
    }
    for (std::size_t i = 0; i < rows; ++i) model.begin[i + 1] += model.begin[i];
    std::vector<std::uint32_t> next(model.begin.begin(), model.begin.end() - 1);
    model.variables.resize(model.begin[rows]);
    model.coefficients.resize(model.begin[rows]);
    for (std::size_t variable = 0; variable < columns.size(); ++variable) {
        for (const Coefficient& coefficient : columns[variable]) {
            const std::uint32_t at = next[coefficient.position]++;
            model.variables[at] = static_cast<std::uint16_t>(variable);
            model.coefficients[at] = coefficient.value;
        }
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

bool areNeighbours(int a, int b, int columns) {
    return std::abs(a % columns - b % columns) + std::abs(a / columns - b / columns) == 1;
}

std::vector<Neighbours> neighboursAmong(const std::vector<OpenValue>& open) {
    std::vector<Neighbours> found;
    for (std::size_t first = 0; first < open.size(); ++first) {
        for (std::size_t second = first + 1; second < open.size() && open[second].row == open[first].row; ++second) {
            const PackedScore* values = open[first].row->values;
            const auto a = static_cast<int>(open[first].value - values),
                       b = static_cast<int>(open[second].value - values);
            if (!areNeighbours(a, b, open[first].row->columns)) continue;
            found.push_back({static_cast<std::uint16_t>(first), static_cast<std::uint16_t>(second)});
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

LinearModel linearModelOf(const TrainingSet& set, const std::vector<OpenValue>& open, bool showProgress) {
    LinearModel model;
    model.valueCount = open.size();
    model.neighbours = neighboursAmong(open);
    for (const Position& position : set.positions) addConstants(model, position);
    transpose(model, columnsOf(set, open, showProgress), set.size());
    return model;
}

double LinearModel::unscaled(std::size_t position, const std::vector<Change>& changes) const {
    double opening = 0.0, endgame = 0.0;
    for (std::uint32_t at = begin[position]; at < begin[position + 1]; ++at) {
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
