// SPDX-License-Identifier: MIT
//
// Boards that no game reaches, as any user may paste them: nothing may leave its memory. Meant for the
// sanitizer build.
#include <gtest/gtest.h>

#include "board/checks.h"
#include "board/exchange.h"
#include "board/move_picker.h"
#include "board/validity.h"
#include "support/boards.h"

namespace helvan::testing {

namespace {

std::string hostileFen(Random& random) {
    // Each alphabet makes boards of another sort: crowded with queens, full of pawns, any bytes.
    static const std::vector<std::string> alphabets = {"QqQqKk1", "PpPpRrKk/1234", "PNBRQKpnbrqk12345678/", "kK8/",
                                                       "PNBRQKpnbrqk0918/x?\xff\x80-"};
    static const std::vector<std::string> tails = {" w KQkq -", " b KQkq e3", " w - e6 0 1", " b", " w Kk", " b qq a9"};
    return lettersOf(random, oneOf(random, alphabets), 90) + oneOf(random, tails);
}

} // namespace

TEST(HostileBoards, NothingLeavesItsMemory) {
    Random random(14);
    ::testing::internal::CaptureStdout(); // make-move reports captured kings
    for (int i = 0; i < 3000; ++i) {
        Position position = positionOf(hostileFen(random));
        if (i % 2 == 0) dropUnfoundedCastlingRights(position);
        for (int kind = 0; kind <= 4; ++kind) {
            MovePicker picker(position, static_cast<PickerKind>(kind), static_cast<Move>(random()),
                              static_cast<Move>(random()), static_cast<Move>(random() % (moveBits + 1)));
            while (const Move move = nextMove(picker)) {
                see(position, move);
                see(position, move, 1);
                givesCheck(position, move);
                const Position child = childOf(position, move);
                // Once no right lacks its king or rook, every move leaves the board sound.
                ASSERT_TRUE(i % 2 != 0 || incrementalStateAgrees(position, child)) << moveText(move);
            }
        }
        // And moves that nothing generated.
        for (int j = 0; j < 20; ++j) childOf(position, static_cast<Move>(random() % (moveBits + 1)));
    }
    ::testing::internal::GetCapturedStdout();
}

} // namespace helvan::testing
