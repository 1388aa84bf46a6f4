// SPDX-License-Identifier: MIT
// The table of the three properties, and the words of their failures. They stand apart from the call that uses them, so
// that whoever calculates without a simulator refuses what a package refuses, in its words.

#include "package/ReactionProperty.h"

namespace reka {

namespace {

constexpr ReactionProperty reactionProperties[] = {
    {u"ReactionRate", &ReactionDefinition::rateExpression, true,
     u"Unsupported basis for property ReactionRate; currently only mole basis is supported", false,
     ReactionType::Kinetic, u"\" is not a kinetic reaction, cannot calculate property ReactionRate"},
    {u"ChemicalEquilibriumConstant", &ReactionDefinition::equilibriumConstantExpression, false,
     u"Unsupported basis for property ChemicalEquilibriumConstant; basis should be NULL, and value is defined in terms "
     u"of GetReactionConcBasis",
     false, ReactionType::Equilibrium,
     u"\" is not an equilibrium reaction, cannot calculate property ChemicalEquilibriumConstant"},
    {u"EnthalpyOfReaction", &ReactionDefinition::heatExpression, true,
     u"Unsupported basis for property EnthalpyOfReaction; currently only mole basis is supported", true,
     ReactionType::Kinetic, u""},
};

ReactionRefusal Refuse(const std::u16string& text) {
    return {text, text};
}

ReactionRefusal RefusalWithoutExpression(const ReactionProperty& property, const ReactionDefinition& reaction) {
    if (property.expression == &ReactionDefinition::rateExpression) {
        return {u"no expression", u"rate expression not defined for requested reaction"};
    }
    if (property.expression == &ReactionDefinition::equilibriumConstantExpression) {
        return {u"no expression", u"equilibrium constant expression not defined for requested reaction"};
    }
    return {u"undefined", u"heat of reaction is not defined for reaction \"" + StringFromBstr(reaction.id.Get()) +
                              u"\". Cannot calculation property EnthalpyOfReaction"};
}

}  // namespace

const ReactionProperty* FindReactionProperty(BSTR name) {
    for (const ReactionProperty& property : reactionProperties) {
        if (SameUsualText(name, property.name)) return &property;
    }
    return nullptr;
}

ReactionRefusal RefusalOf(const ReactionProperty& property, const ReactionDefinition& reaction, BSTR phase) {
    if (!property.acceptsAnyType && reaction.type != property.type) {
        return Refuse(u"Reaction \"" + StringFromBstr(reaction.id.Get()) + property.typeError);
    }
    if (!SameUsualText(reaction.phase.Get(), phase)) {
        return {u"phase mismatch", u"Reaction \"" + StringFromBstr(reaction.id.Get()) + u"\" is defined for phase " +
                                       StringFromBstr(reaction.phase.Get()) +
                                       u"; cannot perform calculation for requested phase " + StringFromBstr(phase)};
    }
    return RefusalWithoutExpression(property, reaction);
}

std::u16string TextOfFailedCalculation(BSTR property, BSTR reactionId, const std::u16string& reason) {
    return u"Failed to calculate " + StringFromBstr(property) + u" for reaction " + StringFromBstr(reactionId) + u": " +
           reason;
}

}  // namespace reka
