// SPDX-License-Identifier: MIT
#include "platform/end_process.h"

#include <cstdio>
#include <cstdlib>

#include "platform/log.h"

namespace helvan {

void endProcess(int status) {
    std::fflush(stdout);
    std::fflush(stderr);
    flushLog();
    std::_Exit(status);
}

} // namespace helvan
