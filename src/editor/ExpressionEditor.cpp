// SPDX-License-Identifier: MIT
// The whole text is parsed at each change, and the tree thrown away: an expression is short, and the parser's own
// message and position are what the check of the definition will tell.

#include "editor/ExpressionEditor.h"

#include <algorithm>
#include <string>

#include "expression/parse/ParseExpression.h"

namespace reka {

namespace {

bool IsBracket(char16_t character) {
    return character == u'(' || character == u')';
}

std::int32_t LengthOf(std::u16string_view text) {
    return static_cast<std::int32_t>(std::min<std::size_t>(text.size(), 0x7FFFFFFF));
}

/// Whether a bracket stands at that position, which may be any number.
bool HasBracketAt(std::u16string_view text, std::int32_t position) {
    return position >= 0 && position < LengthOf(text) && IsBracket(text[static_cast<std::size_t>(position)]);
}

bool IsBlank(char16_t character) {
    return character == u' ' || character == u'\t';
}

bool IsWordPart(char16_t character) {
    return (character >= u'a' && character <= u'z') || (character >= u'A' && character <= u'Z') ||
           (character >= u'0' && character <= u'9') || character == u'_' || character == u'.';
}

bool IsSecondHalf(char16_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

/// The end of the word that begins at `start`: a name in quotes, a number with its exponent, a row of letters, or a
/// single character.
std::size_t EndOfWord(std::u16string_view text, std::size_t start) {
    const char16_t first = text[start];
    std::size_t end = start + 1;
    if (first == u'"') {
        end = text.find(u'"', end);
        return end == std::u16string_view::npos ? text.size() : end + 1;
    }
    if (!IsWordPart(first)) return end < text.size() && IsSecondHalf(text[end]) ? end + 1 : end;
    const bool isNumber = first == u'.' || (first >= u'0' && first <= u'9');
    for (; end < text.size(); ++end) {
        const bool isSign = text[end] == u'-' || text[end] == u'+';
        const bool isExponent = isNumber && isSign && (text[end - 1] == u'e' || text[end - 1] == u'E');
        if (!IsWordPart(text[end]) && !isExponent) break;
    }
    return end;
}

/// The last word that begins in the first `length` characters; empty for none.
std::u16string_view LastWord(std::u16string_view text, std::size_t length) {
    std::u16string_view word;
    for (std::size_t i = 0; i < length;) {
        if (IsBlank(text[i])) {
            ++i;
            continue;
        }
        const std::size_t end = EndOfWord(text, i);
        word = text.substr(i, end - i);
        i = end;
    }
    return word;
}

/// Counted in characters, also those of two units.
std::size_t ColumnOf(std::u16string_view text, std::size_t position) {
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(position);
    return 1 + position - static_cast<std::size_t>(std::count_if(text.begin(), end, IsSecondHalf));
}

std::u16string DecimalText(std::size_t number) {
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

/// While it lives, changes of the field aren't events.
class CEventsOff {
public:
    explicit CEventsOff(bool& flag) : eventsOn(flag) { eventsOn = false; }
    ~CEventsOff() { eventsOn = true; }
    CEventsOff(const CEventsOff&) = delete;
    CEventsOff& operator=(const CEventsOff&) = delete;

private:
    bool& eventsOn;
};

}  // namespace

std::int32_t BracketAt(std::u16string_view text, TextRange selection) {
    const std::int64_t length = std::int64_t{selection.end} - selection.first;
    if (selection.first < 0 || length > 1) return noPosition;
    if (HasBracketAt(text, selection.first)) return selection.first;
    const std::int32_t before = selection.first - 1;
    return length == 0 && HasBracketAt(text, before) ? before : noPosition;
}

std::int32_t PartnerOf(std::u16string_view text, std::int32_t position) {
    if (!HasBracketAt(text, position)) return noPosition;
    const char16_t bracket = text[static_cast<std::size_t>(position)];
    const std::int32_t step = bracket == u'(' ? 1 : -1;
    std::int32_t depth = 1;
    for (std::int32_t i = position + step; i >= 0 && i < LengthOf(text); i += step) {
        const char16_t character = text[static_cast<std::size_t>(i)];
        if (!IsBracket(character)) continue;
        depth += character == bracket ? 1 : -1;
        if (depth == 0) return i;
    }
    return noPosition;
}

std::vector<ExpressionRun> ColourExpression(std::u16string_view text, TextRange selection, std::int32_t errorPosition) {
    const std::int32_t length = LengthOf(text);
    const std::int32_t goodEnd = errorPosition < 0 ? length : std::min(errorPosition, length);
    const std::int32_t bracket = BracketAt(text, selection);
    const std::int32_t partner = PartnerOf(text, bracket);
    std::vector<ExpressionRun> runs;
    std::int32_t end = 0;  // of what the runs make up
    const auto add = [&](std::int32_t newEnd, bool isBold, std::uint32_t colour) {
        if (newEnd > end) runs.push_back({{end, newEnd}, isBold, colour});
        end = std::max(end, newEnd);
    };
    for (const std::int32_t bold : {std::min(bracket, partner), std::max(bracket, partner)}) {
        if (bold < 0 || bold >= goodEnd) continue;
        add(bold, false, expressionTextColour);
        add(bold + 1, true, expressionTextColour);
    }
    add(goodEnd, false, expressionTextColour);
    add(length, false, expressionErrorColour);
    return runs;
}

std::u16string DescribeStop(std::u16string_view text, std::int32_t position) {
    const auto length = static_cast<std::size_t>(std::clamp(position, 0, LengthOf(text)));
    const std::u16string_view word = LastWord(text, length);
    std::u16string told = length == text.size() ? u"Reading stopped at the end" : u"Reading stopped";
    if (word.empty()) return told;
    const auto start = static_cast<std::size_t>(word.data() - text.data());
    told += (length == text.size() ? u", column " : u" at column ") + DecimalText(ColumnOf(text, start)) + u", ";
    if (word.front() < u' ') return told + u"a line break";
    return word.front() == u'"' ? told.append(word) : told.append(u"\"").append(word).append(u"\"");
}

CExpressionEditor::CExpressionEditor(const ReactionPackDefinition& edited, IExpressionField& shown)
    : compounds(edited), field(shown) {}

void CExpressionEditor::TextChanged() {
    if (eventsOn) ReparseExpression();
}

void CExpressionEditor::SelectionChanged() {
    if (eventsOn) RecolourExpression();
}

void CExpressionEditor::ReparseExpression() {
    const std::u16string text = field.Text();
    message.clear();
    errorPosition = noPosition;
    // No text is no error here: the expression isn't given then.
    if (!text.empty() && ParseExpression(compounds, text, message, &errorPosition)) {
        message.clear();
        errorPosition = noPosition;
    }
    field.ShowStatus(message, message.empty() ? std::u16string() : DescribeStop(text, errorPosition));
    RecolourExpression();
}

void CExpressionEditor::RecolourExpression() {
    const CEventsOff off(eventsOn);
    const std::u16string text = field.Text();
    const TextRange selection = field.Selection();
    for (const ExpressionRun& run : ColourExpression(text, selection, errorPosition)) field.Show(run);
    field.Select(selection);
}

}  // namespace reka
