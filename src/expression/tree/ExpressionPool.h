// The nodes that a parser has made and that have no parent yet.

#pragma once

#include <cstdint>
#include <vector>

#include "expression/tree/ExpressionNode.h"

namespace reka {

/// A place in the pool; `noSlot` for none.
using PoolSlot = std::int32_t;
constexpr PoolSlot noSlot = -1;

/// Owns the nodes of a parse. The parser's stack drops its values during error recovery without a word, so it holds
/// slots of this pool, and whatever a failed parse has made is freed here. Every operation takes constant time.
class ExpressionPool {
public:
    /// Keeps `node` in a free slot and gives the slot.
    PoolSlot PoolAdd(ExpressionTree node);
    /// Hands out the node of a slot, which is free from then on.
    ExpressionTree PoolRemove(PoolSlot slot);
    /// Destroys every node that is left.
    void PoolClear();

    ExpressionNode& NodeAt(PoolSlot slot) { return *entries[static_cast<std::size_t>(slot)].node; }
    /// The first slot from `start` on that holds a node; `noSlot` when there is none.
    PoolSlot FindNode(PoolSlot start) const;

private:
    struct Entry {
        ExpressionTree node;         // null in a free slot
        PoolSlot nextFree = noSlot;  // of a free slot
    };
    std::vector<Entry> entries;
    PoolSlot firstFree = noSlot;
};

}  // namespace reka
