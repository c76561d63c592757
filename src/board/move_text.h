// SPDX-License-Identifier: MIT
//
// Moves as coordinate text (e2e4, e7e8q, e1g1), and two small text tools of the command handling.
#pragma once

#include <string>

#include "board/types.h"

namespace helvan {

// The move's text, "null" for the null move.
std::string moveText(Move move);

// Cuts a line at its blanks, tabs and line ends, in place, and stores where each word starts. The array holds
// at least half as many words as the line has characters, rounded up. Answers the number of words.
int splitWords(char* line, char** words);

void toLowerInPlace(char* text);

// Whether two texts are equal but for the case of their letters.
bool equalIgnoringCase(const char* a, const char* b);

} // namespace helvan
