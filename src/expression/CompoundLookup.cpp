// Finds compounds by name. Of several compounds with one name the first one counts.

#include "expression/CompoundLookup.h"

#include "package/SameText.h"

namespace reka {

namespace {

constexpr std::size_t scannedCount = 4;  // up to here a look at each name is faster than an index
constexpr int scannedSearches = 6;       // an index takes about as long as this many looks at all names

}  // namespace

std::int32_t CCompoundLookup::Find(std::u16string_view word) {
    const auto& compounds = definition.compounds;
    if (names.IsEmpty()) {
        if (compounds.size() <= scannedCount || ++searchCount <= scannedSearches) return Scan(word);
        names.Make(compounds.size(), [&](std::size_t i) { return compounds[i]->name.Get(); });
    }
    const std::size_t found = names.Find(word);
    return found == CTextIndex::none ? -1 : static_cast<std::int32_t>(found);
}

std::int32_t CCompoundLookup::Scan(std::u16string_view word) const {
    const auto count = static_cast<std::int32_t>(definition.compounds.size());
    for (std::int32_t i = 0; i < count; ++i) {
        if (SameText(definition.compounds[static_cast<std::size_t>(i)]->name.Get(), word)) return i;
    }
    return -1;
}

std::u16string UpperCase(std::u16string_view text) {
    std::u16string upper(text);
    for (char16_t& character : upper) character = UpperCase(character);
    return upper;
}

}  // namespace reka
