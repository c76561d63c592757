// SPDX-License-Identifier: MIT
#include "board/fen.h"

#include <cstdio>
#include <cstring>

#include "board/attacks.h"
#include "protocol/end_process.h"

namespace helvan {

namespace {

constexpr int textCapacity = 256; // of the text copied, its terminator included

constexpr char pieceLetters[2][8] = {".PNBRQK", ".pnbrqk"};

// Squares are counted from a8 along the ranks to h1.
constexpr Square countedSquare(int counter) { return mirrored(counter); }

void placeLetter(Position& position, char letter, int counter) {
    if (counter >= 64) return;
    for (Colour colour : {white, black}) {
        for (PieceType type = pawn; type <= king; ++type) {
            if (letter == pieceLetters[colour][type]) position.of(colour, type) |= bit(countedSquare(counter));
        }
    }
}

// Each reader below takes its field's first character and answers the first one behind the field.

const char* readPlacement(Position& position, const char* text) {
    int counter = 0;
    for (; *text != '\0' && *text != ' '; ++text) {
        if (*text >= '0' && *text <= '9') {
            counter += *text - '0';
        } else if (*text == '/') {
            counter = (counter + 7) / 8 * 8;
        } else {
            placeLetter(position, *text, counter);
            ++counter;
        }
    }
    for (Colour colour : {white, black}) {
        for (PieceType type = pawn; type <= king; ++type) position.of(colour, allPieces) |= position.of(colour, type);
    }
    return text;
}

const char* readCastling(Position& position, const char* text) {
    for (; *text != '\0' && *text != ' '; ++text) {
        switch (*text) {
        case 'K': position.touched &= ~(bit(e1) | bit(h1)); break;
        case 'Q': position.touched &= ~(bit(a1) | bit(e1)); break;
        case 'k': position.touched &= ~(bit(e8) | bit(h8)); break;
        case 'q': position.touched &= ~(bit(a8) | bit(e8)); break;
        default: break;
        }
    }
    return text;
}

// Only the double push that an en-passant square tells of is kept; anything that names no square is a '-'.
void readEnPassant(Position& position, const char* text) {
    while (*text == ' ') ++text;
    if (text[0] < 'a' || text[0] > 'h' || text[1] < '0' || text[1] > '9') return;
    const int file = text[0] - 'a';
    position.lastMove = text[1] == '3' ? encodeMove(a2 + file, a4 + file) : encodeMove(a7 + file, a5 + file);
}

} // namespace

void setupFromFen(Position& position, const char* text) {
    position = Position{};
    position.touched = rank1 | rank8;
    position.ply = -1;

    char copy[textCapacity] = {};
    std::strncpy(copy, *text != '\0' ? text : startFen, textCapacity - 1);

    const char* field = readPlacement(position, copy);
    if (*field == ' ') ++field;
    if (*field != 'w' && *field != 'b') {
        std::fprintf(stderr, "Error in ctm for fen \"%s\"", copy);
        endProcess(1);
    }
    position.ply = *field == 'w' ? 0 : 1;
    ++field;
    if (*field != '\0') ++field; // the one character between the two fields
    field = readCastling(position, field);

    position.inCheck = static_cast<std::uint16_t>(inCheck(position, position.sideToMove()));
    position.key = keyOf(position);
    position.pawnKey = pawnKeyOf(position);
    position.materialKey = materialKeyOf(position);
    readEnPassant(position, field);
}

char pieceLetterAt(const Position& position, Square square) {
    for (PieceType type = pawn; type <= king; ++type) {
        for (Colour colour : {white, black}) {
            if ((position.of(colour, type) & bit(square)) != 0) return pieceLetters[colour][type];
        }
    }
    return '-';
}

void positionToFen(const Position& position, char* buffer) {
    for (int counter = 0; counter < 64;) {
        int empty = 0;
        do {
            const char letter = pieceLetterAt(position, countedSquare(counter));
            ++counter;
            if (letter == '-') ++empty;
            if (empty != 0 && (letter != '-' || counter % 8 == 0)) {
                *buffer++ = static_cast<char>('0' + empty);
                empty = 0;
            }
            if (letter != '-') *buffer++ = letter;
        } while (counter % 8 != 0);
        if (counter < 64) *buffer++ = '/';
    }
    std::strcpy(buffer, position.sideToMove() == white ? " w - -" : " b - -");
}

} // namespace helvan
