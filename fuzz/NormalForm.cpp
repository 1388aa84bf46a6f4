// SPDX-License-Identifier: MIT
// Any text as a formula in free shape. What comes out is its own normal form, as far as counts of six digits go: a
// count of 1.0000011 is written with six digits, and those are near enough to 1 to count as 1. A count that grew beyond
// all numbers is written as a word, and is left out of this.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "formula/FormulaNormalForm.h"
#include "platform/CodePage.h"

namespace {

/// The normal form without the counts that are 1 by the digits with which they were written.
std::u16string WithoutCountsOfOne(std::u16string text) {
    constexpr std::u16string_view one = u"1.000001";
    for (std::size_t at = text.find(one); at != std::u16string::npos; at = text.find(one, at)) {
        const bool isWhole = at > 0 && (text[at - 1] < u'0' || text[at - 1] > u'9');
        if (isWhole) {
            text.erase(at, one.size());
        } else {
            at += one.size();
        }
    }
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::u16string once = reka::NormalizePcdFormula(reka::WideText(bytes));
    if (once.find(u"inf") != std::u16string::npos || once.find(u"nan") != std::u16string::npos) return 0;
    if (reka::NormalizePcdFormula(once) != WithoutCountsOfOne(once)) std::abort();
    return 0;
}
