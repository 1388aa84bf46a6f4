// SPDX-License-Identifier: MIT
// Any text as a formula in its form. Counts are above 0, so no amount for a positive coefficient can be below it, and a
// text that was read has elements.

#include "formula/StructureFormula.h"

#include <cstdint>
#include <cstdlib>

#include "platform/CodePage.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    reka::CElementBalance balance;
    const bool isRead = reka::ReadStructureFormula(reka::WideText(bytes), 1.5, balance);
    for (const reka::ElementAmount& element : balance) {
        if (!(element.amount >= 0)) std::abort();
    }
    if (isRead && size > 0 && balance.empty()) std::abort();
    return 0;
}
