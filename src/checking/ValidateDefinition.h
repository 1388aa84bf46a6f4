// The check that makes an edited definition ready to calculate.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "checking/DefinitionCheckUi.h"
#include "manager/TemplateStore.h"
#include "package/Definition.h"

namespace reka {

/// Puts the three values of the general page into `definition`, checks it, and makes the trees of its expressions: the
/// only place where an edited definition gets them. `storeAllowed` is set for a package in use, whose name is its own;
/// a template's name must differ from those of `templateStore` other than the one under edit there. The store isn't
/// looked at otherwise and may then be null. `versionIndex` is the selected thermo version, 0 where it is none.
///
/// True: the definition holds fresh trees and work arrays. False: `errorText` holds the first reason. The three values
/// stay replaced; the reactions before the failing one have fresh trees, the failing one those that were parsed before
/// the failure and no old one, and those behind it what they had. So a question about the heat of reaction that is
/// cancelled leaves all fresh trees of its reaction. Throws nothing; the user's answers come through `ui`.
bool ValidateDefinition(ReactionPackDefinition& definition, const TemplateStore* templateStore, bool storeAllowed,
                        std::u16string_view nameText, std::u16string_view descriptionText, std::int32_t versionIndex,
                        std::u16string& errorText, IDefinitionCheckUi& ui) noexcept;

}  // namespace reka
