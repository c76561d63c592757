// SPDX-License-Identifier: MIT
#include "board/display.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include "board/fen.h"
#include "board/move_text.h"

namespace helvan {

namespace {

enum class MoveStyle { text, hexadecimal };

// The headers' field for a move; empty where there is none to show.
std::string moveField(const Position* position, MoveStyle style) {
    if (position == nullptr) return "";
    if (style == MoveStyle::text) return moveText(position->lastMove);
    char text[12];
    std::snprintf(text, sizeof text, "%x", static_cast<unsigned>(position->lastMove));
    return text;
}

void printHeader(const Position& position, MoveStyle style) {
    std::printf("\n-----[ CTM = %d   INCHECK = %d   last: %s %s   rights: %s]-----", position.ply, position.inCheck,
                moveField(&position, style).c_str(), moveField(position.prev, style).c_str(),
                castlingText(position).c_str());
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
    if (std::FILE* file = std::fopen("ttt.fen", "w"); file != nullptr) {
        std::fprintf(file, "%s\n", positionToFen(position).c_str());
        std::fclose(file);
    }
    printPosition(position, MoveStyle::hexadecimal);
    std::printf("Move in question: %s  spec: %d \n", moveText(move).c_str(), move >> 12);
    std::fflush(stdout);
    if (std::system("xboard -size small -lpf ttt.fen -ncp") != 0) std::printf("Error in system call\n");
}

} // namespace helvan
