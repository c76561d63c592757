// SPDX-License-Identifier: MIT
#include "protocol/end_process.h"

#include <cstdio>
#include <cstdlib>

#include "protocol/log.h"

namespace helvan {

void endProcess(int status) {
    std::fflush(stdout);
    std::fflush(stderr);
    flushLog();
    std::_Exit(status);
}

} // namespace helvan
