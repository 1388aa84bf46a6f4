// SPDX-License-Identifier: MIT
// The names of the entries of a property bag, in the order in which they are written.

#pragma once

#include <string>
#include <string_view>

namespace reka::bagkey {

constexpr const char16_t* name = u"Name";
constexpr const char16_t* description = u"Description";
constexpr const char16_t* pcdFile = u"PCDFile";

constexpr const char16_t* compoundId = u"compoundId";
constexpr const char16_t* compoundName = u"compoundName";
constexpr const char16_t* compoundCas = u"compoundCAS";
constexpr const char16_t* compoundFormula = u"compoundFormula";
constexpr const char16_t* compoundMolecularWeight = u"compoundMolecularWeight";
constexpr const char16_t* compoundCharge = u"compoundCharge";

constexpr const char16_t* reactionId = u"reactionID";
constexpr const char16_t* reactionPhase = u"reactionPhase";
constexpr const char16_t* reactionType = u"reactionType";
constexpr const char16_t* reactionRateBasis = u"reactionRateBasis";
constexpr const char16_t* reactionRateEquation = u"reactionRateEquation";
constexpr const char16_t* reactionEquilibriumBasis = u"reactionEquilibriumBasis";
constexpr const char16_t* reactionEquilibriumConstantEquation = u"reactionEquilibriumConstantEquation";
constexpr const char16_t* reactionHeatEquation = u"reactionHeatEquation";

/// One entry per reaction follows, named after the reaction's identifier.
inline std::u16string Stoichiometry(std::u16string_view identifier) {
    return u"stoichiometry[" + std::u16string(identifier) + u"]";
}

constexpr const char16_t* thermoVersion = u"thermoVersion";

}  // namespace reka::bagkey
