// A block begins with a count, of its nodes that are alive and of the source as long as that takes nodes from it. A
// node knows its place in its block, and with that where the block begins.

#include "expression/tree/NodeSource.h"

#include <algorithm>
#include <new>

namespace reka {

struct NodeBlock {
    std::size_t holderCount;
};

namespace {

constexpr std::size_t greatestFirstCapacity = 65536;
// Of the blocks that follow; one of which a single node is left isn't much to keep.
constexpr std::size_t leastCapacity = 16;
constexpr std::size_t greatestCapacity = 256;

constexpr std::size_t headSize =
    (sizeof(NodeBlock) + alignof(ExpressionNode) - 1) / alignof(ExpressionNode) * alignof(ExpressionNode);

std::byte* PlaceOf(NodeBlock* block, std::uint32_t index) {
    return reinterpret_cast<std::byte*>(block) + headSize + index * sizeof(ExpressionNode);
}

NodeBlock* FindBlock(const ExpressionNode& node) {
    const std::size_t distance = headSize + (node.placeInBlock - 1) * sizeof(ExpressionNode);
    auto* const place = reinterpret_cast<std::byte*>(const_cast<ExpressionNode*>(&node));
    return reinterpret_cast<NodeBlock*>(place - distance);
}

void Release(NodeBlock* block) noexcept {
    if (--block->holderCount == 0) ::operator delete(block);
}

}  // namespace

CNodeSource::CNodeSource(std::size_t expectedCount)
    : nextCapacity(std::clamp<std::size_t>(expectedCount, 1, greatestFirstCapacity)) {}

CNodeSource::~CNodeSource() {
    if (block) Release(block);
}

void CNodeSource::BeginBlock() {
    void* const memory = ::operator new(headSize + nextCapacity * sizeof(ExpressionNode));
    if (block) Release(block);
    block = new (memory) NodeBlock{1};
    used = 0;
    capacity = static_cast<std::uint32_t>(nextCapacity);
    nextCapacity = std::clamp(2 * nextCapacity, leastCapacity, greatestCapacity);
}

ExpressionTree CNodeSource::Make(NodeKind kind) {
    if (used == capacity) BeginBlock();
    auto* const node = new (PlaceOf(block, used)) ExpressionNode;
    node->kind = kind;
    node->placeInBlock = ++used;
    ++block->holderCount;
    return ExpressionTree(node);
}

void FreeNode(ExpressionNode* node) noexcept {
    if (node->placeInBlock == 0) {
        delete node;
    } else {
        Release(FindBlock(*node));
    }
}

const NodeBlock* BlockOf(const ExpressionNode& node) {
    return node.placeInBlock == 0 ? nullptr : FindBlock(node);
}

std::size_t CountHolders(const NodeBlock& block) {
    return block.holderCount;
}

void FreeBlockOf(const ExpressionNode& node) noexcept {
    ::operator delete(FindBlock(node));
}

}  // namespace reka
