// SPDX-License-Identifier: MIT
//
// The finished binary over its pipes, as a front end sees it.
#pragma once

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace helvan {

class EngineProcess {
public:
    using Clock = std::chrono::steady_clock;

    // Pipe flags: of the engine's standard input and output, O_NONBLOCK or none.
    explicit EngineProcess(std::vector<std::string> arguments = {}, int pipeFlags = 0) {
        int in[2], out[2], err[2];
        if (pipe2(in, O_CLOEXEC) != 0 || pipe2(out, O_CLOEXEC) != 0 || pipe2(err, O_CLOEXEC) != 0) std::abort();
        signal(SIGPIPE, SIG_IGN); // a write to an ended engine fails instead of ending this program
        if (pipeFlags != 0) {
            fcntl(in[0], F_SETFL, pipeFlags);
            fcntl(out[1], F_SETFL, pipeFlags);
        }
        child = fork();
        if (child == 0) {
            dup2(in[0], 0);
            dup2(out[1], 1);
            dup2(err[1], 2);
            std::string program = HELVAN_BINARY;
            std::vector<char*> argv = {program.data()};
            for (std::string& argument : arguments) argv.push_back(argument.data());
            argv.push_back(nullptr);
            execv(program.c_str(), argv.data());
            _exit(127);
        }
        for (const int fd : {in[0], out[1], err[1]}) close(fd);
        toEngine = in[1];
        fromEngine = out[0];
        errorsOfEngine = err[0];
        fcntl(errorsOfEngine, F_SETFL, O_NONBLOCK);
    }

    ~EngineProcess() {
        if (exitStatus(0) == stillRunning) {
            kill(child, SIGKILL);
            waitpid(child, nullptr, 0);
        }
        for (const int fd : {toEngine, fromEngine, errorsOfEngine}) close(fd);
    }

    EngineProcess(const EngineProcess&) = delete;
    EngineProcess& operator=(const EngineProcess&) = delete;

    // Sends the text and a line end.
    void send(const std::string& text) const {
        const std::string bytes = text + "\n";
        [[maybe_unused]] const ssize_t sent =
            write(toEngine, bytes.data(), bytes.size()); // an ended engine hears nothing
    }

    // As send, but gives up when the engine has not taken all of it within the time. Answers whether it has.
    bool sendsWithin(const std::string& text, double seconds) const {
        const auto deadline = Clock::now() + std::chrono::duration<double>(seconds);
        const std::string bytes = text + "\n";
        fcntl(toEngine, F_SETFL, O_NONBLOCK);
        std::size_t sent = 0;
        while (sent < bytes.size() && Clock::now() < deadline) {
            const ssize_t count = write(toEngine, bytes.data() + sent, bytes.size() - sent);
            if (count > 0) sent += static_cast<std::size_t>(count);
            if (count < 0) usleep(1000);
        }
        fcntl(toEngine, F_SETFL, 0);
        return sent == bytes.size();
    }

    // Lets as little as possible be on its way between the two.
    void narrowPipes() {
        for (const int fd : {toEngine, fromEngine}) fcntl(fd, F_SETPIPE_SZ, 4096);
    }

    void closeInput() { close(std::exchange(toEngine, -1)); }

    // The front end dies: nobody reads any more, but the pipe to the engine stays open.
    void stopReading() { close(std::exchange(fromEngine, -1)); }

    // Reads lines up to the first one that begins with the text, that one included. Empty when it does not come
    // within the time.
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

    // Sends the text and reads on as above.
    std::vector<std::string> ask(const std::string& text, const std::string& beginning) {
        send(text);
        return readUntil(beginning);
    }

    // Waits for the end of the process. Answers its exit status, minus the signal that killed it, or stillRunning.
    int exitStatus(double seconds = 20) {
        const auto deadline = Clock::now() + std::chrono::duration<double>(seconds);
        for (int wait = 0; status == stillRunning; usleep(1000)) {
            if (waitpid(child, &wait, WNOHANG) == child) {
                status = WIFEXITED(wait) ? WEXITSTATUS(wait) : -WTERMSIG(wait);
            } else if (Clock::now() > deadline) {
                break;
            }
        }
        return status;
    }

    // What has come on standard error since the last call.
    std::string errors() const {
        char bytes[65536];
        const ssize_t count = read(errorsOfEngine, bytes, sizeof bytes);
        return {bytes, static_cast<std::size_t>(std::max<ssize_t>(count, 0))};
    }

    static constexpr int stillRunning = 1000;

private:
    pid_t child = -1;
    int status = stillRunning;
    int toEngine = -1;
    int fromEngine = -1;
    int errorsOfEngine = -1;
    std::string buffer; // read, but not yet a whole line
};

} // namespace helvan
