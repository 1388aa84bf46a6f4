// SPDX-License-Identifier: MIT
// The lexer of expressions. It splits the text, computes numbers by a recipe that decides the last bits of every
// constant, and resolves each word on the spot, so that no name goes further than this: of
//     1.5e3*c("n-butane")
// the parser gets a number, 1 + 5 * 0.1 times 1000, then '*', the token of the word C, '(', a compound by its index in
// the definition, and ')'. A character that ends a number or a word is given back, unless it is a tab, a blank or a CR.
// The CR is no blank anywhere else: "T\r+1" is fine, while "\rT" and every LF are invalid.

#include "expression/parse/ExpressionLexer.h"

#include <charconv>
#include <cmath>
#include <new>

#include "expression/math/PowersOfTen.h"
#include "expression/tree/NodeKinds.h"
#include "text/LetterCase.h"

namespace reka {

namespace {

// In the order in which they are compared.
constexpr ReservedWord reactionWords[] = {{u'P', token::p}, {u'T', token::t}, {u'X', token::x},
                                          {u'C', token::c}, {u'A', token::a}, {u'F', token::f}};

// Compared after the function table and before the words of one language.
constexpr std::u16string_view piWord = u"PI";
constexpr std::u16string_view gasConstantWord = u"R";

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

// The same for a double: digits beyond its precision are rounded, and hundreds of them make an infinity.
double AppendDigit(double value, double digit) {
    return value * 10.0 + digit;
}

// What there is to say about an integer, in the arithmetic of its language.
TokenNote NoteOf(std::int64_t value) {
    return {TokenNote::Kind::Integer, {}, value, 0.0};
}

TokenNote NoteOf(double value) {
    return {TokenNote::Kind::IntegerAsDouble, {}, 0, value};
}

TokenNote NoteOf(std::u16string_view text) {
    return {TokenNote::Kind::Text, text, 0, 0.0};
}

// Whether `word` is `upperCase`, the case of A to Z apart.
bool IsWord(std::u16string_view word, std::u16string_view upperCase) {
    if (word.size() != upperCase.size()) return false;
    for (std::size_t i = 0; i < word.size(); ++i) {
        if (UpperCase(word[i]) != upperCase[i]) return false;
    }
    return true;
}

constexpr bool AreFunctionNamesOfThreeToFive() {
    for (const NodeKindRow& row : FunctionTable) {
        if (row.word.size() < 3 || row.word.size() > 5) return false;
    }
    return true;
}
static_assert(AreFunctionNamesOfThreeToFive());

// `value` in decimal, or in the general format; the host's locale has no part in it.
template <class Number, class... Format>
std::u16string Describe(const char16_t* what, Number value, Format... format) {
    char text[32];
    char* const end = std::to_chars(text, text + sizeof text, value, format...).ptr;
    return std::u16string(what).append(text, end);
}

std::u16string DescribeToken(const TokenNote& note) {
    switch (note.kind) {
        case TokenNote::Kind::Word:
            return UpperCase(note.text);
        case TokenNote::Kind::Invalid:
            return std::u16string(u"invalid character: '").append(note.text) + u"'";
        case TokenNote::Kind::Integer:
            return Describe(u"integer ", note.integer);
        case TokenNote::Kind::IntegerAsDouble:
            return Describe(u"integer ", note.number, std::chars_format::general, 1);
        case TokenNote::Kind::Real:
            return Describe(u"real value ", note.number, std::chars_format::general, 6);
        default:
            return std::u16string(note.text);
    }
}

}  // namespace

Vocabulary ReactionVocabulary(CCompoundLookup& compounds) {
    return {reactionWords, &compounds, WholeNumbers::Wrap};
}

Vocabulary ScalarVocabulary() {
    return {};
}

std::u16string CExpressionLexer::TokenDescription() const {
    return DescribeToken(tokenNote);
}

int CExpressionLexer::ReadToken() {
    while (NextCharacter() == u'\t' || NextCharacter() == u' ') ++position;
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
            tokenNote = NoteOf(source.substr(position - 1, 1));
            return first;
        default:
            break;
    }
    const TokenNote note = {TokenNote::Kind::Invalid, source.substr(position - 1, 1), 0, 0.0};
    return Fail(note, DescribeToken(note));
}

