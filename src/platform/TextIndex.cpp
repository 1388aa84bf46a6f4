// SPDX-License-Identifier: MIT
// A hash table with open addresses, at most half full, of positions alone: the texts stay with their owner, and three
// vectors are all the memory that it takes. Equal texts share a slot and hang together by position. They are entered
// from the last to the first, so that the first one ends up as the head of its chain, which is what a walk along the
// list would find.

#include "platform/TextIndex.h"

#include <bit>
#include <utility>

#include "platform/SameText.h"

namespace reka {

/// Where the text is in the table, or where it would be put.
template <class Text>
std::size_t CTextIndex::FindSlot(Text text) const {
    const std::size_t mask = table.size() - 1;
    std::size_t slot = SameTextHash(text) & mask;
    while (table[slot] != noEntry && !SameText(texts[table[slot]], text)) slot = (slot + 1) & mask;
    return slot;
}

void CTextIndex::Make(std::vector<const OLECHAR*> gathered) {
    next.assign(gathered.size(), noEntry);
    table.assign(std::bit_ceil(2 * gathered.size() + 1), noEntry);
    texts = std::move(gathered);
    for (std::size_t i = texts.size(); i-- > 0;) {
        const std::size_t slot = FindSlot(texts[i]);
        next[i] = table[slot];
        table[slot] = static_cast<std::uint32_t>(i);
    }
}

std::size_t CTextIndex::Find(const OLECHAR* text) const {
    if (IsEmpty()) return none;
    const std::uint32_t found = table[FindSlot(text)];
    return found == noEntry ? none : found;
}

std::size_t CTextIndex::Find(std::u16string_view text) const {
    if (IsEmpty()) return none;
    const std::uint32_t found = table[FindSlot(text)];
    return found == noEntry ? none : found;
}

std::size_t CTextIndex::FindNext(std::size_t position) const {
    return next[position] == noEntry ? none : next[position];
}

}  // namespace reka
