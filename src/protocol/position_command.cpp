// SPDX-License-Identifier: MIT
#include "protocol/position_command.h"

#include <cstdio>
#include <string>

#include "board/apply_move.h"
#include "board/fen.h"
#include "board/node_counter.h"
#include "board/validity.h"
#include "protocol/end_process.h"

namespace helvan {

namespace {

constexpr int firstFenWord = 2;
constexpr int fenFields = 4; // placement, side to move, castling, en passant

void setRoot(const char* fen) {
    gameHistory.ply = 0;
    setupFromFen(gameHistory.positions[0], fen);
    dropUnfoundedCastlingRights(gameHistory.positions[0]);
}

void applyMoves(const Words& words, int first) {
    // The command may come in the middle of a search, whose nodes these moves are not.
    const NodeCounter runningSearch = nodeCounter;
    for (int i = first; i < words.count; ++i) {
        if (gameHistory.ply + 1 >= GameHistory::capacity) {
            std::printf("info string game longer than %d moves, the rest is ignored\n", GameHistory::capacity - 1);
            break;
        }
        Position* const current = &gameHistory.positions[gameHistory.ply];
        if (applyMoveText(*current, *(current + 1), words[i]) == 0) {
            std::printf("info string illegal move %s\n", words[i]);
            break;
        }
        ++gameHistory.ply;
    }
    nodeCounter = runningSearch;
}

} // namespace

void resetGame() { setRoot(startFen); }

void positionCommand(const Words& words) {
    int next = firstFenWord;
    if (words.is(1, "startpos")) {
        resetGame();
    } else if (words.is(1, "fen")) {
        int fields = 0;
        while (fields < fenFields && next + fields < words.count && !words.is(next + fields, "moves")) ++fields;
        if (fields < fenFields) {
            std::printf("info string position ignored: a FEN needs placement, side to move, castling and en passant\n");
            return;
        }
        std::string fen;
        for (; next < firstFenWord + fenFields; ++next) {
            if (!fen.empty()) fen += ' ';
            fen += words[next];
        }
        setRoot(fen.c_str());
        while (next < words.count && !words.is(next, "moves")) ++next; // over the two counters
    } else {
        std::fprintf(stderr, "Error here!\n");
        endProcess(1);
    }
    if (words.is(next, "moves")) applyMoves(words, next + 1);
}

} // namespace helvan
