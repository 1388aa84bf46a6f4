// The lexer of reaction expressions. It splits the text, computes numbers by a recipe that decides the last bits of
// every constant, and resolves each word on the spot, so that no name goes further than this.
//
// A character that ends a number or a word is given back, unless it is a tab, a blank or a CR. The CR is no blank
// anywhere else: "T\r+1" is fine, while "\rT" and every LF are invalid.

#include <charconv>
#include <cmath>
#include <string>

#include "expression/FunctionTable.h"
#include "expression/PowersOfTen.h"
#include "expression/ReactionExpressionParser.h"

namespace reka {

namespace {

struct ReservedWord {
    std::u16string_view word;
    int code;
};

// In the order in which they are compared, after the function table and before the compounds.
constexpr ReservedWord reservedWords[] = {{u"PI", token::pi}, {u"R", token::r}, {u"P", token::p}, {u"T", token::t},
                                          {u"X", token::x},   {u"C", token::c}, {u"A", token::a}, {u"F", token::f}};

bool IsDigit(char16_t character) {
    return character >= u'0' && character <= u'9';
}

bool StartsWord(char16_t character) {
    return (character >= u'a' && character <= u'z') || (character >= u'A' && character <= u'Z') || character == u'_';
}

bool ContinuesWord(char16_t character) {
    return StartsWord(character) || IsDigit(character);
}

// Ten times `value` plus `digit`. A sum beyond 64 bits wraps silently, as it always has: documents hold such constants.
std::int64_t AppendDigit(std::int64_t value, std::int64_t digit) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(value) * 10u + static_cast<std::uint64_t>(digit));
}

// `value` in decimal, or as the general format with six digits has it; the host's locale has no part in it.
template <class Number, class... Format>
std::u16string Describe(const char16_t* what, Number value, Format... format) {
    char text[32];
    char* const end = std::to_chars(text, text + sizeof text, value, format...).ptr;
    return std::u16string(what).append(text, end);
}

}  // namespace

int ReactionExpressionParser::ReadToken() {
    while (!IsAtEnd() && (source[position] == u'\t' || source[position] == u' ')) ++position;
    if (IsAtEnd()) return EndOfInput();
    const char16_t first = ReadCharacter();
    if (StartsWord(first)) return ReadWord();
    if (IsDigit(first)) return ReadNumber(first);
    switch (first) {
        case u'"':
            return ReadQuotedName();
        case u'.':
            return ReadNumberFromDot();
        case u'(':
        case u')':
        case u'*':
        case u'+':
        case u',':
        case u'-':
        case u'/':
        case u'^':
            tokenDescription = first;
            return first;
        default:
            break;
    }
    const std::u16string message = std::u16string(u"invalid character: '") + first + u"'";
    return Fail(message, message);
}

int ReactionExpressionParser::EndOfInput() {
    tokenDescription = u"end of input";
    return token::endOfInput;
}

// Whatever is wrong with a token, the parser sees the end of the text and stops there.
int ReactionExpressionParser::Fail(std::u16string_view description, std::u16string_view message) {
    tokenDescription = description;
    ReportParseError(message);
    return token::endOfInput;
}

// Behind the last character of a number or word: the blanks that close it are consumed with it.
void ReactionExpressionParser::EndToken() {
    if (IsAtEnd()) return;
    const char16_t end = source[position];
    if (end == u'\t' || end == u'\r' || end == u' ') ++position;
}

int ReactionExpressionParser::ReadWord() {
    const std::size_t start = position - 1;
    while (!IsAtEnd() && ContinuesWord(source[position])) ++position;
    const std::u16string_view word = source.substr(start, position - start);
    EndToken();
    return ResolveWord(word);
}

// Quotes are for compound names with blanks, hyphens and the like; "T" in quotes is still the temperature.
int ReactionExpressionParser::ReadQuotedName() {
    const std::size_t end = source.find(u'"', position);
    if (end == std::u16string_view::npos) {
        position = source.size();
        return Fail(u"end of input", u"missing closing quote");
    }
    const std::u16string_view name = source.substr(position, end - position);
    position = end + 1;
    return ResolveWord(name);
}

