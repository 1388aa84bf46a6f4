// SPDX-License-Identifier: MIT
// From the text of a numeric field to its number, or to the lines that tell what is wrong with it.

#include "expression/parse/EvaluateScalarInput.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <clocale>
#include <limits>
#include <thread>
#include <vector>

#include "expression/ExpressionBuilders.h"
#include "expression/parse/ExpressionLexer.h"
#include "platform/HostArithmetic.h"
#include "support/AllocationCounter.h"
#include "support/FakeMutexes.h"
#include "support/SmallStack.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double untouched = 42.0;

struct ScalarCase {
    const char* name;
    const char16_t* text;
    double value;
};

const ScalarCase scalarCases[] = {
    {"Number", u"2", 2.0},
    {"TwoPi", u"2*PI", 6.283185307179586},
    {"PiInAnyCase", u"pi-Pi", 0.0},
    {"GasConstant", u"R", 8.314},
    {"QuotedGasConstant", u"\"R\"", 8.314},
    {"QuotedFunction", u"\"sqrt\"(4)", 2.0},
    {"Quotient", u"1.5e3/60", 25.0},
    {"Blanks", u" \t1 +\t2 ", 3.0},
    {"CarriageReturnBehindANumber", u"1\r+2", 3.0},
    {"CarriageReturnBehindAWord", u"PI\r", 3.141592653589793},
    // Operators.
    {"NegationOfAPower", u"-2^2", -4.0},
    {"PowerOfANegation", u"2^-1", 0.5},
    {"PowersFromTheRight", u"2^3^2", 512.0},
    {"DifferencesFromTheLeft", u"2-3-4", -5.0},
    {"ProductsBeforeSums", u"2+3*4", 14.0},
    {"ProductsFromTheLeft", u"12/3*2", 8.0},
    {"NegationBeforeProducts", u"-2*-3", 6.0},
    {"Parentheses", u"((2+3))*4", 20.0},
    {"NegativeBase", u"(-2)^2", 4.0},
    {"ZeroToTheZero", u"0^0", 1.0},
    {"DivisionOfZero", u"0/5", 0.0},
    // Functions.
    {"SquareRoot", u"SQRT(9)", 3.0},
    {"Sine", u"SIN(0)", 0.0},
    {"Cosine", u"COS(0)", 1.0},
    {"HyperbolicSine", u"SINH(0)", 0.0},
    {"HyperbolicCosine", u"COSH(0)", 1.0},
    {"ArcSine", u"ASIN(1)*2-PI", 0.0},
    {"ArcCosine", u"ACOS(1)", 0.0},
    {"Tangent", u"TAN(0)", 0.0},
    {"ArcTangent", u"ATAN(1)*4-PI", 0.0},
    {"AbsoluteValue", u"ABS(-2)", 2.0},
    {"Floor", u"FLOOR(-2.5)", -3.0},
    {"Ceiling", u"CEIL(-2.5)", -2.0},
    {"RoundHalvesUp", u"ROUND(-2.5)", -2.0},
    {"Exponential", u"EXP(-3)", 0.049787068367863944},  // e^-3
    {"Logarithm", u"LOG(EXP(1))", 1.0},
    {"DecimalLogarithm", u"LOG10(1000)", 3.0},
    {"HyperbolicTangent", u"TANH(0)", 0.0},
    {"Minimum", u"MIN(1,2)", 1.0},
    {"Maximum", u"max(1,2)", 2.0},
    {"Remainder", u"MOD(-7,4)", -3.0},
    {"FunctionsInside", u"MAX(SQRT(16),MOD(9,5)+1)", 5.0},
    {"CommaFirst", u"MIN(,1,2)", 1.0},
    {"CommaFirstOfOne", u"SQRT(,4)", 2.0},
    // What no guard of run-time values refuses.
    {"LogarithmOfZero", u"LOG(0)", -infinity},
    {"TooLargeAnExponential", u"EXP(1000)", infinity},
    {"RootOfMinusInfinity", u"(-EXP(1000))^0.5", infinity},
    {"PowerOfTen", u"10^-3", 0.001},
    {"PowerOfTenBeyondTheRange", u"10^309", infinity},
    {"PowerOfTenBelowTheRange", u"10^-330", 0.0},
    // Numbers.
    {"ThreeTenths", u"0.3", 0.30000000000000004},  // 3 * 0.1
    {"DotFirst", u".5", 0.5},
    {"DotLast", u"1.", 1.0},
    {"DotBeforeTheExponent", u"1.e3", 1000.0},
    {"Exponents", u"1e5-1E+5+1e05", 1e5},
    {"ZeroExponents", u"1e0+1e-0", 2.0},
    {"NegativePowerIsAFactor", u"3e-1", 3 * 0.1},
    {"Underflow", u"1e-999", 0.0},
    // Digits are gathered in a double: each step rounds, and nothing wraps.
    {"RoundsDigitByDigit", u"12345678901234567890", 12345678901234569216.0},
    {"RoundsTheLastDigit", u"9007199254740993", 9007199254740992.0},  // 2^53 + 1
    {"DoesNotWrap", u"18446744073709551616", 18446744073709551616.0},
    {"DoesNotWrapBeforeAFraction", u"18446744073709551616.5", 18446744073709551616.0},
    {"SmallExponentDoesNotWrap", u"5e-18446744073709551616", 0.0},
};

