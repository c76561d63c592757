// SPDX-License-Identifier: MIT
#include "protocol/command_queue.h"

#include <cstdio>
#include <cstring>

#include "platform/platform.h"

namespace helvan {

namespace {

int nextSlot(int index) { return (index + 1) % CommandQueue::slotCount; }

void readLines() {
    char line[lineCapacity];
    while (std::fgets(line, lineCapacity, stdin) != nullptr) appendLine(commandQueue(), line);
}

} // namespace

void appendLine(CommandQueue& queue, const char* line) {
    const std::lock_guard guard(queue.lock);
    std::snprintf(queue.slots[queue.writeIndex], lineCapacity, "%s", line);
    queue.writeIndex = nextSlot(queue.writeIndex);
}

bool takeLine(CommandQueue& queue, char* out) {
    const std::lock_guard guard(queue.lock);
    if (queue.readIndex == queue.writeIndex) return false;
    std::strcpy(out, queue.slots[queue.readIndex]);
    queue.readIndex = nextSlot(queue.readIndex);
    return true;
}

CommandQueue& commandQueue() {
    static CommandQueue& queue = *new CommandQueue;
    return queue;
}

bool startReader() {
    commandQueue(); // made before the thread can ask for it
    return startThread(readLines);
}

} // namespace helvan
