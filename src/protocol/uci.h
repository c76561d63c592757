// SPDX-License-Identifier: MIT
//
// The command loop's body: takes one line from the queue and carries it out. Called when idle and from the
// middle of a search, by the main thread alone.
#pragma once

#include <cstdint>
#include <string>

#include "protocol/session.h"

namespace helvan {

inline constexpr char engineName[] = "Helvan64";
inline constexpr char versionText[] = "3";
inline constexpr char authorText[] = "the Helvan team";

// Bernstein's hash (djb2) of a command word, its bytes taken as signed.
constexpr std::uint32_t commandHash(const char* word) {
    std::uint32_t hash = 5381;
    for (; *word != '\0'; ++word) hash = hash * 33 + static_cast<std::uint32_t>(static_cast<signed char>(*word));
    return hash;
}

// Handles the oldest waiting line and answers whether there was one. Unknown commands are ignored without an answer.
bool pollCommand(Session& session);

// Handles one line as pollCommand does.
void handleLine(Session& session, std::string line);

} // namespace helvan
