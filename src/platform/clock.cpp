// SPDX-License-Identifier: MIT
#include "platform/clock.h"

#include <chrono>

namespace helvan {

double now() { return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count(); }

} // namespace helvan
