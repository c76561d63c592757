// SPDX-License-Identifier: MIT
//
// Plays seeded games of the engine against itself and prints their quiet positions, as the tuner reads them.
#include <algorithm>
#include <condition_variable>
#include <cstdio>
#include <map>
#include <memory>
#include <mutex>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "board/advance.h"
#include "board/attacks.h"
#include "board/fen.h"
#include "board/legal_moves.h"
#include "board/moves.h"
#include "board/piece_square.h"
#include "eval/tables.h"
#include "search/draws.h"
#include "search/think.h"
#include "tools/tune/options.h"

namespace helvan {

namespace {

constexpr int usageError = 2;
constexpr int longestGame = 400;     // plies; then it is a draw
constexpr int mostRandomPlies = 100; // with more, hardly a game is left to play
constexpr int mostThreads = 1024;
constexpr int decisiveScore = 2000;    // centipawns: then the game is won
constexpr int hashMegabytes = 1;       // of each thread
constexpr int unbalancedOpening = 200; // centipawns, too many for a game to be worth playing

struct Settings {
    int games = 1000;
    int nodes = 3000;
    int openingPlies = 8;
    int threads = static_cast<int>(std::max(std::thread::hardware_concurrency(), 1U));
    std::uint64_t seed = 1;
};

bool readSettings(std::span<char* const> arguments, Settings& settings) {
    const ToolOption options[] = {{"--games", &settings.games, "how many are played"},
                                  {"--nodes", &settings.nodes, "the search of each move"},
                                  {"--plies", &settings.openingPlies, "random moves at the start of a game"},
                                  {"--threads", &settings.threads, "that play, all processors by themselves"},
                                  {"--seed", &settings.seed, "of the random moves"}};
    return readOptions(arguments, options);
}

using Random = std::mt19937_64;

bool isQuiet(const Position& position, Move move) { return position.inCheck == 0 && !isTactical(position, move); }

// A game in play. Each position links to the one before it, so all stay in place.
class Game {
public:
    struct Line {
        std::string fen;
        int score; // centipawns, white's view
    };

    Game() : positions(longestGame + 1) {
        positions[0] = startPosition();
        refreshPieceSums(positions[0]);
    }

    // Answers whether there is a game to play on from there.
    bool playRandomMoves(int count, Random& random) {
        for (; count > 0; --count) {
            Move moves[maxMoves];
            const int legal = legalMoves(position(), moves);
            if (legal == 0) return false;
            make(moves[random() % static_cast<std::uint64_t>(legal)]);
        }
        return true;
    }

    // Plays to the end and answers whether the opening was fair. The positions it came through are then in lines.
    bool playOn(SearchTables& tables, std::uint64_t nodes) {
        for (bool opening = true;; opening = false) {
            Move moves[maxMoves];
            if (legalMoves(position(), moves) == 0) {
                if (position().inCheck != 0) result = whitePoints(opponent(position().sideToMove()));
                return !opening;
            }
            if (ply == longestGame || drawnByRule(position()) || recognisedDraw(position(), ply)) return !opening;
            // Each search begins with nothing known, so that games repeat.
            Search search(tables, {.nodes = nodes, .forget = true});
            const PvLine best = think(search, position());
            if (opening && absolute(best.score) > unbalancedOpening) return false;
            if (absolute(best.score) > decisiveScore) {
                const Colour mover = position().sideToMove();
                result = whitePoints(best.score > 0 ? mover : opponent(mover));
                return true;
            }
            record(best);
            make(best.pv[0]);
        }
    }

    std::vector<Line> lines;
    const char* result = "0.5"; // for white

private:
    const Position& position() const { return positions[ply]; }

    static const char* whitePoints(Colour winner) { return winner == white ? "1" : "0"; }

    void record(const PvLine& best) {
        if (!isQuiet(position(), best.pv[0])) return;
        const int score = position().sideToMove() == white ? best.score : -best.score;
        // A quiet position's en-passant square matters to nobody.
        lines.push_back({positionToFenWithRights(position()), score});
    }

    void make(Move move) {
        advanceLegally(positions[ply], positions[ply + 1], move);
        ++ply;
    }

    std::vector<Position> positions;
    int ply = 0; // from the start
};

// Games by their number, played in several threads. Each game's random moves come from the seed and its number alone:
// the same games whatever the number of threads.
class Tournament {
public:
    explicit Tournament(const Settings& of) : settings(of) {
        for (int i = 0; i < settings.threads; ++i) threads.emplace_back([this] { play(); });
    }

    ~Tournament() {
        const std::lock_guard guard(lock);
        over = true;
        changed.notify_all();
    }

    // The next game in the order of their numbers; null where its opening was unfair.
    std::unique_ptr<Game> next() {
        std::unique_lock guard(lock);
        changed.wait(guard, [&] { return finished.contains(handedOut); });
        std::unique_ptr<Game> game = std::move(finished[handedOut]);
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
            std::unique_ptr<Game> game = played(*tables, number);
            guard.lock();
            finished[number] = std::move(game);
            changed.notify_all();
        }
    }

    std::unique_ptr<Game> played(SearchTables& tables, int number) const {
        std::seed_seq seeds{static_cast<std::uint64_t>(number), settings.seed, settings.seed >> 32};
        Random random(seeds);
        auto game = std::make_unique<Game>();
        const bool fair = game->playRandomMoves(settings.openingPlies, random) &&
                          game->playOn(tables, static_cast<std::uint64_t>(settings.nodes));
        return fair ? std::move(game) : nullptr;
    }

    const Settings settings;
    std::mutex lock; // guards all below but the threads
    std::condition_variable changed;
    int begun = 0;
    int handedOut = 0;
    bool over = false;
    std::map<int, std::unique_ptr<Game>> finished; // and not handed out yet
    std::vector<std::jthread> threads;
};

int generate(const Settings& settings) {
    std::printf("# Quiet positions of %d games of Helvan against itself, %d nodes a move, %d random plies, seed %llu.\n"
                "# FEN|result for white|search score for white in centipawns|game\n",
                settings.games, settings.nodes, settings.openingPlies, static_cast<unsigned long long>(settings.seed));
    Tournament tournament(settings);
    for (int number = 1; number <= settings.games;) {
        const std::unique_ptr<Game> game = tournament.next();
        if (game == nullptr) continue;
        for (const Game::Line& line : game->lines) {
            std::printf("%s|%s|%d|%d\n", line.fen.c_str(), game->result, line.score, number);
        }
        std::fprintf(stderr, "\rgame %d of %d", number, settings.games);
        ++number;
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
    if (settings.games < 1 || settings.nodes < 1 || settings.threads < 1 || settings.threads > mostThreads ||
        settings.openingPlies < 0 || settings.openingPlies > mostRandomPlies) {
        std::fprintf(stderr, "Games and nodes above 0, 1 to %d threads and 0 to %d random plies are needed.\n",
                     mostThreads, mostRandomPlies);
        return usageError;
    }
    initSlidingAttacks();
    initAllEvaluation();
    return generate(settings);
}
