// SPDX-License-Identifier: MIT
//
// The one way out of the process, for every part of the engine after a fatal error.
#pragma once

namespace helvan {

// Flushes standard output, standard error and the log and ends the process at once with the exit status. No exit
// handlers or destructors run, because the reader thread may be using what they would destroy.
[[noreturn]] void endProcess(int status);

} // namespace helvan
