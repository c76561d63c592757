// SPDX-License-Identifier: MIT
//
// Searches for tests: each begins with tables of its own, in which nothing is known.
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "search/report.h"
#include "search/think.h"
#include "support/boards.h"

namespace helvan::testing {

class Searching : public ::testing::Test {
protected:
    Searching() { tables->transpositionTable.allocate(1); }
    ~Searching() override { searchSettings = {}; }

    // Forgets all that was searched.
    void forget() {
        tables->transpositionTable.clear();
        clearMoveHistory(tables->moveHistory);
    }

    const TTEntry* stored(const Position& position) const { return tables->transpositionTable.probe(position.key); }

    std::unique_ptr<SearchTables> tables = std::make_unique<SearchTables>();
};

} // namespace helvan::testing
