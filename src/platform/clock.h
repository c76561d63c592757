// SPDX-License-Identifier: MIT
//
// The clock that searches go by.
#pragma once

namespace helvan {

// Seconds on a clock that never steps back.
double now();

// Elapsed times that are divided by are at least this.
inline constexpr double shortestSeconds = 0.0001;

} // namespace helvan
