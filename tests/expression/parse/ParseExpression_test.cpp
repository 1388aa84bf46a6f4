// SPDX-License-Identifier: MIT
// From a text to its tree, or to the lines that tell what is wrong with it.

#include "expression/parse/ParseExpression.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <thread>
#include <vector>

#include "expression/ExpressionBuilders.h"
#include "expression/parse/CheckExpression.h"
#include "expression/parse/ExpressionLexer.h"
#include "expression/run/EvaluateExpression.h"
#include "support/AllocationCounter.h"
#include "support/SmallStack.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

struct TreeCase {
    const char* name;
    const char16_t* text;
    const char* tree;  // as `Show` writes it
};

const TreeCase treeCases[] = {
    {"Number", u"2", "2"},
    {"Pi", u"PI", "3.141592653589793"},
    {"GasConstant", u"R", "8.314"},
    {"Pressure", u"P", "28"},
    {"Temperature", u"T", "29"},
    {"Activity", u"A(Ar)", "33:0"},
    {"Fugacity", u"F(ar)", "34:0"},
    {"Molarity", u"C(\"n-butane\")", "30:1"},
    {"MoleFraction", u"x( AR )", "31:0"},
    {"Sum", u"T+P", "1(29,28)"},
    {"Difference", u"T-P", "2(29,28)"},
    {"Product", u"T*P", "3(29,28)"},
    {"Quotient", u"T/P", "4(29,28)"},
    {"Negation", u"-T", "5(29)"},
    {"NegationTwice", u"--T", "5(5(29))"},
    {"Power", u"T^P", "6(29,28)"},
    {"Parentheses", u"((T))", "29"},
    {"SumsFromTheLeft", u"T-P-T", "2(2(29,28),29)"},
    {"ProductsFromTheLeft", u"T/P*T", "3(4(29,28),29)"},
    {"ProductsBeforeSums", u"T+P*T-P", "2(1(29,3(28,29)),28)"},
    {"PowersFromTheRight", u"T^P^T", "6(29,6(28,29))"},
    {"NegationOfAPower", u"-T^P", "5(6(29,28))"},
    {"NegationBeforeProducts", u"-T*P", "3(5(29),28)"},
    {"PowerOfANegation", u"T^-P", "6(29,5(28))"},
    {"PowerOfANegatedPower", u"T^-P^T", "6(29,5(6(28,29)))"},
    {"FunctionOfOne", u"EXP(T)", "21(29)"},
    {"FunctionOfTwo", u"MIN(T,P)", "25(29,28)"},
    {"FunctionsInside", u"MAX(SQRT(T),MOD(P,2))", "26(8(29),27(28,2))"},
    {"CommaFirst", u"MIN(,T,P)", "25(29,28)"},
    {"CommaFirstOfOne", u"SQRT(,T)", "8(29)"},
    {"QuotedWords", u"\"sqrt\"(\"t\")", "8(29)"},
    {"CarriageReturnBehindAWord", u"T\r+1", "1(29,1)"},
    {"FoldedWhole", u"2*PI*R", "52.23840264389108"},
    {"FoldedPart", u"EXP(0)*T", "3(1,29)"},
    {"NotFoldedAcrossALeaf", u"T+1+2", "1(1(29,1),2)"},
    {"NegationFolds", u"-2^2", "-4"},
    {"PowersFold", u"2^3^2", "512"},
    {"PowerOfANegativeFolds", u"2^-1", "0.5"},
    {"DifferencesFold", u"2-3-4", "-5"},
    {"NegativeBaseFolds", u"(-2)^2", "4"},
    {"ZeroToTheZero", u"0^0", "1"},
    {"LogOfZero", u"LOG(0)", "-inf"},
    {"InfinityFolds", u"EXP(1000)", "inf"},
    {"RoundHalvesUp", u"ROUND(-2.5)", "-2"},
    {"DivisionByATermThatVanishes", u"1/(T-T)", "4(1,2(29,29))"},
};

class ParsedTexts : public testing::TestWithParam<TreeCase> {};

