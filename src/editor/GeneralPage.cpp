// SPDX-License-Identifier: MIT
// A stored definition may hold any number for its thermo version: one that the list doesn't offer selects nothing, and
// the check of the definition then makes it the first.

#include "editor/GeneralPage.h"

#include <iterator>

namespace reka {

GeneralPageFields FillGeneralPage(const ReactionPackDefinition& definition) {
    const auto version = static_cast<std::int32_t>(definition.thermoVersion);
    const bool isOffered = version >= 0 && version < static_cast<std::int32_t>(std::size(thermoVersionTexts));
    return {std::u16string(definition.name.View()), std::u16string(definition.description.View()),
            isOffered ? version : -1};
}

}  // namespace reka
