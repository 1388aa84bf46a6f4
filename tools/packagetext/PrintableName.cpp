// SPDX-License-Identifier: MIT
// Terminals take orders from two ranges of characters, those below the blank and those from U+007F to U+009F.

#include "packagetext/PrintableName.h"

#include <algorithm>

#include "text/Utf8.h"

namespace packagetext {

std::string PrintableName(std::u16string_view name) {
    std::u16string shown(name);
    const auto steers = [](char16_t unit) { return unit < u' ' || (unit >= 0x7F && unit <= 0x9F); };
    std::replace_if(shown.begin(), shown.end(), steers, u'?');
    return reka::Utf8FromUtf16(shown);
}

std::string PrintableName(std::string_view name) {
    return PrintableName(reka::Utf16FromUtf8(name));
}

}  // namespace packagetext
