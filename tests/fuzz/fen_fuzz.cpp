// SPDX-License-Identifier: MIT
//
// A position from any text: its moves, their exchanges and checks, its evaluation and, where chess can be played from
// it, a short search.
#include "board/advance.h"
#include "board/checks.h"
#include "board/display.h"
#include "board/exchange.h"
#include "board/fen.h"
#include "board/legal_moves.h"
#include "board/moves.h"
#include "board/node_counter.h"
#include "board/piece_square.h"
#include "board/validity.h"
#include "book/polyglot_key.h"
#include "eval/evaluate.h"
#include "fuzz_support.h"
#include "search/think.h"

using namespace helvan;

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    fuzz::prepareEngine();
    pollInput = nullptr;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t longest = 200; // a longer one is cut by the engine, perhaps before the side to move
    const std::string text = fuzz::textOf(data, size);
    const std::string fen = text.substr(0, text.find('\0'));
    // Without a side to move the process ends, as it should.
    const std::size_t side = fen.find(' ');
    if (side >= longest || side + 1 >= fen.size() || (fen[side + 1] != 'w' && fen[side + 1] != 'b')) return 0;
    Position position;
    setupFromFen(position, fen.c_str());
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
    evaluate(position);
    const SearchScope scope;
    nodeCounter.limit = fuzz::fewNodes;
    think(position, noTimeGoalSeconds, 6, "");
    return 0;
}
