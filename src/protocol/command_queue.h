// SPDX-License-Identifier: MIT
//
// The lines of standard input on their way from the reader thread, which only reads, to the main thread, which
// takes them when it is idle and from the middle of a search. A line's characters are copied once, when it is cut out
// of what was read, and moved on from there.
#pragma once

#include <cstddef>
#include <mutex>
#include <optional>
#include <string>

#include "platform/platform.h"

namespace helvan {

inline constexpr int lineCapacity = 8192; // of one line, one character for a terminator included

struct CommandQueue;

struct ReaderJob : ThreadJob {
    CommandQueue* queue = nullptr;
};

// A ring of lines. There is no full state: when slotCount lines wait, the queue looks empty and all of these are lost.
// A front end that sends so many without waiting for an answer is at fault.
struct CommandQueue {
    static constexpr int slotCount = 128;

    std::mutex lock; // guards all below
    int writeIndex = 0;
    int readIndex = 0; // equal to writeIndex: empty
    std::string slots[slotCount];

    ReaderJob reader; // looked at by its thread alone
};

// Cuts what comes in at its line ends. What is longer than a line may be is cut into pieces, and a line ends for good
// at its first NUL.
struct LineCutter {
    std::string line;

    // Appends the lines that end within these bytes to the queue; the rest waits for what follows.
    void cut(CommandQueue& queue, const char* bytes, std::size_t count);
    // The input has ended: appends the line that has no end.
    void finish(CommandQueue& queue);
};

// Appends a line, cut to lineCapacity - 1 characters.
void appendLine(CommandQueue& queue, std::string line);

// Removes the oldest line and answers it; nothing if none waits.
std::optional<std::string> takeLine(CommandQueue& queue);

// Whether there is one to take.
bool lineWaits(CommandQueue& queue);

// Starts the thread that reads standard input into the queue, which lives as long as the process, until its end;
// nothing is told of that. Lines longer than lineCapacity - 1 characters arrive in pieces. False when the system
// refuses the thread.
bool startReader(CommandQueue& queue);

} // namespace helvan
