// Reactions by their ids.

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "package/Definition.h"

namespace reka {

/// Finds reactions by id in the definition that a package has in service, whose reactions stay as they are until
/// another definition takes its place. The first search in a definition of more than a few reactions makes a table,
/// which may throw std::bad_alloc; every search after it takes the same time whatever the number of reactions.
class CReactionIndex {
public:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    /// Index of the first reaction whose id is the same text as `id`, or `none`.
    std::size_t Find(const std::shared_ptr<ReactionPackDefinition>& definition, const OLECHAR* id);

private:
    void Make(const std::shared_ptr<ReactionPackDefinition>& definition);

    // Whose reactions the table holds. Not among the users of the definition, and yet no other one can be taken for it.
    std::weak_ptr<ReactionPackDefinition> indexed;
    std::vector<std::uint32_t>
        table;  // one more than the index of a reaction, at the hash of its id or behind; 0: free
};

}  // namespace reka
