// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include "eval/evaluate.h"
#include "eval/parameters.h"
#include "eval/tables.h"

namespace helvan::testing {

// What the evaluations of one test program share.
inline EvalCaches& caches() {
    static EvalCaches all;
    return all;
}

inline int evaluated(const Position& position) { return evaluate(position, caches()); }

// Gives the parameters back and builds the tables anew when a test has changed them.
class Parameters : public ::testing::Test {
protected:
    ~Parameters() override {
        evalParameters = saved;
        initEvalTables();
        clearPawnTable(caches());
        caches().evalCache.fill({});
    }

private:
    EvalParameters saved = evalParameters;
};

} // namespace helvan::testing
