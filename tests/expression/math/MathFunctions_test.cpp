// SPDX-License-Identifier: MIT
// The functions of the language against the grid that MPFR has computed: true values with what their rounding to a
// double cut off, so that errors below one unit in the last place are seen too.

#include "expression/math/MathFunctions.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "expression/ExpressionBuilders.h"
#include "expression/math/PowersOfTen.h"
#include "expression/math/SmallPowers.h"
#include "expression/tree/NodeKinds.h"
#include "platform/HostArithmetic.h"
#include "support/MathGrid.h"

namespace reka::test {
namespace {

struct FunctionCase {
    const char* name;
    GridFunction function;
    double (*compute)(double x, double y);
    double tolerance;  // units in the last place
};

// The exponential and the power round subnormal results twice; the others are close to one rounding, or need none.
const FunctionCase functionCases[] = {
    {"Sqrt", GridFunction::Sqrt, [](double x, double) { return math::Sqrt(x); }, 0.51},
    {"Pow", GridFunction::Pow, [](double x, double y) { return math::Pow(x, y); }, 0.8},
    {"SmallPower", GridFunction::SmallPower, RaiseTo, 0.6},
    {"Exp", GridFunction::Exp, [](double x, double) { return math::Exp(x); }, 0.8},
    {"Exp10", GridFunction::Exp10, [](double x, double) { return math::Exp10(x); }, 0.8},
    {"Log", GridFunction::Log, [](double x, double) { return math::Log(x); }, 0.6},
    {"Log10", GridFunction::Log10, [](double x, double) { return math::Log10(x); }, 0.6},
    {"Sin", GridFunction::Sin, [](double x, double) { return math::Sin(x); }, 0.6},
    {"Cos", GridFunction::Cos, [](double x, double) { return math::Cos(x); }, 0.6},
    {"Tan", GridFunction::Tan, [](double x, double) { return math::Tan(x); }, 0.6},
    {"Asin", GridFunction::Asin, [](double x, double) { return math::Asin(x); }, 0.6},
    {"Acos", GridFunction::Acos, [](double x, double) { return math::Acos(x); }, 0.6},
    {"Atan", GridFunction::Atan, [](double x, double) { return math::Atan(x); }, 0.6},
    {"Sinh", GridFunction::Sinh, [](double x, double) { return math::Sinh(x); }, 0.6},
    {"Cosh", GridFunction::Cosh, [](double x, double) { return math::Cosh(x); }, 0.6},
    {"Tanh", GridFunction::Tanh, [](double x, double) { return math::Tanh(x); }, 0.6},
    {"Floor", GridFunction::Floor, [](double x, double) { return math::Floor(x); }, 0.0},
    {"Ceil", GridFunction::Ceil, [](double x, double) { return math::Ceil(x); }, 0.0},
    {"Fabs", GridFunction::Fabs, [](double x, double) { return math::Fabs(x); }, 0.0},
    {"Fmod", GridFunction::Fmod, [](double x, double y) { return math::Fmod(x, y); }, 0.0},
};

// The error of `value` in units in the last place of the true value; infinite where the two aren't even of one kind.
double ErrorOf(double value, const GridRow& row) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const double truth = std::bit_cast<double>(row.truth);
    if (truth != truth) return value != value ? 0.0 : infinity;
    if (!std::isfinite(truth)) return value == truth ? 0.0 : infinity;
    if (!std::isfinite(value)) return infinity;
    if (truth == 0.0 && value == 0.0) return BitsOf(value) == row.truth ? std::fabs(row.rest) : infinity;
    const double magnitude = std::fabs(truth);
    const bool isSubnormal = magnitude < std::numeric_limits<double>::min();
    const double unit =
        isSubnormal ? std::numeric_limits<double>::denorm_min() : std::ldexp(1.0, std::ilogb(magnitude) - 52);
    return std::fabs((value - truth) / unit - static_cast<double>(row.rest));
}

class GridFunctions : public testing::TestWithParam<FunctionCase> {};

TEST_P(GridFunctions, StayWithinOneUnitInTheLastPlace) {
    const auto& [name, function, compute, tolerance] = GetParam();
    ASSERT_LE(tolerance, 1.0);
    std::size_t rowCount = 0;
    double worst = 0.0;
    GridRow worstRow{};
    for (std::size_t i = 0; i < gridRowCount; ++i) {
        const GridRow& row = gridRows[i];
        if (row.function != static_cast<int>(function)) continue;
        ++rowCount;
        const double error = ErrorOf(compute(std::bit_cast<double>(row.x), std::bit_cast<double>(row.y)), row);
        if (error > worst) {
            worst = error;
            worstRow = row;
        }
    }
    std::printf("%-6s %.4f units at (%.17g, %.17g)\n", name, worst, std::bit_cast<double>(worstRow.x),
                std::bit_cast<double>(worstRow.y));
    EXPECT_GT(rowCount, 500u);
    EXPECT_LE(worst, tolerance);
}
INSTANTIATE_TEST_SUITE_P(Table, GridFunctions, testing::ValuesIn(functionCases),
                         [](const auto& row) { return std::string(row.param.name); });

// An equation of the literature is often a power of ten: what a person would write down comes out.
TEST(Exp10, GivesThePowersThatTextsWriteDown) {
    for (int exponent = -330; exponent <= 310; ++exponent) {
        EXPECT_EQ(BitsOf(math::Exp10(exponent)), BitsOf(PowerOfTen(exponent))) << exponent;
        if (std::abs(exponent) <= 22) {
            EXPECT_EQ(math::Log10(math::Exp10(exponent)), exponent);
        }
    }
    EXPECT_EQ(BitsOf(math::Exp10(0.5)), BitsOf(math::Sqrt(10.0)));
}

// Whether the base or the exponent makes it a power of its own depends on how a text is written.
TEST(Exp10, AgreesWithTheSmallPowersOfTen) {
    for (const double exponent : {-4.0, -3.0, -2.0, -1.0, -0.5, -0.0, 0.5, 1.0, 1.5, 2.0, 2.5, 3.0, 4.0}) {
        EXPECT_EQ(BitsOf(math::Exp10(exponent)), BitsOf(math::SmallPower(10.0, exponent))) << exponent;
    }
}

TEST(PowerOfTen, IsRoundedCorrectly) {
    int count = 0;
    for (std::size_t i = 0; i < gridRowCount; ++i) {
        const GridRow& row = gridRows[i];
        const double exponent = std::bit_cast<double>(row.y);
        if (row.function != static_cast<int>(GridFunction::Pow) || row.x != BitsOf(10.0)) continue;
        if (std::floor(exponent) != exponent || std::fabs(exponent) > 400.0) continue;
        ++count;
        EXPECT_EQ(BitsOf(PowerOfTen(exponent)), row.truth) << exponent;
    }
    EXPECT_GE(count, 641);
}

// The table is made when a host loads the module, under that host's settings.
TEST(PowerOfTen, IsMadeUnderAnySettingsOfTheHost) {
    constexpr std::uint32_t roundUp = 0x4000;
    const ArithmeticSettings before = CurrentArithmetic();
    ArithmeticSettings roundingUp = before;
    roundingUp.sse |= roundUp;
    ArithmeticSettings trapping = before;
    trapping.sse &= ~0x1FBFU;  // nothing is masked, nothing has happened
    for (const ArithmeticSettings& settings : {roundingUp, trapping}) {
        SetArithmetic(settings);
        const PowerTable powers = MakePowersOfTen();
        SetArithmetic(before);
        for (int exponent = smallestPowerOfTen; exponent <= greatestPowerOfTen; ++exponent) {
            EXPECT_EQ(powers[static_cast<std::size_t>(exponent - smallestPowerOfTen)], PowerOfTen(exponent));
        }
    }
}

TEST(PowerOfTen, EndsBeyondTheRangeOfADouble) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(PowerOfTen(309.0), infinity);
    EXPECT_EQ(PowerOfTen(9223372036854775807.0), infinity);
    EXPECT_EQ(PowerOfTen(-324.0), 0.0);
    EXPECT_EQ(PowerOfTen(-9223372036854775808.0), 0.0);
}

}  // namespace
}  // namespace reka::test
