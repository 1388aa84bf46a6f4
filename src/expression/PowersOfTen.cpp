// The powers of ten that a double can hold, each rounded correctly: made once from their decimal texts.

#include "expression/PowersOfTen.h"

#include <array>
#include <charconv>
#include <limits>

namespace reka {

namespace {

constexpr int smallestExponent = -323;  // 1E-324 rounds to 0
constexpr int greatestExponent = 308;

using PowerTable = std::array<double, greatestExponent - smallestExponent + 1>;

PowerTable MakePowerTable() {
    PowerTable powers{};
    for (int exponent = smallestExponent; exponent <= greatestExponent; ++exponent) {
        char text[8] = "1e";
        const char* const end = std::to_chars(text + 2, text + sizeof text, exponent).ptr;
        std::from_chars(text, end, powers[static_cast<std::size_t>(exponent - smallestExponent)]);
    }
    return powers;
}

const PowerTable powers = MakePowerTable();

}  // namespace

double PowerOfTen(double exponent) {
    if (exponent < smallestExponent) return 0.0;
    if (exponent > greatestExponent) return std::numeric_limits<double>::infinity();
    return powers[static_cast<std::size_t>(static_cast<int>(exponent) - smallestExponent)];
}

}  // namespace reka
