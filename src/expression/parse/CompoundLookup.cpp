// SPDX-License-Identifier: MIT
// Finds compounds by name. Of several compounds with one name the first one counts.

#include "expression/parse/CompoundLookup.h"

#include "platform/SameText.h"

namespace reka {

namespace {

constexpr std::size_t scannedCount = 4;  // up to here a look at each name is faster than an index
constexpr int scannedSearches = 6;       // an index takes about as long as this many looks at all names

}  // namespace

std::int32_t CCompoundLookup::Find(std::u16string_view word) {
    if (names.IsEmpty()) {
        const std::size_t count = compounds.CompoundCount();
        if (count <= scannedCount || ++searchCount <= scannedSearches) return Scan(word);
        names.Make(count, [&](std::size_t i) { return compounds.CompoundName(i); });
    }
    const std::size_t found = names.Find(word);
    return found == CTextIndex::none ? -1 : static_cast<std::int32_t>(found);
}

std::int32_t CCompoundLookup::Scan(std::u16string_view word) const {
    const auto count = static_cast<std::int32_t>(compounds.CompoundCount());
    for (std::int32_t i = 0; i < count; ++i) {
        if (SameText(compounds.CompoundName(static_cast<std::size_t>(i)), word)) return i;
    }
    return -1;
}

}  // namespace reka
