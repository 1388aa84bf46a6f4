// SPDX-License-Identifier: MIT
// The lexer of reaction expressions, token by token.

#include "expression/parse/ExpressionLexer.h"

#include <gtest/gtest.h>

#include <charconv>
#include <limits>
#include <vector>

#include "expression/ExpressionBuilders.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

// The tokens of a text in one line up to its end, numbers as "#1.5", functions as "f0" and compounds as "c2" with their
// index, single characters as they are, and other words as their code; then each message, in brackets.
std::string Tokens(std::u16string_view text, std::initializer_list<const char16_t*> compounds = {}) {
    const auto definition = MakeDefinitionOf(compounds);
    CCompoundLookup lookup(*definition);
    std::u16string errorText;
    ParseErrors errors{errorText};
    CExpressionLexer lexer(text, ReactionVocabulary(lookup), errors);
    std::string line;
    while (const int code = lexer.ReadToken()) {
        if (!line.empty()) line += " ";
        if (code == token::realNumber) {
            line += "#" + ShowNumber(lexer.Value().number);
        } else if (code == token::functionName) {
            line += "f" + std::to_string(lexer.Value().index);
        } else if (code == token::component) {
            line += "c" + std::to_string(lexer.Value().index);
        } else if (code < 128) {
            line += static_cast<char>(code);
        } else {
            line += std::to_string(code);
        }
    }
    for (const char16_t character : errorText) {
        if (character == u'\r') line += "]";
        if (character != u'\r' && character != u'\n') {
            if (line.empty() || line.back() == ']' || line.find('[') == std::string::npos) line += "[";
            line += Utf8FromUtf16(std::u16string(1, character));
        }
    }
    return line;
}

// The number at the start of a text.
double ReadNumber(std::u16string_view text) {
    const auto definition = MakeDefinitionOf({});
    CCompoundLookup lookup(*definition);
    std::u16string errorText;
    ParseErrors errors{errorText};
    CExpressionLexer lexer(text, ReactionVocabulary(lookup), errors);
    EXPECT_EQ(lexer.ReadToken(), token::realNumber) << Utf8FromUtf16(text);
    return lexer.Value().number;
}

struct TokenCase {
    const char* name;
    const char16_t* text;
    const char* tokens;
};

class TokenRows : public testing::TestWithParam<TokenCase> {};

TEST_P(TokenRows, AreReadWithTheirMessages) {
    EXPECT_EQ(Tokens(GetParam().text, {u"Ar", u"n-Butane", u"Co2", u"CO2", u"C", u"_x1"}), GetParam().tokens);
}

const TokenCase wordCases[] = {
    {"Nothing", u"", ""},
    {"Blanks", u" \t ", ""},
    {"SingleCharacters", u"()*+,-/^", "( ) * + , - / ^"},
    {"FunctionInAnyCase", u"sqrt Sqrt SQRT", "f0 f0 f0"},
    {"AllFunctions", u"SQRT SIN COS SINH COSH ASIN ACOS TAN ATAN ABS FLOOR CEIL ROUND EXP LOG LOG10 TANH MIN MAX MOD",
     "f0 f1 f2 f3 f4 f5 f6 f7 f8 f9 f10 f11 f12 f13 f14 f15 f16 f17 f18 f19"},
    {"ReservedWords", u"PI R P T X C A F", "261 262 263 264 268 267 265 266"},
    {"ReservedWordsInSmallLetters", u"pi Pi t", "261 261 264"},
    {"UnknownWord", u"T2", "[unknown token T2]"},
    {"UnknownWordInUpperCase", u"helium+1", "[unknown token HELIUM]"},
    {"NoWordForMolecularWeight", u"MWT", "[unknown token MWT]"},
    {"Underscore", u"_X1", "c5"},
    {"NumberBeforeWord", u"2T", "#2 264"},
    {"Compound", u"ar AR", "c0 c0"},
    {"HyphenEndsAWord", u"n-butane", "[unknown token N]"},
    {"QuotedCompoundInAnyCase", u"\"N-BUTANE\" \"n-butane\"", "c1 c1"},
    {"FirstOfTwoThatDifferInCase", u"co2 CO2 \"co2\" \"CO2\"", "c2 c2 c2 c2"},
    {"CompoundWithTheNameOfAReservedWord", u"C \"C\"", "267 267"},
    {"QuotedReservedWord", u"\"T\" \"sqrt\"", "264 f0"},
    {"QuotedUnknownName", u"\"n-butan\"", "[unknown token N-BUTAN]"},
    {"QuotedNameKeepsBlanks", u"\" Ar\"", "[unknown token  AR]"},
    {"QuotedNameOfLineEnds", u"\"a\r\nb\"", "[unknown token A][B]"},
    {"EmptyQuotedName", u"\"\"", "[unknown token ]"},
    {"NoClosingQuote", u"1+\"Ar", "#1 +[missing closing quote]"},
    {"NothingBehindAQuote", u"\"", "[missing closing quote]"},
    {"InvalidCharacter", u"1 # 2", "#1[invalid character: '#']"},
    {"LetterBeyondAscii", u"\u00E9", "[invalid character: '\u00E9']"},
    {"LetterBeyondAsciiInsideAWord", u"Ar\u00E9", "c0[invalid character: '\u00E9']"},
    {"LineFeed", u"T\n",
     "264[invalid character: '"  // the line end is dropped from the listing
     "']"},
    {"CarriageReturnBehindAWord", u"T\r+1", "264 + #1"},
    {"CarriageReturnBehindANumber", u"1\r+1.5\r+1e3\r", "#1 + #1.5 + #1000"},
    {"TabBehindAWord", u"T\t+\t1", "264 + #1"},
};
INSTANTIATE_TEST_SUITE_P(Words, TokenRows, testing::ValuesIn(wordCases),
                         [](const auto& row) { return std::string(row.param.name); });

