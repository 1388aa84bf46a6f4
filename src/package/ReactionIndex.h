// SPDX-License-Identifier: MIT
// Reactions by their ids.

#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/TextIndex.h"
#include "records/Definition.h"

namespace reka {

/// Finds reactions by id in the definition that a package has in service, whose reactions stay as they are until
/// another definition takes its place. The first search in a definition of more than a few reactions makes an
/// index, which may throw std::bad_alloc; every search after it takes the same time, on average, whatever the number of
/// reactions.
class CReactionIndex {
public:
    static constexpr std::size_t none = CTextIndex::none;

    /// Index of the first reaction whose id is the same text as `id`, or `none`.
    std::size_t Find(const ReactionPackDefinition& definition, const OLECHAR* id);

private:
    std::uint64_t indexed = 0;  // the stamp of the definition whose reactions the index holds, 0 for none
    CTextIndex ids;
};

}  // namespace reka
