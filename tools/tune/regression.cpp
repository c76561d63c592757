// SPDX-License-Identifier: MIT
#include "tools/tune/regression.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numeric>
#include <random>
#include <thread>

namespace helvan {

namespace {

// Sums are taken slice by slice and then over the slices in order, however many threads share the work: so rounding,
// and with it the outcome, is the same for any number of threads.
constexpr std::size_t sliceCount = 16;

template <typename Work> void forSlices(int threads, Work work) {
    const auto share = [&](std::size_t first) {
        for (std::size_t slice = first; slice < sliceCount; slice += threads) work(slice);
    };
    std::vector<std::thread> others;
    for (int i = 1; i < threads; ++i) others.emplace_back(share, i);
    share(0);
    for (std::thread& other : others) other.join();
}

struct Range {
    std::size_t first;
    std::size_t end;
};

Range sliceOf(Range range, std::size_t slice) {
    const std::size_t size = range.end - range.first;
    return {range.first + size * slice / sliceCount, range.first + size * (slice + 1) / sliceCount};
}

double logistic(double x) { return 1.0 / (1.0 + std::exp(-x)); }

// The cross-entropy of a target and the logistic of x, in a form that no x overflows.
double crossEntropy(double x, double target) {
    return std::max(x, 0.0) - x * target + std::log1p(std::exp(-std::abs(x)));
}

using Positions = std::vector<std::uint32_t>; // indices

// The mean over the positions; evaluations, targets by position, the scale in the evaluations' unit.
double meanLoss(const std::vector<float>& evaluations, const std::vector<float>& targets, const Positions& positions,
                double scale, int threads) {
    double sums[sliceCount];
    forSlices(threads, [&](std::size_t slice) {
        const Range range = sliceOf({0, positions.size()}, slice);
        double sum = 0.0;
        for (std::size_t i = range.first; i < range.end; ++i) {
            sum += crossEntropy(evaluations[positions[i]] / scale, targets[positions[i]]);
        }
        sums[slice] = sum;
    });
    return std::accumulate(std::begin(sums), std::end(sums), 0.0) / static_cast<double>(positions.size());
}

// The scale of the least loss, by golden-section search; the loss has one minimum.
double fittedScale(const std::vector<float>& evaluations, const std::vector<float>& targets, const Positions& positions,
                   int threads) {
    constexpr double least = 0.1, most = 2000.0; // for pawns as for centipawns
    constexpr double golden = 0.6180339887498949;
    constexpr int steps = 30;
    double low = std::log(least), high = std::log(most);
    const auto lossAt = [&](double logarithm) {
        return meanLoss(evaluations, targets, positions, std::exp(logarithm), threads);
    };
    double left = high - golden * (high - low), right = low + golden * (high - low);
    double leftLoss = lossAt(left), rightLoss = lossAt(right);
    // The point that stays inside divides what is left in the same ratio, from the other side.
    for (int step = 0; step < steps; ++step) {
        if (leftLoss < rightLoss) {
            high = right;
            right = left;
            rightLoss = leftLoss;
            left = high - golden * (high - low);
            leftLoss = lossAt(left);
        } else {
            low = left;
            left = right;
            leftLoss = rightLoss;
            right = low + golden * (high - low);
            rightLoss = lossAt(right);
        }
    }
    return std::exp((low + high) / 2);
}

// The model's evaluations by position, of the positions asked for.
std::vector<float> predictions(const LinearModel& model, const Positions& positions, const std::vector<Change>& changes,
                               int threads) {
    std::vector<float> evaluations(model.size());
    forSlices(threads, [&](std::size_t slice) {
        const Range range = sliceOf({0, positions.size()}, slice);
        for (std::size_t i = range.first; i < range.end; ++i) {
            evaluations[positions[i]] = static_cast<float>(model.predicted(positions[i], changes));
        }
    });
    return evaluations;
}

using Gradient = std::vector<Change>; // of the loss, by open value

void addGradient(const LinearModel& model, const RegressionTask& task, const std::vector<Change>& changes,
                 std::uint32_t position, Gradient& gradient) {
    const double value = model.unscaled(position, changes);
    const double scale = model.scaleOf(position, value);
    const double expected = logistic((value * scale + model.tempo[position]) / task.scale);
    const double slope = (expected - task.targets[position]) / task.scale * scale;
    const double opening = slope * model.openingShare[position];
    const double endgame = slope - opening;
    for (std::uint32_t at = model.begin[position]; at < model.begin[position + 1]; ++at) {
        gradient[model.variables[at]].opening += model.coefficients[at] * opening;
        gradient[model.variables[at]].endgame += model.coefficients[at] * endgame;
    }
}

// Adds the slope of cost x change x change.
void addCostSlope(double cost, Change change, Change& slope) {
    slope.opening += 2.0 * cost * change.opening;
    slope.endgame += 2.0 * cost * change.endgame;
}

// One lane of one value under Adam, with its usual constants.
struct AdamLane {
    static constexpr double momentum = 0.9, memory = 0.999, tiny = 1e-8;
    double mean = 0.0;
    double square = 0.0;

