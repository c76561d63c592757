// SPDX-License-Identifier: MIT
//
// The opening book's settings.
#pragma once

namespace helvan {

inline constexpr int bookFileCapacity = 4096; // of the file name, its terminator included

struct BookSettings {
    int ownBook = 1;                                    // the option "OwnBook": play from the book
    int bestLineOnly = 1;                               // the option "Best Line": only the moves of the highest weight
    char bookFileName[bookFileCapacity] = "helvan.bin"; // the option "Book File"
};

inline BookSettings bookSettings;

} // namespace helvan