const TokenCase numberCases[] = {
    {"Integer", u"0 7 0012", "#0 #7 #12"},
    {"Exponents", u"1e5 1E5 1e+5 1e05", "#1e+05 #1e+05 #1e+05 #1e+05"},
    {"NegativeExponent", u"1e-5", "#1e-05"},
    {"ZeroExponents", u"1e0 1e-0 1e00x", "#1 #1 #1 268"},
    {"DotFirst", u".5", "#0.5"},
    {"DotLast", u"1. 1.e3", "#1 #1000"},
    {"DotBehindAFraction", u"1.5.25", "#1.5 #0.25"},
    {"NumberBeforeCharacter", u"1+2.5*3e2^", "#1 + #2.5 * #300 ^"},
    {"EAtTheEnd", u"2e", "[unexpected end of input in real number]"},
    {"EAndASignAtTheEnd", u"2e-", "[unexpected end of input in real number]"},
    {"FractionAndEAtTheEnd", u"2.5e", "[unexpected end of input in real number]"},
    {"EAndALetter", u"2ex", "#2 268[syntax error in real number, missing exponent]"},
    {"EAndABlank", u"2e 5", "#2 #5[syntax error in real number, missing exponent]"},
    {"EAndAPlusSign", u"2.5E*3", "#2.5 * #3[syntax error in real number, missing exponent]"},
    {"EAndASignAndALetter", u"2e+x", "#2 268[syntax error in real number, expected digit]"},
    {"EAndASignAndATab", u"2e-\t1", "#2 #1[syntax error in real number, expected digit]"},
    {"DotAtTheEnd", u"1+.", "#1 +[unexpected end of input while reading number]"},
    {"DotAndALetter", u".x", "[expected number to follow decimal point]"},
    {"DotAndABlank", u". 5", "[expected number to follow decimal point]"},
    {"Overflow", u"1e999", "#inf[Overflow in constant]"},
    {"OverflowOfZero", u"0e999 T", "#nan 264[Overflow in constant]"},
    {"OverflowByTheProduct", u"10e308", "#inf[Overflow in constant]"},
    {"OverflowOfAFraction", u"2.5e308", "#inf[Overflow in constant]"},
    {"Underflow", u"1e-999", "#0"},
};
INSTANTIATE_TEST_SUITE_P(Numbers, TokenRows, testing::ValuesIn(numberCases),
                         [](const auto& row) { return std::string(row.param.name); });

struct NumberCase {
    const char* name;
    const char16_t* text;
    double value;
};

const NumberCase exactNumberCases[] = {
    {"ThreeTenths", u"0.3", 0.30000000000000004},  // 3 * 0.1
    {"FractionDigitByDigit", u"1.25", 1 + 2 * 0.1 + 5 * (0.1 * 0.1)},
    {"LongFraction", u".0625", 0 + 6 * (0.1 * 0.1) + 2 * (0.1 * 0.1 * 0.1) + 5 * (0.1 * 0.1 * 0.1 * 0.1)},
    {"PowerOfTenTimesFraction", u"8.314e3", (8 + 3 * 0.1 + 1 * (0.1 * 0.1) + 4 * (0.1 * 0.1 * 0.1)) * 1e3},
    {"NegativePowerIsAFactor", u"3e-1", 3 * 0.1},
    {"SmallestNormalTimesOne", u"1e-308", 1e-308},
    {"SmallestPower", u"1e-323", 1e-323},
    {"PowerBelowTheRange", u"1e-324", 0.0},
    {"ProductOfASmallPower", u"123456e-323", 123456 * 1e-323},
    {"GreatestPower", u"1e308", 1e308},
    {"GreatestInteger", u"9223372036854775807", 9223372036854775807.0},
    {"WrapsToTheSmallest", u"9223372036854775808", -9223372036854775808.0},
    {"WrapsToANegative", u"12345678901234567890", -6101065172474983726.0},  // less 2^64
    {"WrapsToZero", u"18446744073709551616", 0.0},                          // 2^64
    {"WrapsTwice", u"36893488147419103235", 3.0},                           // 2^65 + 3
    {"WrapsBeforeTheFraction", u"18446744073709551617.5", 1.5},             // 2^64 + 1
    {"ExponentWrapsToTheSmallest", u"1e9223372036854775808", 0.0},          // -2^63
    {"ExponentWrapsToZero", u"5e18446744073709551616", 5.0},                // 2^64
    {"NegativeExponentWrapsToTheGreatest", u"1e-9223372036854775809", infinity},
    {"LeadingZerosOfTheExponent", u"1e000000000000000000000000002", 100.0},
};

