// See ReactionIndex.h.

#include "package/ReactionIndex.h"

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
    if (!IsSameOwner(indexed, definition)) {
        indexed.reset();  // until the index is made
        ids.Make(reactions.size(), [&](std::size_t i) { return reactions[i]->id.Get(); });
        indexed = definition;
    }
    return ids.Find(id);
}

}  // namespace reka
