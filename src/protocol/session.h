// SPDX-License-Identifier: MIT
//
// The dialogue's record: what a front end talks about with the engine. Every command is handed it.
#pragma once

#include <functional>
#include <vector>

#include "board/position.h"
#include "book/book.h"
#include "protocol/command_queue.h"
#include "search/search.h"

namespace helvan {

// The game so far: slot 0 holds the position set up from text, slot i + 1 the one after the i-th move, each linked to
// the one before it; ply is the slot of the current position.
struct GameHistory {
    static constexpr int capacity = 8192;

    Position positions[capacity];
    int ply = 0;

    const Position& current() const { return positions[ply]; }
};

struct Session {
    SearchTables& tables;
    GameHistory& gameHistory;
    CommandQueue queue{};
    std::function<void()> poll{}; // carries out one waiting command: what searches call in their middle
    Book book{};
    std::vector<Search*> running{}; // a "go" in the middle of a search runs inside it: the outermost first
    int hardLimitPercent = 500;     // of the last "go" that chose one
    std::uint64_t uninterruptedNodes = usualUninterruptedNodes; // of every search
    bool tableIsNew = true; // the transposition table is, and nobody has asked since whether the engine is ready
};

} // namespace helvan
