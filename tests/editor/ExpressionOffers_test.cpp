// SPDX-License-Identifier: MIT
// What the expression editor offers, and what becomes of the text when an offer is taken.

#include "editor/ExpressionOffers.h"

#include <gtest/gtest.h>

#include "expression/parse/ParseExpression.h"
#include "support/Builders.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

using Strings = std::vector<std::string>;

Strings TextsOf(const OfferGroup& group) {
    Strings texts;
    for (const ExpressionOffer& offer : group.offers) texts.push_back(Utf8FromUtf16(offer.text));
    return texts;
}

TEST(ExpressionOffers, NameCompoundsAsTheyAreWritten) {
    const auto definition =
        MakePackage({u"Water", u"n-butane", u"1-propanol", u"2", u"\u03B1-pinene", u"Carbon monoxide", u"T", u"pi",
                     u"exp", u"a\"b", u"", u"WATER", u"H2", u"_x1", u"A)+X(Water"});
    definition->compounds[0]->id = CBstr::Make(u"another id");
    const std::vector<OfferGroup> groups = ExpressionOffers(*definition);
    ASSERT_EQ(groups.size(), 3U);
    // Words of the language, names with a quote, none at all, and the second of two can't be named.
    EXPECT_EQ(TextsOf(groups[0]), (Strings{"Water", "\"n-butane\"", "\"1-propanol\"", "\"2\"", "\"\u03B1-pinene\"",
                                           "\"Carbon monoxide\"", "H2", "_x1", "\"A)+X(Water\""}));
    for (const ExpressionOffer& offer : groups[0].offers) {
        std::u16string errorText;
        EXPECT_NE(ParseExpression(*definition, u"2*C(" + offer.text + u")", errorText, nullptr), nullptr)
            << Utf8FromUtf16(offer.text);
    }
}

TEST(ExpressionOffers, HaveTheQuantitiesAndTheFunctions) {
    const auto definition = MakePackage({u"Water"});
    const std::vector<OfferGroup> groups = ExpressionOffers(*definition);
    EXPECT_EQ(groups[0].label, std::u16string(u"Insert compoun&d"));
    EXPECT_EQ(groups[1].label, std::u16string(u"Insert &quantity"));
    EXPECT_EQ(groups[2].label, std::u16string(u"Insert &function"));
    EXPECT_EQ(TextsOf(groups[1]), (Strings{"T", "P", "C()", "X()", "A()", "F()", "R", "PI"}));
    Strings meanings;
    for (const ExpressionOffer& offer : groups[1].offers) meanings.push_back(Utf8FromUtf16(offer.meaning));
    EXPECT_EQ(meanings, (Strings{"temperature [K]", "pressure [Pa]", "molarity of a compound [mol/m\u00B3]",
                                 "mole fraction of a compound", "activity of a compound", "fugacity of a compound [Pa]",
                                 "gas constant [J/(mol K)]", "circle number"}));
    EXPECT_EQ(TextsOf(groups[2]), (Strings{"ABS()",   "ACOS()",  "ASIN()", "ATAN()",  "CEIL()", "COS()",  "COSH()",
                                           "EXP()",   "FLOOR()", "LOG()",  "LOG10()", "MAX(,)", "MIN(,)", "MOD(,)",
                                           "ROUND()", "SIN()",   "SINH()", "SQRT()",  "TAN()",  "TANH()"}));
    // With what they ask for, all are expressions.
    for (const OfferGroup& group : groups) {
        for (const ExpressionOffer& offer : group.offers) {
            std::u16string text = offer.text == u"Water" ? u"X(Water)" : offer.text;
            const bool isOfCompound = &group == &groups[1];
            if (const auto comma = text.find(u','); comma != std::u16string::npos) text.insert(comma + 1, u"0.5");
            if (const auto bracket = text.find(u'('); bracket != std::u16string::npos && offer.text != u"Water") {
                text.insert(bracket + 1, isOfCompound ? u"Water" : u"0.25");
            }
            std::u16string errorText;
            EXPECT_NE(ParseExpression(*definition, text, errorText, nullptr), nullptr) << Utf8FromUtf16(text);
        }
    }
}

TEST(ExpressionOffers, HaveNoCompoundWithoutAny) {
    const auto definition = MakePackage({});
    EXPECT_TRUE(ExpressionOffers(*definition)[0].offers.empty());
}

struct InsertCase {
    const char* name;
    const char16_t* text;
    TextRange selection;
    const char16_t* offer;
    TextReplacement result;
};
const InsertCase insertCases[] = {
    {"AWord", u"2*", {2, 2}, u"T", {{2, 2}, u"T", {3, 3}}},
    {"AWordInPlaceOfAnother", u"2*P+1", {2, 3}, u"T", {{2, 3}, u"T", {3, 3}}},
    {"BracketsToFill", u"2*", {2, 2}, u"C()", {{2, 2}, u"C()", {4, 4}}},
    {"BracketsAroundWhatIsSelected", u"2*T+1", {2, 5}, u"SQRT()", {{2, 5}, u"SQRT(T+1)", {11, 11}}},
    {"TwoArguments", u"", {0, 0}, u"MIN(,)", {{0, 0}, u"MIN(,)", {4, 4}}},
    {"TheSecondOfTwo", u"T", {0, 1}, u"MIN(,)", {{0, 1}, u"MIN(T,)", {6, 6}}},
    {"TheSecondBehindOthers", u"MAX(T,2)", {0, 8}, u"MIN(,)", {{0, 8}, u"MIN(MAX(T,2),)", {13, 13}}},
    {"ANameWithBrackets", u"C(T)", {2, 3}, u"\"iron(III)\"", {{2, 3}, u"\"iron(III)\"", {14, 14}}},
    {"ANameBetweenItsBrackets", u"2*C()*T", {4, 4}, u"Water", {{4, 4}, u"Water", {10, 10}}},
    {"ANameAtTheVeryBeginning", u"x(A)", {2, 3}, u"Water", {{2, 3}, u"Water", {8, 8}}},
    {"BracketsOfAFunction", u"EXP()", {4, 4}, u"T", {{4, 4}, u"T", {5, 5}}},
    {"BracketsOfAWordThatEndsSo", u"FOOC()", {5, 5}, u"T", {{5, 5}, u"T", {6, 6}}},
    {"BracketsWithMore", u"C(+)", {2, 2}, u"Water", {{2, 2}, u"Water", {7, 7}}},
    {"OpenBrackets", u"C(", {2, 2}, u"Water", {{2, 2}, u"Water", {7, 7}}},
    {"BeyondTheText", u"T", {7, 9}, u"P", {{1, 1}, u"P", {2, 2}}},
    {"BelowTheText", u"T", {-3, -1}, u"P", {{0, 0}, u"P", {1, 1}}},
};
class Offers : public testing::TestWithParam<InsertCase> {};
TEST_P(Offers, ArePutIn) {
    const InsertCase& row = GetParam();
    EXPECT_EQ(InsertOffer(row.text, row.selection, {row.offer, {}}), row.result);
}
INSTANTIATE_TEST_SUITE_P(Table, Offers, testing::ValuesIn(insertCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(ExpressionOffers, AreLinesOfAMenu) {
    EXPECT_EQ(MenuLabel({u"T", u"temperature [K]"}), u"T\ttemperature [K]");
    EXPECT_EQ(MenuLabel({u"\"R&D\tmix\"", u""}), u"\"R&&D mix\"");
    const std::u16string longName(300, u'x');
    EXPECT_EQ(MenuLabel({longName, u""}), std::u16string(100, u'x') + u"...");
}

}  // namespace
}  // namespace reka::test
