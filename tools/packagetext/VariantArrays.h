// SPDX-License-Identifier: MIT
// Lists as they travel through the interfaces: a VARIANT that holds a one-dimensional array, or nothing for an empty
// list.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/Holders.h"

namespace packagetext {

/// A text that can be absent, as a null BSTR is.
using NullableText = std::optional<std::u16string>;

reka::CVariant VariantFromText(const NullableText& text);
reka::CVariant VariantFromTexts(const std::vector<NullableText>& texts);
reka::CVariant VariantFromTexts(const std::vector<std::u16string>& texts);
reka::CVariant VariantFromNumbers(const std::vector<double>& numbers);
reka::CVariant VariantFromVariants(std::vector<reka::CVariant>& variants);

/// False when the variant is neither empty nor a one-dimensional array of strings; any lower bound is accepted.
bool ReadNullableTexts(const VARIANT& variant, std::vector<NullableText>& texts);
/// The same, with an absent string read as an empty one.
bool ReadTexts(const VARIANT& variant, std::vector<std::u16string>& texts);
/// False when the variant is neither empty nor a one-dimensional array of doubles.
bool ReadNumbers(const VARIANT& variant, std::vector<double>& numbers);

}  // namespace packagetext
