// SPDX-License-Identifier: MIT
//
// A command line cut into words.
#pragma once

#include <cstdio>
#include <cstring>

#include "board/move_text.h"
#include "protocol/command_queue.h"

namespace helvan {

struct Words {
    // Cuts a copy of the line, which is cut to lineCapacity - 1 characters.
    explicit Words(const char* line) {
        std::snprintf(text, lineCapacity, "%s", line);
        count = splitWords(text, words);
    }
    Words(const Words&) = delete;
    Words& operator=(const Words&) = delete;

    // The word, or an empty text beyond the last one.
    const char* operator[](int index) const { return index < count ? words[index] : ""; }
    bool is(int index, const char* word) const { return std::strcmp((*this)[index], word) == 0; }

    int count = 0;

private:
    char text[lineCapacity];
    char* words[lineCapacity / 2];
};

} // namespace helvan
