// Where the nodes of a tree come from. A tree's nodes lie side by side, which spares the heap's work for each and keeps
// walks over the tree within few lines of the processor's cache.

#pragma once

#include <cstddef>
#include <cstdint>

#include "expression/tree/ExpressionNode.h"

namespace reka {

struct NodeBlock;

/// Makes the nodes of one tree, in blocks. Each node is freed on its own, as one made by `new` is, and a block goes
/// with the last of its nodes; so trees may be taken apart and joined as if there were no blocks. The nodes of one
/// source are for one thread at a time, wherever they are.
class CNodeSource {
public:
    /// Room for `expectedCount` nodes is made at once, within limits; more are made all the same.
    explicit CNodeSource(std::size_t expectedCount);
    ~CNodeSource();
    CNodeSource(const CNodeSource&) = delete;
    CNodeSource& operator=(const CNodeSource&) = delete;

    /// A node without arguments. May throw std::bad_alloc.
    ExpressionTree Make(NodeKind kind);

private:
    void BeginBlock();

    NodeBlock* block = nullptr;
    std::uint32_t used = 0;  // nodes of the block that are made
    std::uint32_t capacity = 0;
    std::size_t nextCapacity;
};

/// Frees one node, whatever it came from, and not what is under it.
void FreeNode(ExpressionNode* node) noexcept;

/// The block that a node lies in; null for a node made by itself.
const NodeBlock* BlockOf(const ExpressionNode& node);
/// The number of a block's nodes that are alive, and one more as long as its source takes nodes from it.
std::size_t CountHolders(const NodeBlock& block);
/// Frees a block with all of its nodes, of which `node` is one. No arguments lie outside the nodes.
void FreeBlockOf(const ExpressionNode& node) noexcept;

}  // namespace reka
