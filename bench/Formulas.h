// SPDX-License-Identifier: MIT
// The formulas that are measured, in the three forms that are compared.

#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "records/Definition.h"

namespace reka::bench {

/// The formula in C++, with the refusals of the expression language.
using NativeFormula = bool (*)(double& result, const ReactionPackDefinition& definition, std::u16string& errorText);

struct Formula {
    const char* name;
    const char16_t* text;
    NativeFormula native;
};

/// Six formulas from a single Arrhenius term to a law of surface kinetics.
std::span<const Formula> Formulas();

/// The text as the expression language wants it, in which the letters a and c are words of their own: the compounds are
/// called aa to dd.
std::u16string DoubleCompounds(std::u16string_view text);

/// The definition that the formulas are for: compounds aa to dd, with working values.
std::unique_ptr<ReactionPackDefinition> MakeBenchDefinition();
/// The same with compounds of other names.
std::unique_ptr<ReactionPackDefinition> MakeBenchDefinition(const std::vector<std::u16string>& compoundNames);

/// The temperature in K and the pressure in Pa of the n-th evaluation.
double TemperatureAt(std::size_t n);
double PressureAt(std::size_t n);

}  // namespace reka::bench
