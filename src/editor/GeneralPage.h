// SPDX-License-Identifier: MIT
// The general page of the editor: name, description and thermo version. It shows the definition as it was when the
// editor opened, and is read when the definition is checked.

#pragma once

#include <cstdint>
#include <string>

#include "records/Definition.h"

namespace reka {

/// What the list of thermo versions offers, by the value of `thermoVersion`.
constexpr const char16_t* thermoVersionTexts[] = {u"Version 1.0", u"Version 1.1"};

/// The fields of the page.
struct GeneralPageFields {
    std::u16string name;
    std::u16string description;
    std::int32_t versionIndex = -1;  // of the list; -1 for none
};

/// The fields as the editor opens.
GeneralPageFields FillGeneralPage(const ReactionPackDefinition& definition);

}  // namespace reka
