// SPDX-License-Identifier: MIT
// Any text in a numeric field. It has a value or a reason, never both and never neither.

#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "expression/parse/EvaluateScalarInput.h"
#include "platform/CodePage.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::u16string text = reka::WideText({reinterpret_cast<const char*>(data), size});
    double value = 0.0;
    std::u16string errorText;
    if (reka::EvaluateScalarInput(text, value, errorText) != errorText.empty()) std::abort();
    return 0;
}
