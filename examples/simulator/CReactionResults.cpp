// SPDX-License-Identifier: MIT
// A list that is searched from its start: a package sets a few numbers and they are read back at once, so it never
// grows long. A number that was never set is told as a failure rather than as a zero, which would pass for a rate.

#include "CReactionResults.h"

#include "SameName.h"
#include "packagetext/VariantArrays.h"

namespace rekasim {

namespace {

constexpr std::u16string_view interfaceName = u"ICapeReactionProperties";

}  // namespace

void* CReactionResults::FindInterface(REFIID iid) {
    if (iid == IID_IUnknown || iid == IID_IDispatch || iid == reka::ICapeReactionProperties::iid) {
        return static_cast<reka::ICapeReactionProperties*>(this);
    }
    if (iid == reka::ECapeRoot::iid) return static_cast<reka::ECapeRoot*>(this);
    if (iid == reka::ECapeUser::iid) return static_cast<reka::ECapeUser*>(this);
    return nullptr;
}

CReactionResults::Result* CReactionResults::Find(const Result& wanted) {
    for (Result& result : results) {
        if (SameName(result.property, wanted.property) && SameName(result.phase, wanted.phase) &&
            SameName(result.reactionId, wanted.reactionId) && SameName(result.basis, wanted.basis)) {
            return &result;
        }
    }
    return nullptr;
}

HRESULT STDMETHODCALLTYPE CReactionResults::GetReactionProp(BSTR property, BSTR phase, VARIANT reacIds, BSTR basis,
                                                            VARIANT* propVals) {
    if (!propVals) return E_POINTER;
    VariantInit(propVals);
    std::vector<std::u16string> ids;
    if (!packagetext::ReadTexts(reacIds, ids) || ids.empty()) {
        return Fail(ECapeInvalidArgumentHR, u"the reactions must be an array of strings", u"GetReactionProp",
                    interfaceName);
    }
    std::vector<double> values;
    for (const std::u16string& id : ids) {
        const Result wanted = {std::u16string(reka::TextOf(property)), std::u16string(reka::TextOf(phase)), id,
                               std::u16string(reka::TextOf(basis))};
        const Result* found = Find(wanted);
        if (!found) {
            return Fail(ECapeThrmPropertyNotAvailableHR, wanted.property + u" of reaction " + id + u" has not been set",
                        u"GetReactionProp", interfaceName);
        }
        values.push_back(found->value);
    }
    return GiveVariant(packagetext::VariantFromNumbers(values), propVals);
}

HRESULT STDMETHODCALLTYPE CReactionResults::SetReactionProp(BSTR property, BSTR phase, VARIANT reacIds, BSTR basis,
                                                            VARIANT propVals) {
    std::vector<std::u16string> ids;
    std::vector<double> values;
    if (!packagetext::ReadTexts(reacIds, ids) || !packagetext::ReadNumbers(propVals, values) || ids.empty() ||
        ids.size() != values.size()) {
        return Fail(ECapeInvalidArgumentHR, u"one reaction identifier and one number are needed for each reaction",
                    u"SetReactionProp", interfaceName);
    }
    for (std::size_t i = 0; i < ids.size(); ++i) {
        Result written = {std::u16string(reka::TextOf(property)), std::u16string(reka::TextOf(phase)), ids[i],
                          std::u16string(reka::TextOf(basis)), values[i]};
        if (Result* found = Find(written)) {
            found->value = values[i];
        } else {
            results.push_back(std::move(written));
        }
    }
    return S_OK;
}

}  // namespace rekasim
