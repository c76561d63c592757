// SPDX-License-Identifier: MIT
//
// The tables and the dialogue that the tests of one program share.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "protocol/position_command.h"
#include "protocol/uci.h"
#include "support/output.h"

namespace helvan::testing {

// As they are at the program's start; whoever changes them puts them back.
inline SearchTables& tables() {
    static SearchTables all;
    return all;
}

// At the start position, without a table and without a book.
inline Session& session() {
    static GameHistory gameHistory;
    static Session dialogue{tables(), gameHistory};
    if (gameHistory.current().key == 0) resetGame(gameHistory);
    return dialogue;
}

inline std::string answerTo(const std::string& line) {
    return printedBy([&] { handleLine(session(), line); });
}

} // namespace helvan::testing
