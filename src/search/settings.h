// SPDX-License-Identifier: MIT
//
// The search's settings, which options set, and the scores that the whole search agrees on.
#pragma once

namespace helvan {

struct SearchSettings {
    int drawScore = -5;      // the option "Drawscore", in centipawns
    int useLmr = 1;          // the option "use lmr": late-move reductions
    int nullMovePruning = 1; // the option "null move pruning"
    int deterministic = 0;   // the option "deterministic"
    int multiPv = 1;         // the option "MultiPV"
    int hashMegabytes = 64;  // the option "Hash"
};

inline SearchSettings searchSettings;

inline constexpr int mostPvs = 99;

// Scores are centipawns from the side to move's point of view. Being mated at ply p scores p - mateScore.
inline constexpr int mateScore = 32000;
inline constexpr int infiniteScore = 32001;

inline constexpr int mateBorder = 31800;        // scores beyond it are mates
inline constexpr int largestPlainScore = 31799; // scores beyond it count from a position's ply in the table

constexpr int matedScore(int ply) { return ply - mateScore; }

inline constexpr int maxPly = 250;    // the search goes no deeper than this from the root
inline constexpr int maxDepth = 99;   // iterations, when "go" names no depth
inline constexpr int pvCapacity = 64; // moves of a principal variation, its terminating 0 included

} // namespace helvan