TEST_P(ParsedTexts, GiveTheirTree) {
    const auto definition = MakeDefinitionOf({u"Ar", u"n-butane"});
    std::u16string errorText = u"left from an earlier call";
    std::int32_t position = -1;
    const std::u16string text = GetParam().text;
    const ExpressionTree tree = ParseExpression(*definition, text, errorText, &position);
    EXPECT_EQ(Show(tree.get()), GetParam().tree);
    EXPECT_EQ(errorText, u"");
    EXPECT_EQ(position, static_cast<std::int32_t>(text.size()));
}
INSTANTIATE_TEST_SUITE_P(Table, ParsedTexts, testing::ValuesIn(treeCases),
                         [](const auto& row) { return std::string(row.param.name); });

const TreeCase notANumberCases[] = {
    {"SquareRoot", u"SQRT(-1)", ""}, {"Logarithm", u"LOG(-1)", ""},   {"DecimalLogarithm", u"LOG10(-1)", ""},
    {"ArcSine", u"ASIN(2)", ""},     {"ArcCosine", u"ACOS(0-2)", ""}, {"RootOfANegative", u"(-8)^(1/3)", ""},
};

class ConstantsOutsideADomain : public testing::TestWithParam<TreeCase> {};

TEST_P(ConstantsOutsideADomain, FoldToNotANumber) {
    const auto definition = MakeDefinitionOf({});
    std::u16string errorText;
    const ExpressionTree tree = ParseExpression(*definition, GetParam().text, errorText, nullptr);
    ASSERT_NE(tree, nullptr);
    EXPECT_EQ(tree->kind, NodeKind::RealConstant);
    EXPECT_NE(tree->value, tree->value);
    EXPECT_EQ(errorText, u"");
}
INSTANTIATE_TEST_SUITE_P(Table, ConstantsOutsideADomain, testing::ValuesIn(notANumberCases),
                         [](const auto& row) { return std::string(row.param.name); });

struct ParseErrorCase {
    const char* name;
    const char16_t* text;
    const char16_t* errorText;
    std::int32_t position;  // where the reading stopped
};

