// SPDX-License-Identifier: MIT
// What OK of the edit shell does with a definition, before it takes the place of a template or of a package's own.

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "checking/RunDefinitionChecks.h"
#include "manager/TemplateStore.h"
#include "platform/UserMessages.h"
#include "records/Definition.h"

namespace reka {

/// Puts the three values of the general page into `definition` and runs all checks on it (RunDefinitionChecks.h), which
/// make the trees of its expressions. `storeAllowed` is set for a package in use, whose name is its own; a template's
/// name must differ from those of `templateStore` other than the one under edit there. The store isn't looked at
/// otherwise and may then be null. `versionIndex` is the selected thermo version, 0 where it is none.
///
/// True: the definition holds fresh trees and work arrays. False: `errorText` holds the first reason, and the three
/// values stay replaced. Throws nothing; the user's answers come through `ui`.
bool ValidateDefinition(ReactionPackDefinition& definition, const TemplateStore* templateStore, bool storeAllowed,
                        std::u16string_view nameText, std::u16string_view descriptionText, std::int32_t versionIndex,
                        std::u16string& errorText, IUserMessages& ui) noexcept;

/// The same, and tells in `subject` what the reason speaks of; nothing after a definition that has passed, and where
/// memory has run out.
bool ValidateDefinition(ReactionPackDefinition& definition, const TemplateStore* templateStore, bool storeAllowed,
                        std::u16string_view nameText, std::u16string_view descriptionText, std::int32_t versionIndex,
                        std::u16string& errorText, IUserMessages& ui, std::optional<CheckSubject>& subject) noexcept;

}  // namespace reka
