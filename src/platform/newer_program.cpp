// SPDX-License-Identifier: MIT
#include "platform/newer_program.h"

// The path of the other program from this one's folder, in the form of the system; undefined where there is none.
#ifndef HELVAN_NEWER_PROGRAM

namespace helvan {

void giveWayToNewerProgram(char** /*arguments*/) {}

} // namespace helvan

#else

#include <string>

#ifdef _WIN32
#include <windows.h>
#else
#include <climits>
#include <unistd.h>
#endif

namespace helvan {

namespace {

// By the name that the x86-64 psABI gives to these instructions.
bool processorIsNewer() {
    __builtin_cpu_init();
    return __builtin_cpu_supports("x86-64-v3") != 0;
}

// This program's file with the other's path in place of its own name.
template <typename Text> Text besideThisProgram(const Text& own, const Text& separators, const Text& path) {
    return own.substr(0, own.find_last_of(separators) + 1) + path;
}

#ifdef _WIN32

constexpr DWORD longestPath = 32768;

// Should this process be killed, the system ends the other one with the job.
void endWithThisProcess(HANDLE other) {
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    const HANDLE job = CreateJobObjectW(nullptr, nullptr); // open until this process ends
    SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    AssignProcessToJobObject(job, other);
}

HANDLE inheritedStream(DWORD which) {
    const HANDLE stream = GetStdHandle(which);
    SetHandleInformation(stream, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    return stream;
}

// With the streams, the priority and the command line of this process, and no window where this one has none.
bool startSuspended(const std::wstring& program, PROCESS_INFORMATION& process) {
    const DWORD window = GetConsoleCP() == 0 ? CREATE_NO_WINDOW : 0;
    const DWORD flags = CREATE_SUSPENDED | GetPriorityClass(GetCurrentProcess()) | window;
    STARTUPINFOW startup;
    GetStartupInfoW(&startup);
    startup.dwFlags |= STARTF_USESTDHANDLES;
    startup.hStdInput = inheritedStream(STD_INPUT_HANDLE);
    startup.hStdOutput = inheritedStream(STD_OUTPUT_HANDLE);
    startup.hStdError = inheritedStream(STD_ERROR_HANDLE);
    return CreateProcessW(program.c_str(), GetCommandLineW(), nullptr, nullptr, TRUE, flags, nullptr, nullptr, &startup,
                          &process) != 0;
}

#endif

} // namespace

#ifdef _WIN32

// No process can take another's place there: this one starts the other and waits for it.
void giveWayToNewerProgram(char** /*arguments*/) {
    if (!processorIsNewer()) return;
    std::wstring own(longestPath, L'\0');
    const DWORD length = GetModuleFileNameW(nullptr, own.data(), longestPath);
    if (length == 0 || length == longestPath) return;
    own.resize(length);
    PROCESS_INFORMATION process;
    if (!startSuspended(besideThisProgram<std::wstring>(own, L"\\/", L"" HELVAN_NEWER_PROGRAM), process)) return;
    endWithThisProcess(process.hProcess);
    ResumeThread(process.hThread);
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD result = 0;
    GetExitCodeProcess(process.hProcess, &result);
    ExitProcess(result);
}

#else

void giveWayToNewerProgram(char** arguments) {
    if (!processorIsNewer()) return;
    std::string own(PATH_MAX, '\0');
    const ssize_t length = readlink("/proc/self/exe", own.data(), own.size());
    if (length <= 0) return;
    own.resize(static_cast<std::size_t>(length));
    execv(besideThisProgram<std::string>(own, "/", HELVAN_NEWER_PROGRAM).c_str(), arguments);
}

#endif

} // namespace helvan

#endif
