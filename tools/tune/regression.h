// SPDX-License-Identifier: MIT
//
// Logistic regression: the changes of the open values after which the evaluation tells best what comes of a position.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tools/tune/linear_model.h"

namespace helvan {

struct RegressionSettings {
    double blend = 1.0;       // how much of the target is the search score, the rest being the game's result; 0..1
    double l2 = 2e-5;         // the loss that a pawn's change of one value costs by itself
    double smoothness = 2e-5; // the loss that a pawn's difference between the changes of two neighbours costs
    double rate = 0.003;      // Adam's step in pawns at the start; it falls to zero in a straight line
    int epochs = 30;          // passes over the training positions at most
    int patience = 8;         // epochs without a better validation loss that end it
    int batch = 16384;        // positions
    int validationEvery = 10; // games whose number this divides are kept for validation
    std::uint64_t seed = 1;
    int threads = 2; // the outcome does not depend on it
    bool showProgress = true;
};

// What is to be predicted, and from which positions.
struct RegressionTask {
    std::vector<float> targets; // by position: the expected points of white
    std::vector<std::uint32_t> training;
    std::vector<std::uint32_t> validation;
    double searchScale = 0.0; // centipawns of the search at which white expects 1 / (1 + 1/e) of a point
    double scale = 0.0;       // the same in pawns of the evaluation, before any change
};

struct RegressionOutcome {
    std::vector<Change> changes; // those of the epoch with the best validation loss
    int bestEpoch = 0;           // 0 if none was better than no change
    double trainingBefore = 0.0; // mean cross-entropies
    double trainingAfter = 0.0;
    double validationBefore = 0.0;
    double validationAfter = 0.0;
};

// Whether a game's positions are for validation. The others are for training.
inline bool isForValidation(int game, const RegressionSettings& settings) {
    return game % settings.validationEvery == 0;
}

// Splits the positions by their games and fits both scales to the training positions. The model is of the set, which
// has games of both kinds.
RegressionTask prepareTask(const TrainingSet& set, const LinearModel& model, const RegressionSettings& settings);

RegressionOutcome fitChanges(const LinearModel& model, const RegressionTask& task, const RegressionSettings& settings);

// The loss on the validation positions of other evaluations, in pawns by position.
double validationLoss(const RegressionTask& task, const std::vector<float>& evaluations);

} // namespace helvan
