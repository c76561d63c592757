// SPDX-License-Identifier: MIT
//
// The evaluation's parameters as the source file has them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "board/packed_score.h"

namespace helvan {

// The values of all rows, row after row.
std::vector<PackedScore> parameterValues();

// The text of the parameters' source with the present values of the rows that are not fixed, each in its place and
// in the columns of the boards; everything else stays as it is. The values before are those that the text must hold:
// nothing if it holds others.
std::optional<std::string> withPresentParameters(const std::string& source, const std::vector<PackedScore>& before);

} // namespace helvan
