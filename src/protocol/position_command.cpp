// SPDX-License-Identifier: MIT
#include "protocol/position_command.h"

#include <cstdio>
#include <string>

#include "board/apply_move.h"
#include "board/fen.h"
#include "board/validity.h"
#include "platform/end_process.h"

namespace helvan {

namespace {

constexpr int firstFenWord = 2;
constexpr int fenFields = 4; // placement, side to move, castling, en passant

// A position without a side to move ends the process.
void setRoot(GameHistory& gameHistory, const char* fen) {
    if (setupFromFen(gameHistory.positions[0], fen) != nullptr) {
        std::fprintf(stderr, "Error in ctm for fen \"%.*s\"", fenCapacity - 1, fen);
        endProcess(1);
    }
    gameHistory.ply = 0;
    dropUnfoundedCastlingRights(gameHistory.positions[0]);
}

static_assert(GameHistory::capacity > lineCapacity / 2, "the game has room for all words of a line");

void applyMoves(GameHistory& gameHistory, const Words& words, int first) {
    for (int i = first; i < words.count; ++i) {
        Position* const current = &gameHistory.positions[gameHistory.ply];
        if (applyMoveText(*current, *(current + 1), words[i]) == 0) {
            std::printf("info string illegal move %s\n", words[i]);
            break;
        }
        ++gameHistory.ply;
    }
}

} // namespace

void resetGame(GameHistory& gameHistory) { setRoot(gameHistory, startFen); }

void positionCommand(Session& session, const Words& words) {
    GameHistory& gameHistory = session.gameHistory;
    int next = firstFenWord;
    if (words.is(1, "startpos")) {
        resetGame(gameHistory);
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
        setRoot(gameHistory, fen.c_str());
        while (next < words.count && !words.is(next, "moves")) ++next; // over the two counters
    } else {
        std::fprintf(stderr, "Error here!\n");
        endProcess(1);
    }
    if (words.is(next, "moves")) applyMoves(gameHistory, words, next + 1);
}

} // namespace helvan
