// SPDX-License-Identifier: MIT
// Numbers as text and back, with the decimal point whatever the locale says.

#pragma once

#include <string>
#include <string_view>

namespace rekasim {

/// The shortest form with `digits` significant digits, as "%g" gives it.
std::string FormatNumber(double number, int digits = 6);

/// With all of its significant digits, also zeros at the end, as "%#g" gives it: numbers of a column are as long as
/// each other. A zero is just "0".
std::string FormatFullNumber(double number, int digits = 6);

/// Reads a text that is a finite number and nothing else.
bool ParseNumber(std::string_view text, double& number);

}  // namespace rekasim
