// SPDX-License-Identifier: MIT
#include "tools/debug_tools.h"

#include <cstdio>
#include <cstdlib>

#include "board/fen.h"
#include "board/validity.h"
#include "platform/clock.h"

namespace helvan {

Position positionFrom(const char* fen) {
    Position position;
    if (const char* reason = setupFromFen(position, fen)) {
        std::fprintf(stderr, "%s: %s\n", reason, fen);
        std::exit(1);
    }
    dropUnfoundedCastlingRights(position);
    if (const char* reason = unplayableReason(position)) std::fprintf(stderr, "Note: %s.\n", reason);
    return position;
}

double perSecond(std::uint64_t count, double seconds) {
    return static_cast<double>(count) / (seconds > shortestSeconds ? seconds : shortestSeconds);
}

} // namespace helvan
