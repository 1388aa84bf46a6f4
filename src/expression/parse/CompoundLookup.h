// SPDX-License-Identifier: MIT
// Finds compounds by the names that an expression uses.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "expression/tree/NamedCompounds.h"
#include "platform/TextIndex.h"

namespace reka {

/// The compounds of one list by name, for one parse or for all texts of a definition. A table of the names is
/// made when so many words have been looked for that it pays, so that neither a short expression over many compounds
/// nor a long one takes longer than its words and the compounds ask for.
///
/// The names are lent: from the first `Find` on, the list of compounds and their names stay as they are for as long as
/// anything is looked for. Whoever changes them makes another lookup.
class CCompoundLookup {
public:
    /// `lookedIn` outlives this.
    explicit CCompoundLookup(const INamedCompounds& lookedIn) : compounds(lookedIn) {}

    const INamedCompounds& Compounds() const { return compounds; }

    /// The index of the first compound whose name is `word`, the case of A to Z apart; -1 for none. An absent name
    /// counts as an empty one.
    std::int32_t Find(std::u16string_view word);

private:
    std::int32_t Scan(std::u16string_view word) const;
    const INamedCompounds& compounds;
    int searchCount = 0;
    CTextIndex names;
};

}  // namespace reka
