// SPDX-License-Identifier: MIT
// A package and the entries of a property bag that it is written as.

#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/Builders.h"
#include "support/FakeBag.h"

namespace reka::test {

using Lines = std::vector<std::string>;

inline const char* const fixedKeys[] = {"Name",
                                        "Description",
                                        "PCDFile",
                                        "compoundId",
                                        "compoundName",
                                        "compoundCAS",
                                        "compoundFormula",
                                        "compoundMolecularWeight",
                                        "compoundCharge",
                                        "reactionID",
                                        "reactionPhase",
                                        "reactionType",
                                        "reactionRateBasis",
                                        "reactionRateEquation",
                                        "reactionEquilibriumBasis",
                                        "reactionEquilibriumConstantEquation",
                                        "reactionHeatEquation"};
constexpr std::size_t endOfCompoundKeys = 9;
constexpr std::size_t endOfReactionKeys = 17;

/// The calls for the first `count` fixed keys, and those for `others` behind them.
inline Lines Calls(const std::string& operation, std::size_t count, const Lines& others = {}) {
    Lines calls;
    for (std::size_t i = 0; i < count; ++i) calls.push_back(operation + " " + fixedKeys[i]);
    for (const std::string& key : others) calls.push_back(operation + " " + key);
    return calls;
}

/// Ethanol and argon with one reaction of each kind.
inline std::unique_ptr<ReactionPackDefinition> MakeSample() {
    auto definition = MakePackage({u"Ethanol", u"Argon"});
    definition->description = CBstr::Make(u"A sample");
    definition->pcdFile = u"C:\\data\\x.pcd";
    definition->thermoVersion = ThermoVersion::Version11;
    definition->compounds[0]->casNumber = CBstr::Make(u"64-17-5");
    definition->compounds[0]->formula = CBstr::Make(u"C2H6O");
    definition->compounds[0]->molecularWeight = 46.069;
    definition->compounds[1]->charge = -1.0;
    ReactionDefinition& kinetic = AddKinetic(*definition, u"K", u"2*T");
    kinetic.stoichiometry = {-1.0, 0.5};
    kinetic.rateBasis = RateBasis::Heterogeneous;
    SetHeat(*definition, kinetic, u"-1e3");
    ReactionDefinition& equilibrium = AddEquilibrium(*definition, u"E", u"EXP(X(Argon))");
    equilibrium.equilibriumBasis = EquilibriumBasis::MoleFraction;
    equilibrium.phase.Reset();
    return definition;
}

}  // namespace reka::test
