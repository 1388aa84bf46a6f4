// SPDX-License-Identifier: MIT
// What a field is compared by is what the record holds, not what its cell shows: of two weights that show the same six
// digits one may still be the greater.

#include "editor/CompoundField.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "text/NumberText.h"

namespace reka {

namespace {

int CompareTexts(std::u16string_view left, std::u16string_view right) {
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < common; ++i) {
        const int difference = LowerCase(left[i]) - LowerCase(right[i]);
        if (difference != 0) return difference;
    }
    return static_cast<int>(left.size() > common) - static_cast<int>(right.size() > common);
}

int CompareNumbers(double left, double right) {
    const bool isLeftNaN = std::isnan(left);
    const bool isRightNaN = std::isnan(right);
    if (isLeftNaN || isRightNaN) return static_cast<int>(isLeftNaN) - static_cast<int>(isRightNaN);
    return static_cast<int>(left > right) - static_cast<int>(left < right);
}

}  // namespace

std::u16string FieldText(const CompoundDefinition& compound, const CompoundField& field) {
    return field.text ? std::u16string((compound.*field.text).View()) : FormatGeneral(compound.*field.number);
}

int CompareByField(const CompoundDefinition& left, const CompoundDefinition& right, const CompoundField& field) {
    return field.text ? CompareTexts((left.*field.text).View(), (right.*field.text).View())
                      : CompareNumbers(left.*field.number, right.*field.number);
}

}  // namespace reka
