// SPDX-License-Identifier: MIT
// In front of a position of the text there are as many characters more than in the field as there are whole line ends.
// Their positions are in order, so that they are counted by halving, in a text of any length.

#include "editor/FieldLines.h"

#include <algorithm>

namespace reka {

CFieldLines::CFieldLines(std::u16string_view fieldText) : text(fieldText) {
    for (std::size_t i = text.find(u'\r'); i != std::u16string::npos; i = text.find(u'\r', i + 1)) {
        lineEnds.push_back(static_cast<std::int32_t>(i));
    }
}

std::u16string CFieldLines::Text() const {
    std::u16string whole;
    whole.reserve(text.size() + lineEnds.size());
    for (const char16_t character : text) {
        whole += character;
        if (character == u'\r') whole += u'\n';
    }
    return whole;
}

std::int32_t CFieldLines::InText(std::int32_t fieldPosition) const {
    const auto behind = std::lower_bound(lineEnds.begin(), lineEnds.end(), fieldPosition);
    return fieldPosition + static_cast<std::int32_t>(behind - lineEnds.begin());
}

std::int32_t CFieldLines::InField(std::int32_t textPosition) const {
    const std::int32_t* const first = lineEnds.data();
    const auto isInFront = [&](const std::int32_t& lineEnd) {
        const auto linesInFront = static_cast<std::int32_t>(&lineEnd - first);
        return lineEnd + linesInFront + 2 <= textPosition;  // the end of its two characters
    };
    const auto behind = std::partition_point(lineEnds.begin(), lineEnds.end(), isInFront);
    return textPosition - static_cast<std::int32_t>(behind - lineEnds.begin());
}

}  // namespace reka
