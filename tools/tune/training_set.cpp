// SPDX-License-Identifier: MIT
#include "tools/tune/training_set.h"

#include <cstdio>
#include <cstring>
#include <memory>

#include "board/fen.h"
#include "board/piece_square.h"
#include "board/validity.h"
#include "eval/evaluate.h"
#include "search/limits.h"
#include "search/quiesce.h"
#include "search/settings.h"
#include "search/transposition_table.h"

namespace helvan {

namespace {

constexpr int longestLine = 512;

struct Closer {
    bool isPipe;
    void operator()(std::FILE* file) const { isPipe ? pclose(file) : std::fclose(file); }
};

using Input = std::unique_ptr<std::FILE, Closer>;

// For the shell, as one word.
std::string quoted(const std::string& text) {
    std::string word = "'";
    for (const char c : text) word += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return word + "'";
}

Input open(const std::string& path) {
    if (path.size() > 3 && path.ends_with(".xz")) {
        return Input(popen(("xz -dc " + quoted(path)).c_str(), "r"), Closer{true});
    }
    return Input(std::fopen(path.c_str(), "r"), Closer{false});
}

// Setting up a position ends the process if nobody is to move, so that is looked at first.
bool hasSideToMove(const std::string& fen) {
    return fen.find(" w ") != std::string::npos || fen.find(" b ") != std::string::npos;
}

} // namespace

void TrainingSet::add(const Position& position, float result, float score, int game) {
    positions.push_back(position);
    refreshPieceSums(positions.back());
    results.push_back(result);
    scores.push_back(score);
    games.push_back(game);
}

bool addLine(TrainingSet& set, const std::string& line) {
    const std::size_t end = line.find('|');
    if (end == std::string::npos) return false;
    const std::string fen = line.substr(0, end);
    float result = 0, score = 0;
    int game = 0;
    if (std::sscanf(line.c_str() + end, "|%f|%f|%d", &result, &score, &game) != 3 || !hasSideToMove(fen)) return false;
    Position position;
    setupFromFen(position, fen.c_str());
    dropUnfoundedCastlingRights(position);
    if (unplayableReason(position) != nullptr) return false;
    set.add(position, result, score, game);
    return true;
}

void dropUnsettled(TrainingSet& set, int margin) {
    hashMegabytes = 1;
    transpositionTable.allocate(hashMegabytes);
    setDeadlines(noTimeGoalSeconds);
    set.keepIf([&](Position position) {
        Move line[pvCapacity];
        const int standing = evaluate(position);
        return quiesce(position, -infiniteScore, infiniteScore, 0, 0, line) <= standing + margin;
    });
}

TrainingSet readTrainingSet(const std::string& path) {
    TrainingSet set;
    const Input input = open(path);
    if (input == nullptr) return set;
    int unread = 0;
    for (char line[longestLine]; std::fgets(line, sizeof line, input.get()) != nullptr;) {
        if (line[0] != '#' && !addLine(set, line)) ++unread;
    }
    if (unread > 0) std::fprintf(stderr, "%d lines could not be read.\n", unread);
    return set;
}

} // namespace helvan
