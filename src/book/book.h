// SPDX-License-Identifier: MIT
//
// The opening book, a file in the Polyglot format: 16-byte entries sorted by position key, each with a move and its
// weight.
#pragma once

#include <cstdio>

#include "board/position.h"
#include "board/types.h"

namespace helvan {

struct Book {
    Book() = default;
    Book(const Book&) = delete;
    Book& operator=(const Book&) = delete;
    ~Book() { close(); }

    std::FILE* file = nullptr; // null: closed

    void close();
};

// Closes the book and, if the setting ownBook says so, opens the file bookFileName. A file that cannot be opened
// leaves the book closed without a message. To be called at start and whenever one of the two settings has changed.
void reopenBook(Book& book);

// A move from the book for the position, drawn by std::rand with chances as the entries' weights (among those of the
// greatest weight only, if bestLineOnly is set); 0 when the book has none. One entry that names an illegal move
// spoils the position: the log says so and the answer is 0. Where RAND_MAX is 32767, as on Windows, the draw never
// gets past the first 32768 of the position's weights added up.
Move probeBook(Book& book, const Position& position);

} // namespace helvan
