// SPDX-License-Identifier: MIT
// The companion programs play the simulator, so these don't stand on the component's helpers: a fault there would
// otherwise be on both sides of each test and show on neither. One routine makes an array and one walks through it; the
// types of elements differ only in what is done with one of them.

#include "packagetext/VariantArrays.h"

namespace packagetext {

namespace {

/// A variant with an array of `count` zeroed elements; an empty variant for none.
reka::CVariant MakeArray(VARTYPE elementType, std::size_t count) {
    reka::CVariant made;
    if (count == 0) return made;
    SAFEARRAYBOUND bound = {static_cast<ULONG>(count), 0};
    SAFEARRAY* array = SafeArrayCreate(elementType, 1, &bound);
    if (!array) return made;
    made.Get().vt = static_cast<VARTYPE>(VT_ARRAY | elementType);
    made.Get().parray = array;
    return made;
}

template <class Values, class Put>
reka::CVariant FillArray(VARTYPE elementType, Values& values, Put put) {
    reka::CVariant made = MakeArray(elementType, values.size());
    if (made.Get().vt == VT_EMPTY) return made;
    LONG index = 0;
    for (auto& value : values) {
        put(made.Get().parray, &index, value);
        ++index;
    }
    return made;
}

/// Calls `read` with the array and each of its indices. False for what is no such array.
template <class Read>
bool ReadArray(const VARIANT& variant, VARTYPE elementType, Read read) {
    if (variant.vt == VT_EMPTY) return true;
    if (variant.vt != (VT_ARRAY | elementType) || SafeArrayGetDim(variant.parray) != 1) return false;
    LONG lower = 0;
    LONG upper = -1;
    if (FAILED(SafeArrayGetLBound(variant.parray, 1, &lower))) return false;
    if (FAILED(SafeArrayGetUBound(variant.parray, 1, &upper))) return false;
    for (LONG index = lower; index <= upper; ++index) {
        if (!read(variant.parray, &index)) return false;
    }
    return true;
}

}  // namespace

reka::CVariant VariantFromText(const NullableText& text) {
    reka::CVariant made;
    made.Get().vt = VT_BSTR;
    made.Get().bstrVal = text ? reka::CBstr::Make(*text).Detach() : nullptr;
    return made;
}

reka::CVariant VariantFromTexts(const std::vector<NullableText>& texts) {
    return FillArray(VT_BSTR, texts, [](SAFEARRAY* array, LONG* index, const NullableText& text) {
        if (text) SafeArrayPutElement(array, index, reka::CBstr::Make(*text).Get());  // the array takes a copy
    });
}

reka::CVariant VariantFromTexts(const std::vector<std::u16string>& texts) {
    return VariantFromTexts(std::vector<NullableText>(texts.begin(), texts.end()));
}

reka::CVariant VariantFromNumbers(const std::vector<double>& numbers) {
    return FillArray(VT_R8, numbers,
                     [](SAFEARRAY* array, LONG* index, double number) { SafeArrayPutElement(array, index, &number); });
}

reka::CVariant VariantFromVariants(std::vector<reka::CVariant>& variants) {
    return FillArray(VT_VARIANT, variants, [](SAFEARRAY* array, LONG* index, reka::CVariant& variant) {
        SafeArrayPutElement(array, index, &variant.Get());
    });
}

bool ReadNullableTexts(const VARIANT& variant, std::vector<NullableText>& texts) {
    texts.clear();
    return ReadArray(variant, VT_BSTR, [&texts](SAFEARRAY* array, LONG* index) {
        reka::CBstr text;
        if (FAILED(SafeArrayGetElement(array, index, text.Receive()))) return false;
        texts.push_back(text.IsAbsent() ? NullableText() : NullableText(text.View()));
        return true;
    });
}

bool ReadTexts(const VARIANT& variant, std::vector<std::u16string>& texts) {
    std::vector<NullableText> nullableTexts;
    if (!ReadNullableTexts(variant, nullableTexts)) return false;
    texts.clear();
    for (const NullableText& text : nullableTexts) texts.push_back(text.value_or(u""));
    return true;
}

bool ReadNumbers(const VARIANT& variant, std::vector<double>& numbers) {
    numbers.clear();
    return ReadArray(variant, VT_R8, [&numbers](SAFEARRAY* array, LONG* index) {
        double number = 0;
        if (FAILED(SafeArrayGetElement(array, index, &number))) return false;
        numbers.push_back(number);
        return true;
    });
}

}  // namespace packagetext
