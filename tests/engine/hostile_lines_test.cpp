// SPDX-License-Identifier: MIT
//
// Whatever stands on standard input, the engine answers on. Meant for the sanitizer builds.
#include <gtest/gtest.h>

#include <sstream>

#include "support/random.h"
#include "tools/latency/engine_process.h"

namespace helvan::testing {

namespace {

// The parts of the text between bars.
std::vector<std::string> parts(const std::string& text) {
    std::vector<std::string> list;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, '|');) list.push_back(part);
    return list;
}

std::string anyBytes(Random& random, std::size_t longest) {
    std::string bytes(random() % (longest + 1), '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    std::erase(bytes, '\n');
    return bytes;
}

// A "position" that does not name startpos or fen, or a FEN without a side to move, ends the process as it
// should; everything else may come.
std::string anyPosition(Random& random) {
    return "position fen x" + lettersOf(random, "pnbrqkPNBRQK12345678/", 80) + (random() % 2 == 0 ? " w " : " b ") +
           lettersOf(random, "KQkq-", 4) + " " + lettersOf(random, "abcdefgh12345678-", 2);
}

std::string wordsOfTheProtocol(Random& random) {
    static const auto beginnings =
        parts("position startpos moves|position fen 4k3/8/8/8/8/8/8/R3K2R w KQkq - 0 1 moves"
              "|position fen r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1 moves"
              "|position fen 8/8/8/8/8/8/8/8 w - - 0 1|position fen QQQQQQQQ/QQQQQQQQ/8/2k5/8/5K2/8/8 w - - 0 1"
              "|position fen k7/8/8/8/8/8/8/K6Q b - -|position fen P6k/8/8/8/8/8/8/K7 w - e6 moves"
              "|position fen 4k3/8/8/8/8/8/8/4K3 w|setoption name MultiPV value|setoption name Drawscore value"
              "|setoption name move overhead milliseconds value|setoption name|go|go ponder|go searchmoves e2e4"
              "|uci|stop|ponderhit|ucinewgame|debug on|\t");
    static const auto words =
        parts("wtime|btime|winc|binc|movestogo|searchmoves|infinite|name|value|junk|0|1|-1|99999999999999999999"
              "|-99999999999999999999|2147483648|x|0x10|%s%n|e2e4|e7e5|e1g1|a7a8q|null|0000|E2E4|e2");
    // A search ends soon, since every line has to be looked at.
    static const auto ends = parts("nodes 50|movetime 2|depth 1|nodes -3 depth 2|infinite");
    std::string line = oneOf(random, beginnings);
    for (int count = below(random, 8); count > 0; --count) line += " " + oneOf(random, words);
    return line + " " + oneOf(random, ends);
}

std::string hostileLine(Random& random) {
    switch (random() % 8) {
    case 0: return anyBytes(random, 60);
    case 1: return anyBytes(random, 20000); // longer than a line may be
    case 2: return "uci " + anyBytes(random, 40);
    case 3: return anyPosition(random);
    default: return wordsOfTheProtocol(random);
    }
}

} // namespace

TEST(HostileLines, TheEngineAnswersAfterEveryBatch) {
    constexpr int batches = 80;
    constexpr int linesPerBatch = 30; // the overlong ones count several times, and 128 fit the queue
    Random random(15);
    EngineProcess engine;
    for (int batch = 0; batch < batches; ++batch) {
        std::string sent;
        for (int i = 0; i < linesPerBatch; ++i) sent += hostileLine(random) + "\n";
        engine.send(sent + "stop\nisready");
        ASSERT_FALSE(engine.readUntil("readyok", 120).empty()) << engine.errors() << "\nafter batch " << batch << ":\n"
                                                               << sent;
    }
    engine.send("stop\nstop\nstop\nquit");
    EXPECT_EQ(engine.exitStatus(60), 0) << engine.errors();
}

} // namespace helvan::testing
