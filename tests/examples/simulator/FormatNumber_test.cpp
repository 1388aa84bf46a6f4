// SPDX-License-Identifier: MIT
// Numbers as text and back.

#include "FormatNumber.h"

#include <gtest/gtest.h>

#include <limits>

namespace rekasim {

namespace {

TEST(FormatNumber, GivesSixSignificantDigits) {
    EXPECT_EQ(FormatNumber(0), "0");
    EXPECT_EQ(FormatNumber(-0.0), "0");
    EXPECT_EQ(FormatNumber(1.0 / 3), "0.333333");
    EXPECT_EQ(FormatNumber(1234567), "1.23457e+06");
    EXPECT_EQ(FormatNumber(6.521e-8), "6.521e-08");
    EXPECT_EQ(FormatNumber(298.15, 10), "298.15");
    EXPECT_EQ(FormatNumber(std::numeric_limits<double>::infinity()), "inf");
}

TEST(FormatFullNumber, KeepsZerosAtTheEnd) {
    EXPECT_EQ(FormatFullNumber(0), "0");
    EXPECT_EQ(FormatFullNumber(15.071), "15.0710");
    EXPECT_EQ(FormatFullNumber(-20040), "-20040.0");
    EXPECT_EQ(FormatFullNumber(123456), "123456");
    EXPECT_EQ(FormatFullNumber(999999.7), "1.00000e+06");  // the rounding decides
    EXPECT_EQ(FormatFullNumber(0.00012345), "0.000123450");
    EXPECT_EQ(FormatFullNumber(6.521e-8), "6.52100e-08");
    EXPECT_EQ(FormatFullNumber(-1e200), "-1.00000e+200");
    EXPECT_EQ(FormatFullNumber(std::numeric_limits<double>::infinity()), "inf");
}

TEST(FormatNumber, IsReadBack) {
    double number = 0;
    EXPECT_TRUE(ParseNumber("298.15", number));
    EXPECT_EQ(number, 298.15);
    EXPECT_TRUE(ParseNumber("-1e3", number));
    EXPECT_EQ(number, -1000);
}

TEST(FormatNumber, RefusesAnythingElse) {
    double number = 7;
    for (const char* text : {"", "x", "1,5", "1 ", " 1", "1x", "nan", "inf", "1e999"}) {
        EXPECT_FALSE(ParseNumber(text, number)) << text;
    }
    EXPECT_EQ(number, 7);
}

}  // namespace

}  // namespace rekasim
