// SPDX-License-Identifier: MIT
#include "protocol/set_option.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <string_view>

#include "book/book.h"
#include "book/settings.h"
#include "protocol/log.h"
#include "protocol/number_text.h"
#include "protocol/options.h"
#include "search/rebuild.h"
#include "search/settings.h"
#include "search/transposition_table.h"

namespace helvan {

namespace {

std::string lowered(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

void appendWord(std::string& text, std::string_view word) {
    if (!text.empty()) text += ' ';
    text += word;
}

bool setTapered(const OptionRequest& request) {
    for (const TaperedParam* param = taperedParams; param->name[0] != '\0'; ++param) {
        const bool open = request.name == lowered(param->name) + " open";
        if (!open && request.name != lowered(param->name) + " end") continue;
        const int value = intFromText(request.value.c_str());
        *param->value = open ? packed(value, param->value->endgame()) : packed(param->value->opening(), value);
        rebuildTables();
        return true;
    }
    return false;
}

bool setSpin(const OptionRequest& request) {
    for (const SpinParam* param = spinParams; param->name[0] != '\0'; ++param) {
        if (request.name != lowered(param->name)) continue;
        *param->value = intFromText(request.value.c_str());
        rebuildTables();
        return true;
    }
    return false;
}

bool setCheck(const OptionRequest& request) {
    for (const CheckParam* param = checkParams; param->name[0] != '\0'; ++param) {
        if (request.name != lowered(param->name)) continue;
        if (request.value == "true") {
            *param->value = 1;
        } else if (request.value == "false") {
            *param->value = 0;
        } else {
            std::printf("info string %s not recognized as checkbox argument\n", request.value.c_str());
        }
        rebuildTables();
        return true;
    }
    return false;
}

void setHash(const std::string& value) {
    hashMegabytes = intFromText(value.c_str());
    transpositionTable.release();
    if (hashMegabytes > 0) {
        transpositionTable.allocate(hashMegabytes);
        std::printf("info string Hash table size is now %d meg\n", hashMegabytes);
    } else {
        std::printf("info string Hash tables turned OFF\n");
        logWrite("Hash tables turned off\n");
    }
}

void setMultiPv(const std::string& value) { multiPv = intFromText(value.c_str()); }

void setOwnBook(const std::string& value) {
    ownBook = value == "true" ? 1 : 0;
    reopenBook();
}

void setPonder(const std::string& value) {
    ponderAllowed = value == "true" ? 1 : 0;
    logWrite("Ponder set to %d\n", ponderAllowed);
}

// A name too long for the setting is cut; the answer shows what is left.
void setBookFile(const std::string& value) {
    bookFileName[value.copy(bookFileName, bookFileCapacity - 1)] = '\0';
    std::printf("info string book file is %s\n", bookFileName);
    std::fflush(stdout);
    reopenBook();
}

// The options that no table lists, by their names in lower case.
struct FixedOption {
    const char* name;
    void (*set)(const std::string& value);
};

constexpr FixedOption fixedOptions[] = {{"hash", setHash},
                                        {"multipv", setMultiPv},
                                        {"ownbook", setOwnBook},
                                        {"ponder", setPonder},
                                        {"book file", setBookFile}};

bool setFixed(const OptionRequest& request) {
    for (const FixedOption& option : fixedOptions) {
        if (request.name != option.name) continue;
        option.set(request.value);
        return true;
    }
    return false;
}

void answerUnknown(const OptionRequest& request) {
    std::printf("info string %s not recognized\n", request.name.c_str());
    logWrite("option %s (value %s) not understood.\n", request.name.c_str(), request.value.c_str());
}

} // namespace

OptionRequest readOptionRequest(const Words& words) {
    constexpr std::size_t secondWordLength = 8;
    OptionRequest request;
    std::string* read = nullptr; // the text that the words go to; those before the first keyword are dropped
    for (int i = 1; i < words.count; ++i) {
        if (words.is(i, "name")) {
            read = &request.name;
        } else if (words.is(i, "value")) {
            read = &request.value;
        } else if (read != nullptr) {
            appendWord(*read, words[i]);
            // Deliberate: value words come in pairs, the second one cut and never a keyword.
            const bool hasSecond = read == &request.value && i + 1 < words.count;
            if (hasSecond) appendWord(*read, std::string_view(words[++i]).substr(0, secondWordLength));
        }
    }
    return {lowered(request.name), lowered(request.value)};
}

void setOptionCommand(const Words& words) {
    const OptionRequest request = readOptionRequest(words);
    const bool known = setTapered(request) || setSpin(request) || setCheck(request) || setFixed(request);
    if (!known) answerUnknown(request);
    std::fflush(stdout);
}

} // namespace helvan
