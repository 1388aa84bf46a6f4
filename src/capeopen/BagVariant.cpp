// SPDX-License-Identifier: MIT
// A document must open, whichever program wrote it: any lower bound will do, an empty value is an array of nothing, and
// an entry of the wrong shape is reported and left out. What isn't forgiven is an array that holds other elements than
// its variant says, since its bytes would be taken for pointers.

#include "capeopen/BagVariant.h"

#include <string>

#include "capeopen/ArrayHelpers.h"

namespace reka {

namespace {

const char16_t* ElementWord(VARTYPE elementType) {
    switch (elementType) {
        case VT_I2:
            return u"short";
        case VT_I4:
            return u"long";
        case VT_R8:
            return u"double precision";
        case VT_BSTR:
            return u"string";
        case VT_VARIANT:
            return u"VARIANT";
        default:
            return u"<unknown>";
    }
}

/// The bounds of the array read, into `bagVariant`. The reason if they aren't as expected, otherwise empty.
std::u16string ReadBounds(BagVariant& bagVariant, VARTYPE expectedType) {
    const auto elementType = static_cast<VARTYPE>(expectedType & ~VT_ARRAY);
    SAFEARRAY* const array = bagVariant.value.parray;
    if (bagVariant.value.vt != expectedType || !HoldsElements(array, elementType)) {
        return std::u16string(u"Expected an array of type ") + ElementWord(elementType);
    }
    if (SafeArrayGetDim(array) != 1) return u"unexpected dimension; 1-dimensional array expected";
    LONG bound = 0;
    if (FAILED(SafeArrayGetLBound(array, 1, &bound))) return u"failed to get lower bound";
    bagVariant.lowerBound = static_cast<std::int32_t>(bound);
    if (FAILED(SafeArrayGetUBound(array, 1, &bound))) return u"failed to get upper bound";
    bagVariant.count = static_cast<std::int32_t>(std::int64_t{bound} - bagVariant.lowerBound + 1);
    return {};
}

}  // namespace

bool ReadBagVariant(const BagReader& reader, const char16_t* name, BagVariant& bagVariant, VARTYPE expectedType) {
    if (bagVariant.holdsValue) {
        VariantClear(&bagVariant.value);
    } else {
        bagVariant.value.vt = VT_EMPTY;
    }
    bagVariant.holdsValue = 1;
    const auto* const key = reinterpret_cast<const OLECHAR*>(name);
    if (FAILED(reader.bag->Read(key, &bagVariant.value, reader.errorLog))) return false;
    std::u16string text;
    if (expectedType & VT_ARRAY) {
        if (bagVariant.value.vt == VT_EMPTY) {
            bagVariant.lowerBound = 0;
            bagVariant.count = 0;
            return true;
        }
        text = ReadBounds(bagVariant, expectedType);
    } else if (bagVariant.value.vt != expectedType) {
        text = u"unexpected data type";
    }
    if (text.empty()) return true;
    ReportBagError(reader, name, text);
    return false;
}

void ReportBagError(const BagReader& reader, const char16_t* name, std::u16string_view text) {
    if (!reader.errorLog) return;
    const CBstr description = CBstr::TryMake(text);  // a report that memory is too short for comes without its words
    const CBstr source = CBstr::TryMake(reader.source);
    EXCEPINFO exception = {};
    exception.bstrDescription = description.Get();
    exception.bstrSource = source.Get();
    reader.errorLog->AddError(reinterpret_cast<const OLECHAR*>(name), &exception);
}

}  // namespace reka
