// SPDX-License-Identifier: MIT
// The material of a document.

#pragma once

#include <string>

#include "material/MaterialProperties.h"
#include "packagetext/Document.h"

namespace rekasim {

/// Reads the member "material" of a document:
///   "phase"        its label
///   "model"        "ideal gas" or "liquid"
///   "temperature"  K
///   "pressure"     Pa
///   "standardPressure"  Pa, may be left out: 1e5 (ideal gas)
///   "molarDensity"      mol/m3, may be left out when each compound has its "molarVolume" (liquid)
///   "compounds"    list of objects: "id", "moleFraction", and if known "casNumber", "formula", "molecularWeight"
///   (g/mol),
///                  for an adiabatic reactor "heatCapacity" (J/(mol K)),
///                  and for a liquid "activityCoefficient", "molarVolume" (m3/mol), "vapourPressure" (Pa)
/// A member "comment" may stand in each object; any other name is refused, since it would be a misspelt one. The mole
/// fractions must add up to 1. False with the member and the reason in `errorText`.
bool ReadMaterial(const packagetext::Json& document, MaterialState& state, std::string& errorText);

}  // namespace rekasim
