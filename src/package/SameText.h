// The comparison of names everywhere: reactions, properties, phases, bases, compounds, CAS numbers, templates.

#pragma once

#include <string_view>

#include "platform/Holders.h"

namespace reka {

/// True when both texts are equal with the letters A to Z folded. An absent string counts as an empty one.
bool SameText(std::u16string_view left, std::u16string_view right);

inline bool SameText(const OLECHAR* left, const OLECHAR* right) {
    return SameText(TextOf(left), TextOf(right));
}
inline bool SameText(const OLECHAR* left, std::u16string_view right) {
    return SameText(TextOf(left), right);
}

}  // namespace reka
