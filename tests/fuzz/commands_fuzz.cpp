// SPDX-License-Identifier: MIT
//
// Whole dialogues, one line of the input a command. While a search runs it polls for further lines, so commands come in
// the middle of searches too; when no line is left the searches are stopped.
#include <cstring>
#include <map>
#include <sstream>

#include "fuzz_support.h"
#include "protocol/number_text.h"
#include "protocol/options.h"
#include "protocol/position_command.h"
#include "protocol/set_option.h"
#include "protocol/uci.h"
#include "protocol/words.h"

using namespace helvan;

namespace {

std::istringstream dialogue;

Session& session() {
    static GameHistory gameHistory;
    static Session only{fuzz::tables(), gameHistory};
    return only;
}

// "quit", positions of no kind, a FEN without a side and tables larger than memory end the process, as they should.
constexpr std::size_t longestPlacement = 200; // a longer one is cut, perhaps before the side to move

bool endsTheProcess(const Words& words) {
    if (!words.is(0, "position")) return words.is(0, "quit");
    const bool hasSide = words[3][0] == 'w' || words[3][0] == 'b';
    const bool isWhole = words.is(1, "fen") && hasSide && std::strlen(words[2]) <= longestPlacement;
    return !isWhole && !words.is(1, "startpos");
}

bool isSlow(const Words& words) {
    if (!words.is(0, "setoption")) return false;
    // Options rebuild tables and allocate memory, which would take up all the time.
    if (words.count > 3 && dialogue.tellg() > 400) return true;
    constexpr int mostMegabytes = 64;
    const OptionRequest request = readOptionRequest(words);
    return request.name == "hash" && intFromText(request.value.c_str()) > mostMegabytes;
}

// What one input sets must not be there for the next, or a finding could not be repeated from its input.
void forgetAll() {
    static const std::map<std::string, std::string> atFirst = [] {
        std::map<std::string, std::string> values;
        for (const Option& option : options()) values[option.name] = valueText(option);
        values["Hash"] = std::to_string(fuzz::smallHash);
        values["OwnBook"] = "false";
        values["deterministic"] = "true";
        return values;
    }();
    for (const Option& option : options()) {
        handleLine(session(), std::string("setoption name ") + option.name + " value " + atFirst.at(option.name));
    }
    session().hardLimitPercent = 500;
    resetGame(session().gameHistory);
}

bool handleNextLine() {
    std::string line;
    if (!std::getline(dialogue, line)) return false;
    line = line.substr(0, line.find_first_of(std::string("\f\r\0", 3))); // where the engine takes it to end
    const Words words(line);
    if (endsTheProcess(words) || isSlow(words)) return true;
    if (words.is(0, "go")) line += " nodes " + std::to_string(fuzz::fewNodes);
    appendLine(session().queue, line);
    pollCommand(session());
    return true;
}

void pollDialogue() {
    if (!handleNextLine()) handleLine(session(), "stop");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    fuzz::prepareEngine();
    session().poll = pollDialogue;
    session().uninterruptedNodes = 0; // boards full of queens are common
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    dialogue.clear();
    dialogue.str(fuzz::textOf(data, size));
    forgetAll();
    while (handleNextLine()) {
    }
    return 0;
}
