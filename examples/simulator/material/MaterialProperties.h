// SPDX-License-Identifier: MIT
// The material of a document: a phase of known temperature, pressure and composition, and the properties that follow
// from them by a model simple enough to be checked by hand.

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace rekasim {

constexpr double molarGasConstant = 8.314462618;  // J/(mol K)

struct MaterialCompound {
    std::u16string id;
    std::u16string casNumber;               // empty: not known
    std::u16string formula;                 // empty: not known
    std::optional<double> molecularWeight;  // g/mol
    double moleFraction = 0;
    double activityCoefficient = 1;                     // liquid only
    std::optional<double> molarVolume;                  // m3/mol, liquid only
    std::optional<double> vapourPressure;               // Pa, liquid only
    std::optional<double> heatCapacity = std::nullopt;  // J/(mol K), for adiabatic reactors
};

enum class PhaseModel : unsigned char { IdealGas, Liquid };

struct MaterialState {
    std::u16string phase;
    PhaseModel model = PhaseModel::IdealGas;
    double temperature = 0;              // K
    double pressure = 0;                 // Pa
    double standardPressure = 1e5;       // Pa, the activity of an ideal gas is its partial pressure over this one
    std::optional<double> molarDensity;  // mol/m3, liquid only; without it the molar volumes add up
    std::vector<MaterialCompound> compounds;
};

/// A property that the material can tell. Held ones are part of the state, the others must be calculated first.
struct MaterialProperty {
    std::u16string_view name;
    bool isHeld = false;
    bool isPerCompound = false;
    bool isOverall = false;  // holds for the material as a whole too
    bool hasBasis = false;   // needs "mole" or "mass"
};

/// The row of the named property, the case of letters ignored; null for one that rekasim doesn't know.
const MaterialProperty* FindMaterialProperty(std::u16string_view name);
/// Names of all properties, or of those that are calculated.
std::vector<std::u16string> MaterialPropertyNames(bool calculatedOnly);

/// Computes a property, one value or one per compound of the material:
///   temperature K, pressure Pa, fraction mol/mol or kg/kg,
///   density mol/m3 or kg/m3: P/(R T) of an ideal gas; of a liquid the given one, or 1/sum(x v),
///   fugacity Pa: x P of an ideal gas; x gamma Psat of a liquid whose vapour pressures are all given,
///   activity: x P/P0 of an ideal gas with the standard pressure P0; x gamma of a liquid.
/// False with the reason in `errorText` when the document doesn't say enough.
bool ComputeMaterialProperty(const MaterialState& state, const MaterialProperty& property, bool massBasis,
                             std::vector<double>& values, std::u16string& errorText);

}  // namespace rekasim
