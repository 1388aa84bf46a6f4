// A block begins with a count, of its nodes that are alive and of the source as long as that takes nodes from it. A
// node knows its place in its block, and with that where the block begins.

#include "expression/NodeSource.h"

#include <algorithm>
#include <new>

#include "expression/WalkStack.h"

namespace reka {

struct NodeBlock {
    std::size_t holderCount;
};

namespace {

constexpr std::size_t leastCapacity = 4;
constexpr std::size_t greatestCapacity = 256;  // a block with a single node left isn't much to keep

constexpr std::size_t headSize =
    (sizeof(NodeBlock) + alignof(ExpressionNode) - 1) / alignof(ExpressionNode) * alignof(ExpressionNode);

std::byte* PlaceOf(NodeBlock* block, std::uint32_t index) {
    return reinterpret_cast<std::byte*>(block) + headSize + index * sizeof(ExpressionNode);
}

void Release(NodeBlock* block) noexcept {
    if (--block->holderCount == 0) ::operator delete(block);
}

}  // namespace

CNodeSource::~CNodeSource() {
    if (block) Release(block);
}

void CNodeSource::BeginBlock() {
    const std::size_t size = std::clamp(nextCapacity, leastCapacity, greatestCapacity);
    void* const memory = ::operator new(headSize + size * sizeof(ExpressionNode));
    if (block) Release(block);
    block = new (memory) NodeBlock{1};
    used = 0;
    capacity = static_cast<std::uint32_t>(size);
    nextCapacity = 2 * size;
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
        return;
    }
    const std::size_t distance = headSize + (node->placeInBlock - 1) * sizeof(ExpressionNode);
    Release(reinterpret_cast<NodeBlock*>(reinterpret_cast<std::byte*>(node) - distance));
}

std::size_t CountNodes(const ExpressionNode& root) {
    std::size_t count = 0;
    CWalkStack<const ExpressionNode*> waiting;
    waiting.Push(&root);
    while (!waiting.IsEmpty()) {
        const ExpressionNode& node = *waiting.Top();
        waiting.Pop();
        ++count;
        for (std::int32_t i = 0; i < node.argumentCount; ++i) {
            if (node.arguments[i]) waiting.Push(node.arguments[i]);
        }
    }
    return count;
}

}  // namespace reka
