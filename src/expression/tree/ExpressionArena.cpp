// SPDX-License-Identifier: MIT
// An arena lies at the head of its own first block, before the room for the nodes: a tree of known size is one
// allocation in all. Blocks that follow are the resource's own, each half as large again as the one before.

#include "expression/tree/ExpressionArena.h"

#include <cstdint>
#include <new>

#include "expression/tree/ExpressionNode.h"

namespace reka {

static_assert(sizeof(ArenaResource) % alignof(ExpressionNode) == 0);

ExpressionArena MakeArena(std::size_t nodeCount) {
    // A count out of stored data may be more than there are addresses.
    constexpr std::size_t mostNodes = (SIZE_MAX - sizeof(ArenaResource)) / sizeof(ExpressionNode);
    if (nodeCount > mostNodes) throw std::bad_alloc();
    const std::size_t roomSize = nodeCount * sizeof(ExpressionNode);
    auto* const block = static_cast<std::byte*>(::operator new(sizeof(ArenaResource) + roomSize));
    return ExpressionArena(new (block) ArenaResource(block + sizeof(ArenaResource), roomSize));
}

void DestroyExpression(ArenaResource* arena) noexcept {
    if (!arena) return;
    std::destroy_at(arena);  // frees the blocks that follow
    ::operator delete(arena);
}

}  // namespace reka
