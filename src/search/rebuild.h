// SPDX-License-Identifier: MIT
//
// What has to be built anew when a parameter of the evaluation has changed.
#pragma once

namespace helvan {

// Builds all tables of the evaluation and forgets every score that the search has stored under the old ones. To be
// called at start, too.
void rebuildTables();

} // namespace helvan
