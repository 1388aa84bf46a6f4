// SPDX-License-Identifier: MIT
// What the expression editor offers to put into an expression: the compounds of the definition as the language has them
// written, the quantities of the material, and the functions.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "editor/TextHistory.h"
#include "expression/parse/CompoundLookup.h"
#include "records/Definition.h"

namespace reka {

struct ExpressionOffer {
    std::u16string text;     // with brackets for what takes an argument
    std::u16string meaning;  // may be empty
};

struct OfferGroup {
    const char16_t* label;  // with the key of its letter
    std::vector<ExpressionOffer> offers;
};

/// The groups in their order. A compound stands in quotes where its name needs them, and one that no expression can
/// name isn't offered. May throw std::bad_alloc.
std::vector<OfferGroup> ExpressionOffers(const ReactionPackDefinition& definition);

/// The name as an expression has it; empty for one that no expression can name.
std::u16string WrittenName(CCompoundLookup& compounds, std::u16string_view name);

/// Puts the offer in place of what is selected in `text`, which goes into the brackets if there are some. The caret
/// then stands behind what is complete, and otherwise where the first argument goes.
TextReplacement InsertOffer(std::u16string_view text, TextRange selection, const ExpressionOffer& offer);

/// As a line of a menu.
std::u16string MenuLabel(const ExpressionOffer& offer);

}  // namespace reka
