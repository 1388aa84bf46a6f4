// SPDX-License-Identifier: MIT
// The calculation: selects the reactions, fetches once per property what all their expressions read, evaluates them one
// by one and hands each number to the reaction object.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "capeopen/ArrayHelpers.h"
#include "capeopen/ErrorTexts.h"
#include "expression/run/EvaluateExpression.h"
#include "package/CReactionPack.h"
#include "package/ReactionProperty.h"
#include "platform/HostArithmetic.h"
#include "platform/SameText.h"

namespace reka {

namespace {

constexpr const char16_t* scope = u"CalcReactionProp";
constexpr const char16_t* interfaceName = u"ICapeReactionsRoutine";

bool IsAcceptedBasis(const ReactionProperty& property, BSTR basis) {
    constexpr std::u16string_view moleBasis = u"Mole";
    return (property.acceptsMoleBasis && SameUsualText(basis, moleBasis)) || TextOf(basis).empty();
}

/// The reactions that a call selects, by index and in the order asked for, in room that is lent.
class CSelection {
public:
    explicit CSelection(std::vector<std::uint32_t>& room) : indices(room) { indices.clear(); }
    CSelection(const CSelection&) = delete;
    CSelection& operator=(const CSelection&) = delete;

    void TakeAll(std::size_t reactionCount) { allCount = reactionCount; }
    /// Makes room for `size` reactions to come.
    void Reserve(std::size_t size) { indices.reserve(size); }
    void Append(std::size_t index) { indices.push_back(static_cast<std::uint32_t>(index)); }
    std::size_t Count() const { return indices.empty() ? allCount : indices.size(); }
    std::size_t operator[](std::size_t i) const { return indices.empty() ? i : indices[i]; }

private:
    std::size_t allCount = 0;  // where all are selected, in their order
    std::vector<std::uint32_t>& indices;
};

/// One call, with all that it works on. What it began with stays alive until it ends.
class CPropertyCalculation {
public:
    CPropertyCalculation(BaseObject& reportingObject, ReactionPackDefinition& packageDefinition,
                         ICapeReactionProperties& results, CMaterialReader& materialReader, CCallArrays& lentArrays,
                         const COwnArithmetic& ownArithmetic, BSTR requestedPhase, BSTR requestedBasis)
        : object(reportingObject),
          definition(packageDefinition),
          reactionObject(results),
          reader(materialReader),
          arrays(lentArrays),
          arithmetic(ownArithmetic),
          phase(requestedPhase),
          basis(requestedBasis) {}

    /// Calculates one property of the selected reactions; a null `property` is one that isn't known. False after the
    /// failure was reported.
    bool Calculate(BSTR propertyName, const ReactionProperty* property, const CSelection& selected) {
        if (!property) [[unlikely]] {
            return Report(u"Unknown or unsupported reaction property \"" + StringFromBstr(propertyName) + u"\"");
        }
        if (!IsAcceptedBasis(*property, basis)) [[unlikely]]
            return Report(u"Unsupported basis", property->basisError);
        std::uint32_t dependencies = 0;
        for (std::size_t i = 0; i < selected.Count(); ++i) {
            const ReactionDefinition& reaction = *definition.reactions[selected[i]];
            if (!CheckReaction(*property, reaction)) return false;
            dependencies |= (reaction.*property->expression)->dependencies;
        }
        std::u16string errorText;
        if (!reader.FetchExpressionInputs(dependencies, phase, errorText)) return Report(errorText);
        for (std::size_t i = 0; i < selected.Count(); ++i) {
            if (!EvaluateAndStore(selected[i], propertyName, *property)) return false;
        }
        return true;
    }

private:
    bool CheckReaction(const ReactionProperty& property, const ReactionDefinition& reaction) {
        if (CanBeCalculated(property, reaction, phase)) [[likely]]
            return true;
        const ReactionRefusal refusal = RefusalOf(property, reaction, phase);
        return Report(refusal.name, refusal.description);
    }

    /// Evaluates the expression of one reaction and writes the value to the reaction object. False after the failure
    /// was reported.
    bool EvaluateAndStore(std::size_t index, BSTR propertyName, const ReactionProperty& property) {
        const ReactionDefinition& reaction = *definition.reactions[index];
        const BSTR reactionId = reaction.id.Get();
        double value = 0.0;
        std::u16string errorText;
        if (!EvaluateExpression(*(reaction.*property.expression), value, definition, errorText)) [[unlikely]] {
            return ReportCalculation(reactionId, propertyName, errorText);
        }
        const VARIANT* const values = arrays.Number().LendNumber(value);
        const VARIANT* const identifiers = values ? arrays.LendId(index, reactionId) : nullptr;
        if (!identifiers) [[unlikely]]
            return ReportCalculation(reactionId, propertyName, u"out of memory");
        const HRESULT result = arithmetic.Outside(
            [&] { return reactionObject.SetReactionProp(propertyName, phase, *identifiers, basis, *values); });
        if (SUCCEEDED(result)) [[likely]]
            return true;
        return Report(arithmetic.Outside([&] { return GetCapeErrorText(&reactionObject, result); }));
    }

