// SPDX-License-Identifier: MIT
#include "tools/tune/regression.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numeric>

#include "tools/tune/slices.h"

namespace helvan {

namespace {

constexpr double centipawnsPerPawn = 100.0;

double logistic(double x) { return 1.0 / (1.0 + std::exp(-x)); }

// The cross-entropy of a target and the logistic of x, in a form that no x overflows.
double crossEntropy(double x, double target) {
    return std::max(x, 0.0) - x * target + std::log1p(std::exp(-std::abs(x)));
}

// The mean over the positions of crossEntropy(x(position), target(position)).
template <typename X, typename Target>
double meanCrossEntropy(const PositionIndices& positions, int threads, X x, Target target) {
    double sums[sliceCount];
    forSlices({0, positions.size()}, threads, [&](std::size_t slice, Range range) {
        double sum = 0.0;
        for (std::size_t i = range.first; i < range.end; ++i) {
            sum += crossEntropy(x(positions[i]), target(positions[i]));
        }
        sums[slice] = sum;
    });
    return std::accumulate(std::begin(sums), std::end(sums), 0.0) / static_cast<double>(positions.size());
}

// The scale of the least loss, by golden-section search; the loss has one minimum. In the evaluations' unit.
double fittedScale(const std::vector<float>& evaluations, const std::vector<float>& targets,
                   const PositionIndices& positions, int threads) {
    constexpr double least = 0.1, most = 2000.0; // for pawns as for centipawns
    constexpr double golden = 0.6180339887498949;
    constexpr int steps = 30;
    double low = std::log(least), high = std::log(most);
    const auto lossAt = [&](double logarithm) {
        const double scale = std::exp(logarithm);
        return meanCrossEntropy(
            positions, threads, [&](std::uint32_t i) { return evaluations[i] / scale; },
            [&](std::uint32_t i) { return targets[i]; });
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

// The unknowns: opening and endgame of the first value, of the second, ...
using Vector = std::vector<double>;

std::size_t openingOf(std::size_t value) { return 2 * value; }
std::size_t endgameOf(std::size_t value) { return 2 * value + 1; }

// A symmetric matrix, of which the lower triangle is kept.
class SymmetricMatrix {
public:
    explicit SymmetricMatrix(std::size_t size) : entries(size * (size + 1) / 2) {}

    double& at(std::size_t row, std::size_t column) { return entries[row * (row + 1) / 2 + column]; } // column <= row

    void add(const SymmetricMatrix& other) {
        for (std::size_t i = 0; i < entries.size(); ++i) entries[i] += other.entries[i];
    }

    void scale(double factor) {
        for (double& entry : entries) entry *= factor;
    }

    // Replaces the matrix, which is positive definite, by L with L x its transpose = the matrix (Cholesky).
    void factorise(std::size_t size) {
        for (std::size_t row = 0; row < size; ++row) {
            for (std::size_t column = 0; column <= row; ++column) {
                double sum = at(row, column);
                for (std::size_t k = 0; k < column; ++k) sum -= at(row, k) * at(column, k);
                at(row, column) = column == row ? std::sqrt(sum) : sum / at(column, column);
            }
        }
    }

    // Of the factorised matrix: the x with matrix * x = right.
    Vector solved(Vector right) {
        const std::size_t size = right.size();
        for (std::size_t row = 0; row < size; ++row) {
            for (std::size_t k = 0; k < row; ++k) right[row] -= at(row, k) * right[k];
            right[row] /= at(row, row);
        }
        for (std::size_t row = size; row-- > 0;) {
            for (std::size_t k = row + 1; k < size; ++k) right[row] -= at(k, row) * right[k];
            right[row] /= at(row, row);
        }
        return right;
    }

private:
    std::vector<double> entries;
};

double scalarProduct(const Vector& a, const Vector& b) {
    return std::inner_product(a.begin(), a.end(), b.begin(), 0.0);
}

// Newton's method, with the hessian of the start: it changes little on the way.
class Fit {
public:
    Fit(const LinearModel& linearModel, const RegressionTask& regressionTask,
        const RegressionSettings& regressionSettings)
        : model(linearModel), task(regressionTask), settings(regressionSettings), changes(model.valueCount),
          hessian(2 * model.valueCount) {}

    // Answers how many steps it took.
    int descend() {
        constexpr double smallestGain = 1e-13;
        constexpr int mostSteps = 50;
        findHessian();
        double reached = objective(changes);
        for (int step = 1; step <= mostSteps; ++step) {
            const Vector gradient = objectiveGradient();
            const Vector direction = hessian.solved(gradient);
            if (scalarProduct(gradient, direction) / 2 < smallestGain) return step - 1;
            const double before = reached;
            reached = descendAlong(direction, before);
            if (settings.showProgress) std::fprintf(stderr, "step %2d  loss and penalties %.7f\n", step, reached);
            if (before - reached < smallestGain) return step;
        }
        std::fprintf(stderr, "Still not at the least sum after %d steps.\n", mostSteps);
        return mostSteps;
    }

    double loss(const PositionIndices& positions, const std::vector<Change>& at) const {
        return meanCrossEntropy(
            positions, settings.threads, [&](std::uint32_t i) { return model.predicted(i, at) / task.scale; },
            [&](std::uint32_t i) { return task.targets[i]; });
    }

    const std::vector<Change>& found() const { return changes; }

private:
    static constexpr std::size_t hessianPositions = 1'000'000; // tell enough

    // Calls with (factor, term): the objective has factor x (weighted sum of the values)^2, in both lanes.
    template <typename Visit> void forPenalties(Visit visit) const {
        for (std::size_t i = 0; i < changes.size(); ++i) {
            const auto value = static_cast<std::uint16_t>(i);
            visit(settings.l2, SmoothnessTerm{{value, value, value}, {1, 0, 0}});
        }
        for (const SmoothnessTerm& term : model.smoothnessTerms) visit(settings.smoothness, term);
    }

    Change weightedSum(const SmoothnessTerm& of, const std::vector<Change>& at) const {
        Change sum;
        for (std::size_t i = 0; i < of.values.size(); ++i) {
            const std::size_t value = of.values[i];
            sum.opening += of.weights[i] * (model.present[value].opening + at[value].opening);
            sum.endgame += of.weights[i] * (model.present[value].endgame + at[value].endgame);
        }
        return sum;
    }

    double objective(const std::vector<Change>& at) const {
        double penalties = 0.0;
        forPenalties([&](double factor, const SmoothnessTerm& of) {
            const Change sum = weightedSum(of, at);
            penalties += factor * (sum.opening * sum.opening + sum.endgame * sum.endgame);
        });
        return loss(task.training, at) + penalties;
    }

    Vector objectiveGradient() const {
        std::vector<Vector> slices(sliceCount, Vector(2 * changes.size()));
        forSlices({0, task.training.size()}, settings.threads, [&](std::size_t slice, Range range) {
            for (std::size_t i = range.first; i < range.end; ++i) addLossGradient(task.training[i], slices[slice]);
        });
        Vector gradient(2 * changes.size());
        const double perPosition = 1.0 / static_cast<double>(task.training.size());
        for (const Vector& slice : slices) {
            for (std::size_t i = 0; i < gradient.size(); ++i) gradient[i] += slice[i] * perPosition;
        }
        forPenalties([&](double factor, const SmoothnessTerm& of) {
            const Change sum = weightedSum(of, changes);
            for (std::size_t i = 0; i < of.values.size(); ++i) {
                gradient[openingOf(of.values[i])] += 2.0 * factor * of.weights[i] * sum.opening;
                gradient[endgameOf(of.values[i])] += 2.0 * factor * of.weights[i] * sum.endgame;
            }
        });
        return gradient;
    }

    void addLossGradient(std::uint32_t position, Vector& gradient) const {
        const double value = model.unscaled(position, changes);
        const double scale = model.scaleOf(position, value);
        const double expected = logistic((value * scale + model.tempo[position]) / task.scale);
        const double perPawn = (expected - task.targets[position]) / task.scale * scale;
        const double opening = perPawn * model.openingShare[position], endgame = perPawn - opening;
        for (std::size_t at = model.begin[position]; at < model.begin[position + 1]; ++at) {
            gradient[openingOf(model.variables[at])] += model.coefficients[at] * opening;
            gradient[endgameOf(model.variables[at])] += model.coefficients[at] * endgame;
        }
    }

    void findHessian() {
        const std::size_t every = std::max<std::size_t>(task.training.size() / hessianPositions, 1);
        const std::size_t count = (task.training.size() + every - 1) / every;
        std::vector<SymmetricMatrix> slices(sliceCount, hessian);
        forSlices({0, count}, settings.threads, [&](std::size_t slice, Range range) {
            for (std::size_t i = range.first; i < range.end; ++i) {
                addLossHessian(task.training[i * every], slices[slice]);
            }
        });
        for (const SymmetricMatrix& slice : slices) hessian.add(slice);
        hessian.scale(1.0 / static_cast<double>(count));
        forPenalties([&](double factor, const SmoothnessTerm& of) {
            for (std::size_t i = 0; i < of.values.size(); ++i) {
                for (std::size_t j = 0; j < of.values.size(); ++j) {
                    const std::size_t row = of.values[i], column = of.values[j];
                    if (column > row) continue;
                    const double bend = 2.0 * factor * of.weights[i] * of.weights[j];
                    hessian.at(openingOf(row), openingOf(column)) += bend;
                    hessian.at(endgameOf(row), endgameOf(column)) += bend;
                }
            }
        });
        hessian.factorise(2 * changes.size());
    }

    void addLossHessian(std::uint32_t position, SymmetricMatrix& sum) const {
        const double value = model.unscaled(position, changes);
        const double scale = model.scaleOf(position, value);
        const double expected = logistic((value * scale + model.tempo[position]) / task.scale);
        const double perPawn = expected * (1.0 - expected) * scale * scale / (task.scale * task.scale);
        const double openingShare = model.openingShare[position], endgameShare = 1.0 - openingShare;
        const std::size_t begin = model.begin[position], end = model.begin[position + 1];
        // A position's variables rise.
        for (std::size_t a = begin; a < end; ++a) {
            const std::size_t row = model.variables[a];
            const double opening = perPawn * model.coefficients[a] * openingShare,
                         endgame = perPawn * model.coefficients[a] * endgameShare;
            for (std::size_t b = begin; b <= a; ++b) {
                const std::size_t column = model.variables[b];
                const double otherOpening = model.coefficients[b] * openingShare,
                             otherEndgame = model.coefficients[b] * endgameShare;
                sum.at(openingOf(row), openingOf(column)) += opening * otherOpening;
                sum.at(endgameOf(row), openingOf(column)) += endgame * otherOpening;
                sum.at(endgameOf(row), endgameOf(column)) += endgame * otherEndgame;
                if (column < row) sum.at(openingOf(row), endgameOf(column)) += opening * otherEndgame;
            }
        }
    }

    // Goes back along the direction, half as far as long as that does not lead down, and answers the objective there.
    double descendAlong(const Vector& direction, double before) {
        constexpr double shortest = 1.0 / 64;
        for (double length = 1.0; length >= shortest; length /= 2) {
            std::vector<Change> there = changes;
            for (std::size_t value = 0; value < there.size(); ++value) {
                there[value].opening -= length * direction[openingOf(value)];
                there[value].endgame -= length * direction[endgameOf(value)];
            }
            const double reached = objective(there);
            if (reached >= before) continue;
            changes = there;
            return reached;
        }
        return before;
    }

    const LinearModel& model;
    const RegressionTask& task;
    const RegressionSettings& settings;
    std::vector<Change> changes;
    SymmetricMatrix hessian;
};

} // namespace

RegressionTask prepareTask(const TrainingSet& set, const RegressionSettings& settings) {
    RegressionTask task;
    for (std::size_t i = 0; i < set.size(); ++i) {
        const int fold = set.games[i] % settings.foldCount;
        PositionIndices& kind = fold == 0 ? task.validation : fold == 1 ? task.test : task.training;
        kind.push_back(static_cast<std::uint32_t>(i));
    }
    task.scale = settings.scale;
    task.searchScale = fittedScale(set.scores, set.results, task.training, settings.threads) / centipawnsPerPawn;
    for (std::size_t i = 0; i < set.size(); ++i) {
        const double searched = logistic(set.scores[i] / centipawnsPerPawn / task.searchScale);
        task.targets.push_back(static_cast<float>(settings.blend * searched + (1.0 - settings.blend) * set.results[i]));
    }
    return task;
}

RegressionOutcome fitChanges(const LinearModel& model, const RegressionTask& task, const RegressionSettings& settings) {
    RegressionOutcome outcome;
    Fit fit(model, task, settings);
    outcome.trainingBefore = fit.loss(task.training, fit.found());
    outcome.validationBefore = fit.loss(task.validation, fit.found());
    outcome.steps = fit.descend();
    outcome.changes = fit.found();
    outcome.trainingAfter = fit.loss(task.training, outcome.changes);
    outcome.validationAfter = fit.loss(task.validation, outcome.changes);
    return outcome;
}

double meanLoss(const RegressionTask& task, const PositionIndices& positions, const std::vector<float>& evaluations,
                int threads) {
    return meanCrossEntropy(
        positions, threads, [&](std::uint32_t i) { return evaluations[i] / task.scale; },
        [&](std::uint32_t i) { return task.targets[i]; });
}

double fittedScale(const RegressionTask& task, const std::vector<float>& evaluations, int threads) {
    return fittedScale(evaluations, task.targets, task.training, threads);
}

} // namespace helvan
