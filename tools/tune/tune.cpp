// SPDX-License-Identifier: MIT
//
// Fits the open values of the evaluation to positions with known outcomes and writes them into its source.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>

#include "board/attacks.h"
#include "eval/tables.h"
#include "tools/tune/linear_model.h"
#include "tools/tune/options.h"
#include "tools/tune/parameter_file.h"
#include "tools/tune/regression.h"

namespace helvan {

namespace {

constexpr int usageError = 2;

struct Settings {
    std::string data;
    std::string parameters = HELVAN_PARAMETERS;
    int unsettled = 5;
    RegressionSettings regression;
};

bool readSettings(std::span<char* const> arguments, Settings& settings) {
    RegressionSettings& r = settings.regression;
    const ToolOption options[] = {
        {"--data", &settings.data, "training positions, plain text or .xz"},
        {"--parameters", &settings.parameters, "the source to rewrite; by default the one built from"},
        {"--unsettled", &settings.unsettled,
         "centipawns that captures and checks may bring, or the position is dropped"},
        {"--blend", &r.blend, "how much of the target is the search score, 0..1"},
        {"--l2", &r.l2, "the cost of a pawn's change"},
        {"--smoothness", &r.smoothness, "the cost of a pawn's difference between the changes of two neighbours"},
        {"--rate", &r.rate, "the first step, in pawns"},
        {"--epochs", &r.epochs, "passes over the data at most; 0 changes nothing"},
        {"--patience", &r.patience, "epochs without gain that end it"},
        {"--batch", &r.batch, "positions a step"},
        {"--validation", &r.validationEvery, "every so many games one is kept for validation"},
        {"--seed", &r.seed, "of the order of positions"},
        {"--threads", &r.threads, "for the regression; the outcome does not depend on it"}};
    if (!readOptions(arguments, options)) return false;
    const bool usable = !settings.data.empty() && r.batch > 0 && r.threads > 0 && r.validationEvery > 1 &&
                        r.blend >= 0 && r.blend <= 1 && r.patience >= 0;
    if (!usable)
        std::fprintf(stderr, "Needed: --data FILE; batch and threads above 0, validation above 1, blend 0 to 1, "
                             "patience 0 or more.\n");
    return usable;
}

std::string contentsOf(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

std::vector<float> presentEvaluations(const TrainingSet& set) {
    std::vector<float> evaluations;
    for (const Position& position : set.positions) {
        evaluations.push_back(static_cast<float>(evaluationInPawns(position)));
    }
    return evaluations;
}

void report(const TrainingSet& set, const RegressionTask& task, const RegressionOutcome& outcome) {
    std::printf("training loss    %.6f -> %.6f\n", outcome.trainingBefore, outcome.trainingAfter);
    std::printf("validation loss  %.6f -> %.6f, epoch %d\n", outcome.validationBefore, outcome.validationAfter,
                outcome.bestEpoch);
    // What the linear model leaves out, and the rounding, show in the difference.
    std::printf("by the evaluation itself, with the new values: %.6f\n", validationLoss(task, presentEvaluations(set)));
}

// By way of a file beside it, so that the source is never half written.
bool rewrite(const std::string& path, const std::string& source, const std::vector<PackedScore>& before) {
    const std::optional<std::string> text = withPresentParameters(source, before);
    const std::string beside = path + ".new";
    const bool written = text && std::ofstream(beside) << *text << std::flush;
    std::error_code failure;
    if (written) std::filesystem::rename(beside, path, failure);
    if (!written || failure) std::fprintf(stderr, "%s could not be written.\n", path.c_str());
    return written && !failure;
}

bool hasBothKindsOfGames(const TrainingSet& set, const RegressionSettings& settings) {
    const auto validates = [&](int game) { return isForValidation(game, settings); };
    const auto validating = std::count_if(set.games.begin(), set.games.end(), validates);
    return validating > 0 && validating < static_cast<std::ptrdiff_t>(set.size());
}

double secondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

int tune(const Settings& settings) {
    const auto start = std::chrono::steady_clock::now();
    const std::vector<PackedScore> before = parameterValues();
    const std::string source = contentsOf(settings.parameters);
    if (!withPresentParameters(source, before)) {
        std::fprintf(stderr, "%s cannot be read, or holds other parameters than this program was built with.\n",
                     settings.parameters.c_str());
        return 1;
    }
    TrainingSet set = readTrainingSet(settings.data);
    dropSpecialEndings(set);
    const std::size_t all = set.size();
    dropUnsettled(set, settings.unsettled);
    if (set.size() == 0) {
        std::fprintf(stderr, "No positions in %s.\n", settings.data.c_str());
        return 1;
    }
    if (!hasBothKindsOfGames(set, settings.regression)) {
        std::fprintf(stderr, "Needed: games whose number --validation divides, and others.\n");
        return 1;
    }
    const std::vector<OpenValue> open = openValues();
    const LinearModel model = linearModelOf(set, open, true);
    const RegressionTask task = prepareTask(set, model, settings.regression);
    std::printf("%zu positions, %zu for validation, %zu unsettled left out; %zu open values, %.1f of them a position\n",
                set.size(), task.validation.size(), all - set.size(), open.size(),
                static_cast<double>(model.coefficients.size()) / static_cast<double>(set.size()));
    std::printf("K = %.1f centipawns for the search scores, %.3f pawns for the evaluation\n", task.searchScale,
                task.scale);
    std::fflush(stdout);
    const RegressionOutcome outcome = fitChanges(model, task, settings.regression);
    applyChanges(open, outcome.changes);
    report(set, task, outcome);
    const bool written = rewrite(settings.parameters, source, before);
    std::printf("%.0f s\n", secondsSince(start));
    return written ? 0 : 1;
}

} // namespace

} // namespace helvan

int main(int argumentCount, char** arguments) {
    helvan::Settings settings;
    if (!helvan::readSettings({arguments, static_cast<std::size_t>(argumentCount)}, settings)) {
        return helvan::usageError;
    }
    helvan::initSlidingAttacks();
    helvan::initAllEvaluation();
    return helvan::tune(settings);
}
