// SPDX-License-Identifier: MIT
// Any text as a formula in free shape. What comes out is its own normal form, as far as counts of six digits go; one
// that grew beyond all numbers is written as a word, and is left out of this.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "formula/FormulaNormalForm.h"
#include "platform/CodePage.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::u16string once = reka::NormalizePcdFormula(reka::WideText(bytes));
    if (once.find(u"inf") != std::u16string::npos || once.find(u"nan") != std::u16string::npos) return 0;
    if (reka::NormalizePcdFormula(once) != once) std::abort();
    return 0;
}