    double step(double slope, double rate, int time) {
        mean = momentum * mean + (1.0 - momentum) * slope;
        square = memory * square + (1.0 - memory) * slope * slope;
        const double unbiasedMean = mean / (1.0 - std::pow(momentum, time));
        const double unbiasedSquare = square / (1.0 - std::pow(memory, time));
        return -rate * unbiasedMean / (std::sqrt(unbiasedSquare) + tiny);
    }
};

class Descent {
public:
    Descent(const LinearModel& linearModel, const RegressionTask& regressionTask,
            const RegressionSettings& regressionSettings)
        : model(linearModel), task(regressionTask), settings(regressionSettings), changes(model.valueCount),
          slices(sliceCount, Gradient(model.valueCount)), openingLanes(model.valueCount),
          endgameLanes(model.valueCount), order(task.training), random(settings.seed),
          batches((order.size() + settings.batch - 1) / settings.batch) {}

    void runEpoch() {
        shuffle();
        for (std::size_t batch = 0; batch < batches; ++batch) {
            const std::size_t first = batch * settings.batch;
            descend({first, std::min(first + settings.batch, order.size())});
        }
    }

    const std::vector<Change>& reached() const { return changes; }

private:
    // By hand, since the standard library's shuffle is not the same everywhere.
    void shuffle() {
        for (std::size_t i = order.size(); i > 1; --i) std::swap(order[i - 1], order[random() % i]);
    }

    // Of what the changes cost by themselves, whatever the positions say.
    Gradient costGradient() const {
        Gradient slopes(changes.size());
        for (std::size_t i = 0; i < changes.size(); ++i) addCostSlope(settings.l2, changes[i], slopes[i]);
        for (const auto& [first, second] : model.neighbours) {
            const Change apart = {changes[first].opening - changes[second].opening,
                                  changes[first].endgame - changes[second].endgame};
            addCostSlope(settings.smoothness, apart, slopes[first]);
            addCostSlope(-settings.smoothness, apart, slopes[second]);
        }
        return slopes;
    }

    void descend(Range batch) {
        forSlices(settings.threads, [&](std::size_t slice) {
            Gradient& gradient = slices[slice];
            std::fill(gradient.begin(), gradient.end(), Change{});
            const Range range = sliceOf(batch, slice);
            for (std::size_t i = range.first; i < range.end; ++i) addGradient(model, task, changes, order[i], gradient);
        });
        const Gradient costSlopes = costGradient();
        ++time;
        const double left = 1.0 - static_cast<double>(time) / static_cast<double>(settings.epochs * batches + 1);
        const double perPosition = 1.0 / static_cast<double>(batch.end - batch.first);
        for (std::size_t value = 0; value < changes.size(); ++value) {
            Change sum;
            for (const Gradient& gradient : slices) {
                sum.opening += gradient[value].opening;
                sum.endgame += gradient[value].endgame;
            }
            Change& change = changes[value];
            const double openingSlope = sum.opening * perPosition + costSlopes[value].opening;
            const double endgameSlope = sum.endgame * perPosition + costSlopes[value].endgame;
            change.opening += openingLanes[value].step(openingSlope, settings.rate * left, time);
            change.endgame += endgameLanes[value].step(endgameSlope, settings.rate * left, time);
        }
    }

    const LinearModel& model;
    const RegressionTask& task;
    const RegressionSettings& settings;
    std::vector<Change> changes;
    std::vector<Gradient> slices;
    std::vector<AdamLane> openingLanes, endgameLanes;
    std::vector<std::uint32_t> order;
    std::mt19937_64 random;
    std::size_t batches;
    int time = 0; // steps taken
};

} // namespace

RegressionTask prepareTask(const TrainingSet& set, const LinearModel& model, const RegressionSettings& settings) {
    RegressionTask task;
    for (std::size_t i = 0; i < set.size(); ++i) {
        Positions& kind = isForValidation(set.games[i], settings) ? task.validation : task.training;
        kind.push_back(static_cast<std::uint32_t>(i));
    }
    task.searchScale = fittedScale(set.scores, set.results, task.training, settings.threads);
    for (std::size_t i = 0; i < set.size(); ++i) {
        const double searched = logistic(set.scores[i] / task.searchScale);
        task.targets.push_back(static_cast<float>(settings.blend * searched + (1.0 - settings.blend) * set.results[i]));
    }
    const std::vector<Change> none(model.valueCount);
    task.scale = fittedScale(predictions(model, task.training, none, settings.threads), task.targets, task.training,
                             settings.threads);
    return task;
}

RegressionOutcome fitChanges(const LinearModel& model, const RegressionTask& task, const RegressionSettings& settings) {
    const auto loss = [&](const Positions& positions, const std::vector<Change>& changes) {
        return meanLoss(predictions(model, positions, changes, settings.threads), task.targets, positions, task.scale,
                        settings.threads);
    };
    RegressionOutcome outcome;
    outcome.changes.resize(model.valueCount);
    outcome.trainingBefore = loss(task.training, outcome.changes);
    outcome.validationBefore = outcome.validationAfter = loss(task.validation, outcome.changes);
    Descent descent(model, task, settings);
    for (int epoch = 1; epoch <= settings.epochs && epoch - outcome.bestEpoch <= settings.patience; ++epoch) {
        descent.runEpoch();
        const double validation = loss(task.validation, descent.reached());
        if (settings.showProgress) std::fprintf(stderr, "epoch %3d  validation loss %.6f\n", epoch, validation);
        if (!(validation < outcome.validationAfter)) continue;
        outcome.changes = descent.reached();
        outcome.bestEpoch = epoch;
        outcome.validationAfter = validation;
    }
    outcome.trainingAfter = loss(task.training, outcome.changes);
    return outcome;
}

double validationLoss(const RegressionTask& task, const std::vector<float>& evaluations) {
    return meanLoss(evaluations, task.targets, task.validation, task.scale, 1);
}

} // namespace helvan
