// SPDX-License-Identifier: MIT
// Arithmetic on pairs of doubles, where the exact result is known.

#include "expression/math/DoubleDouble.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <random>

#include "expression/math/AngleReduction.h"
#include "expression/math/Exponential.h"
#include "expression/math/Logarithm.h"
#include "support/MathGrid.h"

namespace reka::test {
namespace {

// A whole number of `bits` random bits, with its sign.
double RandomWhole(std::mt19937_64& random, int bits) {
    const double magnitude = static_cast<double>(random() >> (64 - bits));
    return random() & 1 ? magnitude : -magnitude;
}

TEST(DoubleDouble, AddsWithoutError) {
    const DoubleDouble sum = TwoSum(1.0, 0x1p-80);
    EXPECT_EQ(sum.high, 1.0);
    EXPECT_EQ(sum.low, 0x1p-80);
    const DoubleDouble otherOrder = TwoSum(0x1p-80, 1.0);
    EXPECT_EQ(otherOrder.high, 1.0);
    EXPECT_EQ(otherOrder.low, 0x1p-80);
}

TEST(DoubleDouble, MultipliesWithoutError) {
    // (2^52 + 1) * (2^52 - 1) = 2^104 - 1
    const DoubleDouble product = TwoProduct(0x1p52 + 1.0, 0x1p52 - 1.0);
    EXPECT_EQ(product.high, 0x1p104);
    EXPECT_EQ(product.low, -1.0);
}

TEST(DoubleDouble, KeepsWholeNumbersOfAHundredBits) {
    std::mt19937_64 random(5);
    for (int i = 0; i < 10000; ++i) {
        const DoubleDouble a = TwoSum(RandomWhole(random, 50) * 0x1p50, RandomWhole(random, 50));
        const DoubleDouble b = TwoSum(RandomWhole(random, 50) * 0x1p50, RandomWhole(random, 50));
        const DoubleDouble back = (a + b) - b;
        ASSERT_EQ(back.high, a.high);
        ASSERT_EQ(back.low, a.low);
    }
}

TEST(DoubleDouble, DividesWhatItHasMultiplied) {
    std::mt19937_64 random(6);
    for (int i = 0; i < 10000; ++i) {
        const DoubleDouble a = TwoSum(RandomWhole(random, 53) + 0.5, 0x1p-50);
        const DoubleDouble b = TwoSum(RandomWhole(random, 53) - 0.5, 0x1p-49);
        const DoubleDouble difference = a * b / b - a;
        ASSERT_LE(std::fabs(Round(difference)), std::fabs(a.high) * 0x1p-100);
    }
}

TEST(LogarithmOf, VanishesAtOneAlone) {
    EXPECT_EQ(Round(LogarithmOf(1.0)), 0.0);
    EXPECT_FALSE(std::signbit(Round(LogarithmOf(1.0))));
    EXPECT_EQ(Round(LogarithmOf(1.0 + 0x1p-52)), 0x1p-52 - 0x1p-105);
}

// The runtime's logarithm may stand in front of this one, so the grid is held to it here, to its last term.
TEST(LogarithmOf, IsGoodBeyondADouble) {
    int count = 0;
    double worst = 0.0;
    for (std::size_t i = 0; i < gridRowCount; ++i) {
        const GridRow& row = gridRows[i];
        const double x = std::bit_cast<double>(row.x);
        const double truth = std::bit_cast<double>(row.truth);
        if (row.function != static_cast<int>(GridFunction::Log) || !(x > 0.0) || !std::isfinite(x) || truth == 0.0)
            continue;
        ++count;
        const double unit = std::ldexp(1.0, std::ilogb(truth) - 52);
        const DoubleDouble logarithm = LogarithmOf(x);
        const double error = (logarithm.high - truth) + (logarithm.low - static_cast<double>(row.rest) * unit);
        worst = std::fmax(worst, std::fabs(error / truth));
    }
    std::printf("LogarithmOf is off by 2^%.2f of its value at most\n", std::log2(worst));
    EXPECT_GT(count, 500);
    EXPECT_LE(worst, 0x1p-66);
}

// Near 1 the logarithm is nothing but its series, whose last terms are seen at the ends of that range alone. The other
// series for it, that of the inverse hyperbolic tangent of (x - 1) / (x + 1), tells the truth to a hundred bits.
TEST(LogarithmOf, IsGoodBeyondADoubleNearOne) {
    double worst = 0.0;
    for (double x = 1.0 - 0x1p-8; x < 1.0 + 0x1p-7; x += 0x1.23p-20) {
        if (x == 1.0) continue;
        const DoubleDouble ratio = TwoSum(x, -1.0) / TwoSum(x, 1.0);
        DoubleDouble sum;
        for (int n = 15; n >= 1; n -= 2) sum = sum * (ratio * ratio) + DoubleDouble{1.0} / DoubleDouble{n * 1.0};
        const DoubleDouble truth = ratio * sum * 2.0;
        worst = std::fmax(worst, std::fabs(Round(LogarithmOf(x) - truth) / truth.high));
    }
    std::printf("LogarithmOf is off by 2^%.2f of its value near 1 at most\n", std::log2(worst));
    EXPECT_LE(worst, 0x1p-66);
}

TEST(ExponentialOf, GivesBackWhatTheLogarithmTook) {
    for (double x = 1e-300; x < 1e300; x *= 1.7e3) {
        EXPECT_EQ(RoundScaled(ExponentialOf(LogarithmOf(x))), x);
    }
}

TEST(RoundScaled, LeavesTheRangeOfADoubleAtBothEnds) {
    EXPECT_EQ(RoundScaled({{1.0}, 1023}), 0x1p1023);
    EXPECT_EQ(RoundScaled({{1.0}, 1024}), HUGE_VAL);
    EXPECT_EQ(RoundScaled({{1.0}, 2900}), HUGE_VAL);
    EXPECT_EQ(RoundScaled({{1.0}, -1074}), 0x1p-1074);
    EXPECT_EQ(RoundScaled({{1.0}, -1076}), 0.0);
    EXPECT_EQ(RoundScaled({{1.0}, -2900}), 0.0);
}

TEST(ReduceAngle, TellsTheQuadrant) {
    EXPECT_EQ(ReduceAngle(0.5).quadrant, 0);
    EXPECT_EQ(ReduceAngle(0.5).rest.high, 0.5);
    EXPECT_EQ(ReduceAngle(1.0).quadrant, 1);
    EXPECT_EQ(ReduceAngle(3.0).quadrant, 2);
    EXPECT_EQ(ReduceAngle(5.0).quadrant, 3);
    EXPECT_EQ(ReduceAngle(6.0).quadrant, 0);
    EXPECT_NEAR(ReduceAngle(6.0).rest.high, -0.28318530717958648, 1e-16);  // 6 - 2 pi
}

}  // namespace
}  // namespace reka::test
