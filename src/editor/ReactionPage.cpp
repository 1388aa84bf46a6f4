// SPDX-License-Identifier: MIT
// Every change goes into the record at once. The trees of its expressions are left alone: the check of the definition
// makes them afresh.

#include "editor/ReactionPage.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <memory>
#include <numeric>
#include <utility>

#include "expression/parse/EvaluateScalarInput.h"
#include "platform/Holders.h"
#include "platform/HostArithmetic.h"
#include "platform/SameText.h"
#include "text/NumberText.h"

namespace reka {

namespace {

constexpr const char16_t* idTitle = u"Enter reaction ID:";

// The unit of a product of `power` concentrations in `amount` per cubic metre; a quotient for a negative power.
std::u16string AmountPerVolume(std::u16string_view amount, double power) {
    if (power > 0) return FormatUnitPower(amount, power) + u"/" + FormatUnitPower(u"m", 3 * power);
    return FormatUnitPower(u"m", -3 * power) + u"/" + FormatUnitPower(amount, -power);
}

struct ExpressionRow {
    std::u16string ReactionDefinition::*text;
    const char16_t* item;  // in its editor, in front of the identifier of the reaction
    std::u16string (*unit)(const ReactionDefinition& reaction);
};
constexpr ExpressionRow expressionRows[] = {
    {&ReactionDefinition::rateEquation, u"Rate of reaction", RateUnit},
    {&ReactionDefinition::equilibriumConstantEquation, u"Equilibrium constant reaction", EquilibriumUnit},
    {&ReactionDefinition::heatEquation, u"Heat of reaction",
     [](const ReactionDefinition& /*reaction*/) -> std::u16string { return u"J/mol"; }},
};
static_assert(std::size(expressionRows) == reactionExpressionCount);

const ExpressionRow& RowOf(ReactionExpression expression) {
    return expressionRows[static_cast<std::size_t>(expression)];
}

}  // namespace

std::u16string FormatUnitPower(std::u16string_view base, double power) {
    constexpr double tolerance = 1e-10;
    std::u16string text(base);
    if (!(std::fabs(power - 1.0) > tolerance)) return text;
    if (std::fabs(power - 2.0) < tolerance) return text + u"²";
    if (std::fabs(power - 3.0) < tolerance) return text + u"³";
    return text + u"^" + FormatGeneral(power);
}

std::u16string RateUnit(const ReactionDefinition& reaction) {
    return reaction.rateBasis == RateBasis::Heterogeneous ? u"mol/s/kg cat" : u"mol/s/m³";
}

std::u16string EquilibriumUnit(const ReactionDefinition& reaction) {
    const COwnArithmetic arithmetic;
    const double sum = std::accumulate(reaction.stoichiometry.begin(), reaction.stoichiometry.end(), 0.0);
    if (!(sum > 0) && !(sum < 0)) return {};
    switch (reaction.equilibriumBasis) {
        case EquilibriumBasis::Molarity:
            return AmountPerVolume(u"mol", sum);
        case EquilibriumBasis::Concentration:
            return AmountPerVolume(u"kg", sum);
        case EquilibriumBasis::Fugacity:
            return sum > 0 ? FormatUnitPower(u"Pa", sum) : u"1/" + FormatUnitPower(u"Pa", -sum);
        default:
            return {};
    }
}

CReactionPage::CReactionPage(ReactionPackDefinition& edited, IEditorUi& asked) : definition(edited), ui(asked) {}

ReactionDefinition* CReactionPage::Selected() const {
    const auto index = static_cast<std::size_t>(selection);  // a negative one is beyond any list
    return index < definition.reactions.size() ? definition.reactions[index].get() : nullptr;
}

std::int32_t CReactionPage::Selection() const {
    return Selected() ? selection : -1;
}

std::vector<std::u16string> CReactionPage::ReactionIds() const {
    std::vector<std::u16string> ids;
    for (const auto& reaction : definition.reactions) ids.emplace_back(reaction->id.View());
    return ids;
}

ReactionPageEnabled CReactionPage::Enabled() const {
    const ReactionDefinition* reaction = Selected();
    if (!reaction) return {};
    const bool isEquilibrium = reaction->type == ReactionType::Equilibrium;
    return {true, !isEquilibrium, isEquilibrium};
}

ReactionPageContent CReactionPage::Content() const {
    ReactionPageContent content;
    const ReactionDefinition* reaction = Selected();
    if (!reaction) return content;
    content.heading = reaction->id.View();
    for (std::size_t i = 0; i < definition.compounds.size(); ++i) {
        content.stoichiometry.push_back(
            {FormatGeneral(reaction->CoefficientOf(i)), std::u16string(definition.compounds[i]->id.View())});
    }
    content.isEquilibrium = reaction->type == ReactionType::Equilibrium;
    content.isHeterogeneous = reaction->rateBasis == RateBasis::Heterogeneous;
    std::transform(std::begin(expressionRows), std::end(expressionRows), content.expressions.begin(),
                   [reaction](const ExpressionRow& row) { return reaction->*row.text; });
    content.phase = reaction->phase.View();
    content.enabled = Enabled();
    return content;
}

void CReactionPage::SetExpression(ReactionExpression expression, std::u16string_view text) {
    if (ReactionDefinition* reaction = Selected()) reaction->*RowOf(expression).text = text;
}

void CReactionPage::SetPhase(std::u16string_view text) {
    if (ReactionDefinition* reaction = Selected()) reaction->phase = BstrFromString(text);
}

PageChange CReactionPage::SetIsEquilibrium(bool isEquilibrium) {
    ReactionDefinition* reaction = Selected();
    if (!reaction) return PageChange::Nothing;
    reaction->type = isEquilibrium ? ReactionType::Equilibrium : ReactionType::Kinetic;
    return PageChange::EnabledAndUnits;
}

PageChange CReactionPage::SetIsHeterogeneous(bool isHeterogeneous) {
    ReactionDefinition* reaction = Selected();
    if (!reaction) return PageChange::Nothing;
    reaction->rateBasis = isHeterogeneous ? RateBasis::Heterogeneous : RateBasis::Homogeneous;
    return PageChange::Units;
}

PageChange CReactionPage::SetEquilibriumBasis(EquilibriumBasis basis) {
    ReactionDefinition* reaction = Selected();
    if (!reaction) return PageChange::Nothing;
    reaction->equilibriumBasis = basis;
    return PageChange::Units;
}

PageChange CReactionPage::EditCoefficient(std::size_t row, std::u16string_view text) {
    ReactionDefinition* reaction = Selected();
    if (!reaction || row >= reaction->stoichiometry.size() || text.empty()) return PageChange::Nothing;
    std::u16string reason;  // shown nowhere
    if (!EvaluateScalarInput(text, reaction->stoichiometry[row], reason)) return PageChange::Nothing;
    return PageChange::Page;
}

bool CReactionPage::IsIdFree(std::u16string_view id, const ReactionDefinition* except) const {
    for (const auto& reaction : definition.reactions) {
        if (reaction.get() != except && SameText(reaction->id.View(), id)) {
            ui.ShowError(u"The reaction ID must be unique");
            return false;
        }
    }
    return true;
}

PageChange CReactionPage::Create() {
    CBstr id;
    if (!ui.AskForText(idTitle, id) || id.View().empty()) return PageChange::Nothing;
    if (!IsIdFree(id.View(), nullptr)) return PageChange::Nothing;
    auto reaction = std::make_unique<ReactionDefinition>(definition.compounds.size());
    reaction->id = std::move(id);
    definition.reactions.push_back(std::move(reaction));
    selection = static_cast<std::int32_t>(definition.reactions.size()) - 1;
    return PageChange::ListAndPage;
}

PageChange CReactionPage::TakeId(ReactionDefinition& reaction, CBstr id) {
    if (!IsIdFree(id.View(), &reaction)) return PageChange::Nothing;
    reaction.id = std::move(id);
    return PageChange::ListAndPage;
}

PageChange CReactionPage::RenameByButton() {
    ReactionDefinition* reaction = Selected();
    if (!reaction) return PageChange::Nothing;
    CBstr id = CBstr::CopyOf(reaction->id.Get());
    if (!ui.AskForText(idTitle, id) || id.View().empty()) return PageChange::Nothing;
    if (SameText(id.View(), reaction->id.View())) return PageChange::Nothing;  // other letters of the same name too
    return TakeId(*reaction, std::move(id));
}

// Takes every text that the button takes, and two more: an empty one, which leaves the reaction without an identifier,
// and the present one in other letters.
PageChange CReactionPage::RenameByDoubleClick() {
    ReactionDefinition* reaction = Selected();
    if (!reaction) return PageChange::Nothing;
    CBstr id = CBstr::CopyOf(reaction->id.Get());
    if (!ui.AskForText(idTitle, id)) return PageChange::Nothing;
    return TakeId(*reaction, std::move(id));
}

PageChange CReactionPage::Delete() {
    const ReactionDefinition* reaction = Selected();
    if (!reaction) return PageChange::Nothing;
    const std::u16string question =
        u"Are you sure you want to permanently delete reaction " + std::u16string(reaction->id.View()) + u"?";
    if (ui.ShowMessage(question, u"Delete reaction:", messagestyle::carefulQuestion) != MessageAnswer::Yes) {
        return PageChange::Nothing;
    }
    definition.reactions.erase(definition.reactions.begin() + selection);
    selection = 0;
    return PageChange::ListAndPage;
}

bool CReactionPage::EditExpression(ReactionExpression expression) {
    ReactionDefinition* reaction = Selected();
    if (!reaction) return false;
    const auto& [member, itemStart, unit] = RowOf(expression);
    const std::u16string item = std::u16string(itemStart) + u" \"" + std::u16string(reaction->id.View()) + u"\"";
    std::u16string text = reaction->*member;
    if (!ui.EditExpression(definition, item, unit(*reaction), text)) return false;
    reaction->*member = std::move(text);
    return true;
}

std::u16string CReactionPage::ExpressionText(ReactionExpression expression) const {
    const ReactionDefinition* reaction = Selected();
    return reaction ? reaction->*RowOf(expression).text : std::u16string();
}

bool CReactionPage::RunRateWizard() {
    ReactionDefinition* reaction = Selected();
    if (!reaction) return false;
    std::u16string text;
    if (!ui.AskForRate(*reaction, definition, text)) return false;
    reaction->rateEquation = std::move(text);
    return true;
}

}  // namespace reka
