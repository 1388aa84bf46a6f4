// SPDX-License-Identifier: MIT
// The order of the checks: what concerns the package first, then reaction by reaction what belongs to it, from the
// cheapest to what asks the user. A user who mends one fault after the other meets them from top to bottom.

#include "checking/RunDefinitionChecks.h"

#include "checking/DefinitionChecks.h"

namespace reka {

namespace {

// `part` is what is looked at, and so tells of a failure what it speaks of.
bool CheckReaction(const ReactionPackDefinition& definition, CCompoundLookup& compounds, ReactionDefinition& reaction,
                   CDefinitionFormulas* formulas, CheckedPart& part, std::u16string& errorText, IUserMessages& ui) {
    reaction.DiscardExpressions();
    part = CheckedPart::Phase;
    if (!CheckPhase(reaction, errorText)) return false;
    part = CheckedPart::Stoichiometry;
    if (formulas && !CheckElementBalance(*formulas, reaction, ui, errorText)) return false;
    if (!CheckMassBalance(definition, reaction, errorText)) return false;
    part = reaction.type == ReactionType::Kinetic ? CheckedPart::Rate : CheckedPart::EquilibriumConstant;
    if (!ParseTypeExpression(compounds, reaction, errorText)) return false;
    part = CheckedPart::Heat;
    return ParseHeat(compounds, reaction, errorText) && ConfirmHeatDependencies(reaction, ui, errorText);
}

}  // namespace

bool RunDefinitionChecks(ReactionPackDefinition& definition, const TakenNames* taken, std::u16string& errorText,
                         IUserMessages& ui, CheckSubject* subject) {
    CheckSubject unasked;
    auto& [part, index] = subject ? *subject : unasked;
    index = 0;
    part = CheckedPart::Name;
    if (!CheckName(definition, errorText)) return false;
    if (taken && !CheckNameIsFree(definition, *taken, errorText)) return false;
    part = CheckedPart::Compounds;
    if (!CheckCompounds(definition, errorText)) return false;
    const bool hasAllFormulas = HasAllFormulas(definition);
    // Nobody can edit the compounds while a question to the user is open.
    CDefinitionFormulas formulas(definition);
    CCompoundLookup compounds(definition);
    for (const auto& reaction : definition.reactions) {
        if (!CheckReaction(definition, compounds, *reaction, hasAllFormulas ? &formulas : nullptr, part, errorText, ui))
            return false;
        ++index;
    }
    definition.AllocateWorkArrays();
    return true;
}

}  // namespace reka
