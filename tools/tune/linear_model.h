// SPDX-License-Identifier: MIT
//
// The evaluation as a function of its open values: linear, since king attack is fixed and a known ending's bonus a
// constant, and then scaled for scarce material by one of two factors, depending on who is ahead. What this leaves
// out, the choice of the better shelter, small changes hardly move.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "board/packed_score.h"
#include "eval/parameters.h"
#include "tools/tune/training_set.h"

namespace helvan {

// A value of the evaluation that is to be estimated.
struct OpenValue {
    PackedScore* value;
    PackedScore* twin;       // the same square across the board, kept equal; null where there is none
    const ParameterRow* row; // that it is of
};

// In the order of parameterRows.
std::vector<OpenValue> openValues();

// Values that lie together in a row of parameters, and weights with which their sum is small where they change evenly:
// the difference of two that touch along an edge where the row is drawn as a table of several columns and rows, the
// bend at the middle one of three where it is a single row.
struct SmoothnessTerm {
    std::array<std::uint16_t, 3> values; // indices of open values
    std::array<double, 3> weights;       // the third is 0 for two values
};

// An open value, or what is added to it, in pawns.
struct Change {
    double opening = 0.0;
    double endgame = 0.0;
};

// The positions' coefficients as a sparse matrix, row by row: those of position i lie from begin[i] to begin[i + 1].
struct LinearModel {
    std::size_t valueCount = 0;  // of the open values
    std::vector<Change> present; // what they are, in pawns: the changes are added to this
    std::vector<SmoothnessTerm> smoothnessTerms;
    std::vector<std::size_t> begin;
    std::vector<std::uint16_t> variables;  // indices of open values, rising in each row
    std::vector<std::int8_t> coefficients; // how often the value counts for white, less how often for black
    // By position, from white's view.
    std::vector<float> unchanged;    // the unscaled evaluation by the present parameters, in pawns
    std::vector<float> openingShare; // of the opening values in it, by the phase: 0..1
    std::vector<float> tempo;        // what the move is worth, in pawns
    std::vector<float> scale[2];     // the factor for scarce material where white is ahead, and where black is

    std::size_t size() const { return unchanged.size(); }
    // The evaluation with the changes, in pawns.
    double predicted(std::size_t position, const std::vector<Change>& changes) const;
    // The evaluation before the factor, and the factor that then applies.
    double unscaled(std::size_t position, const std::vector<Change>& changes) const;
    double scaleOf(std::size_t position, double unscaledValue) const {
        return scale[unscaledValue < 0 ? black : white][position];
    }
};

// Drops the positions of special endings, which no open value touches.
void dropSpecialEndings(TrainingSet& set);

// Finds the coefficients by raising open values and counting pieces; leaves the parameters and tables as they were.
// No position is of a special ending. Progress goes to standard error if wanted.
LinearModel linearModelOf(const TrainingSet& set, const std::vector<OpenValue>& open, int threads, bool showProgress);

// The position's evaluation by the present parameters in pawns, white's view, not rounded to centipawns.
double evaluationInPawns(Position position);

// Adds the changes, rounded to thousandths, to the parameters and builds the tables anew.
void applyChanges(const std::vector<OpenValue>& open, const std::vector<Change>& changes);

} // namespace helvan
