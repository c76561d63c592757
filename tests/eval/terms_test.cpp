// SPDX-License-Identifier: MIT
//
// When each term applies, where no slower evaluation tells: a parameter alone is given a value, all others 0, and what
// the position then scores more than with none counts how often the term was credited to white and debited to black.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "eval/evaluate.h"
#include "support/boards.h"
#include "support/eval_parameters.h"

namespace helvan::testing {

namespace {

using Terms = Parameters;

int openingSum(const Position& position) {
    initEvalTables();
    int total = 0;
    for (const auto& term : explainEvaluation(position).terms) total += (term.white - term.black).opening();
    return total;
}

} // namespace

TEST_F(Terms, AreCreditedAsOftenAsListed) {
    constexpr int value = 1000;
    std::ifstream file(HELVAN_TEST_DATA "/terms.txt");
    int checked = 0;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream fields(line);
        std::string fen, name;
        int index = 0;
        int credits = 0;
        std::getline(fields, fen, ';');
        ASSERT_TRUE(fields >> name >> index >> credits) << line;
        const auto rows = parameterRows();
        const auto row = std::find_if(rows.begin(), rows.end(), [&](const auto& r) { return r.name == name; });
        ASSERT_TRUE(row != rows.end() && index < row->count) << line;
        const Position position = positionOf(fen);
        evalParameters = EvalParameters{};
        const int without = openingSum(position);
        row->values[index] = packed(value, value);
        EXPECT_EQ(openingSum(position) - without, value * credits) << line;
        ++checked;
    }
    EXPECT_GT(checked, 45);
}

} // namespace helvan::testing
