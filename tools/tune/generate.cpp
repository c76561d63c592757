// SPDX-License-Identifier: MIT
//
// Plays seeded games of the engine against itself and writes their positions into a file, as the tuner reads them.
#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
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
constexpr int mostThreads = 256;
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
    static constexpr int mostAhead = mostThreads;

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
    explicit Output(const std::string& filePath) : path(filePath) {}

    // Reads what the file holds already and answers the number of the game to go on with: its last one, which may be
    // there in part only. Nothing, with a message, where the file does not begin with this head or is not to be had.
    std::optional<int> open(const std::string& head) {
        file.open(path, std::ios::app | std::ios::binary); // makes it, if need be
        std::ifstream present(path, std::ios::binary);
        if (!file || !present) {
            std::fprintf(stderr, "%s cannot be opened.\n", path.c_str());
            return std::nullopt;
        }
        std::string presentHead(head.size(), ' ');
        present.read(presentHead.data(), static_cast<std::streamsize>(head.size()));
        presentHead.resize(static_cast<std::size_t>(present.gcount()));
        if (!head.starts_with(presentHead) || (presentHead == head && !readGames(present))) {
            std::fprintf(stderr, "%s holds something else than the beginning of these positions.\n", path.c_str());
            return std::nullopt;
        }
        if (presentHead != head) file << head.substr(presentHead.size()) << std::flush;
        return lastGame;
    }

    // Adds those of a game's positions that are not there yet. False, with a message, where the file cannot be written
    // or holds another game by that number.
    bool add(const SelfPlayedGame& game, int number) {
        std::string text;
        for (const SampledPosition& position : game.positions) {
            if (!seen.insert(std::hash<std::string>()(position.fen)).second) continue;
            text += position.fen + '|' + game.result + '|' + std::to_string(position.score) + '|' +
                    std::to_string(number) + '\n';
        }
        if (number == lastGame && !text.starts_with(lastGameText)) {
            std::fprintf(stderr, "%s holds games of another engine.\n", path.c_str());
            return false;
        }
        file << (number == lastGame ? text.substr(lastGameText.size()) : text) << std::flush;
        if (!file) std::fprintf(stderr, "%s cannot be written.\n", path.c_str());
        return static_cast<bool>(file);
    }

    std::uint64_t count() const { return seen.size(); }

private:
    // The positions of the last game are not counted: it is played again.
    bool readGames(std::istream& present) {
        std::vector<std::size_t> ofLastGame;
        for (std::string line; std::getline(present, line);) {
            const std::size_t fenEnd = line.find('|'), numberBegin = line.rfind('|');
            int game = 0;
            if (present.eof()) { // written in part
                lastGameText += line;
                break;
            }
            if (fenEnd == numberBegin || !store(std::string_view(line).substr(numberBegin + 1), game)) return false;
            if (game != lastGame) {
                lastGame = game;
                lastGameText.clear();
                ofLastGame.clear();
            }
            lastGameText += line + '\n';
            ofLastGame.push_back(std::hash<std::string>()(line.substr(0, fenEnd)));
            seen.insert(ofLastGame.back());
        }
        for (const std::size_t position : ofLastGame) seen.erase(position);
        return true;
    }

    std::string path;
    std::ofstream file;
    std::unordered_set<std::size_t> seen; // hashes of the positions
    int lastGame = 1;                     // that the file held at first
    std::string lastGameText;
};

class Progress {
public:
    Progress(std::uint64_t present, std::uint64_t wanted) : atStart(present), goal(wanted) {}

    void show(std::uint64_t count, int game) const {
        const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        const double rate = (static_cast<double>(count) - static_cast<double>(atStart)) / seconds;
        const double left = count < goal ? static_cast<double>(goal - count) / std::max(rate, 1.0) : 0.0;
        std::fprintf(stderr, "\rgame %d, %llu of %llu positions, %.0f a second, %.0f minutes left   ", game,
                     static_cast<unsigned long long>(count), static_cast<unsigned long long>(goal), rate, left / 60);
    }

private:
    const std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
    std::uint64_t atStart;
    std::uint64_t goal;
};

bool generate(const Settings& settings) {
    constexpr int mostIdleGames = 10'000; // in a row
    Output output(settings.output);
    const std::optional<int> firstGame = output.open(headOf(settings.selfPlay));
    if (!firstGame) return false;
    const Progress progress(output.count(), settings.positions);
    Tournament tournament(settings.selfPlay, settings.threads, *firstGame);
    int idleGames = 0;
    for (int number = *firstGame; number == *firstGame || output.count() < settings.positions; ++number) {
        const std::optional<SelfPlayedGame> game = tournament.next();
        const std::uint64_t before = output.count();
        if (game && !output.add(*game, number)) return false;
        idleGames = output.count() > before ? 0 : idleGames + 1;
        if (idleGames == mostIdleGames) {
            std::fprintf(stderr, "\n%d games in a row brought no new position: other --plies may.\n", idleGames);
            return false;
        }
        progress.show(output.count(), number);
    }
    std::fprintf(stderr, "\n");
    return true;
}

} // namespace

} // namespace helvan

int main(int argumentCount, char** arguments) {
    using namespace helvan;
    Settings settings;
    if (!readSettings({arguments, static_cast<std::size_t>(argumentCount)}, settings)) return usageError;
    initSlidingAttacks();
    initAllEvaluation();
    return generate(settings) ? 0 : 1;
}
