// SPDX-License-Identifier: MIT
// Names and texts out of files, as they may be shown.

#pragma once

#include <string>
#include <string_view>

namespace packagetext {

/// The name, which is UTF-16 or UTF-8, in UTF-8, with "?" in the place of what would steer a terminal or end the line:
/// a damaged or made-up name may hold anything.
std::string PrintableName(std::u16string_view name);
std::string PrintableName(std::string_view name);

/// A text of several lines, on one, in UTF-8. Whatever else could lead a terminal astray is a blank as well; there are
/// no two in a row, and none at the ends.
std::string OnOneLine(std::u16string_view text);

}  // namespace packagetext
