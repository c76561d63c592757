// SPDX-License-Identifier: MIT
//
// Who hears of a search.
#pragma once

#include <cstdint>
#include <functional>

#include "board/types.h"
#include "search/settings.h"

namespace helvan {

struct Search;

// The best line of a rank, the first rank being the best of all.
struct PvLine {
    int score = 0;        // centipawns
    int milliseconds = 0; // of the search, when the line was finished
    std::uint64_t nodes = 0;
    Move pv[pvCapacity] = {};
};

// What is called when; by itself silent. Lines end with a 0.
struct Reporter {
    std::function<void(int depth)> iterationBegins = [](int) {};
    // The root's n-th move is next. Only of searches for one line, of late iterations.
    std::function<void(Move move, int number)> moveBegins = [](Move, int) {};
    // The root has a new best line. Of the same searches.
    std::function<void(const Search&, int depth, int score, const Move* pv)> lineFound = [](const Search&, int, int,
                                                                                            const Move*) {};
    // Of searches for several lines, after each iteration, from rank 1.
    std::function<void(int rank, int depth, const PvLine& line)> rankFound = [](int, int, const PvLine&) {};
    // Only of iterations that were not stopped.
    std::function<void(const Search&, int depth, int score, const Move* pv)> iterationEnds = [](const Search&, int, int,
                                                                                                const Move*) {};
    std::function<void(const Search&)> searchEnds = [](const Search&) {};
    // What the search has come to, after all else.
    std::function<void(const Search&, const Move* pv)> answers = [](const Search&, const Move*) {};
};

} // namespace helvan