int CExpressionLexer::ReadTokenForGrammar() noexcept {
    if (errors.isOutOfMemory) return token::endOfInput;
    try {
        return ReadToken();
    } catch (const std::bad_alloc&) {
        errors.isOutOfMemory = true;
        return token::endOfInput;
    }
}

int CExpressionLexer::EndOfInput() {
    tokenNote = NoteOf(u"end of input");
    return token::endOfInput;
}

// Whatever is wrong with a token, the parser sees the end of the text and stops there.
int CExpressionLexer::Fail(const TokenNote& note, std::u16string_view message) {
    tokenNote = note;
    errors.ReportParseError(message);
    return token::endOfInput;
}

// Behind the last character of a number or word: the blanks that close it are consumed with it.
void CExpressionLexer::EndToken() {
    const char16_t end = NextCharacter();
    if (end == u'\t' || end == u'\r' || end == u' ') ++position;
}

int CExpressionLexer::ReadWord() {
    const std::size_t start = position - 1;
    while (ContinuesWord(NextCharacter())) ++position;
    const std::u16string_view word = source.substr(start, position - start);
    EndToken();
    return ResolveWord(word);
}

// Quotes are for compound names with blanks, hyphens and the like; "T" in quotes is still the temperature.
int CExpressionLexer::ReadQuotedName() {
    const std::size_t start = position;
    while (!IsAtEnd() && NextCharacter() != u'"') ++position;
    if (IsAtEnd()) return Fail(NoteOf(u"end of input"), u"missing closing quote");
    const std::u16string_view name = source.substr(start, position - start);
    ++position;
    return ResolveWord(name);
}

int CExpressionLexer::ResolveWord(std::u16string_view word) {
    tokenNote = {TokenNote::Kind::Word, word, 0, 0.0};
    if (word.size() >= 3 && word.size() <= 5) {
        for (std::size_t row = 0; row < FunctionTable.size(); ++row) {
            if (!IsWord(word, FunctionTable[row].word)) continue;
            tokenValue.index = static_cast<std::int32_t>(row);
            return token::functionName;
        }
    }
    if (IsWord(word, piWord)) return token::pi;
    if (IsWord(word, gasConstantWord)) return token::r;
    if (const int code = FindWordOfVocabulary(word); code != token::endOfInput) return code;
    ReportUnknownWord(word);
    return token::endOfInput;
}

int CExpressionLexer::FindWordOfVocabulary(std::u16string_view word) {
    if (word.size() == 1) {
        for (const ReservedWord& reserved : vocabulary.words) {
            if (reserved.letter == UpperCase(word[0])) return reserved.code;
        }
    }
    const std::int32_t compoundIndex = vocabulary.compounds ? vocabulary.compounds->Find(word) : -1;
    if (compoundIndex < 0) return token::endOfInput;
    tokenValue.index = compoundIndex;
    return token::component;
}

// The word may be as long as the text.
void CExpressionLexer::ReportUnknownWord(std::u16string_view word) {
    constexpr std::u16string_view start = u"unknown token ";
    constexpr std::u16string_view end = u"\r\n";
    constexpr std::size_t partSize = 4096;  // small enough to be in the cache still when it is folded
    std::u16string& text = errors.text;
    text.reserve(text.size() + start.size() + word.size() + end.size());
    text += start;
    for (std::size_t done = 0; done < word.size(); done += partSize) {
        const std::size_t partStart = text.size();
        text += word.substr(done, partSize);
        for (std::size_t i = partStart; i < text.size(); ++i) text[i] = UpperCase(text[i]);
    }
    text += end;
}

