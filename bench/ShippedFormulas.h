// SPDX-License-Identifier: MIT
// The rate laws and equilibrium constants of the shipped packages.

#pragma once

#include <string>
#include <vector>

#include "bench/Formulas.h"

namespace reka::bench {

struct ShippedFormula {
    std::string name;  // of its package, with a number where that has several
    std::u16string text;
    std::vector<std::u16string> compoundNames;
    NativeFormula native;
};

/// Out of the documents of the example simulator. Throws std::runtime_error if one isn't as it was when the C++ forms
/// were written.
std::vector<ShippedFormula> ShippedFormulas();

}  // namespace reka::bench
