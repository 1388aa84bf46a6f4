// SPDX-License-Identifier: MIT
// Filling a definition from a property bag. The entries come in families of arrays, a row for each compound or
// reaction. An entry that won't do is told to the error log and passed over where the rest makes sense without it,
// since a document that was saved must open again.

#include "persistence/ReadBag.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <utility>

#include "capeopen/ArrayHelpers.h"
#include "expression/parse/ParseExpression.h"
#include "persistence/BagKeys.h"
#include "platform/SameText.h"

namespace reka {

namespace {

constexpr VARTYPE textArray = VT_ARRAY | VT_BSTR;
constexpr VARTYPE numberArray = VT_ARRAY | VT_R8;

/// One array of a family whose arrays run in parallel.
struct BagColumn {
    const char16_t* key;
    VARTYPE type;
    BagVariant values;

    /// The string at `row`, counted from 0 whatever the lower bound; absent for a null element.
    CBstr TextAt(std::int32_t row) const {
        CBstr text;
        if (!TakeString(values.value, static_cast<LONG>(values.lowerBound + row), text)) throw std::bad_alloc();
        return text;
    }

    double NumberAt(std::int32_t row) const {
        double number = 0.0;
        LONG index = static_cast<LONG>(values.lowerBound + row);
        if (FAILED(SafeArrayGetElement(values.value.parray, &index, &number))) throw std::bad_alloc();
        return number;
    }
};

/// The filling of one definition. It copies numbers and computes none, so it runs under the host's floating point
/// settings, which the bag and its error log expect; the parser and an expression's program see to their own.
class CBagFiller {
public:
    CBagFiller(ReactionPackDefinition& target, const BagReader& bagReader)
        : definition(target), reader(bagReader), compounds(target) {}

    bool Fill() {
        FillIdentity();
        bool isComplete = true;
        if (!FillCompounds(isComplete)) return false;
        if (!isComplete) return true;
        if (!FillReactions()) return false;
        for (const auto& reaction : definition.reactions) FillStoichiometry(*reaction);
        FillThermoVersion();
        return true;
    }

private:
    bool Read(const char16_t* key, BagVariant& value, VARTYPE type) { return ReadBagVariant(reader, key, value, type); }

    void Report(const char16_t* key, std::u16string_view text) { ReportBagError(reader, key, text); }

    void ReportInvalidValue(const char16_t* key, const CBstr& value) {
        Report(key, u"invalid value '" + std::u16string(value.View()) + u"'");
    }

    /// The string of that key; absent if there is none.
    CBstr ReadText(const char16_t* key) {
        BagVariant value;
        return Read(key, value, VT_BSTR) ? CBstr::CopyOf(value.value.bstrVal) : CBstr();
    }

    void FillIdentity() {
        CBstr text = ReadText(bagkey::name);
        if (!text.IsAbsent()) definition.name = std::move(text);
        text = ReadText(bagkey::description);
        if (!text.IsAbsent()) definition.description = std::move(text);
        text = ReadText(bagkey::pcdFile);
        if (!text.IsAbsent()) definition.pcdFile = StringFromBstr(text.Get());
    }

    /// Reads all arrays of a family, then compares their lengths with that of the first.
    template <std::size_t Count>
    bool ReadFamily(std::array<BagColumn, Count>& family) {
        for (BagColumn& column : family) {
            if (!Read(column.key, column.values, column.type)) return false;
        }
        for (const BagColumn& column : family) {
            if (column.values.count == family[0].values.count) continue;
            Report(column.key, u"array size mismatch");
            return false;
        }
        return true;
    }

    /// `isComplete` becomes false where a compound without an identifier ends the filling.
    bool FillCompounds(bool& isComplete) {
        std::array<BagColumn, 6> family = {{{bagkey::compoundId, textArray, {}},
                                            {bagkey::compoundName, textArray, {}},
                                            {bagkey::compoundCas, textArray, {}},
                                            {bagkey::compoundFormula, textArray, {}},
                                            {bagkey::compoundMolecularWeight, numberArray, {}},
                                            {bagkey::compoundCharge, numberArray, {}}}};
        if (!ReadFamily(family)) return false;
        const auto& [ids, names, casNumbers, formulas, weights, charges] = family;
        for (std::int32_t i = 0; i < ids.values.count; ++i) {
            auto compound = std::make_unique<CompoundDefinition>();
            compound->id = ids.TextAt(i);
            if (compound->id.IsAbsent()) {
                Report(bagkey::compoundId, u"empty compound IDs");
                isComplete = false;
                return true;
            }
            compound->name = names.TextAt(i);
            if (compound->name.IsAbsent()) compound->name = CBstr::CopyOf(compound->id.Get());
            compound->casNumber = casNumbers.TextAt(i);
            compound->formula = formulas.TextAt(i);
            compound->molecularWeight = weights.NumberAt(i);
            compound->charge = charges.NumberAt(i);
            definition.compounds.push_back(std::move(compound));
        }
        return true;
    }

