// SPDX-License-Identifier: MIT
// The simulator's side of a call, as cheap as it can be made: what is measured is the component. What it has to give is
// made beforehand, and CAS numbers are given in the order in which they are asked for, without a look at the question.

#include "bench/call/IdleMaterial.h"

#include "capeopen/ArrayHelpers.h"

namespace reka::bench {

void CIdleMaterial::AddCompound(const std::u16string& identifier, const std::u16string& casNumber) {
    identifiers.push_back(CBstr::Make(identifier));
    casNumbers.push_back(CBstr::Make(casNumber));
}

HRESULT CIdleMaterial::get_ComponentIds(VARIANT* compIds) {
    asked = 0;
    const bool made = CreateListVariant(*compIds, identifiers.size(), VT_BSTR, [&](SAFEARRAY& array, LONG index) {
        return PutString(array, index, identifiers[static_cast<std::size_t>(index)].Get());
    });
    return made ? S_OK : E_OUTOFMEMORY;
}

HRESULT CIdleMaterial::GetComponentConstant(VARIANT, VARIANT, VARIANT* propVals) {
    const CBstr& casNumber = casNumbers[asked++];
    const bool made = CreateListVariant(*propVals, 1, VT_VARIANT, [&](SAFEARRAY& array, LONG index) {
        CVariant value;
        value.Get().vt = VT_BSTR;
        value.Get().bstrVal = casNumber.Copy();
        return SafeArrayPutElement(&array, &index, &value.Get());
    });
    return made ? S_OK : E_OUTOFMEMORY;
}

}  // namespace reka::bench
