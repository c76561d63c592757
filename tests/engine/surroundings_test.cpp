// SPDX-License-Identifier: MIT
//
// A process whose files, pipes and memory fail it.
#include <gtest/gtest.h>

#include <cstdlib>

#include "tools/latency/engine_process.h"

namespace helvan::testing {

namespace {

// The exit status of shell commands in a directory of their own, $engine being the program.
int statusOf(const std::string& commands) {
    const std::string run = std::string("engine=") + HELVAN_BINARY + "; d=$(mktemp -d) && cd $d || exit 99; (" +
                            commands + ") 2>errors; s=$?; rm -r $d; exit $s";
    return WEXITSTATUS(std::system(run.c_str()));
}

} // namespace

// A book in the directory must not be taken for the standard input that the process was started without.
TEST(Surroundings, StandardInputMayBeMissing) {
    EXPECT_EQ(statusOf("printf 'uci\\nquit\\n' >helvan.bin; timeout 1 $engine <&- >answer; s=$?;"
                       "test ! -s answer && exit $s"),
              124)
        << "waits, and answers nothing";
}

TEST(Surroundings, FullFilesLoseLinesOnly) {
    const std::string quitLater = "(printf 'uci\\ngo depth 3\\n'; sleep 0.5; echo quit) | timeout 20 $engine ";
    EXPECT_EQ(statusOf(quitLater + "-log log >/dev/full; grep -q '^cmd = quit' log"), 0) << "standard output";
    EXPECT_EQ(statusOf(quitLater + "-log /dev/full >out; grep -q '^bestmove' out"), 0) << "log";
    EXPECT_EQ(statusOf("ulimit -f 1; (yes isready | head -100; sleep 0.5; echo quit) | timeout 20 $engine -log log |"
                       "test $(grep -c readyok) = 100"),
              0)
        << "log grown to the largest size allowed";
}

TEST(Surroundings, StandardErrorMayLeadNowhere) {
    EXPECT_EQ(statusOf("mkfifo f; exec 4<>f 5>f 4<&-; printf 'uci\\nquit\\n' | $engine 2>&5 >out; grep -q uciok out"),
              0);
}

TEST(Surroundings, PipesMayBeNonBlocking) {
    EngineProcess engine({}, O_NONBLOCK);
    EXPECT_TRUE(engine.readUntil("nothing comes yet", 0.2).empty());
    EXPECT_FALSE(engine.ask("uci", "uciok").empty());
}

// A front end may send much before it reads: if the engine then waited for it, both would wait for ever.
TEST(Surroundings, CommandsAreTakenWhileNobodyReadsTheAnswers) {
    EngineProcess engine;
    ASSERT_FALSE(engine.ask("isready", "readyok").empty());
    engine.narrowPipes();
    for (int i = 0; i < 40; ++i) engine.send("uci"); // more answers than the pipe holds
    EXPECT_TRUE(engine.sendsWithin(std::string(64000, 'x'), 10));
    EXPECT_TRUE(engine.sendsWithin("isready", 10));
    EXPECT_FALSE(engine.readUntil("readyok").empty());
}

TEST(Surroundings, EndsWhenNobodyHears) {
    EngineProcess engine;
    EXPECT_FALSE(engine.ask("go infinite", "info depth 3 ").empty());
    engine.stopReading();
    EXPECT_NE(engine.exitStatus(), EngineProcess::stillRunning);
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // they ask for terabytes
TEST(Surroundings, RefusedMemoryIsNamed) {
    EXPECT_EQ(statusOf("low=4000; while [ $low -lt 120000 ]; do"
                       "  echo quit | (ulimit -v $low; exec $engine 2>why); s=$?;"
                       "  [ $s = 0 ] && exit 0;" // enough at last
                       "  [ $s = 1 ] && [ ! -s why ] && exit 1;"
                       "  [ $s -gt 128 ] && [ -s why ] && exit 2;" // aborted, with a message of the library
                       "  low=$((low + 500)); done; exit 3"),
              0);
}
#endif

} // namespace helvan::testing
