// SPDX-License-Identifier: MIT
// What rekasim prints of a package.

#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "CPackageSession.h"

namespace rekasim {

/// The values of all reactions at one temperature, as far as they have been calculated.
struct ReactionValues {
    double temperature = 0;               // K
    std::vector<std::string> mainValues;  // rate or equilibrium constant, one per reaction
    std::vector<std::string> heats;       // heat of reaction, "-" where there is none
};

/// Each reaction with its equation, kind, phase, basis and coefficients.
void WriteReactions(std::ostream& out, const std::vector<Reaction>& reactions, const MaterialState& material);
/// The compounds that take part in the reactions, with CAS number and charge.
void WriteCompounds(std::ostream& out, const std::vector<Reaction>& reactions);
/// The material at the temperatures (K, at least one) of the table.
void WriteMaterial(std::ostream& out, const MaterialState& material, const std::vector<double>& temperatures);
/// One line per temperature, with two columns per reaction.
void WriteValues(std::ostream& out, const std::vector<Reaction>& reactions, const std::vector<ReactionValues>& lines);

}  // namespace rekasim
