// SPDX-License-Identifier: MIT
// Numbers as texts and back, without a locale: the two forms that users see and write in formulas.

#pragma once

#include <string>
#include <string_view>

namespace reka {

/// The shortest of six significant digits, with an exponent for large and small numbers: 0.001, 1e-05, 1e+06, nan, inf.
std::u16string FormatGeneral(double number);

/// Six digits behind the point, whatever the size of the number.
std::u16string FormatFixed(double number);

/// Converts the longest start of `text`, which holds digits and points alone, that is a number: 1.2.3 gives 1.2. False
/// if there is none, as for a point alone. A number too large gives infinity.
bool ScanNumber(std::u16string_view text, double& number);

}  // namespace reka
