// Finds compounds by the names that an expression uses.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "package/Definition.h"

namespace reka {

/// The compounds of one definition by name, for the time of one parse. The names are gathered when the first one is
/// asked for, so that a long expression over many compounds doesn't walk the list for every word.
class CCompoundLookup {
public:
    /// `lookedIn` outlives this.
    explicit CCompoundLookup(const ReactionPackDefinition& lookedIn) : definition(lookedIn) {}

    /// The index of the first compound whose name is `upperCaseName`, the case of A to Z apart; -1 for none. An absent
    /// name counts as an empty one.
    std::int32_t Find(const std::u16string& upperCaseName);

private:
    void GatherNames();

    const ReactionPackDefinition& definition;
    bool isGathered = false;
    std::unordered_map<std::u16string, std::int32_t> indexOfName;  // by the name in upper case
};

/// The letters a to z become A to Z; nothing else changes.
std::u16string UpperCase(std::u16string_view text);

}  // namespace reka
