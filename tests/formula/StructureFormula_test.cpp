// SPDX-License-Identifier: MIT
// The elements of a formula in its form, and what isn't in that form.

#include "formula/StructureFormula.h"

#include <gtest/gtest.h>

#include "text/Utf8.h"

namespace reka::test {
namespace {

/// "H 4, O 2", or "no" for a text outside the form.
std::string Read(std::u16string_view formula, double coefficient, CElementBalance balance = {}) {
    if (!ReadStructureFormula(formula, coefficient, balance)) return "no";
    std::string text;
    for (const ElementAmount& element : balance) {
        if (!text.empty()) text += ", ";
        char amount[32];
        std::snprintf(amount, sizeof amount, "%g", element.amount);
        text += Utf8FromUtf16(element.symbol) + " " + amount;
    }
    return text;
}

TEST(StructureFormula, AddsCountsTimesTheCoefficient) {
    EXPECT_EQ(Read(u"H2O", 2), "H 4, O 2");
    EXPECT_EQ(Read(u"NaCl", -1), "Na -1, Cl -1");
    EXPECT_EQ(Read(u"C1.5H3", 1), "C 1.5, H 3");
    EXPECT_EQ(Read(u"C.5", 1), "C 0.5");
    EXPECT_EQ(Read(u"C2.", 1), "C 2");
    EXPECT_EQ(Read(u"C1.2.3", 1), "C 1.2");
    EXPECT_EQ(Read(u"CH3COOH", 1), Read(u"C2H4O2", 1));
    EXPECT_EQ(Read(u"Co", 1), "Co 1");
    EXPECT_EQ(Read(u"CO", 1), "C 1, O 1");
    EXPECT_EQ(Read(u"Xx", 1), "Xx 1");
    EXPECT_EQ(Read(u"", 3), "");
}

TEST(StructureFormula, AddsToWhatIsThere) {
    CElementBalance balance;
    EXPECT_TRUE(ReadStructureFormula(u"O3Ho5", -1, balance));
    EXPECT_EQ(Read(u"CO2H", 1, balance), "O -1, Ho -5, C 1, H 1");
}

TEST(StructureFormula, RefusesWhatIsOutsideTheForm) {
    for (const char16_t* const text : {u"C(CH3)4", u"Na+", u"H2 O", u"h2o", u"Uue", u"C.", u"C..", u"C0", u"C0.0",
                                       u"2H", u" ", u"C-1", u"\u00C4", u"C\u0661"}) {
        EXPECT_EQ(Read(text, 1), "no") << Utf8FromUtf16(text);
    }
}

TEST(StructureFormula, KeepsWhatItReadBeforeAFailure) {
    CElementBalance balance;
    EXPECT_FALSE(ReadStructureFormula(u"H2O+", 1, balance));
    EXPECT_EQ(balance.size(), 2U);
}

TEST(StructureFormula, TellsAllSymbolsApart) {
    std::u16string all;
    std::string expected;
    for (char first = 'A'; first <= 'Z'; ++first) {
        for (char second = 'a' - 1; second <= 'z'; ++second) {
            std::string symbol(1, first);
            if (second >= 'a') symbol += second;
            all += std::u16string(symbol.begin(), symbol.end());
            expected += (expected.empty() ? "" : ", ") + symbol + " 2";
        }
    }
    EXPECT_EQ(Read(all, 2), expected);
}

}  // namespace
}  // namespace reka::test
