// SPDX-License-Identifier: MIT
//
// Numbers as users write them.
#pragma once

#include <cstdint>

namespace helvan {

// The decimal number at the start of the text, 0 where there is none. Out of range: the nearest the type holds.
int intFromText(const char* text);
std::int64_t int64FromText(const char* text);

} // namespace helvan
