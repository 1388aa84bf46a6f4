// Finds compounds by the names that an expression uses.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "package/Definition.h"
#include "package/TextIndex.h"

namespace reka {

/// The compounds of one definition by name, for one parse or for all texts of the definition. A table of the names is
/// made when so many words have been looked for that it pays, so that neither a short expression over many compounds
/// nor a long one takes longer than its words and the compounds ask for.
///
/// The names are lent: from the first `Find` on, the list of compounds and their names stay as they are for as long as
/// anything is looked for. Whoever changes them makes another lookup.
class CCompoundLookup {
public:
    /// `lookedIn` outlives this.
    explicit CCompoundLookup(const ReactionPackDefinition& lookedIn) : definition(lookedIn) {}

    const ReactionPackDefinition& Definition() const { return definition; }

    /// The index of the first compound whose name is `word`, the case of A to Z apart; -1 for none. An absent name
    /// counts as an empty one.
    std::int32_t Find(std::u16string_view word);

private:
    std::int32_t Scan(std::u16string_view word) const;
    const ReactionPackDefinition& definition;
    int searchCount = 0;
    CTextIndex names;
};

/// The letters a to z become A to Z; nothing else changes.
constexpr char16_t UpperCase(char16_t character) {
    return character >= u'a' && character <= u'z' ? static_cast<char16_t>(character - u'a' + u'A') : character;
}
std::u16string UpperCase(std::u16string_view text);

}  // namespace reka
