// SPDX-License-Identifier: MIT
//
// Plays seeded games of the engine against itself and writes their positions into a file, as the tuner reads them.
#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <unordered_set>
#include <vector>

#include "board/attacks.h"
#include "eval/tables.h"
#include "tools/tune/options.h"
#include "tools/tune/self_play.h"

namespace helvan {

namespace {

constexpr int usageError = 2;
constexpr int mostOpeningPlies = 100; // with more, hardly a game is left to play
constexpr int mostThreads = 1024;
constexpr int hashMegabytes = 2; // of each thread

struct Settings {
    std::string output;
    std::uint64_t positions = 1'000'000;
    int threads = static_cast<int>(std::max(std::thread::hardware_concurrency(), 1U));
    SelfPlaySettings selfPlay;
};

bool readSettings(std::span<char* const> arguments, Settings& settings) {
    const ToolOption options[] = {
        {"--output", &settings.output, "the file; one that holds a part of the same positions is continued"},
        {"--positions", &settings.positions, "how many it is to hold, and the rest of the last game"},
        {"--nodes", &settings.selfPlay.nodes, "the search of each move"},
        {"--plies", &settings.selfPlay.openingPlies, "of the opening, about half of them random moves"},
        {"--threads", &settings.threads, "that play, all processors by themselves"},
        {"--seed", &settings.selfPlay.seed, "of the random moves"}};
    if (!readOptions(arguments, options)) return false;
    const SelfPlaySettings& selfPlay = settings.selfPlay;
    const bool usable = !settings.output.empty() && settings.positions > 0 && selfPlay.nodes > 0 &&
                        settings.threads > 0 && settings.threads <= mostThreads && selfPlay.openingPlies >= 0 &&
                        selfPlay.openingPlies <= mostOpeningPlies;
    if (!usable) {
        std::fprintf(stderr, "Needed: --output FILE; positions and nodes above 0, 1 to %d threads, 0 to %d plies.\n",
                     mostThreads, mostOpeningPlies);
    }
    return usable;
}

// Games by their number, played in several threads and handed out in order.
class Tournament {
public:
    Tournament(const SelfPlaySettings& selfPlay, int threadCount, int firstGame)
        : settings(selfPlay), begun(firstGame), handedOut(firstGame) {
        for (int i = 0; i < threadCount; ++i) threads.emplace_back([this] { play(); });
    }

    ~Tournament() {
        const std::lock_guard guard(lock);
        over = true;
        changed.notify_all();
    }

    // The next game in the order of their numbers; nothing where it is not to be kept.
    std::optional<SelfPlayedGame> next() {
        std::unique_lock guard(lock);
        changed.wait(guard, [&] { return finished.contains(handedOut); });
        std::optional<SelfPlayedGame> game = std::move(finished[handedOut]);
        finished.erase(handedOut++);
        changed.notify_all();
        return game;
    }

private:
    // Games that are finished before one with a smaller number wait for it: so many at most.
    static constexpr int mostAhead = 256;

    void play() {
        const auto tables = std::make_unique<SearchTables>();
        tables->transpositionTable.allocate(hashMegabytes);
        tables->transpositionTable.claimAllPages();
        for (;;) {
            std::unique_lock guard(lock);
            changed.wait(guard, [&] { return over || begun < handedOut + mostAhead; });
            if (over) return;
            const int number = begun++;
            guard.unlock();
            std::optional<SelfPlayedGame> game = playGame(*tables, settings, number);
            guard.lock();
            finished[number] = std::move(game);
            changed.notify_all();
        }
    }

    const SelfPlaySettings settings;
    std::mutex lock; // guards all below but the threads
    std::condition_variable changed;
    int begun;
    int handedOut;
    bool over = false;
    std::map<int, std::optional<SelfPlayedGame>> finished; // and not handed out yet
    std::vector<std::jthread> threads;
};

std::string headOf(const SelfPlaySettings& settings) {
    return "# Positions of games of Helvan against itself, " + std::to_string(settings.nodes) + " nodes a move, " +
           std::to_string(settings.openingPlies) + " plies of opening, seed " + std::to_string(settings.seed) +
           ".\n# FEN|result for white|search score for white in centipawns|game\n";
}

// The file that grows game by game.
class Output {
public:
    // The game to go on with: whatever the file held of its positions is gone. Nothing, with a message, where the
    // file holds others or cannot be written.
    std::optional<int> open(const std::string& path, const std::string& head) {
        std::optional<int> firstGame = 1;
        if (std::filesystem::exists(path)) firstGame = keepWholeGames(path, head);
        if (!firstGame) {
            std::fprintf(stderr, "%s holds something else than the beginning of these positions.\n", path.c_str());
            return std::nullopt;
        }
        file.open(path, std::ios::app | std::ios::binary);
        if (file.tellp() == 0) file << head << std::flush;
        return isGood(path) ? firstGame : std::nullopt;
    }

