// SPDX-License-Identifier: MIT
// All checks of a definition in their order, and what makes it ready to calculate.

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "platform/UserMessages.h"
#include "records/Definition.h"

namespace reka {

/// The names that a definition may not have: those of `templates` but for `except`, which may be null.
struct TakenNames {
    std::span<const std::unique_ptr<ReactionPackDefinition>> templates;
    const ReactionPackDefinition* except = nullptr;
};

/// What a check looks at.
enum class CheckedPart : std::int32_t {
    Name,
    Compounds,
    // Of a reaction:
    Phase,
    Stoichiometry,
    Rate,
    EquilibriumConstant,
    Heat
};

/// Where in a definition the reason of a failure stands.
struct CheckSubject {
    CheckedPart part = CheckedPart::Name;
    std::size_t reaction = 0;  // its index; 0 for a part of the package
    bool operator==(const CheckSubject&) const = default;
};

/// Checks `definition`, up to the first check that fails, and makes the trees of its expressions: an edited definition
/// gets them nowhere else. Without `taken` any name will do.
///
/// True: the definition holds fresh trees and work arrays. False: `errorText` holds the first reason. The reactions
/// before the failing one have fresh trees then, the failing one those that were parsed before the failure and no old
/// one, and those behind it what they had. So a question about the heat of reaction that is cancelled leaves all fresh
/// trees of its reaction. `subject`, which may be null, then tells what the reason speaks of, and means nothing
/// otherwise. May throw std::bad_alloc; the user's answers come through `ui`.
bool RunDefinitionChecks(ReactionPackDefinition& definition, const TakenNames* taken, std::u16string& errorText,
                         IUserMessages& ui, CheckSubject* subject = nullptr);

}  // namespace reka
