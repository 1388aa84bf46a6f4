// SPDX-License-Identifier: MIT
// The nodes that a parser has made and that have no parent yet.

#pragma once

#include <boost/container/small_vector.hpp>
#include <cstddef>

#include "expression/tree/ExpressionNode.h"

namespace reka {

/// Knows the nodes of a parse without a parent, which lie in the parse's arena, in the order in which they were made.
/// One that is taken is nearly always the last or the one before, so that each operation takes constant time.
class ExpressionPool {
public:
    void PoolAdd(ExpressionNode& node) { nodes.push_back(&node); }
    /// Forgets a node, which gets a parent or an owner.
    void PoolRemove(const ExpressionNode& node);
    void PoolClear() { nodes.clear(); }

    std::size_t NodeCount() const { return nodes.size(); }
    ExpressionNode& FirstNode() const { return *nodes.front(); }

private:
    boost::container::small_vector<ExpressionNode*, 32> nodes;  // hardly an expression has more at a time
};

}  // namespace reka