    bool ReportCalculation(BSTR reactionId, BSTR property, const std::u16string& reason) {
        return Report(TextOfFailedCalculation(property, reactionId, reason));
    }

    bool Report(const std::u16string& text) { return Report(text, text); }

    bool Report(const std::u16string& name, const std::u16string& description) {
        object.Fail(name.c_str(), description.c_str(), scope, interfaceName);
        return false;
    }

    BaseObject& object;
    ReactionPackDefinition& definition;
    ICapeReactionProperties& reactionObject;
    CMaterialReader& reader;
    CCallArrays& arrays;
    const COwnArithmetic& arithmetic;
    const BSTR phase;
    const BSTR basis;
};

/// The string at `i` of an array that `CheckArrayVariant` has accepted, lent by the caller for the whole call.
BSTR StringAt(const VARIANT& strings, std::int32_t i) {
    return static_cast<const BSTR*>(strings.parray->pvData)[i];
}

/// Selects the reactions that `reacIds` names, or all of them for an empty variant. `S_OK`, or the failure after it was
/// reported.
HRESULT SelectReactions(BaseObject& object, const ReactionPackDefinition& definition, CReactionIndex& reactionIndex,
                        const VARIANT& reacIds, CSelection& selected) {
    if (reacIds.vt == VT_EMPTY) {
        selected.TakeAll(definition.reactions.size());
        return S_OK;
    }
    std::u16string errorText;
    const std::int32_t count = CheckArrayVariant(reacIds, VT_BSTR, errorText);
    if (count < 0) return object.Fail(u"invalid format for reaction IDs: " + errorText, scope, interfaceName);
    if (count == 0) {
        return object.Fail(u"Missing reaction IDs", u"No reaction IDs have been specified for CalcReactionProp", scope,
                           interfaceName);
    }
    selected.Reserve(static_cast<std::size_t>(count));
    for (std::int32_t i = 0; i < count; ++i) {
        const BSTR name = StringAt(reacIds, i);
        const std::size_t index = reactionIndex.Find(definition, name);
        if (index == CReactionIndex::none)
            return object.Fail(u"Unknown reaction ID: " + StringFromBstr(name), scope, interfaceName);
        selected.Append(index);
    }
    return S_OK;
}

}  // namespace

HRESULT CReactionPack::CalcReactionProp(VARIANT props, BSTR phase, VARIANT reacIds, BSTR basis) {
    return RunMethod(*this, scope, interfaceName, [&]() -> HRESULT {
        if (!definition) return E_UNEXPECTED;
        if (!reactionObject) {
            return Fail(u"No reaction object", u"The reaction object was not set before CalcReactionProp", scope,
                        interfaceName);
        }
        // What the call began with stays until it ends, whatever a callback does. A calculation that is called from
        // within another one leaves the working values of that one alone.
        const auto usedDefinition = IsDefinitionInUse() ? CopyDefinition(*definition) : definition;
        const auto usedReactionObject = reactionObject;
        const auto usedMaterial = material;
        const auto usedMap = compoundMap;
        const auto usedArrays = ArraysFor(*usedDefinition);
        const std::vector<std::int32_t> noMap;
        const COwnArithmetic arithmetic;

        CSelection selected(usedArrays->selection);
        const HRESULT selection = SelectReactions(*this, *usedDefinition, reactionIndex, reacIds, selected);
        if (FAILED(selection)) return selection;
        std::u16string errorText;
        const std::int32_t propertyCount = CheckArrayVariant(props, VT_BSTR, errorText);
        if (propertyCount < 0) return Fail(u"invalid format for properties: " + errorText, scope, interfaceName);
        if (propertyCount == 0) {
            return Fail(u"Missing properties", u"No properties have been specified for CalcReactionProp", scope,
                        interfaceName);
        }
        if (!usedMaterial) {
            return Fail(u"Missing material",
                        u"A material reference has not been set on the reaction package before CalcReactionProp", scope,
                        interfaceName);
        }
        CMaterialReader reader(*usedDefinition, usedMaterial.Get(), materialWords, usedMap ? *usedMap : noMap,
                               materialCompoundCount, *usedArrays, arithmetic);
        CPropertyCalculation calculation(*this, *usedDefinition, *usedReactionObject, reader, *usedArrays, arithmetic,
                                         phase, basis);
        for (LONG i = 0; i < propertyCount; ++i) {
            const BSTR name = StringAt(props, i);
            if (!calculation.Calculate(name, FindReactionProperty(name), selected)) return ECapeUnknownHR;
        }
        return S_OK;
    });
}

}  // namespace reka
