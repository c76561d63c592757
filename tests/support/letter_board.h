// SPDX-License-Identifier: MIT
//
// A board of letters, and what its men reach: found square by square, to hold bitboards against.
#pragma once

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <cstring>

#include "board/fen.h"

namespace helvan::testing {

inline constexpr char menOf[2][7] = {"PNBRQK", "pnbrqk"};

struct LetterBoard : std::array<char, 64> {
    // As one side sees it: its own men in upper case, its first rank at the bottom.
    explicit LetterBoard(const Position& position, Colour us = white) {
        for (Square square = 0; square < 64; ++square) {
            const char letter = pieceLetterAt(position, us == white ? square : mirrored(square));
            const bool lower = std::islower(letter) != 0;
            (*this)[square] = static_cast<char>((us == white) == lower ? std::tolower(letter) : std::toupper(letter));
        }
    }

    bool holds(const char* men, Square square) const { return std::strchr(men, (*this)[square]) != nullptr; }
    Square find(char letter) const { return static_cast<Square>(std::find(begin(), end(), letter) - begin()); }
    int count(char letter) const { return static_cast<int>(std::count(begin(), end(), letter)); }

    // Whether nothing stands between the squares, which are in line.
    bool clear(Square from, Square to) const {
        const int dx = (fileOf(to) > fileOf(from)) - (fileOf(to) < fileOf(from));
        const int dy = (rankOf(to) > rankOf(from)) - (rankOf(to) < rankOf(from));
        for (Square square = from + dx + 8 * dy; square != to; square += dx + 8 * dy) {
            if ((*this)[square] != '-') return false;
        }
        return true;
    }

    // Whether a man of the letter's kind on one square attacks the other.
    bool reaches(char letter, Square from, Square to) const {
        const int dx = fileOf(to) - fileOf(from), dy = rankOf(to) - rankOf(from);
        const int files = std::abs(dx), ranks = std::abs(dy);
        const bool straight = (dx == 0) != (dy == 0), diagonal = files == ranks && dx != 0;
        switch (std::tolower(letter)) {
        case 'p': return files == 1 && dy == (letter == 'P' ? 1 : -1);
        case 'n': return files * ranks == 2;
        case 'k': return std::max(files, ranks) == 1;
        case 'b': return diagonal && clear(from, to);
        case 'r': return straight && clear(from, to);
        case 'q': return (straight || diagonal) && clear(from, to);
        default: return false;
        }
    }

    bool attackedBy(const char* men, Square square) const {
        for (Square from = 0; from < 64; ++from) {
            if (holds(men, from) && reaches((*this)[from], from, square)) return true;
        }
        return false;
    }
};

} // namespace helvan::testing
