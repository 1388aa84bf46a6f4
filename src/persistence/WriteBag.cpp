// SPDX-License-Identifier: MIT
// Writing a definition into a property bag, in the order in which the entries are read again. The first entry that the
// bag refuses ends it, since a document with half of a package is none.

#include "persistence/WriteBag.h"

#include <cstddef>
#include <cstdint>
#include <string>

#include "capeopen/ArrayHelpers.h"
#include "persistence/BagKeys.h"

namespace reka {

namespace {

/// Each operation is false when the entry couldn't be made or written.
class CBagWriter {
public:
    explicit CBagWriter(IPropertyBag& target) : bag(target) {}

    /// A single string; absent and empty ones are written as they are.
    bool WriteText(const char16_t* key, CBstr text) {
        CVariant value;
        value.Get().vt = VT_BSTR;
        value.Get().bstrVal = text.Detach();
        return Write(key, value);
    }

    /// `textAt(i)` gives each element, a BSTR that is lent or a wide text, of which an empty one stays null.
    template <class TextAt>
    bool WriteTexts(const char16_t* key, std::size_t count, TextAt&& textAt) {
        CVariant value;
        return CreateListVariant(value.Get(), count, VT_BSTR,
                                 [&](SAFEARRAY& array, LONG index) {
                                     return PutString(array, index, textAt(static_cast<std::size_t>(index)));
                                 }) &&
               Write(key, value);
    }

    template <class NumberAt>
    bool WriteNumbers(const char16_t* key, std::size_t count, NumberAt&& numberAt) {
        CVariant value;
        return CreateListVariant(value.Get(), count, VT_R8,
                                 [&](SAFEARRAY& array, LONG index) {
                                     return PutNumber(array, index, numberAt(static_cast<std::size_t>(index)));
                                 }) &&
               Write(key, value);
    }

private:
    bool Write(const char16_t* key, CVariant& value) {
        return SUCCEEDED(bag.Write(reinterpret_cast<const OLECHAR*>(key), &value.Get()));
    }

    IPropertyBag& bag;
};

CBstr PresentCopy(const CBstr& text) {
    return CBstr::Make(text.View());
}

bool WriteCompounds(CBagWriter& writer, const ReactionPackDefinition& definition) {
    const auto& compounds = definition.compounds;
    const std::size_t count = compounds.size();
    return writer.WriteTexts(bagkey::compoundId, count, [&](std::size_t i) { return compounds[i]->id.Get(); }) &&
           writer.WriteTexts(bagkey::compoundName, count, [&](std::size_t i) { return compounds[i]->name.Get(); }) &&
           writer.WriteTexts(bagkey::compoundCas, count,
                             [&](std::size_t i) { return compounds[i]->casNumber.Get(); }) &&
           writer.WriteTexts(bagkey::compoundFormula, count,
                             [&](std::size_t i) { return compounds[i]->formula.Get(); }) &&
           writer.WriteNumbers(bagkey::compoundMolecularWeight, count,
                               [&](std::size_t i) { return compounds[i]->molecularWeight; }) &&
           writer.WriteNumbers(bagkey::compoundCharge, count, [&](std::size_t i) { return compounds[i]->charge; });
}

bool HasKnownBases(const ReactionPackDefinition& definition) {
    for (const auto& reaction : definition.reactions) {
        const auto basis = static_cast<std::int32_t>(reaction->equilibriumBasis);
        if (basis < 0 || basis >= equilibriumBasisCount) return false;
    }
    return true;
}

bool WriteReactions(CBagWriter& writer, const ReactionPackDefinition& definition) {
    using Text = std::u16string_view;
    const auto& reactions = definition.reactions;
    const std::size_t count = reactions.size();
    return writer.WriteTexts(bagkey::reactionId, count, [&](std::size_t i) {
        return reactions[i]->id.Get();
    }) && writer.WriteTexts(bagkey::reactionPhase, count, [&](std::size_t i) {
        return reactions[i]->phase.Get();
    }) && writer.WriteTexts(bagkey::reactionType, count, [&](std::size_t i) {
        return Text(WordOf(reactions[i]->type, reactionTypeWords));
    }) && writer.WriteTexts(bagkey::reactionRateBasis, count, [&](std::size_t i) {
        return Text(WordOf(reactions[i]->rateBasis, rateBasisWords));
    }) && writer.WriteTexts(bagkey::reactionRateEquation, count, [&](std::size_t i) {
        return Text(reactions[i]->rateEquation);
    }) && writer.WriteTexts(bagkey::reactionEquilibriumBasis, count, [&](std::size_t i) {
        return Text(equilibriumBasisWords[static_cast<std::size_t>(reactions[i]->equilibriumBasis)]);
    }) && writer.WriteTexts(bagkey::reactionEquilibriumConstantEquation, count, [&](std::size_t i) {
        return Text(reactions[i]->equilibriumConstantEquation);
    }) && writer.WriteTexts(bagkey::reactionHeatEquation, count, [&](std::size_t i) {
        return Text(reactions[i]->heatEquation);
    });
}

bool WriteStoichiometry(CBagWriter& writer, const ReactionPackDefinition& definition) {
    for (const auto& reaction : definition.reactions) {
        const std::u16string key = bagkey::Stoichiometry(reaction->id.View());
        if (!writer.WriteNumbers(key.c_str(), definition.compounds.size(),
                                 [&](std::size_t i) { return reaction->CoefficientOf(i); })) {
            return false;
        }
    }
    return true;
}

}  // namespace

bool WriteDefinitionToBag(const ReactionPackDefinition& definition, IPropertyBag& bag) {
    CBagWriter writer(bag);
    return writer.WriteText(bagkey::name, PresentCopy(definition.name)) &&
           writer.WriteText(bagkey::description, PresentCopy(definition.description)) &&
           writer.WriteText(bagkey::pcdFile, BstrFromString(definition.pcdFile)) &&
           WriteCompounds(writer, definition) && HasKnownBases(definition) && WriteReactions(writer, definition) &&
           WriteStoichiometry(writer, definition) &&
           writer.WriteText(bagkey::thermoVersion, CBstr::Make(WordOf(definition.thermoVersion, thermoVersionWords)));
}

}  // namespace reka
