// SPDX-License-Identifier: MIT
#include "tools/tune/training_set.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>

#include "board/advance.h"
#include "board/bits.h"
#include "board/fen.h"
#include "board/piece_square.h"
#include "board/validity.h"
#include "eval/evaluate.h"
#include "search/quiesce.h"

namespace helvan {

namespace {

constexpr int longestLine = 512;

// For the shell, as one word.
std::string quoted(const std::string& text) {
    std::string word = "'";
    for (const char c : text) word += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return word + "'";
}

// A file, or what xz makes of one.
class Input {
public:
    explicit Input(const std::string& path)
        : packed(path.ends_with(".xz")),
          file(packed ? popen(("xz -dc " + quoted(path)).c_str(), "r") : std::fopen(path.c_str(), "r")) {}

    std::FILE* stream() const { return file; }

    // Whether it was there and came whole.
    bool close() {
        if (file == nullptr) return false;
        const bool read = std::ferror(file) == 0; // a folder opens, and then cannot be read
        return (packed ? pclose(file) : std::fclose(file)) == 0 && read;
    }

private:
    bool packed;
    std::FILE* file;
};

// Follows the best moves of the quiescence search. Answers whether it ends with an evaluation.
bool moveToQuietLeaf(Search& search, Position& position) {
    constexpr int levelStep = 2; // of the quiescence depth
    int score = 0;
    for (int ply = 0;; ++ply) {
        Move line[pvCapacity];
        score = quiesce(search, position, -infiniteScore, infiniteScore, -levelStep * ply, ply, line);
        if (line[0] == nullMove) break;
        Position child;
        if (ply + 1 == maxPly || !advanceLegally(position, child, line[0])) return false;
        position = child;
        position.prev = nullptr;
    }
    return position.inCheck == 0 && score == position.evalScratch;
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
    int length = 0;
    const char* const rest = line.c_str() + end;
    if (std::sscanf(rest, "|%f|%f|%d%n", &result, &score, &game, &length) != 3) return false;
    if (rest[length] != '\0' && std::strcmp(rest + length, "\n") != 0) return false;
    if (!(result >= 0 && result <= 1) || !std::isfinite(score) || game < 0) return false;
    Position position;
    if (setupFromFen(position, fen.c_str()) != nullptr) return false;
    dropUnfoundedCastlingRights(position);
    if (unplayableReason(position) != nullptr) return false;
    set.add(position, result, score, game);
    return true;
}

void moveToQuietLeaves(TrainingSet& set) {
    const auto tables = std::make_unique<SearchTables>();
    Search search(*tables);
    set.keepIf([&](Position& position) { return moveToQuietLeaf(search, position); });
}

void dropSmallEndings(TrainingSet& set, int fewestMen) {
    set.keepIf([&](const Position& position) { return popCount(position.occupied()) >= fewestMen; });
}

TrainingSet readTrainingSet(const std::string& path) {
    TrainingSet set;
    Input input(path);
    int unread = 0;
    for (char line[longestLine];
         input.stream() != nullptr && std::fgets(line, sizeof line, input.stream()) != nullptr;) {
        if (line[0] != '#' && !addLine(set, line)) ++unread;
    }
    if (!input.close()) {
        std::fprintf(stderr, "%s could not be read, or not to its end.\n", path.c_str());
        return {};
    }
    if (unread > 0) std::fprintf(stderr, "%d lines could not be read.\n", unread);
    return set;
}

} // namespace helvan
