// SPDX-License-Identifier: MIT
// Angle reduction after M. Payne and R. Hanek ("Radian reduction for trigonometric functions", 1983): the angle times
// 2/pi is computed in whole numbers, with those digits of 2/pi alone that matter. Digits that would add a multiple of
// four quarters are left out at the top, and at the bottom enough are kept for the doubles that come closest to a
// multiple of pi/2, of which 61 bits of the fraction vanish.

#include "expression/math/AngleReduction.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

namespace reka {

namespace {

// 2/pi behind the binary point, 32 bits each.
constexpr std::uint32_t twoOverPi[] = {
    0xA2F9836E, 0x4E441529, 0xFC2757D1, 0xF534DDC0, 0xDB629599, 0x3C439041, 0xFE5163AB, 0xDEBBC561,
    0xB7246E3A, 0x424DD2E0, 0x06492EEA, 0x09D1921C, 0xFE1DEB1C, 0xB129A73E, 0xE88235F5, 0x2EBB4484,
    0xE99C7026, 0xB45F7E41, 0x3991D639, 0x835339F4, 0x9C845F8B, 0xBDF9283B, 0x1FF897FF, 0xDE05980F,
    0xEF2F118B, 0x5A0A6D1F, 0x6D367ECF, 0x27CB09B7, 0x4F463F66, 0x9E5FEA2D, 0x7527BAC7, 0xEBE5F17B,
    0x3D0739F7, 0x8A5292EA, 0x6BFB5FB1, 0x1F8D5D08, 0x56033046, 0xFC7B6BAB, 0xF0CFBC20, 0x9AF4361D};

constexpr int usedWords = 8;      // of 2/pi, from the first one that matters
constexpr int factorWords = 3;    // of the angle's digits, shifted by up to 31 bits
constexpr int fractionWords = 5;  // of the product behind its point

using Product = std::array<std::uint32_t, usedWords + factorWords>;  // lowest word first

// `factor`, lowest word first, times the words of 2/pi from `firstWord` on.
Product MultiplyByTwoOverPi(const std::array<std::uint32_t, factorWords>& factor, int firstWord) {
    Product product{};
    for (std::size_t i = 0; i < usedWords; ++i) {
        const std::uint64_t word = twoOverPi[static_cast<std::size_t>(firstWord) + usedWords - 1 - i];
        std::uint64_t carry = 0;
        for (std::size_t j = 0; j < factorWords; ++j) {
            carry += word * factor[j] + product[i + j];
            product[i + j] = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
        product[i + factorWords] = static_cast<std::uint32_t>(carry);
    }
    return product;
}

// The fraction in words, highest first, as a number; one of a half or more counts as negative, down from 1.
DoubleDouble FractionOf(std::array<std::uint32_t, fractionWords>& words, bool isUpperHalf) {
    if (isUpperHalf) {
        for (std::uint32_t& word : words) word = ~word;  // less by one unit of the last word, which doesn't count
    }
    DoubleDouble fraction;
    double unit = isUpperHalf ? -0x1p-32 : 0x1p-32;
    for (const std::uint32_t word : words) {
        const DoubleDouble sum = TwoSum(fraction.high, word * unit);
        fraction = FastTwoSum(sum.high, sum.low + fraction.low);
        unit *= 0x1p-32;
    }
    return fraction;
}

}  // namespace

ReducedAngle ReduceAngle(double angle) {
    constexpr double quarterPi = 0x1.921fb54442d18p-1;
    if (angle <= quarterPi) return {{angle}, 0};

    // angle = digits * 2^exponent, the digits a whole number of 53 bits.
    const auto bits = std::bit_cast<std::uint64_t>(angle);
    const std::uint64_t digits = (bits & 0x000FFFFFFFFFFFFF) | 0x0010000000000000;
    const int exponent = static_cast<int>(bits >> 52) - 1075;

    // 2^exponent = 2^(32 * firstWord) * 2^(32 * wordShift) * 2^bitShift; the first factor lets words of 2/pi drop out.
    const int firstWord = std::max(0, (exponent - 2) / 32);
    const int shift = exponent - 32 * firstWord;  // -53 to 33
    const int wordShift = shift >> 5;             // -2 to 1
    const int bitShift = shift & 31;
    const std::uint64_t shifted = digits << bitShift;
    const std::uint64_t above = bitShift == 0 ? 0 : digits >> (64 - bitShift);
    const Product product =
        MultiplyByTwoOverPi({static_cast<std::uint32_t>(shifted), static_cast<std::uint32_t>(shifted >> 32),
                             static_cast<std::uint32_t>(above)},
                            firstWord);

    const auto point = static_cast<std::size_t>(usedWords - wordShift);  // the word in front of the binary point
    std::array<std::uint32_t, fractionWords> fraction{};
    for (std::size_t i = 0; i < fractionWords; ++i) fraction[i] = product[point - 1 - i];
    const bool isUpperHalf = fraction[0] >> 31 != 0;
    const auto quadrant = static_cast<int>((product[point] + (isUpperHalf ? 1 : 0)) & 3);
    return {FractionOf(fraction, isUpperHalf) * constants::halfPi, quadrant};
}

}  // namespace reka
