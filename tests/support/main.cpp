// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "board/attacks.h"
#include "eval/tables.h"

int main(int argc, char** argv) {
    helvan::initSlidingAttacks();
    helvan::initAllEvaluation();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