int ReactionExpressionParser::ResolveWord(std::u16string_view word) {
    tokenDescription = UpperCase(word);
    for (std::int32_t row = 0; row < functionCount; ++row) {
        if (FunctionTable[row].name != tokenDescription) continue;
        tokenValue.index = row;
        return token::functionName;
    }
    for (const ReservedWord& reserved : reservedWords) {
        if (reserved.word == tokenDescription) return reserved.code;
    }
    const std::int32_t compoundIndex = compounds.Find(tokenDescription);
    if (compoundIndex >= 0) {
        tokenValue.index = compoundIndex;
        return token::component;
    }
    ReportParseError(u"unknown token " + tokenDescription);
    return token::endOfInput;
}

int ReactionExpressionParser::ReadNumber(char16_t firstDigit) {
    std::int64_t value = firstDigit - u'0';
    while (!IsAtEnd() && IsDigit(source[position])) value = AppendDigit(value, ReadCharacter() - u'0');
    if (!IsAtEnd()) {
        switch (source[position]) {
            case u'e':
            case u'E':
                ++position;
                return ReadExponent(static_cast<double>(value));
            case u'.':
                ++position;
                return ReadFraction(static_cast<double>(value));
            default:
                EndToken();
                break;
        }
    }
    return FinishInteger(value);
}

int ReactionExpressionParser::ReadNumberFromDot() {
    if (IsAtEnd()) return Fail(u"end of input", u"unexpected end of input while reading number");
    if (IsDigit(source[position])) return ReadFraction(0.0);
    ++position;
    return Fail(u". (dot)", u"expected number to follow decimal point");
}

// Summed digit by digit and not rounded once: 0.3 must read as 3 * 0.1, as it does in packages already stored.
int ReactionExpressionParser::ReadFraction(double value) {
    double scale = 0.1;
    while (!IsAtEnd() && IsDigit(source[position])) {
        value += (ReadCharacter() - u'0') * scale;
        scale *= 0.1;
    }
    if (!IsAtEnd()) {
        if (source[position] == u'e' || source[position] == u'E') {
            ++position;
            return ReadExponent(value);
        }
        EndToken();
    }
    return FinishReal(value);
}

int ReactionExpressionParser::ReadExponent(double value) {
    constexpr std::u16string_view endMessage = u"unexpected end of input in real number";
    if (IsAtEnd()) return Fail(u"end of input", endMessage);
    const char16_t first = source[position];
    if (IsDigit(first)) return ReadExponentDigits(value, false);
    if (first != u'+' && first != u'-') {
        ReportParseError(u"syntax error in real number, missing exponent");
        EndToken();
        return FinishReal(value);
    }
    ++position;
    if (IsAtEnd()) return Fail(u"end of input", endMessage);
    if (IsDigit(source[position])) return ReadExponentDigits(value, first == u'-');
    ReportParseError(u"syntax error in real number, expected digit");
    EndToken();
    return FinishReal(value);
}

int ReactionExpressionParser::ReadExponentDigits(double value, bool isNegative) {
    while (!IsAtEnd() && source[position] == u'0') ++position;
    if (IsAtEnd() || !IsDigit(source[position])) {  // 1e0 is 1, with no multiplication
        EndToken();
        return FinishReal(value);
    }
    std::int64_t exponent = ReadCharacter() - u'0';
    if (isNegative) exponent = -exponent;
    while (!IsAtEnd() && IsDigit(source[position])) {
        const std::int64_t digit = ReadCharacter() - u'0';
        exponent = AppendDigit(exponent, exponent < 0 ? -digit : digit);
    }
    EndToken();
    return FinishReal(value * PowerOfTen(static_cast<double>(exponent)));
}

int ReactionExpressionParser::FinishInteger(std::int64_t value) {
    tokenValue.number = static_cast<double>(value);
    tokenDescription = Describe(u"integer ", value);
    return token::realNumber;
}

int ReactionExpressionParser::FinishReal(double value) {
    tokenValue.number = value;
    tokenDescription = Describe(u"real value ", value, std::chars_format::general, 6);
    if (!std::isfinite(value)) ReportParseError(u"Overflow in constant");  // 0e999 too, which is a NaN
    return token::realNumber;
}

}  // namespace reka
