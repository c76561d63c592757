// SPDX-License-Identifier: MIT
//
// Any file as opening book: the answer is a legal move or none. The first byte chooses the position, and the letters
// K in the file's place of keys, eight in a row, stand for the position's own key.
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "board/fen.h"
#include "board/legal_moves.h"
#include "board/moves.h"
#include "book/book.h"
#include "book/polyglot_key.h"
#include "book/settings.h"
#include "fuzz_support.h"

using namespace helvan;

namespace {

constexpr const char* positions[] = {"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq -",
                                     "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R b KQkq -",
                                     "8/P6k/8/8/8/8/p6K/8 w - -", "7k/5K2/6Q1/8/8/8/8/8 b - -"};

void putKeys(std::string& bytes, std::uint64_t key) {
    for (std::size_t at = 0; at + 8 <= bytes.size(); at += 16) {
        if (bytes.compare(at, 8, "KKKKKKKK") != 0) continue;
        for (int i = 0; i < 8; ++i) bytes[at + i] = static_cast<char>(key >> (56 - 8 * i));
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    initSlidingAttacks();
    std::snprintf(bookSettings.bookFileName, bookFileCapacity, "/tmp/helvan_book_fuzz_%d.bin",
                  static_cast<int>(getpid()));
    std::atexit([] { std::remove(bookSettings.bookFileName); });
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    Position position;
    if (setupFromFen(position, positions[data[0] % std::size(positions)]) != nullptr) std::abort();
    bookSettings.bestLineOnly = data[0] >> 7;
    std::string bytes = fuzz::textOf(data + 1, size - 1);
    putKeys(bytes, polyglotKey(position));
    std::FILE* file = std::fopen(bookSettings.bookFileName, "wb");
    if (file == nullptr) std::abort();
    std::fwrite(bytes.data(), 1, bytes.size(), file);
    std::fclose(file);
    static Book book;
    reopenBook(book);
    const Move move = probeBook(book, position);
    Move legal[maxMoves];
    const int count = legalMoves(position, legal);
    if (move != nullMove && std::find(legal, legal + count, move) == legal + count) std::abort();
    return 0;
}
