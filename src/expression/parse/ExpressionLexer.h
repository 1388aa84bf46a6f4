// SPDX-License-Identifier: MIT
// The lexer of both expression languages. They differ in the words that they know and in the arithmetic in which the
// digits of whole numbers are gathered, and a vocabulary tells it both.

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "expression/parse/CompoundLookup.h"
#include "expression/parse/ParseErrors.h"

namespace reka {

/// The codes of the tokens. A token of a single character has the character as its code.
namespace token {
constexpr int endOfInput = 0;
constexpr int realNumber = 258;
constexpr int functionName = 259;
constexpr int component = 260;
constexpr int pi = 261;
constexpr int r = 262;
// These are of reaction expressions alone.
constexpr int p = 263;
constexpr int t = 264;
constexpr int a = 265;
constexpr int f = 266;
constexpr int c = 267;
constexpr int x = 268;
}  // namespace token

/// What a token carries besides its code.
union TokenValue {
    double number;       // of a number
    std::int32_t index;  // of a function: row of `FunctionTable`; of a compound: index into `compounds`
};

/// What can be said about a token, as it is noted while tokens are read: the words are found when somebody asks.
struct TokenNote {
    enum class Kind : std::uint8_t { Text, Word, Invalid, Integer, IntegerAsDouble, Real };
    Kind kind = Kind::Text;
    std::u16string_view text;  // itself, or the word in the source, or the invalid character
    std::int64_t integer = 0;
    double number = 0.0;
};

/// A word of one letter and its token.
struct ReservedWord {
    char16_t letter;
    int code;
};

/// What the integer before a point and an exponent are while their digits are read.
enum class WholeNumbers : std::uint8_t {
    Wrap,  // a 64-bit integer
    Round  // a double
};

/// What one language knows besides the functions, PI and R.
struct Vocabulary {
    std::span<const ReservedWord> words;   // compared in this order, before the compounds
    CCompoundLookup* compounds = nullptr;  // null for none
    WholeNumbers wholeNumbers = WholeNumbers::Round;
};

/// That of reaction expressions: the properties of a material, and the compounds of a definition.
Vocabulary ReactionVocabulary(CCompoundLookup& compounds);
/// That of numeric fields, which have no material.
Vocabulary ScalarVocabulary();

class CExpressionLexer {
public:
    /// The expression is `text` up to its first zero character. `text`, `errors` and what `known` leads to outlive
    /// this.
    CExpressionLexer(std::u16string_view text, const Vocabulary& known, ParseErrors& parseErrors)
        : source(text), vocabulary(known), errors(parseErrors) {}

    /// Reads the next token. Words are resolved against the function table, PI and R, and then the vocabulary; what is
    /// wrong is reported on the spot. The result is a code of `token`, or a single character; after an error it is the
    /// end of input, unless a number could be delivered.
    int ReadToken();
    /// `ReadToken` for a generated parser, which lets no exception through: the end of input when memory runs out.
    int ReadTokenForGrammar() noexcept;

    const TokenValue& Value() const { return tokenValue; }
    /// The index of the next character.
    std::size_t Position() const { return position; }
    /// Describes the token read last, for diagnostics: "integer 7", or a word in upper case.
    std::u16string TokenDescription() const;

private:
    /// The next character, which stays; zero at the end of the text, which a zero within it is, too.
    char16_t NextCharacter() const { return position < source.size() ? source[position] : u'\0'; }
    bool IsAtEnd() const { return NextCharacter() == u'\0'; }
    char16_t ReadCharacter() { return source[position++]; }
    int EndOfInput();
    int Fail(const TokenNote& note, std::u16string_view message);
    void EndToken();

    int ReadWord();
    int ReadQuotedName();
    int ResolveWord(std::u16string_view word);
    int FindWordOfVocabulary(std::u16string_view word);
    void ReportUnknownWord(std::u16string_view word);

    int ReadNumber(char16_t firstDigit);
    template <class Whole>
    int ReadNumberAs(char16_t firstDigit);
    int ReadNumberFromDot();
    int ReadFraction(double value);
    int ReadExponent(double value);
    int ReadExponentDigits(double value, bool isNegative);
    template <class Whole>
    double GatherExponent(bool isNegative);
    int FinishReal(double value);

    const std::u16string_view source;  // the expression, and what may stand behind its end
    const Vocabulary vocabulary;
    ParseErrors& errors;
    std::size_t position = 0;
    TokenValue tokenValue{};
    TokenNote tokenNote;  // of the token read last
};

}  // namespace reka