    bool FillReactions() {
        std::array<BagColumn, 8> family = {{{bagkey::reactionId, textArray, {}},
                                            {bagkey::reactionPhase, textArray, {}},
                                            {bagkey::reactionType, textArray, {}},
                                            {bagkey::reactionRateBasis, textArray, {}},
                                            {bagkey::reactionRateEquation, textArray, {}},
                                            {bagkey::reactionEquilibriumBasis, textArray, {}},
                                            {bagkey::reactionEquilibriumConstantEquation, textArray, {}},
                                            {bagkey::reactionHeatEquation, textArray, {}}}};
        if (!ReadFamily(family)) return false;
        for (std::int32_t i = 0; i < family[0].values.count; ++i) {
            auto reaction = MakeReaction(family, i);
            if (reaction) definition.reactions.push_back(std::move(reaction));
        }
        return true;
    }

    /// The reaction of that row; null if it is left out, which has been reported then.
    std::unique_ptr<ReactionDefinition> MakeReaction(const std::array<BagColumn, 8>& family, std::int32_t row) {
        const auto& [ids, phases, types, rateBases, rates, bases, constants, heats] = family;
        auto reaction = std::make_unique<ReactionDefinition>(definition.compounds.size());
        reaction->id = ids.TextAt(row);
        if (reaction->id.IsAbsent()) {
            Report(bagkey::reactionId, u"empty reaction identifier");
            return nullptr;
        }
        reaction->phase = phases.TextAt(row);
        if (!TakeType(types.TextAt(row), *reaction) || !TakeRateBasis(rateBases.TextAt(row), *reaction)) return nullptr;
        TakeExpression(rates, row, *reaction, reaction->rateEquation, reaction->rateExpression);
        TakeEquilibriumBasis(bases.TextAt(row), *reaction);
        TakeExpression(constants, row, *reaction, reaction->equilibriumConstantEquation,
                       reaction->equilibriumConstantExpression);
        TakeExpression(heats, row, *reaction, reaction->heatEquation, reaction->heatExpression);
        return reaction;
    }

    bool TakeType(const CBstr& word, ReactionDefinition& reaction) {
        return TakeWord(bagkey::reactionType, word, reactionTypeWords, reaction.type);
    }

    bool TakeRateBasis(const CBstr& word, ReactionDefinition& reaction) {
        return TakeWord(bagkey::reactionRateBasis, word, rateBasisWords, reaction.rateBasis);
    }

    /// The value of the enum that has the word. False after another one has been reported.
    template <class Enum, std::size_t Count>
    bool TakeWord(const char16_t* key, const CBstr& word, const char16_t* const (&words)[Count], Enum& value) {
        for (std::size_t i = 0; i < Count; ++i) {
            if (!SameText(word.Get(), std::u16string_view(words[i]))) continue;
            value = static_cast<Enum>(i);
            return true;
        }
        ReportInvalidValue(key, word);
        return false;
    }

    /// The words of the bases are compared with case, unlike all others.
    void TakeEquilibriumBasis(const CBstr& word, ReactionDefinition& reaction) {
        for (std::int32_t basis = 0; basis < equilibriumBasisCount; ++basis) {
            if (word.View() == equilibriumBasisWords[basis]) {
                reaction.equilibriumBasis = static_cast<EquilibriumBasis>(basis);
                return;
            }
        }
        ReportInvalidValue(bagkey::reactionEquilibriumBasis, word);
    }

    /// A text that doesn't parse stays, without a tree.
    void TakeExpression(const BagColumn& column, std::int32_t row, const ReactionDefinition& reaction,
                        std::u16string& equation, std::unique_ptr<ExpressionRef>& expression) {
        const CBstr text = column.TextAt(row);
        if (text.IsAbsent()) return;
        equation = StringFromBstr(text.Get());
        std::u16string errorText;
        ExpressionTree tree = ParseExpression(compounds, equation, errorText, nullptr);
        if (tree) {
            expression = std::make_unique<ExpressionRef>(std::move(tree));
        } else {
            Report(column.key, u"error parsing expression for reaction " + std::u16string(reaction.id.View()) +
                                   u":\r\n" + errorText);
        }
    }

    /// Coefficients that aren't there, or too few or too many of them, stay zero.
    void FillStoichiometry(ReactionDefinition& reaction) {
        const std::u16string key = bagkey::Stoichiometry(reaction.id.View());
        BagColumn column = {key.c_str(), numberArray, {}};
        if (!Read(column.key, column.values, column.type)) return;
        if (column.values.count != static_cast<std::int32_t>(reaction.stoichiometry.size())) {
            Report(column.key, u"array size mismatch");
            return;
        }
        for (std::int32_t i = 0; i < column.values.count; ++i) {
            reaction.stoichiometry[static_cast<std::size_t>(i)] = column.NumberAt(i);
        }
    }

    void FillThermoVersion() {
        BagVariant value;
        if (!Read(bagkey::thermoVersion, value, VT_BSTR)) return;
        const CBstr word = CBstr::CopyOf(value.value.bstrVal);
        TakeWord(bagkey::thermoVersion, word, thermoVersionWords, definition.thermoVersion);
    }

    ReactionPackDefinition& definition;
    const BagReader& reader;
    CCompoundLookup compounds;  // for the expressions, which are read when all compounds are there
};

}  // namespace

bool ReadDefinitionFromBag(ReactionPackDefinition& definition, const BagReader& reader) {
    return CBagFiller(definition, reader).Fill();
}

}  // namespace reka
