// SPDX-License-Identifier: MIT
// The reactions page of the editor: what it shows of the definition, and what each of its controls writes into it.
// Nothing is validated here besides the identifiers: expressions and phases stay as the user left them.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "editor/EditorUi.h"
#include "records/Definition.h"

namespace reka {

struct ListColumn {
    const char16_t* label;
    int width;  // pixels
};
constexpr ListColumn stoichiometryColumns[] = {{u"Stoichiometry", 80}, {u"Compound", 180}};

/// What the phase field offers; any other text can be typed.
constexpr const char16_t* phaseTexts[] = {u"Liquid", u"Vapor", u"Solid"};

/// The expressions of a reaction.
enum class ReactionExpression : std::int32_t { Rate = 0, EquilibriumConstant = 1, Heat = 2 };
constexpr std::size_t reactionExpressionCount = 3;

/// "mol/s/m³", or "mol/s/kg cat" for a heterogeneous reaction.
std::u16string RateUnit(const ReactionDefinition& reaction);

/// "mol²/m^6" for coefficients 1 and 1 on the molarity basis. Empty for no unit: where the coefficients add up to
/// exactly 0, and on a basis that has none.
std::u16string EquilibriumUnit(const ReactionDefinition& reaction);

/// "m", "m²", "m³", "m^6"; the power as users see numbers.
std::u16string FormatUnitPower(std::u16string_view base, double power);

/// Which controls can be used. The list of reactions and Create always can.
struct ReactionPageEnabled {
    bool reaction = false;     // all the others, with these exceptions:
    bool rate = false;         // the rate with its wizard and its editor
    bool equilibrium = false;  // the equilibrium constant with its editor, and the basis
    bool operator==(const ReactionPageEnabled&) const = default;
};

struct StoichiometryRow {
    std::u16string coefficient;
    std::u16string compoundId;
    bool operator==(const StoichiometryRow&) const = default;
};

/// What the page shows besides the list of reactions.
struct ReactionPageContent {
    std::u16string heading = u"<no reaction selected>";
    std::vector<StoichiometryRow> stoichiometry;
    bool isEquilibrium = false;
    bool isHeterogeneous = false;
    std::array<std::u16string, reactionExpressionCount> expressions;  // by ReactionExpression
    std::u16string phase;
    ReactionPageEnabled enabled;
};

/// What of the page an event has changed, to be shown again.
enum class PageChange : std::int32_t {
    Nothing,
    Units,            // the units of rate and equilibrium constant
    EnabledAndUnits,  // the same, and which controls can be used
    Page,             // all but the list of reactions
    ListAndPage,      // the list of reactions, its selection, and the page
};

/// The page of one definition under edit, which outlives it, as `asked` does. An event acts on the selected reaction
/// and does nothing without one. May throw std::bad_alloc, and the definition is then as it was.
class CReactionPage {
public:
    /// Selects the first reaction.
    CReactionPage(ReactionPackDefinition& edited, IEditorUi& asked);

    /// The identifiers in the list of reactions.
    std::vector<std::u16string> ReactionIds() const;

    /// The index of the selected reaction; -1 for none.
    std::int32_t Selection() const;
    /// Any index that isn't one of a reaction selects none.
    void Select(std::int32_t index) { selection = index; }
    /// Null without a selection.
    const ReactionDefinition* SelectedReaction() const { return Selected(); }

    /// The basis and the two units are shown for a reaction alone: without one they stay as they are on the page.
    ReactionPageContent Content() const;
    ReactionPageEnabled Enabled() const;

    // Changes in the fields.
    void SetExpression(ReactionExpression expression, std::u16string_view text);
    /// A typed text or a chosen one; an empty one makes the phase absent.
    void SetPhase(std::u16string_view text);
    PageChange SetIsEquilibrium(bool isEquilibrium);
    PageChange SetIsHeterogeneous(bool isHeterogeneous);
    PageChange SetEquilibriumBasis(EquilibriumBasis basis);

    /// Whether the editing of a coefficient in the list may start.
    bool CanEditCoefficient() const { return Selected() != nullptr; }
    /// Takes the text that was typed for the coefficient of a row. A text that is no number changes nothing, without a
    /// word: the row keeps its old text.
    PageChange EditCoefficient(std::size_t row, std::u16string_view text);

    // The buttons.
    PageChange Create();
    PageChange RenameByButton();
    PageChange RenameByDoubleClick();
    PageChange Delete();

    // The buttons of the expressions. True: the text of the expression, of the rate for the wizard, has changed, and
    // its field is to show it.
    bool EditExpression(ReactionExpression expression);
    bool RunRateWizard();
    /// Empty without a selection.
    std::u16string ExpressionText(ReactionExpression expression) const;

private:
    ReactionDefinition* Selected() const;
    bool IsIdFree(std::u16string_view id, const ReactionDefinition* except) const;
    PageChange TakeId(ReactionDefinition& reaction, CBstr id);

    ReactionPackDefinition& definition;
    IEditorUi& ui;
    std::int32_t selection = 0;
};

}  // namespace reka
