// SPDX-License-Identifier: MIT
// Whole numbers of the readable form. The library compares numbers of both signs as if the larger ones were below zero.

#pragma once

#include <cstdint>
#include <limits>
#include <optional>

#include "packagetext/Document.h"

namespace rekatool {

/// The number, or none where the value isn't a whole one or doesn't fit.
inline std::optional<std::int64_t> WholeNumber(const packagetext::Json& value) {
    if (!value.is_number_integer()) return {};
    constexpr std::uint64_t largest = std::numeric_limits<std::int64_t>::max();
    if (value.is_number_unsigned() && value.get<std::uint64_t>() > largest) return {};
    return value.get<std::int64_t>();
}

}  // namespace rekatool
