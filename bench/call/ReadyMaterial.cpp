// SPDX-License-Identifier: MIT
// An answer is what a simulator's can't be less than: one new array, filled in place. What has a value for each
// compound is told by the first letter of its name, so that the time that a comparison takes isn't measured.

#include "bench/call/ReadyMaterial.h"

#include "capeopen/ArrayHelpers.h"

namespace reka::bench {

HRESULT CReadyMaterial::QueryInterface(REFIID iid, void** object) {
    if (iid == ICapeThermoMaterial::iid) {
        *object = static_cast<ICapeThermoMaterial*>(this);
    } else if (iid == ICapeThermoPropertyRoutine::iid) {
        *object = static_cast<ICapeThermoPropertyRoutine*>(this);
    } else {
        return CIdleMaterial::QueryInterface(iid, object);
    }
    return S_OK;
}

HRESULT CReadyMaterial::Answer(BSTR property, VARIANT* results) const {
    const auto first = static_cast<char16_t>(property[0]);
    const bool isPerCompound = first == u'f' || first == u'a';  // fraction, fugacity, activity
    const auto count = static_cast<std::int32_t>(isPerCompound ? CompoundCount() : 1);
    if (!CreateArrayVariant(*results, count, VT_R8)) return E_OUTOFMEMORY;
    auto* const values = static_cast<double*>(results->parray->pvData);
    for (std::int32_t i = 0; i < count; ++i) values[i] = first == u't' ? 500.0 : 0.25 + i;
    return S_OK;
}

}  // namespace reka::bench
