// SPDX-License-Identifier: MIT
// Any text in a numeric field. It has a value or a reason, never both and never neither; and a second reading comes to
// the same value, bit for bit, or finds none either.

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "ScalarReading.h"
#include "expression/parse/EvaluateScalarInput.h"
#include "platform/CodePage.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    double value = 0.0;
    std::u16string errorText;
    const bool isRead = reka::EvaluateScalarInput(reka::WideText(bytes), value, errorText);
    if (isRead != errorText.empty()) std::abort();
    constexpr std::size_t longest = 3000;  // what the second reading has the stack for
    if (size > longest) return 0;
    const std::optional<double> expected = reka::fuzz::ReadScalar(bytes);
    if (expected.has_value() != isRead) std::abort();
    if (!isRead || (std::isnan(*expected) && std::isnan(value))) return 0;
    if (std::bit_cast<std::uint64_t>(*expected) != std::bit_cast<std::uint64_t>(value)) std::abort();
    return 0;
}
