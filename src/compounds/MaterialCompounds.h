// SPDX-License-Identifier: MIT
// Compounds out of a material template of the simulator: a material object is made of the template, and asked for its
// compounds.
//
// An object of the simulator that succeeds without giving anything has failed.

#pragma once

#include <string>
#include <vector>

#include "capeopen/OutsideHolders.h"
#include "records/Definition.h"

namespace reka {

/// The compounds of a material in its order: element i of each list belongs to the same compound.
struct MaterialCompounds {
    std::vector<std::u16string> names;  // as shown; the identifier where the material gives none
    std::vector<std::u16string> ids;
    std::vector<std::u16string> formulas;    // may be empty
    std::vector<std::u16string> casNumbers;  // may be empty
    std::vector<double> molecularWeights;    // g/mol; NaN where the material gives none
    std::vector<double> charges;             // NaN where the material gives none
};

/// Why there is no material object.
struct MaterialFailure {
    std::u16string text;  // empty where the user isn't told
    bool hasIcon = true;
};

/// Whether a number that a simulator gave is none: NaN, or the most negative number.
bool IsMissingNumber(double number);

/// The material templates that the simulator offers, in its order. Empty if it offers none, for whatever reason;
/// `context` may be null. May throw std::bad_alloc, as may all that follow. Each call to an object of the simulator
/// runs under its settings, which `arithmetic` has kept, in all that follow too.
std::vector<std::u16string> ListMaterialTemplates(IDispatch* context, const COwnArithmetic& arithmetic);

/// Makes a material object of the template of that name. Null: `failure` tells why.
CAskedInterface<IDispatch> MakeTemplateMaterial(IDispatch* context, const std::u16string& templateName,
                                                MaterialFailure& failure, const COwnArithmetic& arithmetic);

/// Asks `material` for its compounds, through the interfaces of `version` alone. False: `errorText` tells why, and the
/// lists are to be thrown away.
///
/// A charge that the material doesn't give is no failure, nor is any single constant in version 1.0. An identifier,
/// formula, name, molecular weight or CAS number of version 1.1 that isn't in a list of the right type and length is.
bool ReadMaterialCompounds(IDispatch& material, ThermoVersion version, MaterialCompounds& compounds,
                           std::u16string& errorText, const COwnArithmetic& arithmetic);

}  // namespace reka
