// SPDX-License-Identifier: MIT
// Laws and constants of the literature, in two halves: the first was at hand while the evaluation was made fast, the
// second was chosen and written afterwards, to tell whether what was gained holds for laws that nobody looked at.

#pragma once

#include <cmath>
#include <limits>
#include <span>
#include <string>

#include "bench/Formulas.h"

namespace reka::bench {

struct Law {
    const char* name;
    const char* source;  // author, journal or book, year
    /// Over the compounds aa to ff. The form is that of the source, with constants of the size that it has them.
    const char16_t* text;
    NativeFormula native;
};

std::span<const Law> FirstLaws();
std::span<const Law> SecondLaws();

constexpr double R = 8.314;  // J/(mol K), as the language has it

using Values = const ReactionPackDefinition&;
using Text = std::u16string;

/// What a native form does with operands that the language refuses.
inline bool Refuse(double& result, Text& errorText) {
    result = std::numeric_limits<double>::quiet_NaN();
    errorText = u"division by zero";
    return false;
}

}  // namespace reka::bench
