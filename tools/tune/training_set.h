// SPDX-License-Identifier: MIT
//
// Positions with what came of them, to fit the evaluation to.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "board/position.h"

namespace helvan {

// One entry a position in each array.
struct TrainingSet {
    std::vector<Position> positions; // piece sums up to date
    std::vector<float> results;      // for white: 1, 0.5 or 0
    std::vector<float> scores;       // of a search, centipawns, white's view
    std::vector<int> games;          // the number of the game it comes from

    std::size_t size() const { return positions.size(); }
    void add(const Position& position, float result, float score, int game);
};

// Adds the position of a line "FEN|result|score|game". Answers false, with nothing added, for any other line and for
// a position that chess cannot be played from.
bool addLine(TrainingSet& set, const std::string& line);

// Reads a file of such lines and of comments, which begin with '#'; a name that ends in ".xz" is read through xz.
// Lines that cannot be read are counted on standard error. Empty if the file cannot be opened.
TrainingSet readTrainingSet(const std::string& path);

} // namespace helvan
