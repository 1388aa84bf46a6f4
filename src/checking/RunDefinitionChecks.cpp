// SPDX-License-Identifier: MIT
// The order of the checks: what concerns the package first, then reaction by reaction what belongs to it, from the
// cheapest to what asks the user. A user who mends one fault after the other meets them from top to bottom.

#include "checking/RunDefinitionChecks.h"

#include "checking/DefinitionChecks.h"

namespace reka {

namespace {

bool CheckReaction(const ReactionPackDefinition& definition, CCompoundLookup& compounds, ReactionDefinition& reaction,
                   CDefinitionFormulas* formulas, std::u16string& errorText, IUserMessages& ui) {
    reaction.DiscardExpressions();
    if (!CheckPhase(reaction, errorText)) return false;
    if (formulas && !CheckElementBalance(*formulas, reaction, ui, errorText)) return false;
    return CheckMassBalance(definition, reaction, errorText) && ParseTypeExpression(compounds, reaction, errorText) &&
           ParseHeat(compounds, reaction, errorText) && ConfirmHeatDependencies(reaction, ui, errorText);
}

}  // namespace

bool RunDefinitionChecks(ReactionPackDefinition& definition, const TakenNames* taken, std::u16string& errorText,
                         IUserMessages& ui) {
    if (!CheckName(definition, errorText)) return false;
    if (taken && !CheckNameIsFree(definition, *taken, errorText)) return false;
    if (!CheckCompounds(definition, errorText)) return false;
    const bool hasAllFormulas = HasAllFormulas(definition);
    // Nobody can edit the compounds while a question to the user is open.
    CDefinitionFormulas formulas(definition);
    CCompoundLookup compounds(definition);
    for (const auto& reaction : definition.reactions) {
        if (!CheckReaction(definition, compounds, *reaction, hasAllFormulas ? &formulas : nullptr, errorText, ui))
            return false;
    }
    definition.AllocateWorkArrays();
    return true;
}

}  // namespace reka
