// SPDX-License-Identifier: MIT
// The powers of ten that a double can hold, each rounded correctly: made once from their decimal texts, when the
// program or module is loaded.

#include "expression/math/PowersOfTen.h"

#include <charconv>
#include <limits>

#include "platform/HostArithmetic.h"

namespace reka {

PowerTable MakePowersOfTen() {
    const COwnArithmetic arithmetic;  // the conversion may compute
    PowerTable powers{};
    for (int exponent = smallestPowerOfTen; exponent <= greatestPowerOfTen; ++exponent) {
        char text[8] = "1e";
        const char* const end = std::to_chars(text + 2, text + sizeof text, exponent).ptr;
        std::from_chars(text, end, powers[static_cast<std::size_t>(exponent - smallestPowerOfTen)]);
    }
    return powers;
}

namespace {

const PowerTable powers = MakePowersOfTen();

}  // namespace

double PowerOfTen(double exponent) {
    if (exponent < smallestPowerOfTen) return 0.0;
    if (exponent > greatestPowerOfTen) return std::numeric_limits<double>::infinity();
    return powers[static_cast<std::size_t>(static_cast<int>(exponent) - smallestPowerOfTen)];
}

}  // namespace reka
