// SPDX-License-Identifier: MIT
// Reading typed entries of a property bag, and reporting what is wrong with one.

#pragma once

#include <cstdint>
#include <string_view>

#include "platform/Holders.h"

namespace reka {

/// Where entries come from and faults go to. Holds no counts: it lives inside one call of the host.
struct BagReader {
    IPropertyBag* bag = nullptr;
    IErrorLog* errorLog = nullptr;     // may be null: then nobody is told
    const char16_t* source = u"REKA";  // who reports
};

/// A value read from a bag, with the bounds of the array that it holds.
struct BagVariant {
    BagVariant() { VariantInit(&value); }
    ~BagVariant() {
        if (holdsValue) VariantClear(&value);
    }
    BagVariant(const BagVariant&) = delete;
    BagVariant& operator=(const BagVariant&) = delete;

    VARIANT value;
    std::uint8_t holdsValue = 1;  // whether `value` needs clearing
    std::int32_t lowerBound = 0;
    std::int32_t count = 0;
};

/// Reads the entry `name` into `bagVariant`, whose old value is freed. True when it is of `expectedType`, a variant
/// type with VT_ARRAY for arrays; an empty value counts as an array of no elements. False when the bag hasn't got it,
/// which is told to nobody, and when it is of another shape, which is reported. Any lower bound is accepted.
bool ReadBagVariant(const BagReader& reader, const char16_t* name, BagVariant& bagVariant, VARTYPE expectedType);

/// Tells the error log, if there is one, what is wrong with the entry `name`.
void ReportBagError(const BagReader& reader, const char16_t* name, std::u16string_view text);

}  // namespace reka
