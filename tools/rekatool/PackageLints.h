// SPDX-License-Identifier: MIT
// What is likely not meant in a compound or a text, though the editor takes it.

#pragma once

#include <string>
#include <string_view>

#include "records/Definition.h"

namespace rekatool {

/// What is wrong with a CAS number: "is no CAS number", or which check digit it would need. Empty for a good one, and
/// for none.
std::u16string LintCasNumber(std::u16string_view number);

/// The first whole number of more than 18 digits in the text of an expression: beyond 64 bits such numbers wrap around.
/// Empty where there is none. Digits of a name, in quotes or behind a letter, are no number.
std::u16string FindLongInteger(std::u16string_view expression);

/// Where the heat of an equilibrium reaction contradicts the slope of its constant over the temperature (van 't Hoff:
/// heat = R T^2 d ln K / d T): a sentence with both at the temperature at which they are closest. Empty where they
/// agree somewhere, within 5 kJ/mol and 15 %, or where one of them reads more than the temperature or has no value. A
/// constant in molarities may have the slope of the inner energy, as in a gas. `definition` gets other working values.
std::u16string CompareHeatWithConstant(reka::ReactionPackDefinition& definition,
                                       const reka::ReactionDefinition& reaction);

}  // namespace rekatool
