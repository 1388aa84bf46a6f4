// SPDX-License-Identifier: MIT
// The checks know nothing of a store: here a store becomes the list of the names that are taken. The fields of the
// general page are written late, since they are typed in while the other pages change the definition.

#include "manager/ValidateDefinition.h"

#include <exception>
#include <utility>

#include "platform/OutOfMemoryText.h"

namespace reka {

bool ValidateDefinition(ReactionPackDefinition& definition, const TemplateStore* templateStore, bool storeAllowed,
                        std::u16string_view nameText, std::u16string_view descriptionText, std::int32_t versionIndex,
                        std::u16string& errorText, IUserMessages& ui) noexcept {
    std::optional<CheckSubject> unasked;
    return ValidateDefinition(definition, templateStore, storeAllowed, nameText, descriptionText, versionIndex,
                              errorText, ui, unasked);
}

bool ValidateDefinition(ReactionPackDefinition& definition, const TemplateStore* templateStore, bool storeAllowed,
                        std::u16string_view nameText, std::u16string_view descriptionText, std::int32_t versionIndex,
                        std::u16string& errorText, IUserMessages& ui, std::optional<CheckSubject>& subject) noexcept {
    subject.reset();
    try {
        CBstr name = BstrFromString(nameText);
        CBstr description = BstrFromString(descriptionText);
        definition.name = std::move(name);
        definition.description = std::move(description);
        definition.thermoVersion = versionIndex == 1 ? ThermoVersion::Version11 : ThermoVersion::Version10;
        std::optional<TakenNames> taken;
        if (!storeAllowed && templateStore) taken = {templateStore->templates, templateStore->templateUnderEdit};
        CheckSubject checked;
        const bool hasPassed = RunDefinitionChecks(definition, taken ? &*taken : nullptr, errorText, ui, &checked);
        if (!hasPassed) subject = checked;
        return hasPassed;
    } catch (const std::exception&) {
        TellOutOfMemory(errorText);
        return false;
    }
}

}  // namespace reka
