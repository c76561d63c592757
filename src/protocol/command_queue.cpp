// SPDX-License-Identifier: MIT
#include "protocol/command_queue.h"

#include <cstdio>
#include <cstring>

#include "platform/platform.h"

namespace helvan {

namespace {

int nextSlot(int index) { return (index + 1) % CommandQueue::slotCount; }

void readLines(ThreadJob& /*reader*/) {
    constexpr std::size_t readSize = 4096;
    char bytes[readSize];
    LineCutter cutter;
    while (const std::size_t count = readInput(bytes, readSize)) cutter.cut(commandQueue(), bytes, count);
    cutter.finish(commandQueue());
}

} // namespace

void LineCutter::cut(CommandQueue& queue, const char* bytes, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        line[length++] = bytes[i];
        if (bytes[i] == '\n' || length == lineCapacity - 1) finish(queue);
    }
}

void LineCutter::finish(CommandQueue& queue) {
    if (length == 0) return;
    line[length] = '\0';
    length = 0;
    appendLine(queue, line);
}

void appendLine(CommandQueue& queue, const char* line) {
    const std::lock_guard guard(queue.lock);
    std::snprintf(queue.slots[queue.writeIndex], lineCapacity, "%s", line);
    queue.writeIndex = nextSlot(queue.writeIndex);
}

bool lineWaits(CommandQueue& queue) {
    const std::lock_guard guard(queue.lock);
    return queue.readIndex != queue.writeIndex;
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
    static ThreadJob reader = {readLines};
    return startThread(reader);
}

} // namespace helvan
