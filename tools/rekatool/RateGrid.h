// SPDX-License-Identifier: MIT
// A rate or an equilibrium constant, tried over temperatures and compositions.

#pragma once

#include <string>
#include <vector>

#include "records/Definition.h"

namespace rekatool {

/// What is odd about the rate of a kinetic reaction, or the constant of another one, which has its tree: at most one
/// sentence of each sort. `definition` has its work arrays, and gets other working values.
///
/// Tried are temperatures from 250 to 1500 K at 1 bar. The phase is an ideal gas, or at 10 kmol/m3 where the reaction
/// runs in a phase with "liq" in its name; activities are mole fractions, fugacities partial pressures. Compositions
/// are equal parts of all, reactants with a trace of all others, and products with such a trace. For the sign of a rate
/// the products, or the reactants, are left out altogether, the other compounds staying.
std::vector<std::u16string> TryReaction(reka::ReactionPackDefinition& definition,
                                        const reka::ReactionDefinition& reaction);

}  // namespace rekatool
