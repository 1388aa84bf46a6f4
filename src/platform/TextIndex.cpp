// SPDX-License-Identifier: MIT
// A hash table with open addresses, at most half full, of positions alone: the texts stay with their owner, and three
// vectors are all the memory that it takes. Equal texts share a slot and hang together by position. They are entered
// from the last to the first, so that the first one ends up as the head of its chain, which is what a walk along the
// list would find. Names come from files: where many meet in one place, which by chance they don't, the table is given
// up, and the list is walked along.

#include "platform/TextIndex.h"

#include <algorithm>
#include <bit>
#include <chrono>
#include <utility>

namespace reka {

namespace {

/// A number that nobody knows who has written a file before.
std::uint64_t MakeSeed(const void* place) {
    const auto now = static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
    return now * 0xD1B5'4A32'D192'ED03 ^ reinterpret_cast<std::uintptr_t>(place);
}

}  // namespace

std::size_t CTextIndex::FindSlot(std::u16string_view text) const {
    const std::size_t mask = table.size() - 1;
    const std::size_t home = hash(text, seed) & mask;
    for (std::size_t place = 0; place < mostPlaces; ++place) {
        const std::size_t slot = (home + place) & mask;
        if (table[slot] == noEntry || SameText(texts[table[slot]], text)) return slot;
    }
    return table.size();
}

std::size_t CTextIndex::Walk(std::u16string_view text, std::size_t from) const {
    const auto isSame = [text](const OLECHAR* other) { return SameText(other, text); };
    const auto found = std::find_if(texts.begin() + static_cast<std::ptrdiff_t>(from), texts.end(), isSame);
    return found == texts.end() ? none : static_cast<std::size_t>(found - texts.begin());
}

void CTextIndex::Make(std::vector<const OLECHAR*> gathered) {
    next.assign(gathered.size(), noEntry);
    table.assign(std::bit_ceil(2 * gathered.size() + 1), noEntry);
    seed = MakeSeed(table.data());
    texts = std::move(gathered);
    for (std::size_t i = texts.size(); i-- > 0;) {
        const std::size_t slot = FindSlot(TextOf(texts[i]));
        if (slot == table.size()) {
            table.clear();
            return;
        }
        next[i] = table[slot];
        table[slot] = static_cast<std::uint32_t>(i);
    }
}

std::size_t CTextIndex::Find(const OLECHAR* text) const {
    return IsEmpty() ? none : Find(TextOf(text));
}

std::size_t CTextIndex::Find(std::u16string_view text) const {
    if (IsEmpty()) return none;
    if (table.empty()) return Walk(text, 0);
    const std::size_t slot = FindSlot(text);
    return slot == table.size() || table[slot] == noEntry ? none : table[slot];
}

std::size_t CTextIndex::FindNext(std::size_t position) const {
    if (table.empty()) return Walk(TextOf(texts[position]), position + 1);
    return next[position] == noEntry ? none : next[position];
}

}  // namespace reka
