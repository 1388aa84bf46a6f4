// SPDX-License-Identifier: MIT
// Lists of names, searched by name.

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Holders.h"
#include "platform/SameText.h"

namespace reka {

/// The texts of a list by `SameText`, each with its position. To make it takes time in proportion to their number, and
/// to find one takes the same time, on average, in a list of any length. Texts that somebody has chosen to share a
/// place are found by a walk along the list, so that nothing takes longer than without an index. The texts are lent and
/// must stay where they are.
class CTextIndex {
public:
    CTextIndex() = default;

    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    bool IsEmpty() const { return texts.empty(); }
    void Clear() { texts.clear(); }

    /// Takes in the texts that `textAt` gives for 0 to `count` - 1. May throw std::bad_alloc, which leaves it empty.
    template <class TextAt>
    void Make(std::size_t count, TextAt&& textAt) {
        Clear();
        std::vector<const OLECHAR*> gathered(count);
        for (std::size_t i = 0; i < count; ++i) gathered[i] = textAt(i);
        Make(std::move(gathered));
    }

    /// How many texts a search looks at, at most.
    std::size_t MostComparisons() const { return table.empty() ? texts.size() : std::min(texts.size(), mostPlaces); }

    /// The first position of a text, or `none`.
    std::size_t Find(const OLECHAR* text) const;
    std::size_t Find(std::u16string_view text) const;
    /// The next position of the text that stands at `position`, or `none`.
    std::size_t FindNext(std::size_t position) const;

protected:
    using Hash = std::size_t (*)(std::u16string_view text, std::uint64_t seed);

    /// For a hash that is worse than the usual one.
    explicit CTextIndex(Hash other) : hash(other) {}

private:
    static constexpr std::uint32_t noEntry = 0xFFFFFFFF;
    /// In a table that is half empty no search among millions of texts gets as far as this by chance: each place more
    /// is five sixths as likely.
    static constexpr std::size_t mostPlaces = 256;

    void Make(std::vector<const OLECHAR*> gathered);
    /// The slot of the text, or the free one in which it would be put; the size of the table for neither.
    std::size_t FindSlot(std::u16string_view text) const;
    std::size_t Walk(std::u16string_view text, std::size_t from) const;

    Hash hash = SameTextHash;
    std::uint64_t seed = 0;
    std::vector<const OLECHAR*> texts;
    std::vector<std::uint32_t> next;  // by position: the next one of the same text
    // The first position of a text, at the hash of the text or behind it. Empty where the list is walked along.
    std::vector<std::uint32_t> table;
};

}  // namespace reka
