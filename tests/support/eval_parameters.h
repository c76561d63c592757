// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include "eval/eval_cache.h"
#include "eval/parameters.h"
#include "eval/tables.h"

namespace helvan::testing {

// Gives the parameters back and builds the tables anew when a test has changed them.
class Parameters : public ::testing::Test {
protected:
    ~Parameters() override {
        evalParameters = saved;
        kingSafetyAggressiveness = savedAggressiveness;
        initEvalTables();
        evalCache.fill({});
    }

private:
    EvalParameters saved = evalParameters;
    int savedAggressiveness = kingSafetyAggressiveness;
};

} // namespace helvan::testing
