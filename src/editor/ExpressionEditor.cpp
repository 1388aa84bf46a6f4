// SPDX-License-Identifier: MIT
// The whole text is parsed at each change, and the tree thrown away: an expression is short, and the parser's own
// message and position are what the check of the definition will tell.

#include "editor/ExpressionEditor.h"

#include <algorithm>

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
    field.ShowStatus(message);
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
