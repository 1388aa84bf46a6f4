// SPDX-License-Identifier: MIT
// The folding of case that names and words go by: the letters a to z alone, whatever the host's locale.

#pragma once

#include <string>
#include <string_view>

namespace reka {

/// The letters a to z become A to Z; nothing else changes.
constexpr char16_t UpperCase(char16_t character) {
    return character >= u'a' && character <= u'z' ? static_cast<char16_t>(character - u'a' + u'A') : character;
}

/// The same letter by letter.
inline std::u16string UpperCase(std::u16string_view text) {
    std::u16string upper(text);
    for (char16_t& character : upper) character = UpperCase(character);
    return upper;
}

}  // namespace reka
