// SPDX-License-Identifier: MIT
//
// Seeded choices, the same with every standard library.
#pragma once

#include <random>
#include <string>

namespace helvan::testing {

using Random = std::mt19937_64;

// 0 .. bound - 1.
inline int below(Random& random, std::size_t bound) { return static_cast<int>(random() % bound); }

template <typename Values> const auto& oneOf(Random& random, const Values& values) {
    return values[below(random, std::size(values))];
}

// Up to so many letters of the alphabet.
inline std::string lettersOf(Random& random, const std::string& alphabet, std::size_t longest) {
    std::string text;
    for (int length = below(random, longest + 1); length > 0; --length) text += oneOf(random, alphabet);
    return text;
}

} // namespace helvan::testing
