// SPDX-License-Identifier: MIT
//
// Fits the open values of the evaluation to positions with known outcomes and writes them into its source.
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
constexpr int mostThreads = 256;

struct Settings {
    std::string data;
    std::string parameters = HELVAN_PARAMETERS;
    int fewestMen = 7;
    int test = 0;
    int dryRun = 0;
    RegressionSettings regression;
};

bool readSettings(std::span<char* const> arguments, Settings& settings) {
    RegressionSettings& r = settings.regression;
    const ToolOption options[] = {
        {"--data", &settings.data, "training positions, plain text or .xz"},
        {"--parameters", &settings.parameters, "the source to rewrite; by default the one built from"},
        {"--dry-run", &settings.dryRun, "1: fits and reports, and leaves the source as it is"},
        {"--men", &settings.fewestMen, "on the board, kings included; positions with fewer are left out"},
        {"--blend", &r.blend, "how much of the target is the search score, 0..1"},
        {"--l2", &r.l2, "the penalty of a value of one pawn"},
        {"--smoothness", &r.smoothness, "the penalty of a pawn's unevenness in a table or on a board"},
        {"--scale", &r.scale, "pawns at which the evaluation expects 1 / (1 + 1/e) of a point"},
        {"--folds", &r.foldCount, "of so many games one is kept for validation, one for the test"},
        {"--test", &settings.test, "1: tells the loss on the test's games, too; for the end, when all is chosen"},
        {"--threads", &r.threads, "the outcome does not depend on it"}};
    if (!readOptions(arguments, options)) return false;
    const bool usable = !settings.data.empty() && r.threads > 0 && r.threads <= mostThreads && r.scale > 0 &&
                        r.foldCount > 2 && r.blend >= 0 && r.blend <= 1 && r.l2 > 0 && r.smoothness >= 0;
    if (!usable) {
        std::fprintf(
            stderr,
            "Needed: --data FILE; 1 to 256 threads, l2 and scale above 0, folds above 2, blend 0 to 1, smoothness 0 "
            "or more.\n");
    }
    return usable;
}

std::string contentsOf(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

// By the evaluation itself, not by the model of it.
std::vector<float> presentEvaluations(const TrainingSet& set) {
    std::vector<float> evaluations;
    for (const Position& position : set.positions) {
        evaluations.push_back(static_cast<float>(evaluationInPawns(position)));
    }
    return evaluations;
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
    const RegressionSettings& regression = settings.regression;
    TrainingSet set = readTrainingSet(settings.data);
    const std::size_t all = set.size();
    moveToQuietLeaves(set);
    dropSmallEndings(set, settings.fewestMen);
    dropSpecialEndings(set);
    const RegressionTask task = prepareTask(set, regression);
    if (task.training.empty() || task.validation.empty() || task.test.empty()) {
        std::fprintf(stderr, "Too few games in %s: some are needed for training, for validation and for the test.\n",
                     settings.data.c_str());
        return 1;
    }
    std::printf("%zu positions of %zu: %zu for training, %zu for validation, %zu for the test\nK of the search scores: "
                "%.3f pawns\n",
                set.size(), all, task.training.size(), task.validation.size(), task.test.size(), task.searchScale);
    std::fflush(stdout);
    const std::vector<OpenValue> open = openValues();
    const LinearModel model = linearModelOf(set, open, regression.threads, true);
    const RegressionOutcome outcome = fitChanges(model, task, regression);
    std::printf("%zu open values, %.1f of them in a position; %d steps\n", open.size(),
                static_cast<double>(model.coefficients.size()) / static_cast<double>(set.size()), outcome.steps);
    std::printf("training loss    %.6f -> %.6f\n", outcome.trainingBefore, outcome.trainingAfter);
    std::printf("validation loss  %.6f -> %.6f\n", outcome.validationBefore, outcome.validationAfter);
    // By the evaluation itself: what the linear model leaves out, and the rounding, show in the difference.
    const auto reportNow = [&](const char* when) {
        const std::vector<float> evaluations = presentEvaluations(set);
        std::printf("%s: validation loss %.6f, least with K = %.3f pawns", when,
                    meanLoss(task, task.validation, evaluations, regression.threads),
                    fittedScale(task, evaluations, regression.threads));
        if (settings.test != 0) {
            std::printf(", test loss %.6f", meanLoss(task, task.test, evaluations, regression.threads));
        }
        std::printf("\n");
    };
    reportNow("before");
    applyChanges(open, outcome.changes);
    reportNow("after");
    const bool done = settings.dryRun != 0 || rewrite(settings.parameters, source, before);
    std::printf("%.0f s\n", secondsSince(start));
    return done ? 0 : 1;
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
