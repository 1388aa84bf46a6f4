// Making, copying and destroying expression trees. None of this recurses: a text may
// make a tree of any depth, and the stack of the host's thread is not ours.

#include "expression/tree/ExpressionNode.h"

#include <algorithm>
#include <bit>

#include "expression/tree/NodeSource.h"
#include "expression/tree/TreeSurvey.h"
#include "expression/tree/WalkStack.h"

namespace reka {

namespace {

constexpr std::int32_t ownCount = 2;
static_assert(sizeof(ExpressionNode::own) == ownCount * sizeof(ExpressionNode*));

// Room is made for the next power of two arguments, so that a long argument list is built in linear time.
std::size_t ArgumentCapacity(std::int32_t count) {
    return std::bit_ceil(static_cast<std::size_t>(count));
}

void FreeArray(const ExpressionNode& node) noexcept {
    if (node.arguments != node.own) delete[] node.arguments;
}

}  // namespace

void DestroyExpression(ExpressionNode* node) noexcept {
    // The nodes that wait for their end are chained through their value slot, which nobody reads any more.
    if (node) node->nextToDestroy = nullptr;
    while (node) {
        ExpressionNode* next = node->nextToDestroy;
        for (std::int32_t i = 0; i < node->argumentCount; ++i) {
            ExpressionNode* argument = node->arguments[i];
            if (!argument) continue;
            argument->nextToDestroy = next;
            next = argument;
        }
        FreeArray(*node);
        FreeNode(node);
        node = next;
    }
}

void AddArgument(ExpressionNode& node, ExpressionTree argument) {
    const std::int32_t count = node.argumentCount;
    if (count == 0) {
        node.arguments = node.own;
    } else if (count >= ownCount && static_cast<std::size_t>(count) == ArgumentCapacity(count)) {
        auto* grown = new ExpressionNode*[ArgumentCapacity(count + 1)];
        std::copy_n(node.arguments, count, grown);
        FreeArray(node);
        node.arguments = grown;
    }
    node.arguments[count] = argument.release();
    node.argumentCount = count + 1;
}

void MoveArguments(ExpressionNode& node, ExpressionNode& source) noexcept {
    node.arguments = source.arguments;
    node.argumentCount = source.argumentCount;
    if (source.arguments == source.own) {
        std::copy_n(source.own, source.argumentCount, node.own);
        node.arguments = node.own;
    }
    source.arguments = nullptr;
    source.argumentCount = 0;
}

void ClearArguments(ExpressionNode& node) noexcept {
    for (std::int32_t i = 0; i < node.argumentCount; ++i) DestroyExpression(node.arguments[i]);
    FreeArray(node);
    node.arguments = nullptr;
    node.argumentCount = 0;
}

void AllocateArguments(ExpressionNode& node, std::int32_t count) {
    if (count <= 0) return;
    node.arguments = count <= ownCount ? node.own : new ExpressionNode*[ArgumentCapacity(count)];
    std::fill_n(node.arguments, count, nullptr);
    node.argumentCount = count;
}

ExpressionTree CloneExpression(const ExpressionNode& source) {
    struct Pair {
        const ExpressionNode* from;
        ExpressionNode* to;
    };
    CNodeSource nodes(SurveyTree(source).nodeCount);
    ExpressionTree copy = nodes.Make(source.kind);
    CWalkStack<Pair> pairs;
    pairs.Push({&source, copy.get()});
    while (!pairs.IsEmpty()) {
        const auto [from, to] = pairs.Top();
        pairs.Pop();
        if (from->kind == NodeKind::RealConstant) {
            to->value = from->value;
        } else if (IsCompoundLeaf(from->kind)) {
            to->compoundIndex = from->compoundIndex;
        } else {
            AllocateArguments(*to, from->argumentCount);
            for (std::int32_t i = 0; i < from->argumentCount; ++i) {
                if (!from->arguments[i]) continue;
                to->arguments[i] = nodes.Make(from->arguments[i]->kind).release();
                pairs.Push({from->arguments[i], to->arguments[i]});
            }
        }
    }
    return copy;
}

}  // namespace reka
