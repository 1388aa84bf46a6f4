// The nodes of a parse without a parent. Free slots are chained, so that neither adding nor removing looks for one.

#include "expression/tree/ExpressionPool.h"

namespace reka {

namespace {

constexpr std::size_t firstCapacity = 32;  // hardly an expression has more open nodes at a time

}  // namespace

PoolSlot ExpressionPool::PoolAdd(ExpressionTree node) {
    if (firstFree == noSlot) {
        if (entries.capacity() == 0) entries.reserve(firstCapacity);
        entries.push_back({std::move(node), noSlot});
        return static_cast<PoolSlot>(entries.size() - 1);
    }
    const PoolSlot slot = firstFree;
    Entry& entry = entries[static_cast<std::size_t>(slot)];
    firstFree = entry.nextFree;
    entry.node = std::move(node);
    return slot;
}

ExpressionTree ExpressionPool::PoolRemove(PoolSlot slot) {
    Entry& entry = entries[static_cast<std::size_t>(slot)];
    entry.nextFree = firstFree;
    firstFree = slot;
    return std::move(entry.node);
}

void ExpressionPool::PoolClear() {
    entries.clear();
    firstFree = noSlot;
}

PoolSlot ExpressionPool::FindNode(PoolSlot start) const {
    for (auto slot = static_cast<std::size_t>(start); slot < entries.size(); ++slot) {
        if (entries[slot].node) return static_cast<PoolSlot>(slot);
    }
    return noSlot;
}

}  // namespace reka
