// SPDX-License-Identifier: MIT
// A list is made anew, element by element, and takes the place of the old one only when it is complete: where memory
// runs out the client gets what the member gave, which is of use to every client but a script. The bounds stay, since a
// script counts by them. The loops end at the last index by a break, as one more might not be a number of that size.

#include "capeopen/ScriptArrays.h"

#include "capeopen/ArrayHelpers.h"

namespace reka {

namespace {

/// The element at `index`, which the variant owns; false without memory.
bool TakeElement(SAFEARRAY& array, LONG index, VARTYPE elementType, CVariant& element) {
    VARIANT& taken = element.Get();
    void* target = &taken.lVal;
    if (elementType == VT_BSTR) target = &taken.bstrVal;
    if (elementType == VT_R8) target = &taken.dblVal;
    if (FAILED(SafeArrayGetElement(&array, &index, target))) return false;
    taken.vt = elementType;
    return true;
}

/// The indices of a list of one dimension that has elements.
bool FindBounds(SAFEARRAY* array, LONG& low, LONG& high) {
    return array && SafeArrayGetDim(array) == 1 && SUCCEEDED(SafeArrayGetLBound(array, 1, &low)) &&
           SUCCEEDED(SafeArrayGetUBound(array, 1, &high)) && high >= low;
}

/// A list of those indices in `made`, which was empty; false without memory.
bool CreateList(CVariant& made, VARTYPE elementType, LONG low, LONG high) {
    SAFEARRAYBOUND bound = {};
    bound.lLbound = low;
    bound.cElements = static_cast<ULONG>(high) - static_cast<ULONG>(low) + 1;
    made.Get().parray = SafeArrayCreate(elementType, 1, &bound);
    if (!made.Get().parray) return false;
    made.Get().vt = static_cast<VARTYPE>(VT_ARRAY | elementType);
    return true;
}

/// The value of one of the kinds of numbers that scripts count with.
bool ReadNumber(const VARIANT& element, double& number) {
    switch (element.vt) {
        case VT_I2:
            number = element.iVal;
            return true;
        case VT_I4:
            number = element.lVal;
            return true;
        case VT_R4:
            number = static_cast<double>(element.fltVal);
            return true;
        case VT_R8:
            number = element.dblVal;
            return true;
        default:
            return false;
    }
}

/// Copies an element of a list of variants into a list of strings or doubles; false if it is something else.
bool PutElement(SAFEARRAY& list, LONG index, VARTYPE elementType, const VARIANT& element) {
    if (elementType == VT_BSTR) return element.vt == VT_BSTR && SUCCEEDED(PutString(list, index, element.bstrVal));
    double number = 0;
    return ReadNumber(element, number) && SUCCEEDED(PutNumber(list, index, number));
}

}  // namespace

void MakeReadableForScripts(VARIANT& value) noexcept {
    const auto elementType = static_cast<VARTYPE>(value.vt & VT_TYPEMASK);
    if (value.vt != (VT_ARRAY | elementType)) return;
    if (elementType != VT_BSTR && elementType != VT_R8 && elementType != VT_I4) return;
    LONG low = 0;
    LONG high = 0;
    CVariant made;
    if (!FindBounds(value.parray, low, high) || !CreateList(made, VT_VARIANT, low, high)) return;
    for (LONG index = low;; ++index) {
        CVariant element;
        if (!TakeElement(*value.parray, index, elementType, element)) return;
        if (FAILED(SafeArrayPutElement(made.Get().parray, &index, &element.Get()))) return;
        if (index == high) break;
    }
    VariantClear(&value);
    value = made.Detach();
}

void MakeReadableForMembers(VARIANT& value) noexcept {
    LONG low = 0;
    LONG high = 0;
    if (value.vt != (VT_ARRAY | VT_VARIANT) || !FindBounds(value.parray, low, high)) return;
    if (!HoldsElements(value.parray, VT_VARIANT)) return;
    CVariant made;
    VARTYPE elementType = VT_EMPTY;
    for (LONG index = low;; ++index) {
        CVariant element;
        if (FAILED(SafeArrayGetElement(value.parray, &index, &element.Get()))) return;
        if (index == low) {
            elementType = element.Get().vt == VT_BSTR ? VT_BSTR : VT_R8;
            if (!CreateList(made, elementType, low, high)) return;
        }
        if (!PutElement(*made.Get().parray, index, elementType, element.Get())) return;
        if (index == high) break;
    }
    VariantClear(&value);
    value = made.Detach();
}

}  // namespace reka
