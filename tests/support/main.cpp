// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "board/attacks.h"
#include "search/rebuild.h"

int main(int argc, char** argv) {
    helvan::initSlidingAttacks();
    helvan::rebuildTables();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
