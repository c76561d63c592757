// SPDX-License-Identifier: MIT
//
// The position keys of Polyglot opening books. They have nothing to do with the engine's own.
#pragma once

#include <cstdint>

#include "board/position.h"

namespace helvan {

// The key under which a Polyglot book knows the position.
std::uint64_t polyglotKey(const Position& position);

} // namespace helvan