class ExactNumbers : public testing::TestWithParam<NumberCase> {};

TEST_P(ExactNumbers, HaveTheirLastBit) {
    EXPECT_EQ(BitsOf(ReadNumber(GetParam().text)), BitsOf(GetParam().value));
}
INSTANTIATE_TEST_SUITE_P(Table, ExactNumbers, testing::ValuesIn(exactNumberCases),
                         [](const auto& row) { return std::string(row.param.name); });

// The recipe once more, from the digits as numbers and with the library's reading of a power of ten.
TEST(Numbers, FollowTheRecipeBitForBit) {
    std::mt19937 random(7);
    for (int i = 0; i < 20000; ++i) {
        const int whole = RandomBelow(random, 100000);
        std::string text = std::to_string(whole) + ".";
        double value = whole;
        double scale = 0.1;
        for (int digits = RandomBelow(random, 25); digits > 0; --digits) {
            const int digit = RandomBelow(random, 10);
            text += static_cast<char>('0' + digit);
            value = value + digit * scale;
            scale = scale * 0.1;
        }
        const int exponent = RandomBelow(random, 620) - 315;
        if (exponent != 0) {
            const std::string power = "1e" + std::to_string(exponent);
            text += "e" + std::to_string(exponent);
            double factor = infinity;
            std::from_chars(power.data(), power.data() + power.size(), factor);
            value = value * factor;
        }
        ASSERT_EQ(BitsOf(ReadNumber(Utf16FromUtf8(text))), BitsOf(value)) << text;
    }
}

TEST(Numbers, OfAMillionDigitsAreRead) {
    EXPECT_EQ(ReadNumber(u"0." + std::u16string(1'000'000, u'0') + u"1"), 0.0);
    EXPECT_EQ(ReadNumber(u"1e" + std::u16string(1'000'000, u'0') + u"1"), 10.0);
    EXPECT_EQ(ReadNumber(std::u16string(1'000'000, u'0') + u"7"), 7.0);
}

struct DescriptionCase {
    const char* name;
    const char16_t* text;
    const char16_t* description;
};

const DescriptionCase descriptionCases[] = {
    {"End", u" ", u"end of input"},
    {"Character", u"+", u"+"},
    {"InvalidCharacter", u"$", u"invalid character: '$'"},
    {"Word", u"Sqrt", u"SQRT"},
    {"UnknownWord", u"helium", u"HELIUM"},
    {"NoClosingQuote", u"\"a", u"end of input"},
    {"Integer", u"0042", u"integer 42"},
    {"WrappedInteger", u"9223372036854775808", u"integer -9223372036854775808"},
    {"Real", u"0.5", u"real value 0.5"},
    {"RealOfSixDigits", u"1.23456789e10", u"real value 1.23457e+10"},
    {"WholeReal", u"100.", u"real value 100"},
    {"Dot", u".x", u". (dot)"},
    {"DotAtTheEnd", u".", u"end of input"},
    {"EAtTheEnd", u"1e", u"end of input"},
};

class Descriptions : public testing::TestWithParam<DescriptionCase> {};

