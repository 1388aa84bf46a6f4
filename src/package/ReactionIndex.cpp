// SPDX-License-Identifier: MIT
// Whether the index still fits is told by the stamp of the definition, not by its address: a definition that was freed
// may be followed by another at the same place. The stamp is noted last, so an index that memory ran out for counts as
// none.

#include "package/ReactionIndex.h"

#include "platform/SameText.h"

namespace reka {

namespace {

constexpr std::size_t scannedCount = 8;  // up to here a look at each id is faster than the table

}  // namespace

std::size_t CReactionIndex::Find(const ReactionPackDefinition& definition, const OLECHAR* id) {
    const auto& reactions = definition.reactions;
    if (reactions.size() <= scannedCount) {
        for (std::size_t i = 0; i < reactions.size(); ++i) {
            if (SameText(reactions[i]->id.Get(), id)) return i;
        }
        return none;
    }
    if (indexed != definition.WorkStamp()) {
        indexed = 0;  // until the index is made
        ids.Make(reactions.size(), [&](std::size_t i) { return reactions[i]->id.Get(); });
        indexed = definition.WorkStamp();
    }
    return ids.Find(id);
}

}  // namespace reka
