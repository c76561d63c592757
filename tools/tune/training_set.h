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

    // Drops the positions for which the test answers false. The test may replace a position.
    template <typename Test> void keepIf(Test test) {
        std::size_t kept = 0;
        for (std::size_t i = 0; i < size(); ++i) {
            if (!test(positions[i])) continue;
            positions[kept] = positions[i];
            results[kept] = results[i];
            scores[kept] = scores[i];
            games[kept] = games[i];
            ++kept;
        }
        positions.resize(kept);
        results.resize(kept);
        scores.resize(kept);
        games.resize(kept);
    }
};

// Adds the position of a line "FEN|result|score|game" with or without its line feed. Answers false, with nothing added,
// for any other line and for a position that chess cannot be played from. Results are 0 to 1, scores finite.
bool addLine(TrainingSet& set, const std::string& line);

// Replaces each position by the one in which its quiescence search ends with an evaluation; score and result stay
// white's. Drops those for which it ends in a mate or a draw.
void moveToQuietLeaves(TrainingSet& set);

// Drops positions with fewer men, kings included.
void dropSmallEndings(TrainingSet& set, int fewestMen);

// Reads a file of such lines and of comments, which begin with '#'; a name that ends in ".xz" is read through xz.
// Lines that cannot be read are counted on standard error. Empty, with a message, if the file cannot be read to its
// end.
TrainingSet readTrainingSet(const std::string& path);

} // namespace helvan
