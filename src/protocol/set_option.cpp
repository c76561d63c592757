// SPDX-License-Identifier: MIT
#include "protocol/set_option.h"

#include <cctype>
#include <cstdio>
#include <string_view>

#include "platform/log.h"
#include "protocol/options.h"

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

void setOptionCommand(Session& session, const Words& words) {
    const OptionRequest request = readOptionRequest(words);
    const Option* const option = findOption(request.name);
    if (option != nullptr) {
        option->set(session, *option, request.value);
    } else {
        answerUnknown(request);
    }
    std::fflush(stdout);
}

} // namespace helvan