TEST_P(Descriptions, TellTheTokenReadLast) {
    const auto definition = MakeDefinitionOf({});
    CCompoundLookup lookup(*definition);
    std::u16string errorText;
    ParseErrors errors{errorText};
    CExpressionLexer lexer(GetParam().text, ReactionVocabulary(lookup), errors);
    lexer.ReadToken();
    EXPECT_EQ(lexer.TokenDescription(), GetParam().description);
}
INSTANTIATE_TEST_SUITE_P(Table, Descriptions, testing::ValuesIn(descriptionCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(CompoundNames, MayBeAbsentOrEmpty) {
    EXPECT_EQ(Tokens(u"\"\"", {u"Ar", nullptr, u""}), "c1");
    EXPECT_EQ(Tokens(u"\"\"", {u"", nullptr}), "c0");
}

TEST(CompoundNames, AreFoundAmongThousands) {
    ReactionPackDefinition definition(nullptr);
    std::u16string text;
    for (int i = 0; i < 10000; ++i) {
        const std::u16string name = u"Compound" + Utf16FromUtf8(std::to_string(i));
        definition.compounds.push_back(std::make_unique<CompoundDefinition>());
        definition.compounds.back()->name = CBstr::Make(name);
        text += name + u" ";
    }
    CCompoundLookup lookup(definition);
    std::u16string errorText;
    ParseErrors errors{errorText};
    CExpressionLexer lexer(text, ReactionVocabulary(lookup), errors);
    for (int i = 0; i < 10000; ++i) {
        ASSERT_EQ(lexer.ReadToken(), token::component);
        ASSERT_EQ(lexer.Value().index, i);
    }
    EXPECT_EQ(lexer.ReadToken(), token::endOfInput);
}

TEST(Source, EndsAtItsFirstZero) {
    EXPECT_EQ(Tokens(std::u16string_view(u"1+\0T", 4)), "#1 +");
    EXPECT_EQ(Tokens(std::u16string_view(u"\"a\0\"", 4)), "[missing closing quote]");
    EXPECT_EQ(Tokens(std::u16string_view(u"\0T", 2)), "");
    EXPECT_EQ(Tokens(std::u16string_view(u"T\0T", 3)), "264");
    EXPECT_EQ(Tokens(std::u16string_view(u"12\0"
                                         u"3",
                                         4)),
              "#12");
    EXPECT_EQ(Tokens(std::u16string_view(u"1.5\0"
                                         u"5",
                                         5)),
              "#1.5");
    EXPECT_EQ(Tokens(std::u16string_view(u".\0"
                                         u"5",
                                         3)),
              "[unexpected end of input while reading number]");
    EXPECT_EQ(Tokens(std::u16string_view(u"2e\0"
                                         u"5",
                                         4)),
              "[unexpected end of input in real number]");
    EXPECT_EQ(Tokens(std::u16string_view(u"2e-\0"
                                         u"5",
                                         5)),
              "[unexpected end of input in real number]");
    EXPECT_EQ(Tokens(std::u16string_view(u"2e0\0"
                                         u"5",
                                         5)),
              "#2");
    EXPECT_EQ(Tokens(std::u16string_view(u"2e1\0"
                                         u"5",
                                         5)),
              "#20");
}

TEST(Source, IsNotReadBeyondAZero) {
    const auto definition = MakeDefinitionOf({});
    CCompoundLookup lookup(*definition);
    std::u16string errorText;
    ParseErrors errors{errorText};
    CExpressionLexer lexer(std::u16string_view(u"T \0T", 4), ReactionVocabulary(lookup), errors);
    EXPECT_EQ(lexer.ReadToken(), token::t);
    EXPECT_EQ(lexer.ReadToken(), token::endOfInput);
    EXPECT_EQ(lexer.ReadToken(), token::endOfInput);
    EXPECT_EQ(lexer.Position(), 2U);
}

TEST(Source, EndsBehindAQuoteThatNothingCloses) {
    const auto definition = MakeDefinitionOf({});
    CCompoundLookup lookup(*definition);
    std::u16string errorText;
    ParseErrors errors{errorText};
    CExpressionLexer lexer(std::u16string_view(u"\"ab\0\"", 5), ReactionVocabulary(lookup), errors);
    EXPECT_EQ(lexer.ReadToken(), token::endOfInput);
    EXPECT_EQ(lexer.Position(), 3U);
}

TEST(UnknownWords, AreToldInUpperCaseWhateverTheirLength) {
    for (const std::size_t length : {1U, 4095U, 4096U, 4097U, 20'000U}) {
        const auto definition = MakeDefinitionOf({});
        CCompoundLookup lookup(*definition);
        std::u16string name;
        std::u16string upperCase;
        while (name.size() < length) {
            name += u"z\u00E4Z{";
            upperCase += u"Z\u00E4Z{";
        }
        const std::u16string text = u'"' + name + u'"';
        std::u16string errorText;
        ParseErrors errors{errorText};
        CExpressionLexer lexer(text, ReactionVocabulary(lookup), errors);
        errors.ReportParseError(u"before");
        EXPECT_EQ(lexer.ReadToken(), token::endOfInput);
        EXPECT_TRUE(errorText == u"before\r\nunknown token " + upperCase + u"\r\n") << length;
    }
}

}  // namespace
}  // namespace reka::test
