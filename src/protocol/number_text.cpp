// SPDX-License-Identifier: MIT
#include "protocol/number_text.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace helvan {

std::int64_t int64FromText(const char* text) { return std::strtoll(text, nullptr, 10); }

int intFromText(const char* text) {
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<std::int64_t>(int64FromText(text), Limits::min(), Limits::max()));
}

} // namespace helvan
