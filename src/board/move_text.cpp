// SPDX-License-Identifier: MIT
#include "board/move_text.h"

#include <cctype>
#include <cstring>
#include <initializer_list>

namespace helvan {

namespace {

char lowered(char letter) { return static_cast<char>(std::tolower(static_cast<unsigned char>(letter))); }

} // namespace

std::string moveText(Move move) {
    if (move == nullMove) return "null";
    std::string text;
    for (const Square square : {moveFrom(move), moveTo(move)}) {
        text += static_cast<char>('a' + fileOf(square));
        text += static_cast<char>('1' + rankOf(square));
    }
    if (isPromotion(move)) text += "qnrb"[moveKind(move) - promoteQueen];
    return text;
}

int splitWords(char* line, char** words) {
    constexpr char separators[] = "\t \n\r";
    int count = 0;
    for (;;) {
        line += std::strspn(line, separators);
        if (*line == '\0') return count;
        words[count++] = line;
        line += std::strcspn(line, separators);
        if (*line != '\0') *line++ = '\0';
    }
}

void toLowerInPlace(char* text) {
    for (; *text != '\0'; ++text) *text = lowered(*text);
}

bool equalIgnoringCase(const char* a, const char* b) {
    while (*a != '\0' && lowered(*a) == lowered(*b)) {
        ++a;
        ++b;
    }
    return lowered(*a) == lowered(*b);
}

} // namespace helvan
