// SPDX-License-Identifier: MIT
// The natural logarithm after the table method of P. T. P. Tang ("Table-driven implementation of the logarithm function
// in IEEE floating-point arithmetic", 1990): x = 2^k * m is brought close to 1 by a factor c from a table,
//     log(x) = k * log(2) - log(c) + log(1 + r)   with   r = m * c - 1, without error,
// and the last term is a short series. Near x = 1 the factor is a power of two and the first two terms vanish, so that
// nothing cancels.

#include "expression/math/Logarithm.h"

#include <array>
#include <bit>
#include <cstdint>

namespace reka {

namespace {

struct Factor {
    double factor;                  // close to 1/m, of 10 bits
    DoubleDouble logarithm;         // -log(factor), less log(2) for the upper half of the table
    DoubleDouble decimalLogarithm;  // the same to the base 10
    int exponent;                   // 1 for the upper half, which counts m as 2 * (m/2)
};

constexpr int factorCount = 128;
constexpr int firstOfUpperHalf = 53;  // m from about the square root of 2 on

// log(x) for x near 1, by the series of the inverse hyperbolic tangent.
constexpr DoubleDouble LogarithmBySeries(double x) {
    const DoubleDouble ratio = TwoSum(x, -1.0) / TwoSum(x, 1.0);
    const DoubleDouble square = ratio * ratio;
    DoubleDouble sum;
    for (int n = 49; n >= 1; n -= 2) sum = sum * square + DoubleDouble{1.0} / DoubleDouble{static_cast<double>(n)};
    return ratio * sum * 2.0;
}

constexpr std::array<Factor, factorCount> MakeFactors() {
    std::array<Factor, factorCount> factors{};
    for (int i = 0; i < factorCount; ++i) {
        const bool isUpper = i >= firstOfUpperHalf;
        const double middle = 1.0 + (i + 0.5) / factorCount;
        double factor = static_cast<double>(static_cast<int>(512.0 / middle + 0.5)) / 512.0;
        if (i == 0) factor = 1.0;
        if (i == factorCount - 1) factor = 0.5;
        const double nearOne = isUpper ? 2.0 * factor : factor;
        const DoubleDouble logarithm = -LogarithmBySeries(nearOne);
        factors[static_cast<std::size_t>(i)] = {factor, logarithm, logarithm * constants::inverseLogOfTen,
                                                isUpper ? 1 : 0};
    }
    return factors;
}

constexpr std::array<Factor, factorCount> factors = MakeFactors();

constexpr int mantissaBits = 52;
constexpr std::uint64_t mantissaMask = (std::uint64_t{1} << mantissaBits) - 1;
constexpr std::uint64_t bitsOfOne = std::bit_cast<std::uint64_t>(1.0);

// log(1 + r) - r + r^2 / 2, for |r| up to 1/128. Pairs of terms, since a sum from the last term on has to wait longer.
double SeriesFromTheCube(double r) {
    const double square = r * r;
    const double nearTerms = (1.0 / 3 - r * (1.0 / 4)) + square * (1.0 / 5 - r * (1.0 / 6));
    const double farTerms = (1.0 / 7 - r * (1.0 / 8)) + square * (1.0 / 9 - r * (1.0 / 10));
    return r * square * (nearTerms + square * square * farTerms);
}

// x = 2^exponent / c * (1 + rest + smallRest), where c is the entry's factor, or half of it in the upper half.
struct Parts {
    int exponent;
    const Factor& factor;
    double rest;       // of at most 28 bits, up to 1/128
    double smallRest;  // up to 2^-26
};

inline Parts Split(double x) {
    int exponent = 0;
    if (x < 0x1p-1022) {  // subnormal
        x *= 0x1p54;
        exponent = -54;
    }
    const auto bits = std::bit_cast<std::uint64_t>(x);
    const std::uint64_t mantissa = bits & mantissaMask;
    const Factor& factor = factors[static_cast<std::size_t>(mantissa >> (mantissaBits - 7))];
    exponent += static_cast<int>(bits >> mantissaBits) - 1023 + factor.exponent;

    // m in two halves, so that their products with the factor are without error.
    const auto m = std::bit_cast<double>(mantissa | bitsOfOne);
    const double upper = UpperDigits(m);
    return {exponent, factor, upper * factor.factor - 1.0, (m - upper) * factor.factor};
}

DoubleDouble JoinLogarithm(const Parts& parts) {
    const auto& [exponent, factor, rest, smallRest] = parts;
    const DoubleDouble r = TwoSum(rest, smallRest);
    const double rUpper = UpperDigits(r.high);
    const DoubleDouble square = {rUpper * rUpper, (r.high - rUpper) * (r.high + rUpper)};
    const DoubleDouble series = FastTwoSum(r.high, -0.5 * square.high);
    const double seriesLow = series.low + (r.low - r.high * r.low) + (SeriesFromTheCube(r.high) - 0.5 * square.low);
    if (exponent == 0 && factor.logarithm.high == 0.0) return FastTwoSum(series.high, seriesLow);

    // log(2) to 42 bits, so that its product with an exponent is without error. The three parts are of falling size,
    // and no two of them cancel.
    constexpr double logOfTwoUpper = 0x1.62e42fefa3800p-1;
    constexpr double logOfTwoLower = 0x1.ef35793c76730p-45;
    const DoubleDouble whole = FastTwoSum(exponent * logOfTwoUpper, factor.logarithm.high);
    const DoubleDouble sum = FastTwoSum(whole.high, series.high);
    const double low = (exponent * logOfTwoLower + factor.logarithm.low) + whole.low + sum.low + seriesLow;
    return FastTwoSum(sum.high, low);
}

}  // namespace

DoubleDouble LogarithmOf(double x) {
    return JoinLogarithm(Split(x));
}

double DecimalLogarithmOf(double x) {
    // 1 / log(10) in two parts. The first has 25 bits: its product with the rest is without error, as is that with the
    // upper digits of a logarithm, and all others are far smaller.
    constexpr double factorUpper = 0x1.bcb7b1p-2;
    constexpr double factorLower = constants::inverseLogOfTen.high - factorUpper + constants::inverseLogOfTen.low;
    const Parts parts = Split(x);
    if (parts.exponent == 0) {  // near 1, where the result may be as small as the rest
        const DoubleDouble logarithm = JoinLogarithm(parts);
        const double upper = UpperDigits(logarithm.high);
        const double lower = (logarithm.high - upper) + logarithm.low;
        return upper * factorUpper + (upper * factorLower + lower * constants::inverseLogOfTen.high);
    }
    const double r = parts.rest + parts.smallRest;
    const double series = r * r * -0.5 + SeriesFromTheCube(r);
    // log10(2) to 42 bits.
    constexpr double logOfTwoUpper = 0x1.34413509f78p-2;
    constexpr double logOfTwoLower = 0x1.fef311f12b358p-46;
    const DoubleDouble& ofFactor = parts.factor.decimalLogarithm;
    const DoubleDouble whole = FastTwoSum(parts.exponent * logOfTwoUpper, ofFactor.high);
    const DoubleDouble sum = FastTwoSum(whole.high, parts.rest * factorUpper);
    const double small = (parts.exponent * logOfTwoLower + ofFactor.low) + whole.low + sum.low;
    return sum.high +
           (small + (parts.rest * factorLower + (parts.smallRest + series) * constants::inverseLogOfTen.high));
}

}  // namespace reka