const ParseErrorCase parseErrorCases[] = {
    // At the start, behind an operator, behind "(", behind a complete expression: too many tokens would do.
    {"Empty", u"", u"syntax error, unexpected $end\r\n", 0},
    {"Blanks", u"  ", u"syntax error, unexpected $end\r\n", 2},
    {"NothingBehindPlus", u"2+", u"syntax error, unexpected $end\r\n", 2},
    {"UnaryPlus", u"+2", u"syntax error, unexpected '+'\r\n", 1},
    {"TwoOperators", u"2*/3", u"syntax error, unexpected '/'\r\n", 3},
    {"TwoWords", u"T T", u"syntax error, unexpected T\r\n", 3},
    {"NumberAndWord", u"2T", u"syntax error, unexpected T\r\n", 2},
    {"NumberAndFunction", u"2 SQRT(2)", u"syntax error, unexpected FUNCNAME\r\n", 6},
    {"NumberAndPi", u"2 PI", u"syntax error, unexpected PI\r\n", 4},
    {"NumberAndCompound", u"2 Ar", u"syntax error, unexpected COMPONENT\r\n", 4},
    {"CompoundAlone", u"Ar", u"syntax error, unexpected COMPONENT\r\n", 2},
    {"CommaOutside", u"1,2", u"syntax error, unexpected ','\r\n", 2},
    {"ClosedTooOften", u"(1))", u"syntax error, unexpected ')'\r\n", 4},
    {"NothingInParentheses", u"()", u"syntax error, unexpected ')'\r\n", 2},
    {"NotClosed", u"(1", u"syntax error, unexpected $end\r\n", 2},
    {"CommaInParentheses", u"(1,2)", u"syntax error, unexpected ','\r\n", 5},
    {"PowerWithoutBase", u"^2", u"syntax error, unexpected '^'\r\n", 1},
    // Behind a function's name and behind the words A, F, C and X.
    {"FunctionAlone", u"SQRT", u"syntax error, unexpected $end, expecting '('\r\n", 4},
    {"FunctionWithoutParentheses", u"SQRT 2", u"syntax error, unexpected REALNUM, expecting '('\r\n", 6},
    {"ActivityAlone", u"A", u"syntax error, unexpected $end, expecting '('\r\n", 1},
    {"FugacityAlone", u"F+1", u"syntax error, unexpected '+', expecting '('\r\n", 2},
    {"MolarityAlone", u"C", u"syntax error, unexpected $end, expecting '('\r\n", 1},
    {"MoleFractionAlone", u"X X", u"syntax error, unexpected X, expecting '('\r\n", 3},
    // Inside their parentheses.
    {"NumberForACompound", u"X(1)", u"syntax error, unexpected REALNUM, expecting COMPONENT\r\n", 3},
    {"WordForACompound", u"C(C)", u"syntax error, unexpected C, expecting COMPONENT\r\n", 3},
    {"ConstantForACompound", u"C(PI)", u"syntax error, unexpected PI, expecting COMPONENT\r\n", 4},
    {"QuotedConstantForACompound", u"X(\"pi\")", u"syntax error, unexpected PI, expecting COMPONENT\r\n", 6},
    {"FunctionForACompound", u"X(LOG)", u"syntax error, unexpected FUNCNAME, expecting COMPONENT\r\n", 5},
    {"QuotedWordForACompound", u"A(\"R\")", u"syntax error, unexpected R, expecting COMPONENT\r\n", 5},
    {"NothingForACompound", u"F()", u"syntax error, unexpected ')', expecting COMPONENT\r\n", 3},
    {"TwoCompounds", u"X(Ar,Ar)", u"syntax error, unexpected ',', expecting ')'\r\n", 5},
    {"CompoundNotClosed", u"X(Ar", u"syntax error, unexpected $end, expecting ')'\r\n", 4},
    // In an argument list.
    {"ArgumentsWithoutComma", u"SQRT(1 2)", u"syntax error, unexpected REALNUM, expecting ')' or ','\r\n", 9},
    {"ArgumentsNotClosed", u"MIN(1,2", u"syntax error, unexpected $end, expecting ')' or ','\r\n", 7},
    {"NothingInTheList", u"SQRT(", u"syntax error, unexpected $end\r\n", 5},
    {"OperatorFirst", u"SQRT(*2)", u"syntax error, unexpected '*'\r\n", 8},
    {"CommaAlone", u"SQRT(,)", u"syntax error, unexpected ')'\r\n", 7},
    {"TwoCommas", u"SQRT(,,2)", u"syntax error, unexpected ','\r\n", 9},
    {"CommaLast", u"SQRT(2,)", u"syntax error, unexpected ')'\r\n", 8},
    // Recovery goes on behind the innermost parenthesis of a group or an argument list.
    {"TwoGroups", u"(1 2)+(3 4)", u"syntax error, unexpected REALNUM\r\nsyntax error, unexpected REALNUM\r\n", 11},
    {"GroupsTooClose", u"(1 2)(3 4)", u"syntax error, unexpected REALNUM\r\n", 6},
    {"GroupNotClosed", u"(1 2", u"syntax error, unexpected REALNUM\r\n", 4},
    {"NestedGroups", u"((1 2)+3 4)+5 6",
     u"syntax error, unexpected REALNUM\r\nsyntax error, unexpected REALNUM\r\n"
     u"syntax error, unexpected REALNUM\r\n",
     15},
    {"SilentUntilThreeTokens", u"((1 2) 3)+4 5",
     u"syntax error, unexpected REALNUM\r\nsyntax error, unexpected REALNUM\r\n", 13},
    {"ErrorInACompoundInsideAGroup", u"(X(1)+2)+3 4",
     u"syntax error, unexpected REALNUM, expecting COMPONENT\r\nsyntax error, unexpected ')'\r\n", 8},
    {"ErrorInACompoundOutside", u"X(1)+(2 3)", u"syntax error, unexpected REALNUM, expecting COMPONENT\r\n", 3},
    {"ListAndGroup", u"SQRT(1 2)+(3 4)",
     u"syntax error, unexpected REALNUM, expecting ')' or ','\r\nsyntax error, unexpected REALNUM\r\n", 15},
    {"ErrorsInOneList", u"MIN(1 2,3 4)", u"syntax error, unexpected REALNUM, expecting ')' or ','\r\n", 12},
    // What the lexer finds comes first, and ends the text.
    {"UnknownWord", u"T2", u"unknown token T2\r\nsyntax error, unexpected $end\r\n", 2},
    {"InvalidBehindAnOperator", u"1+#", u"invalid character: '#'\r\nsyntax error, unexpected $end\r\n", 3},
    {"InvalidBehindAnExpression", u"1 # 2", u"invalid character: '#'\r\n", 3},
    {"LineFeed", u"T\r\n+1", u"invalid character: '\n'\r\n", 3},
    {"CarriageReturnFirst", u"\rT", u"invalid character: '\r'\r\nsyntax error, unexpected $end\r\n", 1},
    {"MissingQuote", u"X(\"Ar)", u"missing closing quote\r\nsyntax error, unexpected $end, expecting COMPONENT\r\n", 6},
    {"UnknownCompound", u"X(\"n-butan\")",
     u"unknown token N-BUTAN\r\nsyntax error, unexpected $end, expecting COMPONENT\r\n", 11},
    {"Dot", u".", u"unexpected end of input while reading number\r\nsyntax error, unexpected $end\r\n", 1},
    {"DotAndLetter", u".T", u"expected number to follow decimal point\r\nsyntax error, unexpected $end\r\n", 2},
    {"MissingExponentAtTheEnd", u"2e", u"unexpected end of input in real number\r\nsyntax error, unexpected $end\r\n",
     2},
    {"MissingExponent", u"2e+T", u"syntax error in real number, expected digit\r\nsyntax error, unexpected T\r\n", 4},
    {"MissingExponentBeforeX", u"2ex",
     u"syntax error in real number, missing exponent\r\nsyntax error, unexpected X\r\n", 3},
    {"MissingExponentAlone", u"2e+\t", u"syntax error in real number, expected digit\r\n", 4},
    {"Overflow", u"1e999", u"Overflow in constant\r\n", 5},
    {"OverflowOfZero", u"0e999+1", u"Overflow in constant\r\n", 7},
    {"SyntaxErrorBeforeALexicalOne", u"(1 2)+#", u"syntax error, unexpected REALNUM\r\ninvalid character: '#'\r\n", 7},
    // The check.
    {"NoArguments", u"SQRT()", u"SQRT should have one argument\r\n", 6},
    {"TooManyArguments", u"MIN(1,2,3)", u"MIN should have two arguments\r\n", 10},
    {"TwoCountsWrong", u"SQRT(1,2)+MIN(1)", u"SQRT should have one argument\r\nMIN should have two arguments\r\n", 16},
    {"ArgumentsBeforeTheirParent", u"MAX(SQRT())",
     u"SQRT should have one argument\r\nMAX should have two arguments\r\n", 11},
    {"ConstantDivisionByZero", u"1/0", u"division by zero\r\n", 3},
    {"DivisorFoldsToZero", u"T/(1-1)", u"division by zero\r\n", 7},
    {"NegativeZeroDivisor", u"T/-0", u"division by zero\r\n", 4},
    {"TwoDivisions", u"1/0+MIN(2)/0", u"division by zero\r\nMIN should have two arguments\r\ndivision by zero\r\n", 12},
};

