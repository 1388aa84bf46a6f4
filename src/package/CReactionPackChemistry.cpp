// SPDX-License-Identifier: MIT
// Queries about the reactions. Each is a read of the definition behind the same guards; none needs a material. Whether
// the definition or the output is looked at first differs between the methods: simulators know each of them as it is,
// and a test holds their order.

#include <algorithm>
#include <cstddef>
#include <vector>

#include "capeopen/ArrayHelpers.h"
#include "package/CReactionPack.h"
#include "platform/HostArithmetic.h"

namespace reka {

namespace {

constexpr const char16_t* interfaceName = u"ICapeReactionChemistry";

/// Indices of the compounds that take part: those whose coefficient isn't zero. A NaN isn't zero.
std::vector<std::size_t> ParticipantsOf(const ReactionDefinition& reaction, const ReactionPackDefinition& definition) {
    std::vector<std::size_t> participants;
    for (std::size_t i = 0; i < definition.compounds.size(); ++i) {
        if (!(reaction.CoefficientOf(i) == 0.0)) participants.push_back(i);
    }
    return participants;
}

/// Frees what an output holds and gives it the new list.
void GiveList(VARIANT* output, CVariant& list) {
    VariantClear(output);
    *output = list.Detach();
}

}  // namespace

const ReactionDefinition* CReactionPack::FindReaction(BSTR reactionId, const char16_t* scope) {
    const std::u16string_view name = TextOf(reactionId);
    if (name.empty()) {
        Fail(u"Invalid ID", u"Empty string passed as reaction ID", scope, interfaceName);
        return nullptr;
    }
    const std::size_t index = reactionIndex.Find(*definition, reactionId);
    if (index != CReactionIndex::none) return definition->reactions[index].get();
    const std::u16string text = u"Invalid reaction ID: " + std::u16string(name);
    Fail(u"Invalid ID", text.c_str(), scope, interfaceName);
    return nullptr;
}

HRESULT CReactionPack::GetNumberOfReactions(LONG* count) {
    if (!definition) return E_UNEXPECTED;
    if (!count) return E_POINTER;
    *count = static_cast<LONG>(definition->reactions.size());
    return S_OK;
}

HRESULT CReactionPack::GetReactionsIds(VARIANT* reactionIds) {
    constexpr const char16_t* scope = u"GetReactionsIds";
    return RunMethod(*this, scope, interfaceName, [&]() -> HRESULT {
        if (!definition) return E_UNEXPECTED;
        if (!reactionIds) return E_POINTER;
        const auto& reactions = definition->reactions;
        const bool made = CreateListVariant(*reactionIds, reactions.size(), VT_BSTR, [&](SAFEARRAY& array, LONG index) {
            return PutString(array, index, reactions[static_cast<std::size_t>(index)]->id.Get());
        });
        return made ? S_OK : Fail(u"Out of memory", u"Out of memory", scope, interfaceName);
    });
}

HRESULT CReactionPack::GetReactionType(BSTR reactionId, CapeReactionType* type) {
    constexpr const char16_t* scope = u"GetReactionType";
    return RunMethod(*this, scope, interfaceName, [&]() -> HRESULT {
        if (!definition) return E_UNEXPECTED;
        if (!type) return E_POINTER;
        const ReactionDefinition* const reaction = FindReaction(reactionId, scope);
        if (!reaction) return ECapeUnknownHR;
        *type = static_cast<CapeReactionType>(reaction->type);
        return S_OK;
    });
}

HRESULT CReactionPack::GetNumberOfReactionCompounds(BSTR reactionId, LONG* count) {
    constexpr const char16_t* scope = u"GetNumberOfReactionCompounds";
    return RunMethod(*this, scope, interfaceName, [&]() -> HRESULT {
        if (!definition) return E_UNEXPECTED;
        if (!count) return E_POINTER;
        if (!FindReaction(reactionId, scope)) return ECapeUnknownHR;
        *count = 0;  // the participants are told by GetReactionCompoundIds alone
        return S_OK;
    });
}

HRESULT CReactionPack::GetReactionCompoundIds(BSTR reactionId, VARIANT* compoundIds, VARIANT* charges,
                                              VARIANT* casNumbers) {
    constexpr const char16_t* scope = u"GetReactionCompoundIds";
    return RunMethod(*this, scope, interfaceName, [&]() -> HRESULT {
        if (!definition) return E_UNEXPECTED;
        if (!compoundIds || !charges || !casNumbers) return E_POINTER;
        if (!reactionId) return Fail(u"No reaction ID", u"No reaction ID specified", scope, interfaceName);
        VariantClear(compoundIds);
        VariantClear(charges);
        VariantClear(casNumbers);
        const ReactionDefinition* const reaction = FindReaction(reactionId, scope);
        if (!reaction) return ECapeUnknownHR;

        const COwnArithmetic arithmetic;  // a coefficient may be a signalling NaN
        const auto participants = ParticipantsOf(*reaction, *definition);
        const auto compoundAt = [&](LONG i) -> const CompoundDefinition& {
            return *definition->compounds[participants[static_cast<std::size_t>(i)]];
        };
        CVariant idList;
        CVariant chargeList;
        CVariant casList;
        const bool made =
            CreateListVariant(idList.Get(), participants.size(), VT_BSTR,
                              [&](SAFEARRAY& array, LONG i) { return PutString(array, i, compoundAt(i).id.Get()); }) &&
            CreateListVariant(chargeList.Get(), participants.size(), VT_R8,
                              [&](SAFEARRAY& array, LONG i) { return PutNumber(array, i, compoundAt(i).charge); }) &&
            CreateListVariant(casList.Get(), participants.size(), VT_BSTR, [&](SAFEARRAY& array, LONG i) {
                return PutString(array, i, compoundAt(i).casNumber.Get());
            });
        if (!made) return Fail(u"out of memory", u"out of memory", scope, interfaceName);
        GiveList(compoundIds, idList);
        GiveList(charges, chargeList);
        GiveList(casNumbers, casList);
        return S_OK;
    });
}

HRESULT CReactionPack::GetStoichiometricCoefficients(BSTR reactionId, VARIANT* coefficients) {
    constexpr const char16_t* scope = u"GetStoichiometricCoefficients";
    return RunMethod(*this, scope, interfaceName, [&]() -> HRESULT {
        if (!definition) return E_UNEXPECTED;
        if (!coefficients) return E_POINTER;
        VariantInit(coefficients);
        const ReactionDefinition* const reaction = FindReaction(reactionId, scope);
        if (!reaction) return ECapeUnknownHR;

        const COwnArithmetic arithmetic;
        const auto participants = ParticipantsOf(*reaction, *definition);
        const bool made = CreateListVariant(*coefficients, participants.size(), VT_R8, [&](SAFEARRAY& array, LONG i) {
            return PutNumber(array, i, reaction->CoefficientOf(participants[static_cast<std::size_t>(i)]));
        });
        if (made) return S_OK;
        return Fail(u"out of memory", u"out of memory", scope, interfaceName);
    });
}

HRESULT CReactionPack::GetReactionPhase(BSTR reactionId, BSTR* phase) {
    constexpr const char16_t* scope = u"GetReactionPhase";
    return RunMethod(*this, scope, interfaceName, [&]() -> HRESULT {
        if (!definition) return E_UNEXPECTED;
        if (!phase) return E_POINTER;
        *phase = nullptr;  // before anything can fail
        const ReactionDefinition* const reaction = FindReaction(reactionId, scope);
        if (!reaction) return ECapeUnknownHR;
        *phase = CBstr::CopyOf(reaction->phase.Get()).Detach();
        return S_OK;
    });
}

HRESULT CReactionPack::GetReactionRateBasis(BSTR reactionId, CapeReactionRateBasis* basis) {
    constexpr const char16_t* scope = u"GetReactionRateBasis";
    return RunMethod(*this, scope, interfaceName, [&]() -> HRESULT {
        if (!definition) return E_UNEXPECTED;
        if (!basis) return E_POINTER;
        const ReactionDefinition* const reaction = FindReaction(reactionId, scope);
        if (!reaction) return ECapeUnknownHR;
        *basis = static_cast<CapeReactionRateBasis>(reaction->rateBasis);
        return S_OK;
    });
}

HRESULT CReactionPack::GetReactionConcBasis(BSTR reactionId, BSTR* basis) {
    constexpr const char16_t* scope = u"GetReactionConcBasis";
    return RunMethod(*this, scope, interfaceName, [&]() -> HRESULT {
        if (!definition) return E_UNEXPECTED;
        if (!basis) return E_POINTER;
        *basis = nullptr;
        const ReactionDefinition* const reaction = FindReaction(reactionId, scope);
        if (!reaction) return ECapeUnknownHR;
        if (reaction->type != ReactionType::Equilibrium) return S_OK;  // the basis belongs to the constant
        const auto stored = static_cast<std::int32_t>(reaction->equilibriumBasis);
        const std::int32_t known = std::clamp(stored, std::int32_t{0}, equilibriumBasisCount - 1);
        *basis = CBstr::Make(equilibriumBasisWords[known]).Detach();
        return S_OK;
    });
}

HRESULT CReactionPack::GetBaseReactant(BSTR, BSTR* baseReactant) {
    if (!baseReactant) return E_POINTER;
    *baseReactant = nullptr;
    return definition ? E_NOTIMPL : E_UNEXPECTED;
}

HRESULT CReactionPack::GetPhaseCompounds(BSTR, LONG* compoundCount, VARIANT* compoundIds) {
    if (!compoundCount || !compoundIds) return E_POINTER;
    if (!definition) return E_UNEXPECTED;
    VariantClear(compoundIds);
    return E_NOTIMPL;
}

HRESULT CReactionPack::GetReactionParameters(BSTR, IDispatch** parameters) {
    if (!parameters) return E_POINTER;
    *parameters = nullptr;
    if (!definition) return E_UNEXPECTED;
    constexpr const char16_t* scope = u"GetReactionParameters";
    return RunMethod(*this, scope, interfaceName, [&]() -> HRESULT {
        constexpr const char16_t* text = u"GetReactionParameters not supported";
        SetError(text, text, scope, interfaceName);
        return ECapeNoImplHR;
    });
}

}  // namespace reka
