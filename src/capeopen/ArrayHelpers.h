// SPDX-License-Identifier: MIT
// Lists as automation passes them: a VARIANT that holds an array. The readers differ on purpose in what an empty value
// means and which lower bound they accept.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Holders.h"

namespace reka {

/// Whether an array really holds elements of that type, whatever its variant claims: an element of another size would
/// be copied over the end of its destination, and other bits would be taken for a string. An array without dimensions
/// passes, since the checks of the dimension speak of that.
bool HoldsElements(SAFEARRAY* array, VARTYPE elementType);

/// The strict reader, for what a simulator passes: the number of elements of a one-dimensional array of `elementType`
/// (VT_R8, VT_BSTR or VT_VARIANT) with lower bound 0; 0 for an empty variant; otherwise -1 with the reason in
/// `errorText`, which is touched only then. An array of no elements is an error.
std::int32_t CheckArrayVariant(const VARIANT& variant, VARTYPE elementType, std::u16string& errorText);

/// The lenient reader of string lists: any lower bound, and no elements give an empty list; an empty variant is an
/// error. The result is absent on success, otherwise the reason; `list` is emptied first in every case.
CBstr ReadStringArray(std::vector<std::u16string>& list, const VARIANT& variant);

/// Puts an array of `count` zeroed elements with lower bound 0 into `variant`, whose old content isn't looked at. False
/// without memory or for a negative count; the variant is left alone then.
bool CreateArrayVariant(VARIANT& variant, std::int32_t count, VARTYPE elementType);

/// A list for an output: of no elements the empty variant, otherwise the array. `fill` is called with each index and
/// puts the element in; it answers with a result code. False without memory, with the variant empty.
template <class Fill>
bool CreateListVariant(VARIANT& variant, std::size_t count, VARTYPE elementType, Fill&& fill) {
    VariantInit(&variant);
    if (count == 0) return true;
    CVariant made;
    if (count > 0x7FFFFFFF || !CreateArrayVariant(made.Get(), static_cast<std::int32_t>(count), elementType))
        return false;
    for (std::size_t i = 0; i < count; ++i) {
        if (FAILED(fill(*made.Get().parray, static_cast<LONG>(i)))) return false;
    }
    variant = made.Detach();
    return true;
}

/// Stores a copy of `text` at `index` of a one-dimensional array of strings; an absent text makes a null element.
HRESULT PutString(SAFEARRAY& array, LONG index, BSTR text);
HRESULT PutString(SAFEARRAY& array, LONG index, std::u16string_view text);  // empty text: a null element
HRESULT PutNumber(SAFEARRAY& array, LONG index, double number);

/// Copies the string at `index` of an array that holds strings into `text`; a null element gives an absent string.
/// False without memory or for an index outside the bounds.
bool TakeString(const VARIANT& strings, LONG index, CBstr& text);

}  // namespace reka
