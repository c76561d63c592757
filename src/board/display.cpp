// SPDX-License-Identifier: MIT
#include "board/display.h"

#include <cstdio>
#include <cstdlib>

#include "board/fen.h"
#include "board/move_text.h"

namespace helvan {

namespace {

enum class MoveStyle { text, hexadecimal };

// The headers' field for a move; empty where there is none to show.
struct MoveField {
    char text[12] = "";
};

MoveField moveField(const Position* position, MoveStyle style) {
    MoveField field;
    if (position == nullptr) return field;
    if (style == MoveStyle::text) {
        moveToText(position->lastMove, field.text);
    } else {
        std::snprintf(field.text, sizeof field.text, "%x", static_cast<unsigned>(position->lastMove));
    }
    return field;
}

struct RightsText {
    char text[5] = "";
};

RightsText rightsText(const Position& position) {
    struct Right {
        Bitboard squares;
        char letter;
    };
    constexpr Right rights[] = {
        {bit(e1) | bit(h1), 'K'}, {bit(a1) | bit(e1), 'Q'}, {bit(e8) | bit(h8), 'k'}, {bit(a8) | bit(e8), 'q'}};
    RightsText result;
    char* end = result.text;
    for (const Right& right : rights) {
        if ((position.touched & right.squares) == 0) *end++ = right.letter;
    }
    return result;
}

void printHeader(const Position& position, MoveStyle style) {
    std::printf("\n-----[ CTM = %d   INCHECK = %d   last: %s %s   rights: %s]-----", position.ply, position.inCheck,
                moveField(&position, style).text, moveField(position.prev, style).text, rightsText(position).text);
}

// Eight rows, a8 first, a line break before each; one " %c" a square.
template <typename LetterOf> void printGrid(LetterOf letterOf) {
    for (int counter = 0; counter < 64; ++counter) {
        if (counter % 8 == 0) std::printf("\n");
        std::printf(" %c", letterOf(mirrored(counter)));
    }
    std::printf("\n");
}

void printPosition(const Position& position, MoveStyle style) {
    printHeader(position, style);
    printGrid([&](Square square) { return pieceLetterAt(position, square); });
    std::printf("\n");
}

} // namespace

void printBoard(const Position& position) { printPosition(position, MoveStyle::text); }

void printBits(Bitboard board) {
    std::printf("\nBITS");
    printGrid([&](Square square) { return (board & bit(square)) != 0 ? '#' : '-'; });
}

void viewInExternalBoard(const Position& position, Move move) {
    char fen[fenBufferSize];
    positionToFen(position, fen);
    if (std::FILE* file = std::fopen("ttt.fen", "w"); file != nullptr) {
        std::fprintf(file, "%s\n", fen);
        std::fclose(file);
    }
    printPosition(position, MoveStyle::hexadecimal);
    char text[moveTextSize];
    moveToText(move, text);
    std::printf("Move in question: %s  spec: %d \n", text, move >> 12);
    std::fflush(stdout);
    if (std::system("xboard -size small -lpf ttt.fen -ncp") != 0) std::printf("Error in system call\n");
}

} // namespace helvan
