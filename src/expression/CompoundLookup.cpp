// Finds compounds by name. Of several compounds with one name the first one counts, since a name that is there already
// isn't entered again.

#include "expression/CompoundLookup.h"

#include <algorithm>

namespace reka {

std::int32_t CCompoundLookup::Find(const std::u16string& upperCaseName) {
    if (!isGathered) GatherNames();
    const auto found = indexOfName.find(upperCaseName);
    return found == indexOfName.end() ? -1 : found->second;
}

void CCompoundLookup::GatherNames() {
    indexOfName.reserve(definition.compounds.size());
    std::int32_t index = 0;
    for (const auto& compound : definition.compounds) indexOfName.emplace(UpperCase(compound->name.View()), index++);
    isGathered = true;
}

std::u16string UpperCase(std::u16string_view text) {
    std::u16string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), [](char16_t character) {
        return character >= u'a' && character <= u'z' ? static_cast<char16_t>(character - u'a' + u'A') : character;
    });
    return upper;
}

}  // namespace reka
