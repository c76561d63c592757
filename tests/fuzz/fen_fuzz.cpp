// SPDX-License-Identifier: MIT
//
// A position from any text: its moves, their exchanges and checks, its evaluation and, where chess can be played from
// it, a short search.
#include "board/checks.h"
#include "board/display.h"
#include "board/exchange.h"
#include "board/fen.h"
#include "board/legal_moves.h"
#include "board/moves.h"
#include "board/piece_square.h"
#include "board/validity.h"
#include "book/polyglot_key.h"
#include "eval/evaluate.h"
#include "fuzz_support.h"
#include "search/think.h"

using namespace helvan;

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    fuzz::prepareEngine();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Position position;
    if (setupFromFen(position, fuzz::textOf(data, size).c_str()) != nullptr) return 0;
    dropUnfoundedCastlingRights(position);
    refreshPieceSums(position);
    printBoard(position);
    polyglotKey(position);
    Move moves[maxMoves];
    const int count = allMoves(position, moves);
    for (int i = 0; i < count; ++i) {
        see(position, moves[i]);
        seeAtLeast(position, moves[i], 100, 1);
        givesCheck(position, moves[i]);
        isPseudoLegal(position, moves[i]);
    }
    if (unplayableReason(position) != nullptr) return 0;
    legalMoves(position, moves);
    evaluate(position, fuzz::tables().evalCaches);
    // Depth 1 may be interrupted: boards full of queens are common. What one input leaves behind must not matter to
    // the next.
    Search search(fuzz::tables(), {.depth = 6, .nodes = fuzz::fewNodes, .forget = true, .uninterruptedNodes = 0});
    think(search, position);
    return 0;
}
