// SPDX-License-Identifier: MIT
// Numbers as texts in their two forms, and back.

#include "text/NumberText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "text/Utf8.h"

namespace reka::test {
namespace {

TEST(NumberText, HasSixSignificantDigits) {
    const std::pair<double, const char*> rows[] = {
        {0.0, "0"},
        {-0.0, "-0"},
        {1.0, "1"},
        {-2.5, "-2.5"},
        {1.0 / 3.0, "0.333333"},
        {100000, "100000"},
        {1e6, "1e+06"},
        {1234567, "1.23457e+06"},
        {0.0001, "0.0001"},
        {0.00001, "1e-05"},
        {1e-300, "1e-300"},
        {0.0015, "0.0015"},
        {999999.5, "1e+06"},
    };
    for (const auto& [number, text] : rows) EXPECT_EQ(Utf8FromUtf16(FormatGeneral(number)), text);
    EXPECT_EQ(FormatGeneral(std::numeric_limits<double>::infinity()), u"inf");
    EXPECT_EQ(FormatGeneral(std::numeric_limits<double>::quiet_NaN()), u"nan");
}

TEST(NumberText, HasSixDigitsBehindThePoint) {
    EXPECT_EQ(FormatFixed(2.5), u"2.500000");
    EXPECT_EQ(FormatFixed(1e20), u"100000000000000000000.000000");
    EXPECT_EQ(FormatFixed(std::numeric_limits<double>::max()).size(), 309U + 7U);
    EXPECT_EQ(FormatFixed(std::numeric_limits<double>::infinity()), u"inf");
}

TEST(NumberText, ScansTheStartThatIsANumber) {
    const std::pair<const char16_t*, double> rows[] = {
        {u"12", 12}, {u".5", 0.5}, {u"2.", 2}, {u"1.2.3", 1.2}, {u"0", 0}, {u"007", 7}, {u"1..5", 1}, {u"0.1", 0.1},
    };
    for (const auto& [text, expected] : rows) {
        double number = -1;
        EXPECT_TRUE(ScanNumber(text, number));
        EXPECT_EQ(number, expected) << Utf8FromUtf16(text);
    }
    double number = -1;
    EXPECT_FALSE(ScanNumber(u"", number));
    EXPECT_FALSE(ScanNumber(u".", number));
    EXPECT_FALSE(ScanNumber(u"..5", number));
}

TEST(NumberText, ScansNumbersBeyondADouble) {
    double number = -1;
    EXPECT_TRUE(ScanNumber(std::u16string(400, u'9'), number));
    EXPECT_EQ(number, std::numeric_limits<double>::infinity());
    EXPECT_TRUE(ScanNumber(u"0." + std::u16string(400, u'0') + u"1", number));
    EXPECT_EQ(number, 0.0);
    EXPECT_TRUE(ScanNumber(std::u16string(400, u'0') + u"5", number));
    EXPECT_EQ(number, 5.0);
}

}  // namespace
}  // namespace reka::test
