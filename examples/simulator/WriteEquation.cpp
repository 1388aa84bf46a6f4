// SPDX-License-Identifier: MIT
// An equation is written from the coefficients alone, since the package has no text of it. Units follow from the sum of
// the coefficients, which decimal fractions leave a little beside the whole number that is meant, so they are compared
// with a tolerance.

#include "WriteEquation.h"

#include <cmath>

#include "FormatNumber.h"
#include "SameName.h"
#include "text/Utf8.h"

namespace rekasim {

namespace {

std::string WriteCompound(const std::u16string& id, const MaterialState& material) {
    for (const MaterialCompound& compound : material.compounds) {
        if (SameName(compound.id, id) && !compound.formula.empty()) return reka::Utf8FromUtf16(compound.formula);
    }
    return reka::Utf8FromUtf16(id);
}

/// The side of the equation whose coefficients have the given sign.
std::string WriteSide(const Reaction& reaction, double sign, const MaterialState& material) {
    std::string side;
    for (const Participant& participant : reaction.participants) {
        const double amount = participant.coefficient * sign;
        if (!(amount > 0)) continue;
        if (!side.empty()) side += " + ";
        if (amount != 1) side += FormatNumber(amount) + " ";
        side += WriteCompound(participant.id, material);
    }
    return side;
}

}  // namespace

std::string WriteEquation(const Reaction& reaction, const MaterialState& material) {
    return WriteSide(reaction, -1, material) + " = " + WriteSide(reaction, 1, material);
}

std::string RateUnit(const Reaction& reaction) {
    return reaction.isHeterogeneous ? "mol/(kg s)" : "mol/(m3 s)";
}

std::string EquilibriumUnit(const Reaction& reaction) {
    constexpr double rounding = 1e-10;
    double power = 0;
    for (const Participant& participant : reaction.participants) power += participant.coefficient;
    if (std::fabs(power) < rounding) return {};
    std::string base;
    if (reaction.concentrationBasis == u"Molarity") base = "(mol/m3)";
    if (reaction.concentrationBasis == u"Concentration") base = "(kg/m3)";
    if (reaction.concentrationBasis == u"Fugacity") base = "Pa";
    const bool isPlain = base.empty() || std::fabs(power - 1) < rounding;
    return isPlain ? base : base + "^" + FormatNumber(power);
}

}  // namespace rekasim
