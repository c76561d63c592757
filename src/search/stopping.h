// SPDX-License-Identifier: MIT
//
// When a search stops: the clock, the node limit, the flags that commands set, and the periodic check that every search
// routine makes.
#pragma once

#include "platform/clock.h"
#include "search/search.h"

namespace helvan {

// Since the search began.
double searchSeconds(const Search& search);

// Sets both deadlines from the start time and the limits.
void setDeadlines(Search& search);

// Decides whether make-move may count nodes beyond the limit: in the first iteration and while pondering.
void updateNodeOverride(Search& search);

// The check at the start of every call of a search routine: true means "return 0 at once". Every 256th call
// handles a waiting command and tests node limit and clock; a long search claims pages of its table now and then, too.
bool searchMustStop(Search& search);

// Handles commands until "stop", or until no longer pondering: at least one, unless the search has been stopped, by
// whatever: what comes after a "stop" is to be carried out after the answer. At once where nobody listens.
void waitWhilePondering(Search& search);

} // namespace helvan
