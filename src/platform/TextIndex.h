// SPDX-License-Identifier: MIT
// Lists of names, searched by name.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Holders.h"

namespace reka {

/// The texts of a list by `SameText`, each with its position. To make it takes time in proportion to their number, and
/// to find one takes the same time, on average, in a list of any length. The texts are lent and must stay where they
/// are.
class CTextIndex {
public:
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

    /// The first position of a text, or `none`.
    std::size_t Find(const OLECHAR* text) const;
    std::size_t Find(std::u16string_view text) const;
    /// The next position of the text that stands at `position`, or `none`.
    std::size_t FindNext(std::size_t position) const;

private:
    static constexpr std::uint32_t noEntry = 0xFFFFFFFF;

    void Make(std::vector<const OLECHAR*> gathered);
    template <class Text>
    std::size_t FindSlot(Text text) const;

    std::vector<const OLECHAR*> texts;
    std::vector<std::uint32_t> next;   // by position: the next one of the same text
    std::vector<std::uint32_t> table;  // the first position of a text, at the hash of the text or behind it
};

}  // namespace reka
