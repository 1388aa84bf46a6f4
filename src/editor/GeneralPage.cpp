// See GeneralPage.h.

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
