// SPDX-License-Identifier: MIT
//
// Whatever stands on standard input, the engine answers on. Meant for the sanitizer builds.
#include <gtest/gtest.h>

#include <random>

#include "support/engine_process.h"

namespace helvan::testing {

namespace {

using Random = std::mt19937_64;

template <typename Values> std::string oneOf(Random& random, const Values& values) {
    return values[random() % std::size(values)];
}

std::string letters(Random& random, const std::string& alphabet, std::size_t longest) {
    std::string text;
    for (std::size_t length = random() % (longest + 1); length > 0; --length)
        text += alphabet[random() % alphabet.size()];
    return text;
}

std::string anyBytes(Random& random, std::size_t longest) {
    std::string text;
    for (std::size_t length = random() % (longest + 1); length > 0; --length) text += static_cast<char>(random() % 256);
    std::erase(text, '\n');
    return text;
}

std::string number(Random& random) {
    static const std::vector<std::string> numbers = {
        "0", "1", "-1",   "7",   "50",  "99999999999999999999", "-99999999999999999999", "2147483648",
        "x", "",  "0x10", "1e9", "%s%n"};
    return oneOf(random, numbers);
}

// A "position" that does not name startpos or fen, or a FEN without a side to move, ends the process as it
// should; everything else may come.
std::string positionLine(Random& random) {
    static const std::vector<std::string> moves = {"e2e4",  "e7e5", "e1g1", "null", "0000",
                                                   "a7a8q", "zz",   "E2E4", "e2",   "%n"};
    static const std::vector<std::string> fens = {
        "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1",
        "8/8/8/8/8/8/8/8 w - - 0 1",
        "QQQQQQQQ/QQQQQQQQ/8/2k5/8/5K2/8/8 w - - 0 1",
        "4k3/8/8/8/8/8/8/R3K2R w KQkq - 0 1",
        "k7/8/8/8/8/8/8/K6Q b - -",
        "P6k/8/8/8/8/8/8/K7 w - e6 moves",
        "4k3/8/8/8/8/8/8/4K3 w"};
    std::string line = "position ";
    switch (random() % 4) {
    case 0: line += "startpos"; break;
    case 1: line += "fen " + oneOf(random, fens); break;
    default:
        line += "fen x" + letters(random, "pnbrqkPNBRQK12345678/", 80) + (random() % 2 == 0 ? " w " : " b ") +
                letters(random, "KQkq-", 4) + " " + letters(random, "abcdefgh12345678-", 2);
        break;
    }
    if (random() % 2 == 0) {
        line += " moves";
        for (std::size_t count = random() % 12; count > 0; --count) line += " " + oneOf(random, moves);
    }
    return line;
}

std::string goLine(Random& random) {
    static const std::vector<std::string> limits = {
        "wtime", "btime", "winc", "binc", "movestogo", "searchmoves e2e4", "searchmoves", "junk", "ponder", "infinite"};
    std::string line = "go";
    for (std::size_t count = random() % 4; count > 0; --count)
        line += " " + oneOf(random, limits) + " " + number(random);
    // Something that ends soon, since every line has to be looked at.
    static const std::vector<std::string> ends = {" nodes 50", " movetime 2", " depth 1", " nodes -3 depth 2",
                                                  " infinite"};
    return line + oneOf(random, ends);
}

std::string hostileLine(Random& random) {
    static const std::vector<std::string> commands = {
        "uci", "stop", "ponderhit", "ucinewgame", "debug on", "register", "UCI", "", "   ", "\t", "go searchmoves"};
    switch (random() % 8) {
    case 0: return anyBytes(random, 60);
    case 1: return anyBytes(random, 20000); // longer than a line may be
    case 2: return oneOf(random, commands);
    case 3: return oneOf(random, commands) + " " + anyBytes(random, 40);
    case 4: return "setoption name " + letters(random, "Hash MultPVwner", 12) + " value " + number(random);
    case 5: return goLine(random);
    default: return positionLine(random);
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
        engine.sendRaw(sent);
        engine.send("stop");
        engine.send("isready");
        const bool ready = !engine.readUntil("readyok", 120).empty();
        ASSERT_TRUE(ready && engine.isRunning()) << engine.errors() << "\nafter batch " << batch << ":\n" << sent;
    }
    engine.send("stop\nstop\nstop\nquit");
    EXPECT_EQ(engine.exitStatus(60), 0) << engine.errors();
}

} // namespace helvan::testing
