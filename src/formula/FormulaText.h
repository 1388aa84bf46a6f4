// SPDX-License-Identifier: MIT
// What the readers of formulas share: the symbols and the counts.

#pragma once

#include <cstddef>
#include <string_view>

namespace reka {

/// The symbol at `position`: a letter from A to Z, with the small letter from a to z behind it if there is one. Empty
/// if none stands there.
inline std::u16string_view SymbolAt(std::u16string_view text, std::size_t position) {
    if (position >= text.size() || text[position] < u'A' || text[position] > u'Z') return {};
    const bool hasSmallLetter = position + 1 < text.size() && text[position + 1] >= u'a' && text[position + 1] <= u'z';
    return text.substr(position, hasSmallLetter ? 2 : 1);
}

/// The run of digits and points at `position`.
inline std::u16string_view CountAt(std::u16string_view text, std::size_t position) {
    const std::size_t end = text.find_first_not_of(u"0123456789.", position);
    return text.substr(position, end == std::u16string_view::npos ? end : end - position);
}

}  // namespace reka
