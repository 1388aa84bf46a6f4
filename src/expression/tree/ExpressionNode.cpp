// SPDX-License-Identifier: MIT
// Making and copying expression trees. None of this recurses: a text may make a tree of any depth, and the stack of the
// host's thread is not ours. A list of arguments that has grown leaves its old slots behind in the arena, which are
// together no more than the new ones.

#include "expression/tree/ExpressionNode.h"

#include <algorithm>
#include <bit>
#include <boost/container/small_vector.hpp>

namespace reka {

namespace {

constexpr std::int32_t ownCount = 2;
static_assert(sizeof(ExpressionNode::own) == ownCount * sizeof(ExpressionNode*));

// Room is made for the next power of two arguments, so that a long argument list is built in linear time.
std::size_t ArgumentCapacity(std::int32_t count) {
    return std::bit_ceil(static_cast<std::size_t>(count));
}

ExpressionNode** MakeSlots(ArenaResource& arena, std::int32_t count) {
    void* const slots = arena.allocate(ArgumentCapacity(count) * sizeof(ExpressionNode*), alignof(ExpressionNode*));
    return static_cast<ExpressionNode**>(slots);
}

}  // namespace

void AddArgument(ArenaResource& arena, ExpressionNode& node, ExpressionNode* argument) {
    const std::int32_t count = node.argumentCount;
    if (count == 0) {
        node.arguments = node.own;
    } else if (count >= ownCount && static_cast<std::size_t>(count) == ArgumentCapacity(count)) {
        ExpressionNode** const grown = MakeSlots(arena, count + 1);
        std::copy_n(node.arguments, count, grown);
        node.arguments = grown;
    }
    node.arguments[count] = argument;
    node.argumentCount = count + 1;
}

void AllocateArguments(ArenaResource& arena, ExpressionNode& node, std::int32_t count) {
    if (count <= 0) return;
    node.arguments = count <= ownCount ? node.own : MakeSlots(arena, count);
    std::fill_n(node.arguments, count, nullptr);
    node.argumentCount = count;
}

ExpressionTree CloneExpression(const ExpressionNode& source, std::size_t nodeCount) {
    struct Pair {
        const ExpressionNode* from;
        ExpressionNode* to;
    };
    ExpressionArena arena = MakeArena(nodeCount);
    ExpressionNode& copy = MakeNode(*arena, source.kind);
    boost::container::small_vector<Pair, 64> pairs = {{&source, &copy}};
    while (!pairs.empty()) {
        const auto [from, to] = pairs.back();
        pairs.pop_back();
        if (from->kind == NodeKind::RealConstant) {
            to->value = from->value;
        } else if (IsCompoundLeaf(from->kind)) {
            to->compoundIndex = from->compoundIndex;
        } else {
            AllocateArguments(*arena, *to, from->argumentCount);
            for (std::int32_t i = 0; i < from->argumentCount; ++i) {
                if (!from->arguments[i]) continue;
                to->arguments[i] = &MakeNode(*arena, from->arguments[i]->kind);
                pairs.push_back({from->arguments[i], to->arguments[i]});
            }
        }
    }
    return MakeTree(std::move(arena), copy);
}

}  // namespace reka
