// SPDX-License-Identifier: MIT
// Formulas as people write them, and the one form that each of them comes to.

#include "formula/FormulaNormalForm.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/SmallStack.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

struct FormulaCase {
    const char* name;
    const char16_t* text;
    const char16_t* normalForm;
};
void PrintTo(const FormulaCase& row, std::ostream* stream) {
    *stream << row.name;
}

const FormulaCase formulaCases[] = {
    {"Empty", u"", u""},
    {"Ethanol", u"CH3CH2OH", u"C2H6O"},
    {"AluminiumSulfate", u"Al2(SO4)3", u"Al2O12S3"},
    {"AmmoniumSulfate", u"(NH4)2SO4", u"H8N2O4S"},
    {"FractionalCount", u"H2.5O", u"H2.5O"},
    {"OpenBracket", u"CH3(CH2", u""},
    {"ClosingBracketAlone", u"CH3)2", u""},
    {"ClosingBracketFirst", u")(", u""},
    {"NoCarbon", u"NaCl", u"ClNa"},
    {"CountOfOne", u"H1Cl1", u"HCl"},
    {"CarbonAndHydrogenFirst", u"BrCH3", u"CH3Br"},
    {"HydrogenWithoutCarbon", u"AlH3", u"H3Al"},
    {"Sign", u"Na+", u"Na"},
    {"Blanks", u"H2 O", u"H2O"},
    {"DigitsWithoutASymbol", u"2H", u"H"},
    {"SmallLettersAreNoSymbols", u"h2o", u""},
    {"ThirdLetter", u"Uue", u"Uu"},
    {"CobaltIsNotCarbonMonoxide", u"CoCO", u"CCoO"},
    {"NestedBrackets", u"((CH3)2N)2", u"C4H12N2"},
    {"BracketWithoutCount", u"(CH3)OH", u"CH4O"},
    {"BracketTimesZero", u"C(H2)0O", u"CH0O"},
    {"CountOfZero", u"C0H2", u"C0H2"},
    {"ManyInTheBracket", u"N0.1(C0.2H0.3N0.2O)3", u"C0.6H0.9N0.7O3"},
    {"FewInTheBracket", u"C0.2H0.3N0.1O(N0.2)3", u"C0.2H0.3N0.7O"},
    {"ManyInTheInnermostBracket", u"((((CHNOP)2)2O)2Br)2C", u"C17H16Br2N16O20P16"},
    {"CountTimesFraction", u"(CH2)1.5", u"C1.5H3"},
    {"SecondPointIsDropped", u"C1.2.3H", u"C1.2H"},
    {"PointAlone", u"C.H4", u""},
    {"PointAloneBehindABracket", u"(CH4).", u""},
    {"SevenDigits", u"C1.2345678", u"C1.234568"},
    {"NearlyOne", u"C1.0000005", u"C"},
    {"NoLongerOne", u"C1.000002", u"C1.000002"},
    {"SumsUpToOne", u"C0.5C0.5H4", u"CH4"},
    {"BracketNearlyOne", u"(CH4)1.0000005", u"CH4"},
    {"NotInAscii", u"H\u2082O", u"HO"},
};

class Formulas : public testing::TestWithParam<FormulaCase> {};

TEST_P(Formulas, HaveOneNormalForm) {
    const std::u16string normalForm = NormalizePcdFormula(GetParam().text);
    EXPECT_EQ(Utf8FromUtf16(normalForm), Utf8FromUtf16(GetParam().normalForm));
    EXPECT_EQ(NormalizePcdFormula(normalForm), normalForm);
}
INSTANTIATE_TEST_SUITE_P(Table, Formulas, testing::ValuesIn(formulaCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(FormulaNormalForm, TakesBracketsOfAnyDepth) {
    constexpr std::size_t depth = 200000;
    RunOnSmallStack([] {
        EXPECT_EQ(NormalizePcdFormula(std::u16string(depth, u'(') + u"CH4" + std::u16string(depth, u')')), u"CH4");
        EXPECT_EQ(NormalizePcdFormula(std::u16string(depth, u'(')), u"");
    });
}

TEST(FormulaNormalForm, TakesEverySymbolThroughAllBrackets) {
    std::u16string text;
    std::u16string normalForm;
    for (char16_t first = u'A'; first <= u'Z'; ++first) {
        text += first;
        if (first != u'C' && first != u'H') normalForm += std::u16string(1, first) + u"4";
        for (char16_t second = u'a'; second <= u'z'; ++second) {
            text += {first, second};
            normalForm += {first, second, u'4'};
        }
    }
    constexpr std::size_t depth = 1000;
    const std::u16string brackets = std::u16string(depth, u'(') + text + std::u16string(depth, u')') + u"2";
    EXPECT_EQ(NormalizePcdFormula(brackets + brackets), u"C4H4" + normalForm);
}

TEST(FormulaNormalForm, GrowsBeyondEveryNumber) {
    std::u16string text = u"C";
    for (int i = 0; i < 20; ++i) text = u"(" + text + u")" + std::u16string(20, u'9');
    EXPECT_EQ(NormalizePcdFormula(text), u"Cinf");
}

TEST(FormulaNormalForm, WritesCountsWithoutNeedlessZeros) {
    EXPECT_EQ(FormatFormulaCount(1.0), u"");
    EXPECT_EQ(FormatFormulaCount(2.0), u"2");
    EXPECT_EQ(FormatFormulaCount(2.5), u"2.5");
    EXPECT_EQ(FormatFormulaCount(10.0), u"10");
    EXPECT_EQ(FormatFormulaCount(100.05), u"100.05");
    EXPECT_EQ(FormatFormulaCount(0.0), u"0");
    EXPECT_EQ(FormatFormulaCount(1e-9), u"0");
    EXPECT_EQ(FormatFormulaCount(1e308).size(), 309U);
    EXPECT_EQ(FormatFormulaCount(std::numeric_limits<double>::infinity()), u"inf");
}

}  // namespace
}  // namespace reka::test
