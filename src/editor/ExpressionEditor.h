// SPDX-License-Identifier: MIT
// The editor of one expression: the message under the text, what of the text is red, and which brackets are bold.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "expression/parse/CompoundLookup.h"
#include "records/Definition.h"

namespace reka {

/// Characters from `first` up to `end`, which isn't one of them.
struct TextRange {
    std::int32_t first = 0;
    std::int32_t end = 0;
    bool operator==(const TextRange&) const = default;
};

constexpr std::uint32_t expressionTextColour = 0x000000;   // black, as the platform writes colours
constexpr std::uint32_t expressionErrorColour = 0x0000FF;  // red

/// How a part of the text is shown.
struct ExpressionRun {
    TextRange range;
    bool isBold = false;
    std::uint32_t colour = expressionTextColour;
    bool operator==(const ExpressionRun&) const = default;
};

constexpr std::int32_t noPosition = -1;

/// The bracket that the selection points to: the one at its start if at most one character is selected, otherwise the
/// one in front of the caret. `noPosition` for none.
std::int32_t BracketAt(std::u16string_view text, TextRange selection);

/// The partner of the bracket at `position`; `noPosition` if it has none, and where no bracket is. Quotes don't count.
std::int32_t PartnerOf(std::u16string_view text, std::int32_t position);

/// The runs that make up the text, in its order. From `errorPosition` on all is red and nothing bold; it is
/// `noPosition` for no error.
std::vector<ExpressionRun> ColourExpression(std::u16string_view text, TextRange selection, std::int32_t errorPosition);

/// Where the reading of a faulty text stopped, in words: the column, from 1 on, and the word that was read last of the
/// first `position` characters. Also where it got to the end, and nothing is left to be red.
std::u16string DescribeStop(std::u16string_view text, std::int32_t position);

/// The field of the text and the line under it, as a window has them. Ranges count the characters of `Text`, in which a
/// line end is two, as in a record.
class IExpressionField {
public:
    virtual ~IExpressionField() = default;
    virtual std::u16string Text() = 0;
    virtual TextRange Selection() = 0;
    /// Selects and formats, which the field may report as changes.
    virtual void Show(const ExpressionRun& run) = 0;
    virtual void Select(TextRange range) = 0;
    /// What is wrong with the text, and where the reading of it stopped; both empty for a text without fault.
    virtual void ShowStatus(const std::u16string& message, const std::u16string& place) = 0;
};

/// The dialog on the expression of one definition. Both parameters outlive this, and the definition's compounds stay as
/// they are meanwhile. No text is ever refused: what is wrong with it is shown while the user types, and told by the
/// check of the definition. May throw std::bad_alloc; events count again then.
class CExpressionEditor {
public:
    CExpressionEditor(const ReactionPackDefinition& edited, IExpressionField& shown);

    // What the field reports. A change that this class itself brings about is none. Opening is a change of the text.
    void TextChanged();
    void SelectionChanged();

    /// OK: the text, faulty or not.
    std::u16string Accept() { return field.Text(); }

private:
    void ReparseExpression();
    void RecolourExpression();

    CCompoundLookup compounds;  // none is added or removed while the dialog is open
    IExpressionField& field;
    std::int32_t errorPosition = noPosition;  // where reading the text stopped; none while there is no error
    std::u16string message;                   // on the text, kept for its room
    bool eventsOn = true;
};

}  // namespace reka
