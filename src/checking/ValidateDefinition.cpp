// The order of the checks.

#include "checking/ValidateDefinition.h"

#include <exception>

#include "capeopen/ArrayHelpers.h"
#include "checking/DefinitionChecks.h"
#include "platform/OutOfMemoryText.h"

namespace reka {

namespace {

bool ValidateReaction(CCompoundLookup& compounds, ReactionDefinition& reaction, bool hasAllFormulas,
                      std::u16string& errorText, IDefinitionCheckUi& ui) {
    const ReactionPackDefinition& definition = compounds.Definition();
    reaction.DiscardExpressions();
    if (!CheckPhase(reaction, errorText)) return false;
    if (hasAllFormulas && !CheckElementBalance(definition, reaction, ui, errorText)) return false;
    return CheckMassBalance(definition, reaction, errorText) && ParseTypeExpression(compounds, reaction, errorText) &&
           ParseHeat(compounds, reaction, errorText) && ConfirmHeatDependencies(reaction, ui, errorText);
}

bool Validate(ReactionPackDefinition& definition, const TemplateStore* templateStore, bool storeAllowed,
              std::u16string& errorText, IDefinitionCheckUi& ui) {
    if (!CheckName(definition, errorText)) return false;
    if (!storeAllowed && templateStore &&
        !CheckNameIsFree(definition, templateStore->templates, templateStore->templateUnderEdit, errorText)) {
        return false;
    }
    if (!CheckCompounds(definition, errorText)) return false;
    const bool hasAllFormulas = HasAllFormulas(definition);
    CCompoundLookup compounds(definition);  // nobody can edit them while a question to the user is open
    for (const auto& reaction : definition.reactions) {
        if (!ValidateReaction(compounds, *reaction, hasAllFormulas, errorText, ui)) return false;
    }
    definition.AllocateWorkArrays();
    return true;
}

}  // namespace

bool ValidateDefinition(ReactionPackDefinition& definition, const TemplateStore* templateStore, bool storeAllowed,
                        std::u16string_view nameText, std::u16string_view descriptionText, std::int32_t versionIndex,
                        std::u16string& errorText, IDefinitionCheckUi& ui) noexcept {
    try {
        CBstr name = BstrFromString(nameText);
        CBstr description = BstrFromString(descriptionText);
        definition.name = std::move(name);
        definition.description = std::move(description);
        definition.thermoVersion = versionIndex == 1 ? ThermoVersion::Version11 : ThermoVersion::Version10;
        return Validate(definition, templateStore, storeAllowed, errorText, ui);
    } catch (const std::exception&) {
        TellOutOfMemory(errorText);
        return false;
    }
}

}  // namespace reka
