// SPDX-License-Identifier: MIT
//
// The command "setoption": names an option and its new value.
#pragma once

#include <string>

#include "protocol/session.h"
#include "protocol/words.h"

namespace helvan {

struct OptionRequest {
    std::string name; // words joined by single blanks, in lower case, as the value
    std::string value;
};

// Reads the words behind "setoption". The second word of each pair of value words is cut to 8 characters.
OptionRequest readOptionRequest(const Words& words);

// Sets the option and builds anew what depends on it. Numbers are taken as given, beyond the bounds shown, and
// are 0 where there is none. Allowed in the middle of a search.
void setOptionCommand(Session& session, const Words& words);

} // namespace helvan
