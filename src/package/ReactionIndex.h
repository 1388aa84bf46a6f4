// Reactions by their ids.

#pragma once

#include <cstddef>
#include <memory>

#include "package/Definition.h"
#include "package/TextIndex.h"

namespace reka {

/// Finds reactions by id in the definition that a package has in service, whose reactions stay as they are until
/// another definition takes its place. The first search in a definition of more than a few reactions makes an
/// index, which may throw std::bad_alloc; every search after it takes the same time whatever the number of reactions.
class CReactionIndex {
public:
    static constexpr std::size_t none = CTextIndex::none;

    /// Index of the first reaction whose id is the same text as `id`, or `none`.
    std::size_t Find(const std::shared_ptr<ReactionPackDefinition>& definition, const OLECHAR* id);

private:
    // Whose reactions the index holds. Not among the users of the definition, and yet no other one can be taken for it.
    std::weak_ptr<ReactionPackDefinition> indexed;
    CTextIndex ids;
};

}  // namespace reka
