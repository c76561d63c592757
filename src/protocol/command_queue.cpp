// SPDX-License-Identifier: MIT
#include "protocol/command_queue.h"

#include <cstring>
#include <utility>

namespace helvan {

namespace {

int nextSlot(int index) { return (index + 1) % CommandQueue::slotCount; }

void readLines(ThreadJob& job) {
    constexpr std::size_t readSize = 4096;
    CommandQueue& queue = *static_cast<ReaderJob&>(job).queue;
    char bytes[readSize];
    LineCutter cutter;
    while (const std::size_t count = readInput(bytes, readSize)) cutter.cut(queue, bytes, count);
    cutter.finish(queue);
}

} // namespace

void LineCutter::cut(CommandQueue& queue, const char* bytes, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        line += bytes[i];
        if (bytes[i] == '\n' || line.size() == lineCapacity - 1) finish(queue);
    }
}

void LineCutter::finish(CommandQueue& queue) {
    if (line.empty()) return;
    line.resize(std::strlen(line.c_str()));
    appendLine(queue, std::exchange(line, {}));
}

void appendLine(CommandQueue& queue, std::string line) {
    if (line.size() >= lineCapacity) line.resize(lineCapacity - 1);
    const std::lock_guard guard(queue.lock);
    queue.slots[queue.writeIndex] = std::move(line);
    queue.writeIndex = nextSlot(queue.writeIndex);
}

bool lineWaits(CommandQueue& queue) {
    const std::lock_guard guard(queue.lock);
    return queue.readIndex != queue.writeIndex;
}

std::optional<std::string> takeLine(CommandQueue& queue) {
    const std::lock_guard guard(queue.lock);
    if (queue.readIndex == queue.writeIndex) return std::nullopt;
    std::string line = std::move(queue.slots[queue.readIndex]);
    queue.readIndex = nextSlot(queue.readIndex);
    return line;
}

bool startReader(CommandQueue& queue) {
    queue.reader.work = readLines;
    queue.reader.queue = &queue;
    return startThread(queue.reader);
}

} // namespace helvan
