// SPDX-License-Identifier: MIT
//
// A command line cut into words.
#pragma once

#include <cstring>
#include <string>
#include <utility>

#include "board/move_text.h"
#include "protocol/command_queue.h"

namespace helvan {

struct Words {
    // Cuts the line in place, the first lineCapacity - 1 characters of it.
    explicit Words(std::string line) : text(std::move(line)) {
        if (text.size() >= lineCapacity) text.resize(lineCapacity - 1);
        count = splitWords(text.data(), words);
    }
    Words(const Words&) = delete;
    Words& operator=(const Words&) = delete;

    // The word, or an empty text beyond the last one.
    const char* operator[](int index) const { return index < count ? words[index] : ""; }
    bool is(int index, const char* word) const { return std::strcmp((*this)[index], word) == 0; }

    int count = 0;

private:
    std::string text;
    char* words[lineCapacity / 2];
};

} // namespace helvan