    // Positions that it has already are left out.
    void add(const SelfPlayedGame& game, int number) {
        for (const SampledPosition& position : game.positions) {
            if (!seen.insert(std::hash<std::string>()(position.fen)).second) continue;
            file << position.fen << '|' << game.result << '|' << position.score << '|' << number << '\n';
        }
        file.flush();
    }

    bool isGood(const std::string& path) {
        if (!file) std::fprintf(stderr, "%s cannot be written.\n", path.c_str());
        return static_cast<bool>(file);
    }

    std::uint64_t count() const { return seen.size(); }

private:
    // The last game may have been written in part.
    std::optional<int> keepWholeGames(const std::string& path, const std::string& head) {
        std::ifstream before(path, std::ios::binary);
        std::string begins(head.size(), ' ');
        before.read(begins.data(), static_cast<std::streamsize>(begins.size()));
        if (before.gcount() == 0) return 1;
        if (begins != head) return std::nullopt;
        int lastGame = 1;
        std::uintmax_t end = head.size(), lastGameBegins = end;
        std::vector<std::size_t> ofLastGame;
        for (std::string line; std::getline(before, line) && !before.eof(); end += line.size() + 1) {
            const std::size_t fenEnd = line.find('|'), numberBegins = line.rfind('|');
            int game = 0;
            if (fenEnd == numberBegins || !store(std::string_view(line).substr(numberBegins + 1), game)) {
                return std::nullopt;
            }
            if (game != lastGame) {
                lastGame = game;
                lastGameBegins = end;
                ofLastGame.clear();
            }
            ofLastGame.push_back(std::hash<std::string>()(line.substr(0, fenEnd)));
            seen.insert(ofLastGame.back());
        }
        for (const std::size_t position : ofLastGame) seen.erase(position);
        before.close();
        std::filesystem::resize_file(path, lastGameBegins);
        return lastGame;
    }

    std::ofstream file;
    std::unordered_set<std::size_t> seen;
};

class Progress {
public:
    Progress(std::uint64_t present, std::uint64_t wanted) : begun(present), goal(wanted) {}

    void show(std::uint64_t count, int game) const {
        const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        const double rate = static_cast<double>(count - begun) / seconds;
        const double left = count < goal ? static_cast<double>(goal - count) / std::max(rate, 1.0) : 0.0;
        std::fprintf(stderr, "\rgame %d, %llu of %llu positions, %.0f a second, %.0f minutes left   ", game,
                     static_cast<unsigned long long>(count), static_cast<unsigned long long>(goal), rate, left / 60);
    }

private:
    const std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
    std::uint64_t begun;
    std::uint64_t goal;
};

int generate(const Settings& settings) {
    Output output;
    const std::optional<int> firstGame = output.open(settings.output, headOf(settings.selfPlay));
    if (!firstGame) return 1;
    const Progress progress(output.count(), settings.positions);
    Tournament tournament(settings.selfPlay, settings.threads, *firstGame);
    for (int number = *firstGame; output.count() < settings.positions; ++number) {
        const std::optional<SelfPlayedGame> game = tournament.next();
        if (!game) continue;
        output.add(*game, number);
        if (!output.isGood(settings.output)) return 1;
        progress.show(output.count(), number);
    }
    std::fprintf(stderr, "\n");
    return 0;
}

} // namespace

} // namespace helvan

int main(int argumentCount, char** arguments) {
    using namespace helvan;
    Settings settings;
    if (!readSettings({arguments, static_cast<std::size_t>(argumentCount)}, settings)) return usageError;
    initSlidingAttacks();
    initAllEvaluation();
    return generate(settings);
}
