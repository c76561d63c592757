// SPDX-License-Identifier: MIT
//
// The record of one search: all that changes while it runs. Every routine of the search is handed it, and nothing of it
// is process-wide: searches in several threads, each with a record and tables of its own, know nothing of one another.
#pragma once

#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include "board/advance.h"
#include "board/position.h"
#include "search/limits.h"
#include "search/ordering.h"
#include "search/reporter.h"
#include "search/tables.h"

namespace helvan {

struct Book;

struct Search {
    explicit Search(SearchTables& used, SearchLimits asked = {}, Reporter heardBy = {})
        : tables(used), limits(std::move(asked)), reporter(std::move(heardBy)), pondering(limits.ponder) {}
    Search(const Search&) = delete;
    Search& operator=(const Search&) = delete;

    SearchTables& tables;
    const SearchLimits limits;
    const Reporter reporter;
    std::function<void()> poll; // carries out one waiting command, if any; empty: nobody listens
    Book* book = nullptr;       // asked before the search; null: none

    std::uint64_t nodes = 0;        // moves made since the list of root moves was
    bool stopSearch = false;        // every routine returns 0: set by "stop", by the clock and by the node limit
    bool ignoresNodeLimit = false;  // for now: see updateNodeOverride
    std::uint32_t checkCounter = 0; // calls of search routines

    double searchStartTime = 0.0;           // all times in seconds on the clock of now()
    double hardDeadline = unlimitedSeconds; // the search is broken off when it is passed
    double softDeadline = unlimitedSeconds; // no iteration starts after it
    bool timeUp = false;                    // an iteration ended after the soft deadline
    bool pondering;                         // until "ponderhit": no limit stops the search
    bool firstIteration = false;            // depth 1 is searched, which is not interrupted
    double nextClaim = 0.0;                 // when the next piece of the table's memory is claimed
    double pieceSeconds = 0.01;             // that the last one took; a slow system's at first

    Killers killers;
    std::vector<Position> gamePath; // the game before the root, latest first, as far as repetitions reach
};

// Counts a node, unless the search has been stopped; at the limit it is.
inline void countNode(Search& search) {
    if (search.stopSearch) return;
    if (search.nodes < search.limits.nodes || search.ignoresNodeLimit) {
        ++search.nodes;
    } else {
        search.stopSearch = true;
    }
}

// Both kinds of advance, and the count.
inline void makeMove(Search& search, const Position& parent, Position& child, Move move) {
    countNode(search);
    advance(parent, child, move);
}

inline void makeMove(Search& search, const Position& parent, Position& child, Move move, PieceType mover,
                     PieceType victim) {
    countNode(search);
    advance(parent, child, move, mover, victim);
}

} // namespace helvan