class ParseErrors : public testing::TestWithParam<ParseErrorCase> {};

TEST_P(ParseErrors, GiveTheirLinesAndNoTree) {
    const auto definition = MakeDefinitionOf({u"Ar", u"n-butane", u"C", u"LOG"});
    std::u16string errorText = u"left from an earlier call";
    std::int32_t position = -1;
    const CAllocationCounter allocations;
    EXPECT_EQ(ParseExpression(*definition, GetParam().text, errorText, &position), nullptr);
    EXPECT_EQ(Utf8FromUtf16(errorText), Utf8FromUtf16(GetParam().errorText));
    EXPECT_EQ(position, GetParam().position);
    errorText = std::u16string();
    EXPECT_LE(allocations.Left(), 0);
}
INSTANTIATE_TEST_SUITE_P(Table, ParseErrors, testing::ValuesIn(parseErrorCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(ParseExpression, EndsAtTheFirstZero) {
    const auto definition = MakeDefinitionOf({});
    std::u16string errorText;
    std::int32_t position = -1;
    const ExpressionTree tree = ParseExpression(*definition, std::u16string_view(u"T\0+", 3), errorText, &position);
    EXPECT_EQ(Show(tree.get()), "29");
    EXPECT_EQ(position, 1);
}

TEST(ParseExpression, KeepsTheRoomOfTheErrorText) {
    const auto definition = MakeDefinitionOf({});
    std::u16string errorText(1000, u'x');
    const char16_t* const room = errorText.data();
    EXPECT_EQ(ParseExpression(*definition, u"2+", errorText, nullptr), nullptr);
    EXPECT_EQ(errorText, u"syntax error, unexpected $end\r\n");
    EXPECT_NE(ParseExpression(*definition, u"2", errorText, nullptr), nullptr);
    EXPECT_EQ(errorText, u"");
    EXPECT_EQ(errorText.data(), room);
}

// The parser's stack has room for 9999 entries, one of them for the start.
struct DepthCase {
    const char* name;
    const char16_t* opening;
    const char16_t* closing;
    int deepest;
};

const DepthCase depthCases[] = {
    {"Groups", u"(", u")", 9996},        // and the innermost T with its ')'
    {"Functions", u"ABS(", u")", 4998},  // of two entries each, and a list with its ')'
    {"Negations", u"-", u"", 9997},      // and the T
    {"Powers", u"T^", u"", 4998},        // of two entries each, and the last T
};

class ParserDepth : public testing::TestWithParam<DepthCase> {};

TEST_P(ParserDepth, EndsAtTenThousandEntries) {
    const auto [name, opening, closing, deepest] = GetParam();
    for (const int depth : {150, 1000, deepest, deepest + 1}) {
        std::u16string text;
        for (int i = 0; i < depth; ++i) text += opening;
        text += u"T";
        for (int i = 0; i < depth; ++i) text += closing;
        const bool isTooDeep = depth > deepest;
        RunOnSmallStack([&] {
            const auto definition = MakeDefinitionOf({});
            std::u16string errorText;
            const ExpressionTree tree = ParseExpression(*definition, text, errorText, nullptr);
            EXPECT_EQ(tree == nullptr, isTooDeep) << GetParam().name << " " << depth;
            EXPECT_EQ(errorText, isTooDeep ? u"memory exhausted\r\n" : u"");
        });
    }
}
INSTANTIATE_TEST_SUITE_P(Table, ParserDepth, testing::ValuesIn(depthCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(ParseExpression, ReadsASumOfAMillionTermsOnASmallStack) {
    RunOnSmallStack([] {
        auto definition = MakeDefinitionOf({});
        definition->temperature = 0.5;
        std::u16string text = u"T";
        for (int i = 0; i < 999'999; ++i) text += u"+T";
        std::u16string errorText;
        ExpressionTree tree = ParseExpression(*definition, text, errorText, nullptr);
        ASSERT_NE(tree, nullptr) << Utf8FromUtf16(errorText);
        double result;
        EXPECT_TRUE(EvaluateExpression(*tree, result, *definition, errorText));
        EXPECT_EQ(result, 500'000.0);
    });
}

TEST(ParseExpression, FoldsASumOfAMillionTermsOnASmallStack) {
    RunOnSmallStack([] {
        const auto definition = MakeDefinitionOf({});
        std::u16string text = u"1";
        for (int i = 0; i < 999'999; ++i) text += u"+1";
        std::u16string errorText;
        EXPECT_EQ(Show(ParseExpression(*definition, text, errorText, nullptr).get()), "1e+06");
    });
}

TEST(ParseExpression, ReportsErrorsByTheThousand) {
    const auto definition = MakeDefinitionOf({});
    std::u16string text = u"1";
    for (int i = 0; i < 50'000; ++i) text += u"+(1 2)";
    std::u16string errorText;
    EXPECT_EQ(ParseExpression(*definition, text, errorText, nullptr), nullptr);
    EXPECT_EQ(errorText.size(), 50'000 * std::u16string_view(u"syntax error, unexpected REALNUM\r\n").size());
}

TEST(ParseExpression, TakesAListOfThousandsOfArguments) {
    const auto definition = MakeDefinitionOf({});
    std::u16string text = u"MIN(1";
    for (int i = 0; i < 100'000; ++i) text += u",1";
    std::u16string errorText;
    EXPECT_EQ(ParseExpression(*definition, text + u")", errorText, nullptr), nullptr);
    EXPECT_EQ(errorText, u"MIN should have two arguments\r\n");
}

TEST(ParseExpression, LosesNothingWithoutMemory) {
    const auto definition = MakeDefinitionOf({u"Ar", u"n-butane"});
    std::u16string longSum = u"MAX(1,2,3)";
    for (int i = 0; i < 600; ++i) longSum += u"+T*2";  // more than the first block holds
    const std::u16string_view texts[] = {u"EXP(-8000/(R*T))*C(\"n-butane\")^2+MIN(X(Ar),2*3)-(1+2)",
                                         u"(1 2)+SQRT(3 4)+\"a name that nobody has given to a compound\"",
                                         u"MIN(1,2,3)+T/0", longSum};
    for (const std::u16string_view text : texts) {
        for (std::size_t n = 1;; ++n) {
            const CAllocationCounter allocations;
            bool isOutOfMemory = false;
            {
                std::u16string errorText;
                FailAllocation(n);
                try {
                    ParseExpression(*definition, text, errorText, nullptr);
                } catch (const std::bad_alloc&) {
                    isOutOfMemory = true;
                }
            }
            EXPECT_EQ(allocations.Left(), 0) << Utf8FromUtf16(text) << ", allocation " << n;
            if (isOutOfMemory) continue;
            EXPECT_TRUE(IsAllocationToFail());  // none was swallowed
            FailAllocation(0);
            EXPECT_GT(n, text == longSum ? 4u : 1u);
            break;
        }
    }
}

TEST(ParseExpression, GivesEachThreadItsOwnTree) {
    std::vector<std::thread> threads;
    std::vector<int> wrong(4);
    for (std::size_t i = 0; i < wrong.size(); ++i) {
        threads.emplace_back([&wrong, i] {
            const auto definition = MakeDefinitionOf({u"Ar", u"He"});
            const std::u16string text = u"X(" + std::u16string(i % 2 ? u"Ar" : u"He") + u")*" +
                                        std::u16string(i, u'(') + u"T" + std::u16string(i, u')') +
                                        (i == 3 ? u"+" : u"");
            const std::string expected = i == 3 ? "null" : i % 2 ? "3(31:0,29)" : "3(31:1,29)";
            for (int round = 0; round < 500; ++round) {
                std::u16string errorText;
                const ExpressionTree tree = ParseExpression(*definition, text, errorText, nullptr);
                if (Show(tree.get()) != expected) ++wrong[i];
                if (errorText != (i == 3 ? u"syntax error, unexpected $end\r\n" : u"")) ++wrong[i];
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(wrong, std::vector<int>(4));
}

// A host that has switched the C library to decimal commas changes nothing.
TEST(ParseExpression, DoesNotFollowTheLocaleOfTheHost) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    const char* german = std::setlocale(LC_ALL, "de_DE.UTF-8");
    if (!german) german = std::setlocale(LC_ALL, "German");
    ASSERT_NE(german, nullptr);
    char digits[8];
    std::snprintf(digits, sizeof digits, "%.1f", 0.5);
    EXPECT_STREQ(digits, "0,5");
    const auto definition = MakeDefinitionOf({});
    std::u16string errorText;
    EXPECT_EQ(Show(ParseExpression(*definition, u"0.5+2.5e-1", errorText, nullptr).get()), "0.75");
    EXPECT_EQ(ParseExpression(*definition, u"0,5", errorText, nullptr), nullptr);
    CCompoundLookup lookup(*definition);
    errorText.clear();
    reka::ParseErrors errors{errorText};
    CExpressionLexer lexer(u"1.5", ReactionVocabulary(lookup), errors);
    lexer.ReadToken();
    EXPECT_EQ(lexer.TokenDescription(), u"real value 1.5");
    std::setlocale(LC_ALL, before.c_str());
}

}  // namespace
}  // namespace reka::test
