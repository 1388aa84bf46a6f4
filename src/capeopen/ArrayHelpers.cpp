// SPDX-License-Identifier: MIT
// A variant's word for what it holds is the word of another program. Before an element is copied the array itself is
// asked what it was made for, and where it doesn't tell, numbers alone are believed. The texts of the strict reader end
// up in the messages that a simulator shows when a material answers badly, so each way of doing so has its own.

#include "capeopen/ArrayHelpers.h"

#include <utility>

namespace reka {

namespace {

const char16_t* ElementWord(VARTYPE elementType) {
    switch (elementType) {
        case VT_BSTR:
            return u"BSTR";
        case VT_R8:
            return u"REAL";
        case VT_VARIANT:
            return u"VARIANT";
        default:
            return u"<unknown>";
    }
}

/// Size of an element; 0 for types that nobody here asks for.
std::size_t ElementSize(VARTYPE elementType) {
    switch (elementType) {
        case VT_I2:
            return 2;
        case VT_I4:
            return 4;
        case VT_R8:
            return sizeof(double);
        case VT_BSTR:
            return sizeof(BSTR);
        case VT_VARIANT:
            return sizeof(VARIANT);
        default:
            return 0;
    }
}

/// The element type of an array as its own record tells it; `VT_EMPTY` where it doesn't tell.
VARTYPE RecordedType(SAFEARRAY& array) {
    VARTYPE recorded = VT_EMPTY;
    if (SUCCEEDED(SafeArrayGetVartype(&array, &recorded))) return recorded;
    if (array.fFeatures & FADF_BSTR) return VT_BSTR;
    return array.fFeatures & FADF_VARIANT ? VT_VARIANT : VT_EMPTY;
}

/// Makes an element null. Storing an absent string would make it an empty one on some systems.
HRESULT ClearString(SAFEARRAY& array, LONG index) {
    LONG lowerBound = 0;
    LONG upperBound = 0;
    void* elements = nullptr;
    if (FAILED(SafeArrayGetLBound(&array, 1, &lowerBound)) || FAILED(SafeArrayGetUBound(&array, 1, &upperBound)) ||
        index < lowerBound || index > upperBound) {
        return DISP_E_BADINDEX;
    }
    const HRESULT result = SafeArrayAccessData(&array, &elements);
    if (FAILED(result)) return result;
    SysFreeString(std::exchange(static_cast<BSTR*>(elements)[index - lowerBound], nullptr));
    return SafeArrayUnaccessData(&array);
}

}  // namespace

bool HoldsElements(SAFEARRAY* array, VARTYPE elementType) {
    if (!array || array->cDims == 0) return true;
    const VARTYPE recorded = RecordedType(*array);
    // Only plain numbers may come without a record of their type: other bits must not be taken for pointers.
    const bool needsRecord = elementType == VT_BSTR || elementType == VT_VARIANT;
    if (recorded != elementType && (recorded != VT_EMPTY || needsRecord)) return false;
    return array->pvData && array->cbElements == ElementSize(elementType);
}

std::int32_t CheckArrayVariant(const VARIANT& variant, VARTYPE elementType, std::u16string& errorText) {
    if (variant.vt == VT_EMPTY) return 0;
    if (variant.vt != (elementType | VT_ARRAY) || !HoldsElements(variant.parray, elementType)) {
        errorText = std::u16string(u"invalid type; array of type ") + ElementWord(elementType) + u" expected";
        return -1;
    }
    if (!variant.parray || variant.parray->cDims != 1) {
        errorText = u"unexpected dimension; 1-dimensional array expected";
        return -1;
    }
    LONG lowerBound = 0;
    LONG upperBound = 0;
    if (FAILED(SafeArrayGetLBound(variant.parray, 1, &lowerBound))) {
        errorText = u"failed to get lower bound of array";
        return -1;
    }
    if (FAILED(SafeArrayGetUBound(variant.parray, 1, &upperBound))) {
        errorText = u"failed to get upper bound of array";
        return -1;
    }
    if (lowerBound != 0) {
        errorText = u"unexpected array dimensions; expected 0 for lower bound";
        return -1;
    }
    if (upperBound < 0) {
        errorText = u"unexpected array dimensions; negative upper bound";
        return -1;
    }
    if (upperBound == 0x7FFFFFFF) return upperBound;  // one more would not be a count
    return static_cast<std::int32_t>(upperBound) + 1;
}

CBstr ReadStringArray(std::vector<std::u16string>& list, const VARIANT& variant) {
    list.clear();
    if (variant.vt != (VT_ARRAY | VT_BSTR) || !HoldsElements(variant.parray, VT_BSTR)) {
        return CBstr::Make(u"expected a string array");
    }
    if (SafeArrayGetDim(variant.parray) != 1) return CBstr::Make(u"expected a string array with dimension of 1");
    LONG lowerBound = 0;
    LONG upperBound = -1;
    SafeArrayGetLBound(variant.parray, 1, &lowerBound);
    SafeArrayGetUBound(variant.parray, 1, &upperBound);
    for (std::int64_t i = lowerBound; i <= upperBound; ++i) {
        CBstr text;
        TakeString(variant, static_cast<LONG>(i), text);
        list.push_back(StringFromBstr(text.Get()));
    }
    return CBstr();
}

bool CreateArrayVariant(VARIANT& variant, std::int32_t count, VARTYPE elementType) {
    if (count < 0) return false;
    SAFEARRAYBOUND bound = {static_cast<ULONG>(count), 0};
    SAFEARRAY* const array = SafeArrayCreate(elementType, 1, &bound);
    if (!array) return false;
    variant.vt = static_cast<VARTYPE>(elementType | VT_ARRAY);
    variant.parray = array;
    return true;
}

HRESULT PutString(SAFEARRAY& array, LONG index, BSTR text) {
    if (!text) return ClearString(array, index);
    return SafeArrayPutElement(&array, &index, text);
}

HRESULT PutString(SAFEARRAY& array, LONG index, std::u16string_view text) {
    if (text.empty()) return PutString(array, index, static_cast<BSTR>(nullptr));
    const CBstr string = CBstr::TryMake(text);
    return string.IsAbsent() ? E_OUTOFMEMORY : PutString(array, index, string.Get());
}

HRESULT PutNumber(SAFEARRAY& array, LONG index, double number) {
    return SafeArrayPutElement(&array, &index, &number);
}

bool TakeString(const VARIANT& strings, LONG index, CBstr& text) {
    return SUCCEEDED(SafeArrayGetElement(strings.parray, &index, text.Receive()));
}

}  // namespace reka
