// SPDX-License-Identifier: MIT
//
// Nodes whose children the table knows: what a search asks of each child shows in what it takes from there.
#pragma once

#include "search/settings.h"
#include "support/searching.h"

namespace helvan::testing {

// A forcing move, and by how many half-plies it is extended on the principal variation and at the root.
struct ForcingMove {
    const char* fen;
    const char* before; // moves
    const char* move;
    int onPv, atRoot;
};

inline constexpr ForcingMove forcingMoves[] = {
    {"4k3/7p/8/8/8/8/7P/R3K3 w - -", "", "a1a2", 0, 0},
    {"4k3/7p/8/8/8/8/7P/R3K3 w - -", "", "a1a8", 1, 2},
    {"4k3/7p/8/8/4P3/8/7P/4K3 w - -", "", "e4e5", 1, 2}, // no enemy pawn can ever attack it
    {"4k3/7p/8/8/8/4P3/7P/4K3 w - -", "", "e3e4", 0, 0},
    {"4k3/3p3p/8/8/4P3/8/7P/4K3 w - -", "", "e4e5", 0, 0},
    {"3k4/7p/4P3/8/8/8/7P/4K3 w - -", "", "e6e7", 2, 4},
    {"4k3/7p/8/3p4/8/8/3R3P/4K3 w - -", "", "d2d5", 1, 1},
    {"4k3/7p/2p5/3p4/8/8/3R3P/4K3 w - -", "", "d2d5", 0, 0},
    {"3k4/7p/8/3p4/8/8/3R3P/4K3 w - -", "", "d2d5", 2, 3},
    {"3k4/7p/2p5/3p4/8/8/3R3P/4K3 w - -", "", "d2d5", 1, 2},
    {"4k3/7p/8/3p4/4P3/8/7P/4K3 w - -", "", "e4d5", 2, 2},
    {"4k3/2p4p/8/3p4/4P3/8/7P/4K3 w - -", "", "e4d5", 1, 1},
    {"4k3/7p/8/3r4/4P3/8/7P/4K3 w - -", "", "e4d5", 4, 2}, // into a pawn ending
    {"8/2k4p/3p4/4P3/5B2/8/7P/4K3 w - -", "", "e5d6", 2, 4},
    {"4k3/2p1p2p/8/3P4/8/8/7P/4K3 b - -", "e7e5", "d5e6", 2, 2},
    {"4k3/3pp2p/8/3P4/8/8/7P/4K3 b - -", "e7e5", "d5e6", 1, 0},
    {"4k3/7p/8/8/8/4r3/3R3P/4K3 w - -", "", "d2e2", 0, 0}, // out of check
    {"4k3/7p/8/8/8/3Rr3/7P/4K3 w - -", "", "d3e3", 2, 2},
    {"8/k6p/8/8/8/3Rr3/7P/4K3 w - -", "", "d3e3", 1, 0},
};

class KnownChildren : public Searching {
protected:
    static constexpr int low = -7000, high = 31990, everyDepth = 99;

    static Move moveOf(const Position& position, const std::string& text) {
        for (const Move move : legalMovesOf(position)) {
            if (moveText(move) == text) return move;
        }
        ADD_FAILURE() << text;
        return nullMove;
    }

    // The score is the child's.
    void know(const Position& position, Move move, int score, int depth = everyDepth) {
        const Bound bound = score < 0 ? upperBound : lowerBound;
        tables->transpositionTable.store(childOf(position, move).key, depth, score, bound, nullMove, 0);
    }
    void knowAll(const Position& position, int score) {
        for (const Move move : legalMovesOf(position)) know(position, move, score);
    }

    // The depth that a zero window asks of the move, all moves being bad: what is known of the move saves nodes from
    // there on. nodesOf searches the position and answers the nodes.
    template <typename NodesOf> int depthAsked(const Position& position, Move move, NodesOf nodesOf) {
        searchSettings.nullMovePruning = 0; // it could decide the child without nodes
        const auto nodesKnowing = [&](int depth) {
            forget();
            knowAll(position, high);
            know(position, move, high, depth);
            return nodesOf();
        };
        int depth = 15;
        for (const auto least = nodesKnowing(depth); depth > 0 && nodesKnowing(depth - 1) == least;) --depth;
        searchSettings.nullMovePruning = 1;
        return depth;
    }

    int depthStored(const Position& position, Move move) const {
        const TTEntry* entry = stored(childOf(position, move));
        return entry != nullptr ? entry->depth : -1;
    }
};

} // namespace helvan::testing
