// The lexer of both expression languages. They differ in the words that they know and in the arithmetic in which the
// digits of integers and exponents are gathered.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "expression/parse/ExpressionParser.h"

namespace reka {

/// `Whole` holds the integer before a point and the exponent while their digits are read: a 64-bit integer that wraps,
/// or a double that rounds.
template <class Whole>
struct ExpressionLexer : ExpressionParser {
    /// Reads the next token and leaves its value in `tokenValue`. Words are resolved against the function table, PI and
    /// R, and then by `FindOtherWord`; what is wrong is reported on the spot. The result is a code of `token`, or a
    /// single character; after an error it is the end of input, unless a number could be delivered.
    int ReadToken();

    /// `ReadToken` for the generated parser, which lets no exception through: the end of input when memory runs out.
    int ReadTokenForGrammar() noexcept;

protected:
    using ExpressionParser::ExpressionParser;
    ~ExpressionLexer() = default;

private:
    /// The token of a word of this language alone, with its value in `tokenValue`; the end of input for none. The case
    /// of A to Z plays no part.
    virtual int FindOtherWord(std::u16string_view word) = 0;

    /// The next character, which stays; zero at the end of the text, which a zero within it is, too.
    char16_t NextCharacter() const { return position < source.size() ? source[position] : u'\0'; }
    bool IsAtEnd() const { return NextCharacter() == u'\0'; }
    char16_t ReadCharacter() { return source[position++]; }
    int EndOfInput();
    int Fail(const TokenNote& note, std::u16string_view message);

    int ReadWord();
    int ReadQuotedName();
    int ResolveWord(std::u16string_view word);
    void EndToken();

    int ReadNumber(char16_t firstDigit);
    int ReadNumberFromDot();
    int ReadFraction(double value);
    int ReadExponent(double value);
    int ReadExponentDigits(double value, bool isNegative);
    int FinishInteger(Whole value);
    int FinishReal(double value);
};

extern template struct ExpressionLexer<std::int64_t>;
extern template struct ExpressionLexer<double>;

}  // namespace reka
