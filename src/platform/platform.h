// SPDX-License-Identifier: MIT
//
// What differs from one operating system to the next, but for memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace helvan {

// Opens the null device, for reading only, in place of each missing standard stream, lest a file opened later get its
// number and be read as commands. To be called before any file is opened.
void claimStandardStreams();

// Makes the standard streams binary and unbuffered, input and output blocking, and a write to a front end that has died
// the end of the process, whatever the process was started with. What cannot be written elsewhere is lost, no more.
void prepareStreams();

// False once standard output leads nowhere for good, so that nobody can hear the engine any more. A full disk may have
// room again and does not count. To be called after a write has failed; tries another one.
bool outputIsOpen();

// Waits for bytes on standard input and answers how many it has written to the buffer; 0 at the end of the input, or
// when it cannot be read. Takes no lock of the standard library: whoever is held up on standard output holds nobody up
// here.
std::size_t readInput(char* buffer, std::size_t size);

// What a thread is to do: records that need more are derived from it.
struct ThreadJob {
    void (*work)(ThreadJob& job);
};

// Does the job in a thread of its own, which ends with it. The job must live as long as its work looks at it. False
// when the system refuses the thread.
bool startThread(ThreadJob& job);

// Whether there is a file of that name, no directory, pipe or device.
bool isRegularFile(const char* name);

// std::fseek and std::ftell for files of any size. seekFile answers whether it succeeded.
bool seekFile(std::FILE* file, std::int64_t offset, int origin);
std::int64_t tellFile(std::FILE* file);

} // namespace helvan
