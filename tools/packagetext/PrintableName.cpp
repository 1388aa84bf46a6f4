// SPDX-License-Identifier: MIT
// Terminals take orders from two ranges of characters, those below the blank and those from U+007F to U+009F.

#include "packagetext/PrintableName.h"

#include <algorithm>

#include "text/Utf8.h"

namespace packagetext {

namespace {

bool Steers(char16_t unit) {
    return unit < u' ' || (unit >= 0x7F && unit <= 0x9F);
}

}  // namespace

std::string PrintableName(std::u16string_view name) {
    std::u16string shown(name);
    std::replace_if(shown.begin(), shown.end(), Steers, u'?');
    return reka::Utf8FromUtf16(shown);
}

std::string PrintableName(std::string_view name) {
    return PrintableName(reka::Utf16FromUtf8(name));
}

std::string OnOneLine(std::u16string_view text) {
    std::u16string line;
    for (const char16_t unit : text) {
        if (unit != u' ' && !Steers(unit)) {
            line += unit;
        } else if (!line.empty() && line.back() != u' ') {
            line += u' ';
        }
    }
    line.erase(line.find_last_not_of(u' ') + 1);
    return reka::Utf8FromUtf16(line);
}

}  // namespace packagetext
