// See ReactionIndex.h. The table is at most half full, and of equal ids it holds the first one alone.

#include "package/ReactionIndex.h"

#include <bit>

#include "package/SameText.h"

namespace reka {

namespace {

constexpr std::size_t scannedCount = 8;  // up to here a look at each id is faster than the table

bool IsSameOwner(const std::weak_ptr<ReactionPackDefinition>& left,
                 const std::shared_ptr<ReactionPackDefinition>& right) {
    return !left.owner_before(right) && !right.owner_before(left);
}

}  // namespace

std::size_t CReactionIndex::Find(const std::shared_ptr<ReactionPackDefinition>& definition, const OLECHAR* id) {
    const auto& reactions = definition->reactions;
    if (reactions.size() <= scannedCount) {
        for (std::size_t i = 0; i < reactions.size(); ++i) {
            if (SameText(reactions[i]->id.Get(), id)) return i;
        }
        return none;
    }
    if (!IsSameOwner(indexed, definition)) Make(definition);
    const std::size_t mask = table.size() - 1;
    for (std::size_t slot = SameTextHash(id) & mask; table[slot] != 0; slot = (slot + 1) & mask) {
        const std::size_t i = table[slot] - 1;
        if (SameText(reactions[i]->id.Get(), id)) return i;
    }
    return none;
}

void CReactionIndex::Make(const std::shared_ptr<ReactionPackDefinition>& definition) {
    indexed.reset();  // until the table is whole
    const auto& reactions = definition->reactions;
    table.assign(std::bit_ceil(2 * reactions.size()), 0);
    const std::size_t mask = table.size() - 1;
    for (std::size_t i = 0; i < reactions.size(); ++i) {
        const BSTR id = reactions[i]->id.Get();
        std::size_t slot = SameTextHash(id) & mask;
        while (table[slot] != 0 && !SameText(reactions[table[slot] - 1]->id.Get(), id)) slot = (slot + 1) & mask;
        if (table[slot] == 0) table[slot] = static_cast<std::uint32_t>(i + 1);
    }
    indexed = definition;
}

}  // namespace reka
