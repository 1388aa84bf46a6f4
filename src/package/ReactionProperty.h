// SPDX-License-Identifier: MIT
// The properties of a reaction that a package calculates, and in which words it refuses one.

#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/SameText.h"
#include "records/Definition.h"

namespace reka {

/// The value goes out in the unit in which its expression is written.
struct ReactionProperty {
    std::u16string_view name;
    std::unique_ptr<ExpressionRef> ReactionDefinition::*expression;
    bool acceptsMoleBasis;
    const char16_t* basisError;
    bool acceptsAnyType;
    ReactionType type;
    const char16_t* typeError;  // behind the name of a reaction of the other type
};

/// The property of that name, the case of letters ignored; null for one that isn't known.
const ReactionProperty* FindReactionProperty(BSTR name);

/// Whether `reaction` is of the property's type and of `phase`, and has the expression.
inline bool CanBeCalculated(const ReactionProperty& property, const ReactionDefinition& reaction, BSTR phase) {
    return (property.acceptsAnyType || reaction.type == property.type) && SameUsualText(reaction.phase.Get(), phase) &&
           reaction.*property.expression;
}

struct ReactionRefusal {
    std::u16string name;
    std::u16string description;
};

/// Why `reaction` can't be calculated, where `CanBeCalculated` says so.
ReactionRefusal RefusalOf(const ReactionProperty& property, const ReactionDefinition& reaction, BSTR phase);

/// What a package says of a reaction that has no value, for which `reason` was found. `property` is the name in the
/// caller's spelling.
std::u16string TextOfFailedCalculation(BSTR property, BSTR reactionId, const std::u16string& reason);

}  // namespace reka
