// SPDX-License-Identifier: MIT
#include "main/command_line.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace helvan::testing {

namespace {

struct Reading {
    bool success;
    std::string said;
    CommandLineSettings settings;
};

Reading read(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "helvan");
    Reading reading{};
    ::testing::internal::CaptureStderr();
    reading.success = readCommandLine(static_cast<int>(arguments.size()), arguments.data(), reading.settings);
    reading.said = ::testing::internal::GetCapturedStderr();
    return reading;
}

} // namespace

TEST(CommandLine, KnownOptionsWhateverTheirCase) {
    const Reading reading = read({"-LOG", "one", "-Test", "-quiet", "-cpu", "12", "-pgn", "-log", "two"});
    EXPECT_TRUE(reading.success);
    EXPECT_EQ(reading.said, "");
    EXPECT_STREQ(reading.settings.logFileName, "two");
    EXPECT_EQ(reading.settings.selfTest, 1);
    EXPECT_EQ(reading.settings.makeTestData, 0);
    EXPECT_EQ(reading.settings.cpu, 12);
    EXPECT_TRUE(read({}).success);
}

TEST(CommandLine, FaultsAreNamed) {
    EXPECT_EQ(read({"-quiet", "log"}).said, "Error in command line processing.  option expected at argument 2\n");
    EXPECT_EQ(read({"-"}).said, "Error. option - not found.\n");
    EXPECT_EQ(read({"-log"}).said, "Error.  No argument.\n");
    EXPECT_FALSE(read({"-cpu"}).success);
}

TEST(CommandLine, OverlongFileNamesAreCut) {
    const std::string name(10000, 'x');
    EXPECT_EQ(std::string(read({"-log", name.c_str()}).settings.logFileName).size(), textArgumentCapacity - 1U);
}

} // namespace helvan::testing
