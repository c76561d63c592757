// SPDX-License-Identifier: MIT
#include "tools/tune/self_play.h"

#include <algorithm>
#include <random>

#include "board/advance.h"
#include "board/exchange.h"
#include "board/fen.h"
#include "board/legal_moves.h"
#include "board/piece_square.h"
#include "search/draws.h"
#include "search/think.h"

namespace helvan {

namespace {

constexpr int longestGame = 400; // plies

// Scores in centipawns.
constexpr int unbalancedOpening = 150;
constexpr int winningScore = 150;  // whoever has it does not get a draw
constexpr int decidedScore = 1000; // won, when both sides have seen it twice
constexpr int decidedPlies = 4;
constexpr int deadScore = 8; // drawn, when nothing else was seen for so many plies without capture or pawn move
constexpr int deadPlies = 24;

constexpr int fewestMen = 5; // with fewer, rules tell the outcome and not the evaluation

constexpr int openingNodesDivisor = 10; // the opening's searched moves need not be the best

class Game {
public:
    Game(SearchTables& searchTables, const SelfPlaySettings& selfPlay, int number)
        : tables(searchTables), settings(selfPlay), random(seedOf(selfPlay, number)), positions(longestGame + 1) {
        positions[0] = startPosition();
        refreshPieceSums(positions[0]);
    }

    std::optional<SelfPlayedGame> play() {
        if (!playOpening()) return std::nullopt;
        for (; canGoOn(); ++searchedMoves) {
            const PvLine best = searched(settings.nodes);
            score = position().sideToMove() == white ? best.score : -best.score;
            if (searchedMoves == 0 && absolute(score) > unbalancedOpening) return std::nullopt;
            if (position().inCheck == 0 && popCount(position().occupied()) >= fewestMen) {
                played.positions.push_back({positionToFenWithRights(position()), score});
            }
            countScore();
            if (winningPlies >= decidedPlies) return wonBy(score > 0 ? white : black);
            if (deadScores >= deadPlies && position().fifty >= deadPlies) return played;
            make(best.pv[0]);
        }
        if (isMate()) return wonBy(opponent(position().sideToMove()));
        return absolute(score) < winningScore && ply < longestGame ? std::optional(played) : std::nullopt;
    }

private:
    static std::mt19937_64 seedOf(const SelfPlaySettings& settings, int number) {
        std::seed_seq seeds{static_cast<std::uint64_t>(number), settings.seed, settings.seed >> 32};
        return std::mt19937_64(seeds);
    }

    const Position& position() const { return positions[ply]; }

    // What the game has found so far stays in the tables, what games before it found does not.
    PvLine searched(int nodes) {
        Search search(tables, {.nodes = static_cast<std::uint64_t>(nodes), .forget = !searchedBefore});
        searchedBefore = true;
        return think(search, position());
    }

    bool isMate() const {
        Move moves[maxMoves];
        return position().inCheck != 0 && legalMoves(position(), moves) == 0;
    }

    bool canGoOn() const {
        Move moves[maxMoves];
        return ply < longestGame && legalMoves(position(), moves) > 0 && !drawnByRule(position()) &&
               !recognisedDraw(position(), ply);
    }

    std::vector<Move> soundMoves() const {
        std::vector<Move> moves(maxMoves);
        moves.resize(static_cast<std::size_t>(legalMoves(position(), moves.data())));
        std::erase_if(moves, [&](Move move) { return losesMaterial(position(), move); });
        return moves;
    }

    // Answers whether there is a game to play on from there.
    bool playOpening() {
        for (int i = 0; i < settings.openingPlies; ++i) {
            const std::vector<Move> moves = soundMoves();
            if (moves.empty()) return false;
            const bool byChance = random() % 2 == 0;
            make(byChance ? moves[random() % moves.size()]
                          : searched(std::max(settings.nodes / openingNodesDivisor, 1)).pv[0]);
        }
        return true;
    }

    void make(Move move) {
        advanceLegally(positions[ply], positions[ply + 1], move);
        ++ply;
    }

    void countScore() {
        deadScores = absolute(score) <= deadScore ? deadScores + 1 : 0;
        const int winner = score >= decidedScore ? 1 : score <= -decidedScore ? -1 : 0;
        winningPlies = winner == 0 ? 0 : winner == lastWinner ? winningPlies + 1 : 1;
        lastWinner = winner;
    }

    SelfPlayedGame wonBy(Colour winner) {
        played.result = winner == white ? "1" : "0";
        return played;
    }

    SearchTables& tables;
    const SelfPlaySettings& settings;
    std::mt19937_64 random;
    std::vector<Position> positions; // each links to the one before it, so all stay in place
    int ply = 0;                     // from the start
    bool searchedBefore = false;
    int searchedMoves = 0; // after the opening
    int score = 0;         // the last one, white's view
    int winningPlies = 0;  // for so long the same side has had a decided score
    int lastWinner = 0;    // 1 white, -1 black, 0 nobody
    int deadScores = 0;    // in a row
    SelfPlayedGame played = {{}, "0.5"};
};

} // namespace

std::optional<SelfPlayedGame> playGame(SearchTables& tables, const SelfPlaySettings& settings, int number) {
    return Game(tables, settings, number).play();
}

} // namespace helvan
