// SPDX-License-Identifier: MIT
//
// The finished binary over its pipes, as a front end sees it.
#pragma once

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <vector>

namespace helvan::testing {

class EngineProcess {
public:
    using Clock = std::chrono::steady_clock;

    explicit EngineProcess(std::vector<std::string> arguments = {}) {
        int in[2], out[2], err[2];
        if (pipe(in) != 0 || pipe(out) != 0 || pipe(err) != 0) std::abort();
        signal(SIGPIPE, SIG_IGN); // a write to an ended engine fails instead of ending the test
        child = fork();
        if (child == 0) {
            dup2(in[0], 0);
            dup2(out[1], 1);
            dup2(err[1], 2);
            for (const int fd : {in[0], in[1], out[0], out[1], err[0], err[1]}) close(fd);
            signal(SIGPIPE, SIG_DFL);
            std::string program = HELVAN_BINARY;
            std::vector<char*> argv = {program.data()};
            for (std::string& argument : arguments) argv.push_back(argument.data());
            argv.push_back(nullptr);
            execv(program.c_str(), argv.data());
            _exit(127);
        }
        close(in[0]);
        close(out[1]);
        close(err[1]);
        toEngine = in[1];
        fromEngine = out[0];
        errorsOfEngine = err[0];
        fcntl(errorsOfEngine, F_SETFL, O_NONBLOCK);
    }

    ~EngineProcess() {
        if (child > 0) {
            kill(child, SIGKILL);
            waitpid(child, nullptr, 0);
        }
        closeInput();
        close(fromEngine);
        close(errorsOfEngine);
    }

    EngineProcess(const EngineProcess&) = delete;
    EngineProcess& operator=(const EngineProcess&) = delete;

    // Sends the text and a line end.
    void send(const std::string& text) { sendRaw(text + "\n"); }

    void sendRaw(const std::string& bytes) {
        for (std::size_t sent = 0; sent < bytes.size();) {
            const ssize_t count = write(toEngine, bytes.data() + sent, bytes.size() - sent);
            if (count <= 0) return;
            sent += static_cast<std::size_t>(count);
        }
    }

    // The front end dies: nobody reads any more, but the pipe to the engine stays open.
    void stopReading() {
        close(fromEngine);
        fromEngine = -1;
    }

    // Waits for the end of the process, however it comes.
    bool ends(double seconds = 20) {
        const auto deadline = Clock::now() + std::chrono::duration<double>(seconds);
        while (isRunning() && Clock::now() < deadline) usleep(1000);
        return !isRunning();
    }

    void closeInput() {
        if (toEngine >= 0) close(toEngine);
        toEngine = -1;
    }

    // Reads lines up to the first one that begins with the text, that one included. Empty when it does not come
    // within the time; what was read until then is in unread().
    std::vector<std::string> readUntil(const std::string& beginning, double seconds = 20) {
        const auto deadline = Clock::now() + std::chrono::duration<double>(seconds);
        std::vector<std::string> lines;
        for (;;) {
            for (std::size_t end; (end = buffer.find('\n')) != std::string::npos;) {
                lines.push_back(buffer.substr(0, end));
                buffer.erase(0, end + 1);
                if (lines.back().rfind(beginning, 0) == 0) return lines;
            }
            const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
            pollfd ready{fromEngine, POLLIN, 0};
            char bytes[4096];
            ssize_t count = 0;
            if (left > 0 && poll(&ready, 1, static_cast<int>(left)) > 0) count = read(fromEngine, bytes, sizeof bytes);
            if (count <= 0) return {};
            buffer.append(bytes, static_cast<std::size_t>(count));
        }
    }

    // Waits for the end of the process. Answers its exit status, -1 if it was killed or still runs.
    int exitStatus(double seconds = 20) {
        const auto deadline = Clock::now() + std::chrono::duration<double>(seconds);
        while (Clock::now() < deadline) {
            int status = 0;
            if (waitpid(child, &status, WNOHANG) == child) {
                child = -1;
                return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
            }
            usleep(1000);
        }
        return -1;
    }

    bool isRunning() {
        if (child > 0 && waitpid(child, nullptr, WNOHANG) == child) child = -1;
        return child > 0;
    }

    // What has come on standard error so far.
    std::string errors() {
        char bytes[4096];
        for (ssize_t count; (count = read(errorsOfEngine, bytes, sizeof bytes)) > 0;) {
            errorText.append(bytes, static_cast<std::size_t>(count));
        }
        return errorText;
    }

private:
    pid_t child = -1;
    int toEngine = -1;
    int fromEngine = -1;
    int errorsOfEngine = -1;
    std::string buffer;
    std::string errorText;
};

} // namespace helvan::testing
