// SPDX-License-Identifier: MIT
//
// Any arguments, one a line.
#include <sstream>
#include <vector>

#include "fuzz_support.h"
#include "main/command_line.h"

using namespace helvan;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream input(fuzz::textOf(data, size));
    std::vector<std::string> arguments = {"helvan"};
    for (std::string argument; std::getline(input, argument);) arguments.push_back(argument);
    std::vector<const char*> pointers;
    for (const std::string& argument : arguments) pointers.push_back(argument.c_str());
    CommandLineSettings settings;
    if (!readCommandLine(static_cast<int>(pointers.size()), pointers.data(), settings)) printUsage(pointers[0]);
    return 0;
}
