// SPDX-License-Identifier: MIT
//
// Logistic regression: the open values with which the evaluation tells best what comes of a position.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tools/tune/linear_model.h"

namespace helvan {

struct RegressionSettings {
    double blend = 0.7;       // how much of the target is the search score, the rest being the game's result; 0..1
    double l2 = 2e-7;         // the penalty of a value, times its square in pawns; above 0
    double smoothness = 1e-5; // the penalty of a table's unevenness, times its square in pawns
    double scale = 0.9;       // pawns of the evaluation at which it expects 1 / (1 + 1/e) of a point
    int foldCount = 10;       // games whose number this divides are kept for validation, those one above for the test
    int threads = 2;          // the outcome does not depend on it
    bool showProgress = true;
};

using PositionIndices = std::vector<std::uint32_t>;

// What is to be predicted, and from which positions.
struct RegressionTask {
    std::vector<float> targets; // by position: the expected points of white
    PositionIndices training;
    PositionIndices validation; // by which settings are chosen
    PositionIndices test;       // for the last word on what was chosen
    double searchScale = 0.0;   // pawns of the search scores at which white expects 1 / (1 + 1/e) of a point
    double scale = 0.0;         // the same of the evaluation
};

struct RegressionOutcome {
    std::vector<Change> changes;
    int steps = 0;
    double trainingBefore = 0.0; // mean cross-entropies
    double trainingAfter = 0.0;
    double validationBefore = 0.0;
    double validationAfter = 0.0;
};

// Splits the positions by their games and fits the search's scale to the results of the training positions.
RegressionTask prepareTask(const TrainingSet& set, const RegressionSettings& settings);

// The changes with the least sum of loss and penalties. For this model it does not matter what the values were before:
// with the values that a fit has found a second one finds no changes, but for their rounding.
RegressionOutcome fitChanges(const LinearModel& model, const RegressionTask& task, const RegressionSettings& settings);

// The mean loss of evaluations, in pawns by position, on some of the positions.
double meanLoss(const RegressionTask& task, const PositionIndices& positions, const std::vector<float>& evaluations,
                int threads);

// The scale in pawns with which the evaluations would have the least loss on the training positions.
double fittedScale(const RegressionTask& task, const std::vector<float>& evaluations, int threads);

} // namespace helvan
