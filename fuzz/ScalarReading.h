// SPDX-License-Identifier: MIT
// A second reading of numeric fields, by descent instead of by tables.

#pragma once

#include <optional>
#include <string_view>

namespace reka::fuzz {

/// The value of a field's text, which ends at its first zero; nothing for a text that has none. For texts of some
/// thousand characters, as it recurses over brackets.
std::optional<double> ReadScalar(std::string_view text);

}  // namespace reka::fuzz
