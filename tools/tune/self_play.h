// SPDX-License-Identifier: MIT
//
// Games of the engine against itself, for training positions.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "search/tables.h"

namespace helvan {

struct SelfPlaySettings {
    int nodes = 5000;       // the search of each move
    int openingPlies = 12;  // every other of them, by chance, random
    std::uint64_t seed = 1; // of all games
};

struct SampledPosition {
    std::string fen;
    int score; // of the search, centipawns, white's view
};

struct SelfPlayedGame {
    std::vector<SampledPosition> positions;
    const char* result; // for white: "1", "0.5" or "0"
};

// Plays the game of that number: the same one for the same settings, whatever the tables hold. Nothing where the
// opening was not balanced, or where the game came to a draw by rule while a side was winning.
std::optional<SelfPlayedGame> playGame(SearchTables& tables, const SelfPlaySettings& settings, int number);

} // namespace helvan
