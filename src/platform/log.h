// SPDX-License-Identifier: MIT
//
// The log file of "-log FILE". Any part of the engine may write to it, in one thread: while it is
// open, one search may run at a time.
#pragma once

namespace helvan {

// Opens the file for appending, unbuffered. A file that cannot be opened leaves the log closed.
void openLog(const char* fileName);

bool logIsOpen();

// Writes formatted text, exactly as it is, and flushes it; does nothing while no log is open.
[[gnu::format(printf, 1, 2)]] void logWrite(const char* format, ...);

void flushLog();

} // namespace helvan
