// SPDX-License-Identifier: MIT
// The comparison of names everywhere: reactions, properties, phases, bases, compounds, CAS numbers, templates.

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "platform/Holders.h"

namespace reka {

/// True when both texts are equal with the letters A to Z folded. An absent string counts as an empty one.
bool SameText(std::u16string_view left, std::u16string_view right);
bool SameText(const OLECHAR* left, const OLECHAR* right);
bool SameText(const OLECHAR* left, std::u16string_view right);

/// The same for a string that is most often spelled like the other text: then it's compared as a block of memory. A
/// `right` that is a view holds no zero character.
inline bool SameUsualText(BSTR left, std::u16string_view right) {
    const std::size_t size = right.size();
    if (size != 0 && SysStringLen(left) == size && std::memcmp(left, right.data(), size * sizeof(OLECHAR)) == 0) {
        return true;
    }
    return SameText(left, right);
}
inline bool SameUsualText(BSTR left, BSTR right) {
    const std::size_t size = SysStringLen(right);
    if (size != 0 && SysStringLen(left) == size && std::memcmp(left, right, size * sizeof(OLECHAR)) == 0) return true;
    return SameText(left, right);
}

/// A number that is the same for texts that are the same. Which other texts share it depends on `seed`.
std::size_t SameTextHash(std::u16string_view text, std::uint64_t seed);

}  // namespace reka
