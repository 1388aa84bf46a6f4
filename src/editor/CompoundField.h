// SPDX-License-Identifier: MIT
// The six fields that users see of a compound. Each list of compounds shows some of them, and is sorted by them.

#pragma once

#include <string>

#include "platform/Holders.h"
#include "records/Definition.h"

namespace reka {

/// A text or a number; the other one is null.
struct CompoundField {
    CBstr CompoundDefinition::*text = nullptr;
    double CompoundDefinition::*number = nullptr;
};

namespace compoundfield {
constexpr CompoundField name = {&CompoundDefinition::name, nullptr};
constexpr CompoundField id = {&CompoundDefinition::id, nullptr};
constexpr CompoundField formula = {&CompoundDefinition::formula, nullptr};
constexpr CompoundField molecularWeight = {nullptr, &CompoundDefinition::molecularWeight};
constexpr CompoundField casNumber = {&CompoundDefinition::casNumber, nullptr};
constexpr CompoundField charge = {nullptr, &CompoundDefinition::charge};
}  // namespace compoundfield

/// As a cell shows it: an absent text is an empty one, and a number has six significant digits. May throw
/// std::bad_alloc.
std::u16string FieldText(const CompoundDefinition& compound, const CompoundField& field);

/// Below 0 if `left` comes before `right` by that field, above 0 if it comes behind it, otherwise 0. Texts are compared
/// without regard to the case of A to Z, an absent one as an empty one. NaN comes behind all other numbers.
int CompareByField(const CompoundDefinition& left, const CompoundDefinition& right, const CompoundField& field);

/// A to Z in lower case; anything else as it is.
constexpr char16_t LowerCase(char16_t character) {
    return character >= u'A' && character <= u'Z' ? static_cast<char16_t>(character - u'A' + u'a') : character;
}

}  // namespace reka
