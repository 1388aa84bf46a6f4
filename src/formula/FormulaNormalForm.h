// SPDX-License-Identifier: MIT
// The one form in which structure formulas are kept: carbon, hydrogen, then the other elements in the order of their
// symbols, each followed by its count. CH3CH2OH becomes C2H6O.

#pragma once

#include <string>
#include <string_view>

namespace reka {

/// The normal form of a formula with brackets, repeated elements and fractional counts. Empty for a bad one: brackets
/// that don't match, or a count that is no number. Characters that mean nothing in a formula are passed over. May throw
/// std::bad_alloc.
std::u16string NormalizePcdFormula(std::u16string_view text);

/// What stands behind an element: nothing for 1, otherwise up to six digits behind the point, without zeros at the end.
std::u16string FormatFormulaCount(double count);

}  // namespace reka
