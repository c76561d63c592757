// SPDX-License-Identifier: MIT
//
// The tables that the evaluation reads, built from its parameters.
#pragma once

namespace helvan {

// Fills the piece-square table. To be called at start and whenever a parameter has changed.
void initEvalTables();

} // namespace helvan
