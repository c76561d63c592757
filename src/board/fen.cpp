// SPDX-License-Identifier: MIT
#include "board/fen.h"

#include <cstring>
#include <utility>

#include "board/attacks.h"
#include "board/castling.h"

namespace helvan {

namespace {

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
        for (const CastlingRight& right : castlingRights) {
            if (*text == right.letter) position.touched &= ~right.homes();
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

std::string placementAndSide(const Position& position) {
    std::string text;
    int empty = 0;
    for (int counter = 0; counter < 64; ++counter) {
        if (counter != 0 && counter % 8 == 0) text += '/';
        const char letter = pieceLetterAt(position, countedSquare(counter));
        if (letter == '-') ++empty;
        if (empty != 0 && (letter != '-' || counter % 8 == 7)) text += static_cast<char>('0' + std::exchange(empty, 0));
        if (letter != '-') text += letter;
    }
    return text + (position.sideToMove() == white ? " w" : " b");
}

} // namespace

const char* setupFromFen(Position& position, const char* text) {
    Position fresh{};
    fresh.touched = rank1 | rank8;

    char copy[fenCapacity] = {};
    std::strncpy(copy, *text != '\0' ? text : startFen, fenCapacity - 1);

    const char* field = readPlacement(fresh, copy);
    if (*field == ' ') ++field;
    if (*field != 'w' && *field != 'b') return "the side to move is neither w nor b";
    fresh.ply = *field == 'w' ? 0 : 1;
    ++field;
    if (*field != '\0') ++field; // the one character between the two fields
    field = readCastling(fresh, field);

    fresh.inCheck = static_cast<std::uint16_t>(inCheck(fresh, fresh.sideToMove()));
    fresh.key = keyOf(fresh);
    fresh.pawnKey = pawnKeyOf(fresh);
    fresh.materialKey = materialKeyOf(fresh);
    readEnPassant(fresh, field);
    position = fresh;
    return nullptr;
}

Position startPosition() {
    Position position;
    [[maybe_unused]] const char* const fault = setupFromFen(position, startFen);
    return position;
}

char pieceLetterAt(const Position& position, Square square) {
    for (PieceType type = pawn; type <= king; ++type) {
        for (Colour colour : {white, black}) {
            if ((position.of(colour, type) & bit(square)) != 0) return pieceLetters[colour][type];
        }
    }
    return '-';
}

std::string castlingText(const Position& position) {
    std::string letters;
    for (const CastlingRight& right : castlingRights) {
        if (stands(right, position.touched)) letters += right.letter;
    }
    return letters;
}

std::string positionToFen(const Position& position) { return placementAndSide(position) + " - -"; }

std::string positionToFenWithRights(const Position& position) {
    const std::string rights = castlingText(position);
    return placementAndSide(position) + ' ' + (rights.empty() ? "-" : rights) + " -";
}

} // namespace helvan
