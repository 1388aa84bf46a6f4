// SPDX-License-Identifier: MIT
// How rekasim compares the names that simulators and packages exchange.

#pragma once

#include <algorithm>
#include <string_view>

namespace rekasim {

/// Equal with the letters A to Z folded.
inline bool SameName(std::u16string_view left, std::u16string_view right) {
    constexpr auto fold = [](char16_t letter) {
        return letter >= u'a' && letter <= u'z' ? static_cast<char16_t>(letter - u'a' + u'A') : letter;
    };
    return left.size() == right.size() && std::equal(left.begin(), left.end(), right.begin(),
                                                     [fold](char16_t a, char16_t b) { return fold(a) == fold(b); });
}

}  // namespace rekasim
