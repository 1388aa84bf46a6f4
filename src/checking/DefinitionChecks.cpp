// SPDX-License-Identifier: MIT
// Each check is a routine of its own, so that the editor can stop at the first fault and a report can list them all.
// Comparisons are written so that a NaN passes the balances: whatever it is, it is no imbalance. The sums run under the
// component's own arithmetic, since what a user is told must not depend on the host's rounding.

#include "checking/DefinitionChecks.h"

#include <cmath>
#include <cstdint>
#include <string_view>
#include <utility>

#include "expression/parse/ParseExpression.h"
#include "formula/StructureFormula.h"
#include "platform/Holders.h"
#include "platform/HostArithmetic.h"
#include "platform/SameText.h"
#include "text/NumberText.h"

namespace reka {

namespace {

constexpr double elementTolerance = 0.001;  // atoms
constexpr double massTolerance = 0.05;      // g/mol

const char16_t* const warningCaption = u"Warning:";

/// The dependencies that a heat of reaction is asked about, in the order of the questions.
constexpr struct {
    std::uint32_t bit;
    const char16_t* words;
} heatDependencies[] = {
    {dependency::molarity, u"\" depends on molarity."}, {dependency::moleFraction, u"\" depends on mole fraction."},
    {dependency::activity, u"\" depends on activity."}, {dependency::temperature, u"\" depends on temperature."},
    {dependency::pressure, u"\" depends on pressure."},
};

/// Adds up the elements of a reaction. Null, or the compound with a formula that can't be read.
const CompoundDefinition* AddElements(CDefinitionFormulas& formulas, const ReactionDefinition& reaction,
                                      CElementBalance& balance) {
    const COwnArithmetic arithmetic;
    const ReactionPackDefinition& definition = formulas.Definition();
    for (std::size_t i = 0; i < definition.compounds.size(); ++i) {
        const double coefficient = reaction.CoefficientOf(i);
        if (coefficient == 0.0) continue;
        const std::vector<FormulaPart>* const parts = formulas.PartsOf(i);
        if (!parts) return definition.compounds[i].get();
        balance.Add(*parts, coefficient);
    }
    return nullptr;
}

/// The elements that aren't balanced, as "C (1) and H (-2)"; empty if all are.
std::u16string ListMismatches(const CElementBalance& balance) {
    const COwnArithmetic arithmetic;
    std::u16string list;
    for (const ElementAmount& element : balance) {
        if (!(std::fabs(element.amount) > elementTolerance)) continue;
        if (!list.empty()) list += u" and ";
        list += element.symbol + u" (" + FormatGeneral(element.amount) + u")";
    }
    return list;
}

std::u16string IdOf(const ReactionDefinition& reaction) {
    return std::u16string(reaction.id.View());
}

/// Parses `text` into `expression`, which an empty text leaves as it is.
bool ParseInto(CCompoundLookup& compounds, const ReactionDefinition& reaction, const std::u16string& text,
               const char16_t* prefix, std::unique_ptr<ExpressionRef>& expression, std::u16string& errorText) {
    if (text.empty()) return true;
    std::u16string parserText;
    ExpressionTree tree = ParseExpression(compounds, text, parserText, nullptr);
    if (!tree) {
        errorText = prefix + IdOf(reaction) + u":\r\n" + parserText;
        return false;
    }
    expression = std::make_unique<ExpressionRef>(std::move(tree));
    return true;
}

}  // namespace

bool CheckName(const ReactionPackDefinition& definition, std::u16string& errorText) {
    if (!definition.name.View().empty()) return true;
    errorText = u"Reaction package name cannot be empty";
    return false;
}

bool CheckNameIsFree(const ReactionPackDefinition& definition, const TakenNames& taken, std::u16string& errorText) {
    for (const auto& other : taken.templates) {
        if (other.get() == taken.except || !SameText(other->name.Get(), definition.name.Get())) continue;
        errorText = u"Reaction package name \"" + std::u16string(definition.name.View()) +
                    u"\"is already used, and must be unique";
        return false;
    }
    return true;
}

bool CheckCompounds(const ReactionPackDefinition& definition, std::u16string& errorText) {
    if (definition.compounds.size() >= 2) return true;
    errorText = u"At least two compounds must be present";
    return false;
}

bool CheckPhase(const ReactionDefinition& reaction, std::u16string& errorText) {
    if (!reaction.phase.View().empty()) return true;
    errorText = u"No phase defined for reaction " + IdOf(reaction);
    return false;
}

bool HasAllFormulas(const ReactionPackDefinition& definition) {
    for (const auto& compound : definition.compounds) {
        if (compound->formula.IsAbsent()) return false;
    }
    return true;
}

const std::vector<FormulaPart>* CDefinitionFormulas::PartsOf(std::size_t compound) {
    Formula& formula = formulas[compound];
    if (!formula.isKnown) {
        formula.parts.clear();  // of a reading for which memory ran out
        formula.isRead = ReadFormulaParts(definition.compounds[compound]->formula.View(), formula.parts);
        formula.isKnown = true;
    }
    return formula.isRead ? &formula.parts : nullptr;
}

bool CheckElementBalance(CDefinitionFormulas& formulas, const ReactionDefinition& reaction, IUserMessages& ui,
                         std::u16string& errorText) {
    CElementBalance balance;
    if (const CompoundDefinition* const unread = AddElements(formulas, reaction, balance)) {
        ui.ShowWarning(u"Parse error in structure formula " + std::u16string(unread->formula.View()) +
                           u" for compound " + std::u16string(unread->name.View()) +
                           u"; unable to perform element balance check.",
                       warningCaption);
        return true;
    }
    errorText = ListMismatches(balance);
    if (errorText.empty()) return true;
    errorText = u"Element balance mismatch detected for " + errorText + u" in reaction " + IdOf(reaction);
    return false;
}

bool CheckMassBalance(const ReactionPackDefinition& definition, const ReactionDefinition& reaction,
                      std::u16string& errorText) {
    const COwnArithmetic arithmetic;
    bool hasParticipants = false;
    double sum = 0.0;
    for (std::size_t i = 0; i < definition.compounds.size(); ++i) {
        const double coefficient = reaction.CoefficientOf(i);
        if (coefficient == 0.0) continue;
        hasParticipants = true;
        sum += coefficient * definition.compounds[i]->molecularWeight;
    }
    if (!hasParticipants) {
        errorText = u"No reactants or products for reaction " + IdOf(reaction);
        return false;
    }
    if (!(std::fabs(sum) > massTolerance)) return true;
    errorText = u"Mass balance error in reaction " + IdOf(reaction);
    return false;
}

bool ParseTypeExpression(CCompoundLookup& compounds, ReactionDefinition& reaction, std::u16string& errorText) {
    if (reaction.type == ReactionType::Kinetic) {
        return ParseInto(compounds, reaction, reaction.rateEquation,
                         u"error parsing rate expression for kinetic reaction ", reaction.rateExpression, errorText);
    }
    return ParseInto(compounds, reaction, reaction.equilibriumConstantEquation,
                     u"error parsing equilibrium constant expression for equilibrium reaction ",
                     reaction.equilibriumConstantExpression, errorText);
}

bool ParseHeat(CCompoundLookup& compounds, ReactionDefinition& reaction, std::u16string& errorText) {
    return ParseInto(compounds, reaction, reaction.heatEquation,
                     u"error parsing heat of reaction expression for reaction ", reaction.heatExpression, errorText);
}

bool ConfirmHeatDependencies(const ReactionDefinition& reaction, IUserMessages& ui, std::u16string& errorText) {
    if (!reaction.heatExpression) return true;
    for (const auto& [bit, words] : heatDependencies) {
        if ((reaction.heatExpression->dependencies & bit) == 0) continue;
        errorText = u"Heat of reaction for reaction \"" + IdOf(reaction) + words;
        if (!ui.AskToContinue(errorText + u" Heat of reactions depending on material properties may cause trouble "
                                          u"during reactor evaluations. Ignore?",
                              warningCaption)) {
            return false;
        }
    }
    return true;
}

}  // namespace reka
