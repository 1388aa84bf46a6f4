// SPDX-License-Identifier: MIT
// Reactions and their units in writing.

#pragma once

#include <string>

#include "CPackageSession.h"
#include "material/MaterialProperties.h"

namespace rekasim {

/// "N2 + 3 H2 = 2 NH3", reactants first, each side in the order of the package. A compound is written as its formula in
/// `material`, or by its identifier without one. UTF-8.
std::string WriteEquation(const Reaction& reaction, const MaterialState& material);

/// "mol/(m3 s)", or "mol/(kg s)" for a rate that counts per mass of catalyst.
std::string RateUnit(const Reaction& reaction);

/// The unit of the equilibrium constant, "Pa^-1" for instance: that of the concentration basis to the power of the sum
/// of the coefficients. Empty for a basis without a unit and for a sum of 0.
std::string EquilibriumUnit(const Reaction& reaction);

}  // namespace rekasim
