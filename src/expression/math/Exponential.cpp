// SPDX-License-Identifier: MIT
// The exponential after the table method of P. T. P. Tang ("Table-driven implementation of the exponential function in
// IEEE floating-point arithmetic", 1989):
//     x = n * log(2) / 128 + r,   exp(x) = 2^(n / 128) * exp(r),
// with the whole part of n / 128 as an exponent, the rest from a table, and a short series for r, which is below 0.003.

#include "expression/math/Exponential.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

namespace reka {

namespace {

constexpr int stepCount = 128;

// 2^(i / 128), each entry from the one before.
constexpr std::array<DoubleDouble, stepCount> MakePowersOfTwo() {
    const DoubleDouble step = constants::logOfTwo * (1.0 / stepCount);
    DoubleDouble root = {1.0};
    for (int n = 14; n >= 1; --n) root = DoubleDouble{1.0} + root * step / DoubleDouble{static_cast<double>(n)};
    std::array<DoubleDouble, stepCount> powers{};
    powers[0] = {1.0};
    for (std::size_t i = 1; i < stepCount; ++i) powers[i] = powers[i - 1] * root;
    return powers;
}

constexpr std::array<DoubleDouble, stepCount> powersOfTwo = MakePowersOfTwo();

// 2 to the power of an exponent of normal numbers.
double PowerOfTwo(int exponent) {
    return std::bit_cast<double>(static_cast<std::uint64_t>(exponent + 1023) << 52);
}

constexpr double rounder = 0x1.8p52;  // added and taken away again, it leaves the nearest whole number

// 2^(n / 128) * exp(r).
ScaledNumber Compose(double n, double r) {
    const double square = r * r;
    const double farTerms = (1.0 / 24 + r * (1.0 / 120)) + square * (1.0 / 720);
    const double series = r + square * ((1.0 / 2 + r * (1.0 / 6)) + square * farTerms);

    const int step = static_cast<int>(n);
    const DoubleDouble& power = powersOfTwo[static_cast<std::size_t>(step & (stepCount - 1))];
    return {FastTwoSum(power.high, power.low + power.high * series), step >> 7};
}

}  // namespace

ScaledNumber ExponentialOf(DoubleDouble x) {
    constexpr double stepsPerUnit = 0x1.71547652b82fep+7;  // 128 / log(2)
    // log(2) / 128 in two parts; the first has 28 bits, so that its product with n is without error.
    constexpr double stepUpper = 0x1.62e42ffp-8;
    constexpr double stepLower = -0x1.718432a1b0e26p-42;
    const double n = (x.high * stepsPerUnit + rounder) - rounder;
    return Compose(n, (x.high - n * stepUpper) + (x.low - n * stepLower));
}

ScaledNumber PowerOfTenOf(double x) {
    constexpr double stepsPerUnit = 0x1.a934f0979a371p+8;  // 128 * log2(10)
    // log10(2) / 128 in two parts, as above.
    constexpr double stepUpper = 0x1.344135p-9;
    constexpr double stepLower = 0x1.3ef3fde623e25p-38;
    constexpr double logOfTen = 0x1.26bb1bbb55516p+1;
    const double n = (x * stepsPerUnit + rounder) - rounder;
    return Compose(n, ((x - n * stepUpper) - n * stepLower) * logOfTen);
}

double RoundScaled(const ScaledNumber& number) {
    const double value = Round(number.value);
    const int exponent = number.exponent;
    if (exponent >= -1000 && exponent <= 1000) return value * PowerOfTwo(exponent);
    // In two steps, of which only the second one can leave the range of normal numbers and round.
    if (exponent > 0) return value * 0x1p1000 * PowerOfTwo(std::min(exponent - 1000, 1000));
    return value * 0x1p-1000 * PowerOfTwo(std::max(exponent + 1000, -1000));
}

DoubleDouble Shift(DoubleDouble number, int shift) {
    const double factor = PowerOfTwo(shift);
    return {number.high * factor, number.low * factor};
}

}  // namespace reka
