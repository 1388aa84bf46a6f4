// SPDX-License-Identifier: MIT
// The component's own exponentials where the C library's would be taken: at the limits, and that they are the ones that
// this program has. MathFunctions_test.cpp, which is linked to them as well, compares them with true values.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include "expression/ExpressionBuilders.h"
#include "expression/math/MathFunctions.h"

namespace reka::test {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(OwnExponentials, AreLinked) {
    int others = 0;  // results with another last bit than the C library's
    for (int i = 1; i <= 20'000; ++i) {
        const double x = 0.001 * i;
        others += math::Exp(x) != std::exp(x);
        others += math::Log(x) != std::log(x);
        others += math::Pow(x, 1.7) != std::pow(x, 1.7);
    }
    EXPECT_GT(others, 0);
}

TEST(OwnExponentials, EndWhereTheNumbersEnd) {
    const struct {
        double value;
        double expected;
    } rows[] = {
        {math::Exp(infinity), infinity},
        {math::Exp(-infinity), 0.0},
        {math::Exp(710.0), infinity},
        {math::Exp(-746.0), 0.0},
        {math::Exp(-745.0), 0x1p-1074},
        {math::Exp(0.0), 1.0},
        {math::Exp(1e300), infinity},
        {math::Exp(-1e300), 0.0},
        {math::Log(0.0), -infinity},
        {math::Log(infinity), infinity},
        {math::Log(1.0), 0.0},
        {math::Pow(0.0, -3.0), infinity},
        {math::Pow(-0.0, -3.0), -infinity},
        {math::Pow(-0.0, 3.0), -0.0},
        {math::Pow(-0.0, 2.0), 0.0},
        {math::Pow(-2.0, 3.0), -8.0},
        {math::Pow(-2.0, infinity), infinity},
        {math::Pow(0.5, infinity), 0.0},
        {math::Pow(0.5, -infinity), infinity},
        {math::Pow(-1.0, infinity), 1.0},
        {math::Pow(notANumber, 0.0), 1.0},
        {math::Pow(1.0, notANumber), 1.0},
        {math::Pow(-infinity, 3.0), -infinity},
        {math::Pow(-infinity, -3.0), -0.0},
        {math::Pow(infinity, 0.5), infinity},
        {math::Pow(2.0, 1024.0), infinity},
        {math::Pow(2.0, -1074.0), 0x1p-1074},
        {math::Pow(1e300, 1e300), infinity},
        {math::Exp10(400.0), infinity},
        {math::Exp10(-400.0), 0.0},
    };
    int row = 0;
    for (const auto& [value, expected] : rows) {
        EXPECT_EQ(BitsOf(value), BitsOf(expected)) << "row " << row;
        ++row;
    }
    for (const double value : {math::Exp(notANumber), math::Log(-1.0), math::Log(notANumber), math::Pow(-2.0, 0.5),
                               math::Pow(notANumber, 1.0), math::Pow(2.0, notANumber)}) {
        EXPECT_TRUE(std::isnan(value));
    }
}

}  // namespace
}  // namespace reka::test
