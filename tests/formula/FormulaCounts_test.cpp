// SPDX-License-Identifier: MIT
// How near to 1 a count in a formula must be to count as 1: one millionth, tried with the nearest numbers on both
// sides.

#include <gtest/gtest.h>

#include <cmath>

#include "formula/FormulaNormalForm.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

// The doubles next to 1 + 1e-6 and 1 - 1e-6. The first of each pair differs from 1 by less than 1e-6 as a double, the
// second by more: their distances from 1 are exact, and lie on both sides of the double 1e-6.
const double justOneAbove = 1.000001;
const double nearOneAbove = std::nextafter(justOneAbove, 2.0);
const double justOneBelow = std::nextafter(0.999999, 1.0);
const double nearOneBelow = 0.999999;

TEST(FormulaCounts, AreOneWithinAMillionth) {
    ASSERT_LT(justOneAbove - 1.0, 1e-6);
    ASSERT_GT(nearOneAbove - 1.0, 1e-6);
    ASSERT_LT(1.0 - justOneBelow, 1e-6);
    ASSERT_GT(1.0 - nearOneBelow, 1e-6);
    EXPECT_EQ(FormatFormulaCount(justOneAbove), u"");
    EXPECT_EQ(FormatFormulaCount(justOneBelow), u"");
    EXPECT_EQ(FormatFormulaCount(nearOneAbove), u"1.000001");
    EXPECT_EQ(FormatFormulaCount(nearOneBelow), u"0.999999");
}

TEST(FormulaCounts, MultiplyAGroupFromThereOn) {
    // A million atoms show a factor in its millionths.
    EXPECT_EQ(Utf8FromUtf16(NormalizePcdFormula(u"(C1000000)1.000001")), "C1000000");
    EXPECT_EQ(Utf8FromUtf16(NormalizePcdFormula(u"(C1000000)1.0000010000000003")), "C1000001");
    EXPECT_EQ(Utf8FromUtf16(NormalizePcdFormula(u"(C1000000)0.9999990000000001")), "C1000000");
    EXPECT_EQ(Utf8FromUtf16(NormalizePcdFormula(u"(C1000000)0.999999")), "C999999");
}

}  // namespace
}  // namespace reka::test
