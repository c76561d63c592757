// SPDX-License-Identifier: MIT
//
// The command line.
#pragma once

namespace helvan {

// Of a text argument, its terminator included; longer ones are cut.
inline constexpr int textArgumentCapacity = 4096;

enum class ArgumentKind : int {
    ignored = 0, // a switch that sets nothing
    text = 1,    // the next argument is copied to a buffer of textArgumentCapacity characters
    integer = 2, // the next argument is read as a decimal number into an int
    real = 3,    // the next argument is read into a double
    flag = 4     // an int is set to 1
};

// A table of these ends with a record whose name is empty.
struct CommandLineOption {
    const char* name; // without its '-'; the case of letters does not matter
    void* target;     // of the type that the kind says; null for ignored
    ArgumentKind kind;
};

// What the command line has chosen.
struct CommandLineSettings {
    int selfTest = 0;
    int makeTestData = 0;
    int help = 0; // tested after reading; no option sets it, deliberately
    int cpu = 0;  // accepted, and read by nothing
    int pgn = 0;  // accepted, and read by nothing
    char logFileName[textArgumentCapacity] = "";
};

// Reads the arguments behind the program's name by the table. Answers false after the first fault, which is
// named on standard error.
bool readCommandLine(int argumentCount, const char* const* arguments, const CommandLineOption* options);

// The same by the program's own table.
bool readCommandLine(int argumentCount, const char* const* arguments, CommandLineSettings& settings);

// Prints the usage text on standard error.
void printUsage(const char* programPath);

} // namespace helvan