int CExpressionLexer::ReadNumber(char16_t firstDigit) {
    return vocabulary.wholeNumbers == WholeNumbers::Wrap ? ReadNumberAs<std::int64_t>(firstDigit)
                                                         : ReadNumberAs<double>(firstDigit);
}

template <class Whole>
int CExpressionLexer::ReadNumberAs(char16_t firstDigit) {
    Whole value = firstDigit - u'0';
    while (IsDigit(NextCharacter())) value = AppendDigit(value, Whole(ReadCharacter() - u'0'));
    switch (NextCharacter()) {
        case u'e':
        case u'E':
            ++position;
            return ReadExponent(static_cast<double>(value));
        case u'.':
            ++position;
            return ReadFraction(static_cast<double>(value));
        default:
            EndToken();
            tokenValue.number = static_cast<double>(value);
            tokenNote = NoteOf(value);
            return token::realNumber;
    }
}

int CExpressionLexer::ReadNumberFromDot() {
    if (IsAtEnd()) return Fail(NoteOf(u"end of input"), u"unexpected end of input while reading number");
    if (IsDigit(NextCharacter())) return ReadFraction(0.0);
    ++position;
    return Fail(NoteOf(u". (dot)"), u"expected number to follow decimal point");
}

// Summed digit by digit and not rounded once: 0.3 must read as 3 * 0.1, as it does in packages already stored.
int CExpressionLexer::ReadFraction(double value) {
    double scale = 0.1;
    while (IsDigit(NextCharacter())) {
        value += (ReadCharacter() - u'0') * scale;
        scale *= 0.1;
    }
    if (NextCharacter() == u'e' || NextCharacter() == u'E') {
        ++position;
        return ReadExponent(value);
    }
    EndToken();
    return FinishReal(value);
}

int CExpressionLexer::ReadExponent(double value) {
    constexpr std::u16string_view endMessage = u"unexpected end of input in real number";
    if (IsAtEnd()) return Fail(NoteOf(u"end of input"), endMessage);
    const char16_t first = NextCharacter();
    if (IsDigit(first)) return ReadExponentDigits(value, false);
    if (first != u'+' && first != u'-') {
        errors.ReportParseError(u"syntax error in real number, missing exponent");
        EndToken();
        return FinishReal(value);
    }
    ++position;
    if (IsAtEnd()) return Fail(NoteOf(u"end of input"), endMessage);
    if (IsDigit(NextCharacter())) return ReadExponentDigits(value, first == u'-');
    errors.ReportParseError(u"syntax error in real number, expected digit");
    EndToken();
    return FinishReal(value);
}

int CExpressionLexer::ReadExponentDigits(double value, bool isNegative) {
    while (NextCharacter() == u'0') ++position;
    if (!IsDigit(NextCharacter())) {  // 1e0 is 1, with no multiplication
        EndToken();
        return FinishReal(value);
    }
    const double exponent = vocabulary.wholeNumbers == WholeNumbers::Wrap ? GatherExponent<std::int64_t>(isNegative)
                                                                          : GatherExponent<double>(isNegative);
    EndToken();
    return FinishReal(value * PowerOfTen(exponent));
}

template <class Whole>
double CExpressionLexer::GatherExponent(bool isNegative) {
    Whole exponent = ReadCharacter() - u'0';
    if (isNegative) exponent = -exponent;
    while (IsDigit(NextCharacter())) {
        const Whole digit = ReadCharacter() - u'0';
        exponent = AppendDigit(exponent, exponent < 0 ? -digit : digit);
    }
    return static_cast<double>(exponent);
}

int CExpressionLexer::FinishReal(double value) {
    tokenValue.number = value;
    tokenNote = {TokenNote::Kind::Real, {}, 0, value};
    if (!std::isfinite(value)) errors.ReportParseError(u"Overflow in constant");  // 0e999 too, which is a NaN
    return token::realNumber;
}

}  // namespace reka
