// SPDX-License-Identifier: MIT
//
// Measures how late the finished binary is with its answers, for small and large hash tables in all the states that a
// front end can bring them into, and fails where it is later than promised. Times depend on what else the machine
// does: for scripts/check-latency, no part of the tests.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "tools/latency/engine_process.h"

namespace helvan {

namespace {

using Clock = EngineProcess::Clock;

constexpr int sizes[] = {0, 1, 64, 1024, 4096}; // megabytes
constexpr int starts = 7;                       // of the engine, for each figure
constexpr int tries = 3;                        // for figures that are late, all counted together
constexpr std::size_t heldUp = 10;              // one figure in so many may be late: machines are held up now and then
constexpr double moveTime = 50;                 // milliseconds, as all times here
constexpr double clockTime = 300;

double since(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void pause(double milliseconds) {
    std::this_thread::sleep_for(std::chrono::duration<double, std::milli>(milliseconds));
}

constexpr double noAnswer = 1e9;

// From the command to the line that begins with the answer.
double timeOf(EngineProcess& engine, const std::string& command, const std::string& answer) {
    const auto start = Clock::now();
    return engine.ask(command, answer).empty() ? noAnswer : since(start);
}

double timeOfEnd(EngineProcess& engine, const std::string& lastCommands) {
    const auto start = Clock::now();
    engine.send(lastCommands);
    return engine.exitStatus() == 0 ? since(start) : noAnswer;
}

using Figures = std::vector<double>;

void search(EngineProcess& engine, Figures& late, double milliseconds, int searches) {
    const std::string move = "go movetime " + std::to_string(static_cast<int>(milliseconds));
    for (int i = 0; i < searches; ++i) late.push_back(timeOf(engine, move, "bestmove") - milliseconds);
}

void searchBriefly(EngineProcess& engine, Figures& late, int searches) { search(engine, late, moveTime, searches); }

void isReady(EngineProcess& engine) { engine.ask("isready", "readyok"); }

void stop(EngineProcess& engine, Figures& figures, double milliseconds) {
    engine.ask("go infinite", "info depth 2 ");
    pause(milliseconds);
    figures.push_back(timeOf(engine, "stop", "bestmove"));
}

// What is measured with an engine that has just got its table.
struct Case {
    const char* name;
    double limit;       // milliseconds
    double medianLimit; // the same
    std::function<void(EngineProcess&, Figures&)> measure;
};

int hashMegabytes = 0; // of the engines that are measured

std::string hashAgain() { return "setoption name Hash value " + std::to_string(hashMegabytes); }

const std::string move50 = "go movetime 50";
const std::string changeOption = "setoption name Drawscore value -3";

const std::vector<Case> cases = {
    {"`isready` after an allocation", 1100, 1100,
     [](EngineProcess& engine, Figures& figures) { figures.push_back(timeOf(engine, "isready", "readyok")); }},
    {"`isready` once more", 50, 50,
     [](EngineProcess& engine, Figures& figures) {
         isReady(engine);
         figures.push_back(timeOf(engine, "isready", "readyok"));
     }},
    {"`go movetime 50`, without `isready`: late by", 20, 20,
     [](EngineProcess& engine, Figures& figures) { searchBriefly(engine, figures, 3); }},
    {"the same after `isready`", 20, 20,
     [](EngineProcess& engine, Figures& figures) {
         isReady(engine);
         searchBriefly(engine, figures, 3);
     }},
    {"the same after a pause", 20, 20,
     [](EngineProcess& engine, Figures& figures) {
         isReady(engine);
         for (int i = 0; i < 3; ++i) {
             pause(200 + 3 * i);
             searchBriefly(engine, figures, 1);
         }
     }},
    {"the same after `ucinewgame`", 20, 20,
     [](EngineProcess& engine, Figures& figures) {
         isReady(engine);
         engine.ask(move50, "bestmove");
         engine.send("ucinewgame");
         searchBriefly(engine, figures, 2);
     }},
    {"the same after a new `Hash` of the same size", 20, 20,
     [](EngineProcess& engine, Figures& figures) {
         isReady(engine);
         engine.ask(move50, "bestmove");
         engine.ask(hashAgain(), "info string Hash");
         searchBriefly(engine, figures, 2);
     }},
    {"the same after `setoption name Drawscore`", 20, 20,
     [](EngineProcess& engine, Figures& figures) {
         engine.ask(move50, "bestmove");
         engine.send(changeOption);
         searchBriefly(engine, figures, 2);
     }},
    {"the same with `deterministic`", 20, 20,
     [](EngineProcess& engine, Figures& figures) {
         engine.send("setoption name deterministic value true");
         searchBriefly(engine, figures, 4);
     }},
    {"the same when a search of 1 s went before", 20, 20,
     [](EngineProcess& engine, Figures& figures) {
         engine.ask("setoption name deterministic value true\ngo movetime 1000", "bestmove");
         searchBriefly(engine, figures, 2);
     }},
    {"`go movetime 1500`: late by", 20, 20,
     [](EngineProcess& engine, Figures& figures) {
         isReady(engine);
         search(engine, figures, 1500, 1);
     }},
    {"`go wtime 300`: answered after", clockTime, clockTime,
     [](EngineProcess& engine, Figures& figures) {
         for (int i = 0; i < 3; ++i) figures.push_back(timeOf(engine, "go wtime 300 btime 300", "bestmove"));
     }},
    {"`stop` in the first search", 20, 2, [](EngineProcess& engine, Figures& figures) { stop(engine, figures, 200); }},
    {"`stop` after 1.5 s", 20, 2,
     [](EngineProcess& engine, Figures& figures) {
         isReady(engine);
         stop(engine, figures, 1500);
     }},
    {"`setoption name Drawscore` and `isready` after a search", 50, 50,
     [](EngineProcess& engine, Figures& figures) {
         isReady(engine);
         engine.ask(move50, "bestmove");
         figures.push_back(timeOf(engine, changeOption + "\nisready", "readyok"));
     }},
    {"`setoption name Hash` after a search of 1 s", 50, 50,
     [](EngineProcess& engine, Figures& figures) {
         engine.ask("go movetime 1000", "bestmove");
         figures.push_back(timeOf(engine, hashAgain(), "info string Hash"));
     }},
    {"`setoption name Drawscore` and `isready` after 3 s without work", 50, 50,
     [](EngineProcess& engine, Figures& figures) {
         isReady(engine);
         engine.ask(move50, "bestmove");
         pause(3000);
         figures.push_back(timeOf(engine, changeOption + "\nisready", "readyok"));
     }},
    {"`ucinewgame` and `isready` after a search", 50, 50,
     [](EngineProcess& engine, Figures& figures) {
         isReady(engine);
         engine.ask(move50, "bestmove");
         figures.push_back(timeOf(engine, "ucinewgame\nisready", "readyok"));
     }},
    {"`quit` behind `setoption` after a search", 50, 50,
     [](EngineProcess& engine, Figures& figures) {
         engine.ask(move50, "bestmove");
         figures.push_back(timeOfEnd(engine, changeOption + "\nquit"));
     }},
    {"`quit` in a search", 50, 50,
     [](EngineProcess& engine, Figures& figures) {
         engine.ask("go infinite", "info depth 2 ");
         pause(100);
         figures.push_back(timeOfEnd(engine, "quit"));
     }},
};

// Adds the figures of some starts, sorted.
void addFigures(const Case& what, int hash, Figures& figures) {
    hashMegabytes = hash;
    for (int i = 0; i < starts; ++i) {
        EngineProcess engine;
        engine.ask("setoption name OwnBook value false\n" + hashAgain(), "info string Hash");
        what.measure(engine, figures);
    }
    std::sort(figures.begin(), figures.end());
}

double medianOf(const Figures& sorted) { return sorted[sorted.size() / 2]; }

bool isInTime(const Case& what, const Figures& sorted) {
    const std::size_t mayBeLate = std::max<std::size_t>(sorted.size() / heldUp, 1);
    return sorted[sorted.size() - 1 - mayBeLate] <= what.limit && medianOf(sorted) <= what.medianLimit;
}

// Of the system, in megabytes.
long availableMemory() {
    std::ifstream file("/proc/meminfo");
    for (std::string line; std::getline(file, line);) {
        if (line.rfind("MemAvailable:", 0) == 0) return std::stol(line.substr(13)) / 1024;
    }
    return 0;
}

std::vector<int> sizesThatFit() {
    std::vector<int> fitting;
    for (const int size : sizes) {
        const long needed = 2L * size + 200; // an emptied table may be there beside the new one
        if (needed <= availableMemory()) {
            fitting.push_back(size);
        } else {
            std::printf("Hash %d is left out: %ld megabytes would be needed.\n\n", size, needed);
        }
    }
    return fitting;
}

bool measureAll() {
    const std::vector<int> hashes = sizesThatFit();
    std::printf("| milliseconds: median, most |");
    for (const int hash : hashes) std::printf(" Hash %d |", hash);
    std::printf(" allowed |\n| --- |");
    for (std::size_t i = 0; i <= hashes.size(); ++i) std::printf(" --- |");
    std::printf("\n");
    bool allInTime = true;
    for (const Case& what : cases) {
        std::printf("| %s |", what.name);
        for (const int hash : hashes) {
            Figures figures;
            bool inTime = false;
            for (int i = 0; i < tries && !inTime; ++i) {
                addFigures(what, hash, figures);
                inTime = isInTime(what, figures);
            }
            allInTime = allInTime && inTime;
            std::printf(" %.1f, %.1f%s |", medianOf(figures), figures.back(), inTime ? "" : " LATE");
            std::fflush(stdout);
        }
        if (what.medianLimit < what.limit) {
            std::printf(" %.0f, %.0f |\n", what.medianLimit, what.limit);
        } else {
            std::printf(" %.0f |\n", what.limit);
        }
    }
    return allInTime;
}

} // namespace

} // namespace helvan

int main() { return helvan::measureAll() ? 0 : 1; }