class ScalarTexts : public testing::TestWithParam<ScalarCase> {};

TEST_P(ScalarTexts, GiveTheirValue) {
    double result = untouched;
    std::u16string errorText;
    EXPECT_TRUE(EvaluateScalarInput(GetParam().text, result, errorText));
    EXPECT_EQ(BitsOf(result), BitsOf(GetParam().value)) << ShowNumber(result);
    EXPECT_EQ(errorText, u"");
}
INSTANTIATE_TEST_SUITE_P(Table, ScalarTexts, testing::ValuesIn(scalarCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(EvaluateScalarInput, DeliversNaNOutsideADomain) {
    for (const char16_t* text : {u"SQRT(-1)", u"LOG(-1)", u"LOG10(-1)", u"ASIN(2)", u"ACOS(-2)", u"(-8)^0.5",
                                 u"MOD(1,0)", u"EXP(1000)-EXP(1000)", u"1+SQRT(-1)"}) {
        double result = untouched;
        std::u16string errorText;
        EXPECT_TRUE(EvaluateScalarInput(text, result, errorText)) << Utf8FromUtf16(text);
        EXPECT_NE(result, result) << Utf8FromUtf16(text);
        EXPECT_EQ(errorText, u"");
    }
}

struct ScalarErrorCase {
    const char* name;
    const char16_t* text;
    const char16_t* errorText;
};

const ScalarErrorCase scalarErrorCases[] = {
    {"Empty", u"", u"syntax error\r\n"},
    {"Blanks", u" \t", u"syntax error\r\n"},
    {"NothingBehindPlus", u"2+", u"syntax error\r\n"},
    {"UnaryPlus", u"+2", u"syntax error\r\n"},
    {"TwoOperators", u"2*/3", u"syntax error\r\n"},
    {"TwoNumbers", u"1 2", u"syntax error\r\n"},
    {"CommaOutside", u"0,5", u"syntax error\r\n"},
    {"OpenParenthesisAlone", u"(", u"syntax error\r\n"},
    {"ClosedTooOften", u"(1))", u"syntax error\r\n"},
    {"NotClosed", u"(1", u"syntax error\r\n"},
    {"NothingInParentheses", u"()", u"syntax error\r\n"},
    {"FunctionAlone", u"SQRT", u"syntax error\r\n"},
    {"FunctionWithoutParentheses", u"SQRT 2", u"syntax error\r\n"},
    {"ArgumentsWithoutComma", u"SQRT(1 2)", u"syntax error\r\n"},
    {"CommaAlone", u"SQRT(,)", u"syntax error\r\n"},
    {"TwoCommas", u"SQRT(,,2)", u"syntax error\r\n"},
    {"CommaLast", u"SQRT(2,)", u"syntax error\r\n"},
    // Recovery.
    {"TwoGroups", u"(1 2)+(3 4)", u"syntax error\r\nsyntax error\r\n"},
    {"GroupsTooClose", u"(1 2)(3 4)", u"syntax error\r\n"},
    {"NestedGroups", u"((1 2)+3 4)+5 6", u"syntax error\r\nsyntax error\r\nsyntax error\r\n"},
    {"ListAndGroup", u"SQRT(1 2)+(3 4)", u"syntax error\r\nsyntax error\r\n"},
    // Nothing of a material is known here.
    {"Temperature", u"T", u"unknown token T\r\nsyntax error\r\n"},
    {"Pressure", u"p", u"unknown token P\r\nsyntax error\r\n"},
    {"Activity", u"A(water)", u"unknown token A\r\nsyntax error\r\n"},
    {"Fugacity", u"F(water)", u"unknown token F\r\nsyntax error\r\n"},
    {"Molarity", u"C(water)", u"unknown token C\r\nsyntax error\r\n"},
    {"MoleFraction", u"X(water)", u"unknown token X\r\nsyntax error\r\n"},
    {"Compound", u"water", u"unknown token WATER\r\nsyntax error\r\n"},
    {"QuotedCompound", u"\"n-butane\"", u"unknown token N-BUTANE\r\nsyntax error\r\n"},
    {"EmptyQuotedName", u"1+\"\"", u"unknown token \r\nsyntax error\r\n"},
    {"WordBehindAnExpression", u"2 T", u"unknown token T\r\n"},
    // The lexer.
    {"InvalidBehindAnOperator", u"1+#", u"invalid character: '#'\r\nsyntax error\r\n"},
    {"InvalidBehindAnExpression", u"1 # 2", u"invalid character: '#'\r\n"},
    {"LineFeed", u"1\r\n+1", u"invalid character: '\n'\r\n"},
    {"CarriageReturnFirst", u"\r1", u"invalid character: '\r'\r\nsyntax error\r\n"},
    {"LetterBeyondAscii", u"\u00E9", u"invalid character: '\u00E9'\r\nsyntax error\r\n"},
    {"MissingQuote", u"\"R", u"missing closing quote\r\nsyntax error\r\n"},
    {"Dot", u".", u"unexpected end of input while reading number\r\nsyntax error\r\n"},
    {"DotAndLetter", u".x", u"expected number to follow decimal point\r\nsyntax error\r\n"},
    {"EAtTheEnd", u"2e", u"unexpected end of input in real number\r\nsyntax error\r\n"},
    {"EAndASignAtTheEnd", u"2e-", u"unexpected end of input in real number\r\nsyntax error\r\n"},
    {"MissingExponent", u"2e*3", u"syntax error in real number, missing exponent\r\n"},
    {"MissingExponentDigit", u"2e+\t", u"syntax error in real number, expected digit\r\n"},
    {"Overflow", u"1e999", u"Overflow in constant\r\n"},
    {"OverflowOfZero", u"0e999+1", u"Overflow in constant\r\n"},
    {"GreatExponentDoesNotWrap", u"5e18446744073709551616", u"Overflow in constant\r\n"},
    {"SyntaxErrorBeforeALexicalOne", u"(1 2)+#", u"syntax error\r\ninvalid character: '#'\r\n"},
    {"LexicalErrorBeforeASyntaxError", u"1e999 2", u"Overflow in constant\r\nsyntax error\r\n"},
    // The check.
    {"NoArguments", u"SQRT()", u"SQRT should have one argument\r\n"},
    {"OneArgumentTooMany", u"SQRT(1,2)", u"SQRT should have one argument\r\n"},
    {"OneArgumentMissing", u"MIN(1)", u"MIN should have two arguments\r\n"},
    {"ThreeArguments", u"MOD(1,2,3)", u"MOD should have two arguments\r\n"},
    {"TwoCountsWrong", u"SQRT(1,2)+MIN(1)", u"SQRT should have one argument\r\nMIN should have two arguments\r\n"},
    {"DivisionByZero", u"1/0", u"division by zero\r\n"},
    {"DivisorFoldsToZero", u"5/(2-2)", u"division by zero\r\n"},
    {"NegativeZeroDivisor", u"0/-0", u"division by zero\r\n"},
};

class ScalarErrors : public testing::TestWithParam<ScalarErrorCase> {};

TEST_P(ScalarErrors, GiveTheirLinesAndNoValue) {
    double result = untouched;
    std::u16string errorText;
    const CAllocationCounter allocations;
    EXPECT_FALSE(EvaluateScalarInput(GetParam().text, result, errorText));
    EXPECT_EQ(Utf8FromUtf16(errorText), Utf8FromUtf16(GetParam().errorText));
    EXPECT_EQ(result, untouched);
    std::u16string().swap(errorText);
    EXPECT_EQ(allocations.Left(), 0);
}
INSTANTIATE_TEST_SUITE_P(Table, ScalarErrors, testing::ValuesIn(scalarErrorCases),
                         [](const auto& row) { return std::string(row.param.name); });

// The end of an integer doesn't look at its size, the end of any other number does.
TEST(EvaluateScalarInput, ReadsHundredsOfDigits) {
    const std::u16string digits(400, u'9');
    double result = untouched;
    std::u16string errorText;
    EXPECT_TRUE(EvaluateScalarInput(digits, result, errorText));
    EXPECT_EQ(result, infinity);
    EXPECT_TRUE(EvaluateScalarInput(u"1e-" + digits, result, errorText));
    EXPECT_EQ(result, 0.0);
    EXPECT_TRUE(EvaluateScalarInput(u"0." + std::u16string(400, u'0') + u"1", result, errorText));
    EXPECT_EQ(result, 0.0);
    for (const std::u16string& text : {digits + u".5", digits + u"e1", u"1e" + digits}) {
        errorText.clear();
        EXPECT_FALSE(EvaluateScalarInput(text, result, errorText));
        EXPECT_EQ(errorText, u"Overflow in constant\r\n");
    }
}

TEST(EvaluateScalarInput, EndsAtTheFirstZero) {
    double result = untouched;
    std::u16string errorText;
    EXPECT_TRUE(EvaluateScalarInput(std::u16string_view(u"12\0+", 4), result, errorText));
    EXPECT_EQ(result, 12.0);
}

struct ScalarDescriptionCase {
    const char16_t* text;
    const char16_t* description;
};

TEST(ScalarLexer, DescribesTheTokenReadLast) {
    const ScalarDescriptionCase cases[] = {
        {u" ", u"end of input"},     {u"+", u"+"},
        {u"Sqrt", u"SQRT"},          {u"7", u"integer 7"},
        {u"0.5", u"real value 0.5"}, {u"1.23456789e10", u"real value 1.23457e+10"},
        {u"42", u"integer 4e+01"},  // one digit
        {u".x", u". (dot)"},
    };
    for (const auto& [text, description] : cases) {
        std::u16string errorText;
        ParseErrors errors{errorText};
        CExpressionLexer lexer(text, ScalarVocabulary(), errors);
        lexer.ReadToken();
        EXPECT_EQ(Utf8FromUtf16(lexer.TokenDescription()), Utf8FromUtf16(description));
    }
}

// The parser's stack has room for 9999 entries, one of them for the start.
TEST(EvaluateScalarInput, EndsAtTenThousandEntriesOfTheStack) {
    for (const std::size_t depth : {std::size_t{1000}, std::size_t{9996}, std::size_t{9997}}) {
        RunOnSmallStack([depth] {
            double result = untouched;
            std::u16string errorText;
            const std::u16string text = std::u16string(depth, u'(') + u"7" + std::u16string(depth, u')');
            EXPECT_EQ(EvaluateScalarInput(text, result, errorText), depth < 9997);
            EXPECT_EQ(errorText, depth < 9997 ? u"" : u"memory exhausted\r\n");
            EXPECT_EQ(result, depth < 9997 ? 7.0 : untouched);
        });
    }
}

TEST(EvaluateScalarInput, ComputesASumOfAMillionTermsOnASmallStack) {
    RunOnSmallStack([] {
        std::u16string text = u"1";
        for (int i = 0; i < 999'999; ++i) text += u"+1";
        double result = untouched;
        std::u16string errorText;
        EXPECT_TRUE(EvaluateScalarInput(text, result, errorText));
        EXPECT_EQ(result, 1e6);
    });
}

using Calls = std::vector<std::string>;

TEST(ScalarLock, IsTakenAndClosedInEachCall) {
    CFakeMutexes mutexes;
    double result = untouched;
    std::u16string errorText;
    EXPECT_TRUE(EvaluateScalarInput(u"1+1", result, errorText));
    EXPECT_EQ(mutexes.calls, (Calls{"open NAVOParseMutex", "wait", "release", "close"}));
    mutexes.calls.clear();
    EXPECT_FALSE(EvaluateScalarInput(u"1+", result, errorText));
    EXPECT_EQ(mutexes.calls, (Calls{"open NAVOParseMutex", "wait", "release", "close"}));
}

TEST(ScalarLock, IsReleasedBeforeTheEvaluation) {
    CFakeMutexes mutexes;
    double result = untouched;
    double atRelease = 0.0;
    std::u16string errorText;
    mutexes.onRelease = [&] { atRelease = result; };
    EXPECT_TRUE(EvaluateScalarInput(u"1+1", result, errorText));
    EXPECT_EQ(atRelease, untouched);
    EXPECT_EQ(result, 2.0);
}

TEST(ScalarLock, TellsThatItCannotBeMade) {
    CFakeMutexes mutexes;
    mutexes.isOpenToFail = true;
    double result = untouched;
    std::u16string errorText;
    EXPECT_FALSE(EvaluateScalarInput(u"1", result, errorText));
    EXPECT_EQ(errorText, u"Failed to create a mutex for locking the parser for the current thread");
    EXPECT_EQ(result, untouched);
    EXPECT_EQ(mutexes.calls, Calls{"open NAVOParseMutex"});
}

TEST(ScalarLock, TellsThatItCannotBeWaitedFor) {
    CFakeMutexes mutexes;
    mutexes.isWaitToFail = true;
    double result = untouched;
    std::u16string errorText;
    EXPECT_FALSE(EvaluateScalarInput(u"1", result, errorText));
    EXPECT_EQ(errorText, u"Failed to wait for a mutex for locking the parser for the current thread");
    EXPECT_EQ(result, untouched);
    EXPECT_EQ(mutexes.calls, (Calls{"open NAVOParseMutex", "wait", "close"}));
}

TEST(ScalarLock, KeepsOtherThreadsOut) {
    std::thread other;
    std::atomic<bool> isDone = false;
    double result = untouched;
    {
        const auto mutex = SystemMutexes().Open(u"NAVOParseMutex");
        const CNamedMutexLock lock(*mutex);
        other = std::thread([&] {
            std::u16string errorText;
            EXPECT_TRUE(EvaluateScalarInput(u"3", result, errorText));
            isDone = true;
        });
        double own = untouched;
        std::u16string errorText;
        EXPECT_TRUE(EvaluateScalarInput(u"4", own, errorText));  // the holder itself doesn't wait
        EXPECT_EQ(own, 4.0);
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        EXPECT_FALSE(isDone);
    }
    other.join();
    EXPECT_EQ(result, 3.0);
}

TEST(EvaluateScalarInput, LosesNothingWithoutMemory) {
    for (const std::u16string_view text : {std::u16string_view(u"EXP(-8000/(R*300))*2^2+MIN(1,2*3)-(1+2)"),
                                           std::u16string_view(u"(1 2)+SQRT(3 4)+\"a long name that nobody knows\""),
                                           std::u16string_view(u"MIN(1,2,3)+1/0")}) {
        for (std::size_t n = 1;; ++n) {
            const CAllocationCounter allocations;
            bool isOutOfMemory = false;
            double result = untouched;
            {
                std::u16string errorText;
                FailAllocation(n);
                try {
                    EvaluateScalarInput(text, result, errorText);
                } catch (const std::bad_alloc&) {
                    isOutOfMemory = true;
                }
            }
            EXPECT_EQ(allocations.Left(), 0) << Utf8FromUtf16(text) << ", allocation " << n;
            if (isOutOfMemory) {
                EXPECT_EQ(result, untouched);
                continue;
            }
            EXPECT_TRUE(IsAllocationToFail());  // none was swallowed
            EXPECT_GT(n, 1u);
            break;
        }
        FailAllocation(0);
    }
    std::thread([] {  // the lock is free
        double result = untouched;
        std::u16string errorText;
        EXPECT_TRUE(EvaluateScalarInput(u"5", result, errorText));
    })
        .join();
}

TEST(EvaluateScalarInput, GivesEachThreadItsOwnValue) {
    std::vector<std::thread> threads;
    std::vector<int> wrong(4);
    for (std::size_t i = 0; i < wrong.size(); ++i) {
        threads.emplace_back([&wrong, i] {
            const std::u16string text = std::u16string(i, u'(') + u"2" + std::u16string(i, u')') + u"^" +
                                        std::u16string(1, static_cast<char16_t>(u'0' + i));
            for (int round = 0; round < 300; ++round) {
                double result = untouched;
                std::u16string errorText;
                if (!EvaluateScalarInput(text, result, errorText)) ++wrong[i];
                if (result != static_cast<double>(1 << i)) ++wrong[i];
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(wrong, std::vector<int>(4));
}

// A host that has switched the C library to decimal commas changes nothing.
TEST(EvaluateScalarInput, DoesNotFollowTheLocaleOfTheHost) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    const char* german = std::setlocale(LC_ALL, "de_DE.UTF-8");
    if (!german) german = std::setlocale(LC_ALL, "German");
    ASSERT_NE(german, nullptr);
    double result = untouched;
    std::u16string errorText;
    EXPECT_TRUE(EvaluateScalarInput(u"0.5+2.5e-1", result, errorText));
    EXPECT_EQ(result, 0.75);
    EXPECT_FALSE(EvaluateScalarInput(u"0,5", result, errorText));
    std::setlocale(LC_ALL, before.c_str());
}

// A host that traps on floating point exceptions and rounds up changes nothing either.
TEST(EvaluateScalarInput, DoesNotFollowTheArithmeticOfTheHost) {
    const ArithmeticSettings usual = CurrentArithmetic();
    double sum = untouched;
    double root = untouched;
    std::u16string errorText;
    SetArithmetic({0x4000 | 0x8040, 0x0840});
    const bool isSumRead = EvaluateScalarInput(u"0.1+0.2", sum, errorText);
    const bool isRootRead = EvaluateScalarInput(u"SQRT(-1)+LOG(0)+EXP(1000)", root, errorText);
    const ArithmeticSettings after = CurrentArithmetic();
    SetArithmetic(usual);
    EXPECT_TRUE(isSumRead);
    EXPECT_TRUE(isRootRead);
    EXPECT_EQ(sum, 0.1 + 2 * 0.1);
    EXPECT_NE(root, root);
    EXPECT_EQ(after.x87, 0x0840);
}

}  // namespace
}  // namespace reka::test
