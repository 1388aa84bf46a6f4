// SPDX-License-Identifier: MIT
// Arithmetic on numbers of about 106 bits, each the unevaluated sum of two doubles. The functions of the language are
// computed in it where a double alone would lose the last place. The operations are those of T. J. Dekker ("A
// floating-point technique for extending the available precision", 1971) and D. E. Knuth ("The Art of Computer
// Programming", volume 2); they hold as long as nothing overflows and each operation is rounded to a double.

#pragma once

#include <bit>
#include <cstdint>

namespace reka {

/// The number `high + low`, where `low` is at most half a unit in the last place of `high`.
struct DoubleDouble {
    double high = 0.0;
    double low = 0.0;
};

/// The sum of two doubles without error, for |a| not less than |b| or a = 0.
constexpr DoubleDouble FastTwoSum(double a, double b) {
    const double sum = a + b;
    return {sum, b - (sum - a)};
}

/// The sum of any two doubles without error.
constexpr DoubleDouble TwoSum(double a, double b) {
    const double sum = a + b;
    const double partOfB = sum - a;
    return {sum, (a - (sum - partOfB)) + (b - partOfB)};
}

/// The upper half of the digits of `a`, which is below 2^996; what is left of `a` is the lower half.
constexpr double UpperHalf(double a) {
    const double spread = 134217729.0 * a;  // 2^27 + 1
    return spread - (spread - a);
}

/// The first 26 digits of `a`, cut off and not rounded. What is left of `a` is a double, and the square of what is cut
/// off one too.
constexpr double UpperDigits(double a) {
    constexpr std::uint64_t mask = ~((std::uint64_t{1} << 27) - 1);
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(a) & mask);
}

/// The product of two doubles without error, by the halves of their digits.
constexpr DoubleDouble TwoProduct(double a, double b) {
    const double product = a * b;
    const double aHigh = UpperHalf(a);
    const double aLow = a - aHigh;
    const double bHigh = UpperHalf(b);
    const double bLow = b - bHigh;
    return {product, ((aHigh * bHigh - product) + aHigh * bLow + aLow * bHigh) + aLow * bLow};
}

constexpr DoubleDouble operator-(DoubleDouble a) {
    return {-a.high, -a.low};
}

constexpr DoubleDouble operator+(DoubleDouble a, DoubleDouble b) {
    const DoubleDouble high = TwoSum(a.high, b.high);
    const DoubleDouble low = TwoSum(a.low, b.low);
    const DoubleDouble sum = FastTwoSum(high.high, high.low + low.high);
    return FastTwoSum(sum.high, sum.low + low.low);
}

constexpr DoubleDouble operator-(DoubleDouble a, DoubleDouble b) {
    return a + -b;
}

constexpr DoubleDouble operator*(DoubleDouble a, DoubleDouble b) {
    const DoubleDouble product = TwoProduct(a.high, b.high);
    return FastTwoSum(product.high, product.low + (a.high * b.low + a.low * b.high));
}

constexpr DoubleDouble operator*(DoubleDouble a, double b) {
    const DoubleDouble product = TwoProduct(a.high, b);
    return FastTwoSum(product.high, product.low + a.low * b);
}

constexpr DoubleDouble operator/(DoubleDouble a, DoubleDouble b) {
    const double quotient = a.high / b.high;
    const DoubleDouble rest = a - b * quotient;
    return FastTwoSum(quotient, (rest.high + rest.low) / b.high);
}

/// The double nearest to `a`.
constexpr double Round(DoubleDouble a) {
    return a.high + a.low;
}

namespace constants {
constexpr DoubleDouble logOfTwo = {0x1.62e42fefa39efp-1, 0x1.abc9e3b39803fp-56};
constexpr DoubleDouble inverseLogOfTen = {0x1.bcb7b1526e50ep-2, 0x1.95355baaafad3p-57};
constexpr DoubleDouble pi = {0x1.921fb54442d18p+1, 0x1.1a62633145c07p-53};
constexpr DoubleDouble halfPi = {0x1.921fb54442d18p+0, 0x1.1a62633145c07p-54};
}  // namespace constants

}  // namespace reka
