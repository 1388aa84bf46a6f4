// SPDX-License-Identifier: MIT
// The simplest models that make sense: an ideal gas, and a liquid whose density, activity coefficients and vapour
// pressures are given. An expected number of a test can then be worked out by hand. What a document doesn't give is
// told when something needs it, not when it is read: a package that needs no density runs without one.

#include "material/MaterialProperties.h"

#include "SameName.h"

namespace rekasim {

namespace {

constexpr MaterialProperty materialProperties[] = {
    {.name = u"temperature", .isHeld = true, .isOverall = true},
    {.name = u"pressure", .isHeld = true, .isOverall = true},
    {.name = u"fraction", .isHeld = true, .isPerCompound = true, .isOverall = true, .hasBasis = true},
    {.name = u"density", .hasBasis = true},
    {.name = u"activity", .isPerCompound = true},
    {.name = u"fugacity", .isPerCompound = true},
};

/// Grams in a mole of the mixture.
bool ComputeMeanMolecularWeight(const MaterialState& state, double& mean, std::u16string& errorText) {
    mean = 0;
    for (const MaterialCompound& compound : state.compounds) {
        if (!compound.molecularWeight) {
            errorText = u"the molecular weight of " + compound.id + u" is not known, so there is no mass basis";
            return false;
        }
        mean += compound.moleFraction * *compound.molecularWeight;
    }
    return true;
}

bool ComputeFractions(const MaterialState& state, bool massBasis, std::vector<double>& values,
                      std::u16string& errorText) {
    double mean = 1;
    if (massBasis && !ComputeMeanMolecularWeight(state, mean, errorText)) return false;
    for (const MaterialCompound& compound : state.compounds) {
        values.push_back(massBasis ? compound.moleFraction * *compound.molecularWeight / mean : compound.moleFraction);
    }
    return true;
}

bool ComputeMolarDensity(const MaterialState& state, double& density, std::u16string& errorText) {
    if (state.model == PhaseModel::IdealGas) {
        density = state.pressure / (molarGasConstant * state.temperature);
        return true;
    }
    if (state.molarDensity) {
        density = *state.molarDensity;
        return true;
    }
    double volume = 0;
    for (const MaterialCompound& compound : state.compounds) {
        if (!compound.molarVolume) {
            errorText =
                u"the density of the liquid is not known: the document gives neither its molarDensity nor the "
                u"molarVolume of " +
                compound.id;
            return false;
        }
        volume += compound.moleFraction * *compound.molarVolume;
    }
    density = 1 / volume;
    return true;
}

bool ComputeDensity(const MaterialState& state, bool massBasis, std::vector<double>& values,
                    std::u16string& errorText) {
    double density = 0;
    if (!ComputeMolarDensity(state, density, errorText)) return false;
    double mean = 0;
    if (massBasis && !ComputeMeanMolecularWeight(state, mean, errorText)) return false;
    values.push_back(massBasis ? density * mean / 1000 : density);
    return true;
}

void ComputeActivities(const MaterialState& state, std::vector<double>& values) {
    for (const MaterialCompound& compound : state.compounds) {
        const bool isGas = state.model == PhaseModel::IdealGas;
        const double coefficient = isGas ? state.pressure / state.standardPressure : compound.activityCoefficient;
        values.push_back(compound.moleFraction * coefficient);
    }
}

bool ComputeFugacities(const MaterialState& state, std::vector<double>& values, std::u16string& errorText) {
    for (const MaterialCompound& compound : state.compounds) {
        if (state.model == PhaseModel::IdealGas) {
            values.push_back(compound.moleFraction * state.pressure);
            continue;
        }
        if (!compound.vapourPressure) {
            errorText =
                u"the fugacity of the liquid is not known: the document gives no vapourPressure of " + compound.id;
            return false;
        }
        values.push_back(compound.moleFraction * compound.activityCoefficient * *compound.vapourPressure);
    }
    return true;
}

}  // namespace

const MaterialProperty* FindMaterialProperty(std::u16string_view name) {
    for (const MaterialProperty& property : materialProperties) {
        if (SameName(name, property.name)) return &property;
    }
    return nullptr;
}

std::vector<std::u16string> MaterialPropertyNames(bool calculatedOnly) {
    std::vector<std::u16string> names;
    for (const MaterialProperty& property : materialProperties) {
        if (!calculatedOnly || !property.isHeld) names.emplace_back(property.name);
    }
    return names;
}

bool ComputeMaterialProperty(const MaterialState& state, const MaterialProperty& property, bool massBasis,
                             std::vector<double>& values, std::u16string& errorText) {
    values.clear();
    if (property.name == u"temperature") {
        values.push_back(state.temperature);
    } else if (property.name == u"pressure") {
        values.push_back(state.pressure);
    } else if (property.name == u"fraction") {
        return ComputeFractions(state, massBasis, values, errorText);
    } else if (property.name == u"density") {
        return ComputeDensity(state, massBasis, values, errorText);
    } else if (property.name == u"activity") {
        ComputeActivities(state, values);
    } else {
        return ComputeFugacities(state, values, errorText);
    }
    return true;
}

}  // namespace rekasim
