// SPDX-License-Identifier: MIT
#include "protocol/options.h"

#include <algorithm>
#include <cstdio>

#include "board/move_text.h"
#include "book/settings.h"
#include "eval/parameters.h"
#include "platform/log.h"
#include "protocol/number_text.h"
#include "protocol/session.h"

namespace helvan {

namespace {

int numberOf(const Option& option) {
    if (const Lane* lane = std::get_if<Lane>(&option.setting)) {
        return lane->opening ? lane->pair->opening() : lane->pair->endgame();
    }
    return **std::get_if<int*>(&option.setting);
}

void setNumber(Session& /*session*/, const Option& option, const std::string& value) {
    const int number = intFromText(value.c_str());
    if (const Lane* lane = std::get_if<Lane>(&option.setting)) {
        PackedScore& pair = *lane->pair;
        pair = lane->opening ? packed(number, pair.endgame()) : packed(pair.opening(), number);
    } else {
        **std::get_if<int*>(&option.setting) = number;
    }
}

// 1 for "true", whatever stands there instead is 0.
void setFlag(const Option& option, const std::string& value) {
    **std::get_if<int*>(&option.setting) = value == "true" ? 1 : 0;
}

void setSpin(Session& session, const Option& option, const std::string& value) {
    setNumber(session, option, value);
    rebuildTables(session.tables);
}

void setSwitch(Session& session, const Option& option, const std::string& value) {
    if (value == "true" || value == "false") {
        setFlag(option, value);
    } else {
        std::printf("info string %s not recognized as checkbox argument\n", value.c_str());
    }
    rebuildTables(session.tables);
}

void setHash(Session& session, const Option& option, const std::string& value) {
    setNumber(session, option, value);
    const int megabytes = numberOf(option);
    session.tables.transpositionTable.release();
    if (megabytes > 0) {
        session.tables.transpositionTable.allocate(megabytes);
        session.tableIsNew = true;
        std::printf("info string Hash table size is now %d meg\n", megabytes);
    } else {
        std::printf("info string Hash tables turned OFF\n");
        logWrite("Hash tables turned off\n");
    }
}

void setOwnBook(Session& session, const Option& option, const std::string& value) {
    setFlag(option, value);
    reopenBook(session.book);
}

void setPonder(Session& /*session*/, const Option& option, const std::string& value) {
    setFlag(option, value);
    logWrite("Ponder set to %d\n", numberOf(option));
}

// A name too long for the setting is cut; the answer shows what is left.
void setBookFile(Session& session, const Option& /*option*/, const std::string& value) {
    bookSettings.bookFileName[value.copy(bookSettings.bookFileName, bookFileCapacity - 1)] = '\0';
    std::printf("info string book file is %s\n", bookSettings.bookFileName);
    std::fflush(stdout);
    reopenBook(session.book);
}

constexpr auto check = OptionType::check;
constexpr auto spin = OptionType::spin;
constexpr auto string = OptionType::string;

const Option table[] = {
    {"Ponder", check, &protocolSettings.ponderAllowed, 0, 1, setPonder, "true"},
    {"Hash", spin, &searchSettings.hashMegabytes, 0, 4096, setHash},
    {"OwnBook", check, &bookSettings.ownBook, 0, 1, setOwnBook},
    {"MultiPV", spin, &searchSettings.multiPv, 1, mostPvs, setNumber},
    {"Book File", string, bookSettings.bookFileName, 0, 0, setBookFile},
    {"use lmr", check, &searchSettings.useLmr, 0, 1, setSwitch},
    {"null move pruning", check, &searchSettings.nullMovePruning, 0, 1, setSwitch},
    {"deterministic", check, &searchSettings.deterministic, 0, 1, setSwitch},
    {"Best Line", check, &bookSettings.bestLineOnly, 0, 1, setSwitch},
    {"King Safety Aggressiveness", spin, &evalParameters.kingSafetyAggressiveness, 0, 10, setSpin},
    {"move overhead milliseconds", spin, &protocolSettings.moveOverheadMilliseconds, 0, 30000, setSpin},
    {"Drawscore", spin, &searchSettings.drawScore, -50, 50, setSpin},
};

} // namespace

std::span<const Option> options() { return table; }

const Option* findOption(const std::string& loweredName) {
    const auto* const found = std::find_if(std::begin(table), std::end(table), [&](const Option& option) {
        return equalIgnoringCase(option.name, loweredName.c_str());
    });
    return found != std::end(table) ? found : nullptr;
}

std::string valueText(const Option& option) {
    switch (option.type) {
    case OptionType::check: return numberOf(option) != 0 ? "true" : "false";
    case OptionType::spin: return std::to_string(numberOf(option));
    case OptionType::string: break;
    }
    return *std::get_if<char*>(&option.setting);
}

void printOptions() {
    constexpr const char* typeNames[] = {"check", "spin", "string"};
    for (const Option& option : options()) {
        const std::string shown = option.alwaysShown != nullptr ? option.alwaysShown : valueText(option);
        std::printf("option name %s type %s default %s", option.name, typeNames[static_cast<int>(option.type)],
                    shown.c_str());
        if (option.type == OptionType::spin) std::printf(" min %d max %d", option.min, option.max);
        std::printf("\n");
    }
}

} // namespace helvan
