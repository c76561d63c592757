// SPDX-License-Identifier: MIT
//
// The lines of standard input on their way from the reader thread, which only reads, to the main thread, which
// takes them when it is idle and from the middle of a search.
#pragma once

#include <cstddef>
#include <mutex>

namespace helvan {

inline constexpr int lineCapacity = 8192; // of one line, its terminator included

// A ring of lines. There is no full state: when slotCount lines wait, the queue looks empty and all of these are lost.
// A front end that sends so many without waiting for an answer is at fault.
struct CommandQueue {
    static constexpr int slotCount = 128;

    std::mutex lock; // guards all the rest
    int writeIndex = 0;
    int readIndex = 0; // equal to writeIndex: empty
    char slots[slotCount][lineCapacity];
};

// Cuts what comes in at its line ends. What is longer than a line may be is cut into pieces, and a line ends for good
// at its first NUL.
struct LineCutter {
    char line[lineCapacity];
    int length = 0;

    // Appends the lines that end within these bytes to the queue; the rest waits for what follows.
    void cut(CommandQueue& queue, const char* bytes, std::size_t count);
    // The input has ended: appends the line that has no end.
    void finish(CommandQueue& queue);
};

// Appends a line, cut to lineCapacity - 1 characters.
void appendLine(CommandQueue& queue, const char* line);

// Copies the oldest line to out, which holds lineCapacity characters, and removes it. False if none waits.
bool takeLine(CommandQueue& queue, char* out);

// Whether there is one to take.
bool lineWaits(CommandQueue& queue);

// The queue that the reader fills. Never destroyed: the reader may be using it while the process ends.
CommandQueue& commandQueue();

// Starts the thread that reads standard input into the queue until its end; nothing is told of that. Lines
// longer than lineCapacity - 1 characters arrive in pieces. False when the system refuses the thread.
bool startReader();

} // namespace helvan
