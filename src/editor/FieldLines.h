// SPDX-License-Identifier: MIT
// The text of a field that counts each line end as one character, and that text with line ends of two characters, as
// records and files have them: which position in the one is which in the other.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "editor/ExpressionEditor.h"

namespace reka {

class CFieldLines {
public:
    CFieldLines() = default;
    /// `fieldText` has a carriage return for each line end.
    explicit CFieldLines(std::u16string_view fieldText);

    /// The text with a carriage return and a line feed for each line end.
    std::u16string Text() const;

    /// Where a position of the field is in the text.
    std::int32_t InText(std::int32_t fieldPosition) const;
    /// Where a position of the text is in the field; one inside a line end is behind it there.
    std::int32_t InField(std::int32_t textPosition) const;

    TextRange InText(TextRange range) const { return {InText(range.first), InText(range.end)}; }
    TextRange InField(TextRange range) const { return {InField(range.first), InField(range.end)}; }

private:
    std::u16string text;                 // the field's
    std::vector<std::int32_t> lineEnds;  // their positions in it
};

}  // namespace reka
