// SPDX-License-Identifier: MIT
//
// Plays seeded games of the engine against itself and prints their quiet positions, as the tuner reads them.
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "board/attacks.h"
#include "board/fen.h"
#include "board/legal_moves.h"
#include "board/make_move.h"
#include "board/moves.h"
#include "board/piece_square.h"
#include "search/draws.h"
#include "search/limits.h"
#include "search/rebuild.h"
#include "search/settings.h"
#include "search/think.h"
#include "search/transposition_table.h"
#include "tools/tune/options.h"

namespace helvan {

namespace {

constexpr int usageError = 2;
constexpr int longestGame = 400;       // plies; then it is a draw
constexpr int mostRandomPlies = 100;   // with more, hardly a game is left to play
constexpr int decisiveScore = 2000;    // centipawns: then the game is won
constexpr int unbalancedOpening = 200; // centipawns, too many for a game to be worth playing

struct Settings {
    int games = 1000;
    int nodes = 3000;
    int openingPlies = 8;
    std::uint64_t seed = 1;
};

bool readSettings(std::span<char* const> arguments, Settings& settings) {
    const ToolOption options[] = {{"--games", &settings.games, "how many are played"},
                                  {"--nodes", &settings.nodes, "the search of each move"},
                                  {"--plies", &settings.openingPlies, "random moves at the start of a game"},
                                  {"--seed", &settings.seed, "of the random moves"}};
    return readOptions(arguments, options);
}

using Random = std::mt19937_64;

struct Searched {
    Move move;
    int score; // centipawns, the side to move's view
};

Searched search(const Position& position, int nodes) {
    const SearchScope scope;
    iterationRecords.fill({});
    nodeCounter.limit = static_cast<std::uint64_t>(nodes);
    think(position, noTimeGoalSeconds, 0, "");
    Searched result{nullMove, 0};
    for (const IterationRecord& record : iterationRecords) {
        if (record.bestMove != nullMove) result = {record.bestMove, record.score};
    }
    return result;
}

// The text that setup from text reads back, but for an en-passant square: a quiet position has none that matters.
std::string fenOf(const Position& position) {
    struct Right {
        Bitboard squares;
        char letter;
    };
    constexpr Right rights[] = {
        {bit(e1) | bit(h1), 'K'}, {bit(e1) | bit(a1), 'Q'}, {bit(e8) | bit(h8), 'k'}, {bit(e8) | bit(a8), 'q'}};
    char text[fenBufferSize];
    positionToFen(position, text);
    std::string fen = text;
    fen.resize(fen.size() - std::string(" - -").size());
    std::string letters;
    for (const Right& right : rights) {
        if ((position.touched & right.squares) == 0) letters += right.letter;
    }
    return fen + " " + (letters.empty() ? "-" : letters) + " -";
}

bool isQuiet(const Position& position, Move move) {
    const bool captures = (position.of(opponent(position.sideToMove()), allPieces) & bit(moveTo(move))) != 0;
    return position.inCheck == 0 && !captures && moveKind(move) != enPassant && !isPromotion(move);
}

// A game in play. Each position links to the one before it, so all stay in place.
class Game {
public:
    struct Line {
        std::string fen;
        int score; // centipawns, white's view
    };

    Game() : positions(longestGame + 1) {
        setupFromFen(positions[0], startFen);
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
    bool playOn(int nodes) {
        for (bool opening = true;; opening = false) {
            Move moves[maxMoves];
            if (legalMoves(position(), moves) == 0) {
                if (position().inCheck != 0) result = whitePoints(opponent(position().sideToMove()));
                return !opening;
            }
            if (ply == longestGame || drawnByRule(position()) || recognisedDraw(position(), ply)) return !opening;
            const Searched searched = search(position(), nodes);
            if (opening && absolute(searched.score) > unbalancedOpening) return false;
            if (absolute(searched.score) > decisiveScore) {
                const Colour mover = position().sideToMove();
                result = whitePoints(searched.score > 0 ? mover : opponent(mover));
                return true;
            }
            record(searched);
            make(searched.move);
        }
    }

    std::vector<Line> lines;
    const char* result = "0.5"; // for white

private:
    const Position& position() const { return positions[ply]; }

    static const char* whitePoints(Colour winner) { return winner == white ? "1" : "0"; }

    void record(const Searched& searched) {
        if (!isQuiet(position(), searched.move)) return;
        lines.push_back({fenOf(position()), position().sideToMove() == white ? searched.score : -searched.score});
    }

    void make(Move move) {
        Position& child = positions[ply + 1];
        makeMove(position(), child, move);
        child.inCheck = static_cast<std::uint16_t>(inCheck(child, child.sideToMove()));
        ++ply;
    }

    std::vector<Position> positions;
    int ply = 0; // from the start
};

int generate(const Settings& settings) {
    Random random(settings.seed);
    std::printf("# Quiet positions of %d games of Helvan against itself, %d nodes a move, %d random plies, seed %llu.\n"
                "# FEN|result for white|search score for white in centipawns|game\n",
                settings.games, settings.nodes, settings.openingPlies, static_cast<unsigned long long>(settings.seed));
    for (int number = 1; number <= settings.games;) {
        Game game;
        if (!game.playRandomMoves(settings.openingPlies, random) || !game.playOn(settings.nodes)) continue;
        for (const Game::Line& line : game.lines) {
            std::printf("%s|%s|%d|%d\n", line.fen.c_str(), game.result, line.score, number);
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
    if (settings.games < 1 || settings.nodes < 1 || settings.openingPlies < 0 ||
        settings.openingPlies > mostRandomPlies) {
        std::fprintf(stderr, "Games and nodes above 0, and 0 to %d random plies, are needed.\n", mostRandomPlies);
        return usageError;
    }
    initSlidingAttacks();
    rebuildTables();
    testMode = 1; // prints nothing and begins every search with empty tables, so that games repeat
    hashMegabytes = 1;
    transpositionTable.allocate(hashMegabytes);
    transpositionTable.claimAllPages();
    return generate(settings);
}
