// SPDX-License-Identifier: MIT
//
// What the engine prints.
#pragma once

#include <gtest/gtest.h>

#include <string>

namespace helvan::testing {

template <typename Action> std::string printedBy(Action action) {
    ::testing::internal::CaptureStdout();
    action();
    return ::testing::internal::GetCapturedStdout();
}

inline bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

} // namespace helvan::testing
