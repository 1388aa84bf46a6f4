// SPDX-License-Identifier: MIT
// The parsed form of an expression: the tree that is stored, copied and checked.

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <type_traits>

#include "expression/tree/ExpressionArena.h"

namespace reka {

/// What a node stands for. The values are written into documents and never change.
enum class NodeKind : std::int32_t {
    Failed = -1,  // a part of a text that failed, or a node not filled yet; no finished tree holds one
    RealConstant = 0,
    Addition = 1,
    Subtraction = 2,
    Multiplication = 3,
    Division = 4,
    Negation = 5,
    Power = 6,
    ExpressionList = 7,  // the argument list of a function while it is parsed
    Sqrt = 8,
    Sin = 9,
    Cos = 10,
    Sinh = 11,
    Cosh = 12,
    Asin = 13,
    Acos = 14,
    Tan = 15,
    Atan = 16,
    Abs = 17,
    Floor = 18,
    Ceil = 19,
    Round = 20,
    Exp = 21,
    Log = 22,
    Log10 = 23,
    Tanh = 24,
    Min = 25,
    Max = 26,
    Mod = 27,
    Pressure = 28,
    Temperature = 29,
    Molarity = 30,
    MoleFraction = 31,
    MolecularWeight = 32,  // becomes a constant when it is checked; evaluates nowhere
    Activity = 33,
    Fugacity = 34,
};

constexpr std::int32_t nodeKindCount = 35;

/// Bits of `ExpressionRef::dependencies`: what a tree reads from the material. Stored.
namespace dependency {
constexpr std::uint32_t moleFraction = 1;
constexpr std::uint32_t molarity = 2;
constexpr std::uint32_t activity = 4;
constexpr std::uint32_t temperature = 8;
constexpr std::uint32_t pressure = 16;
constexpr std::uint32_t fugacity = 32;
}  // namespace dependency

/// One node of a parsed expression, a plain record in the arena of its tree. Whole trees are made and copied by the
/// operations below, none of which recurses, since a tree may be a million levels deep.
struct ExpressionNode {
    NodeKind kind = NodeKind::Failed;
    std::int32_t argumentCount = 0;
    union {
        double value = 0.0;          // of a real constant
        std::int32_t compoundIndex;  // of kinds 30 to 34: index into the list of INamedCompounds
    };
    ExpressionNode** arguments = nullptr;  // left to right; null while there are none; a slot may be null
    ExpressionNode* own[2];                // where `arguments` lie if there are no more than two

    ExpressionNode() = default;
    ExpressionNode(const ExpressionNode&) = delete;  // `arguments` may point into the node
    ExpressionNode& operator=(const ExpressionNode&) = delete;
};
static_assert(std::is_trivially_destructible_v<ExpressionNode>);  // an arena goes without a look at what is in it

/// Kinds 30 to 34, whose slot holds a compound's index.
constexpr bool IsCompoundLeaf(NodeKind kind) {
    return kind >= NodeKind::Molarity && kind <= NodeKind::Fugacity;
}

/// Frees the arena that a tree lies in.
struct TreeDeleter {
    ArenaResource* arena = nullptr;
    void operator()(const ExpressionNode*) const noexcept { DestroyExpression(arena); }
};

/// Sole owner of a tree: of its root, and of the arena with everything under it.
using ExpressionTree = std::unique_ptr<ExpressionNode, TreeDeleter>;

/// The tree of a root that lies in `arena`.
inline ExpressionTree MakeTree(ExpressionArena arena, ExpressionNode& root) {
    return ExpressionTree(&root, TreeDeleter{arena.release()});
}

/// A node without arguments. May throw std::bad_alloc.
inline ExpressionNode& MakeNode(ArenaResource& arena, NodeKind kind) {
    auto* const node = new (arena.allocate(sizeof(ExpressionNode), alignof(ExpressionNode))) ExpressionNode;
    node->kind = kind;
    return *node;
}

/// Appends `argument`, which lies in the node's `arena` or is null, behind the arguments that the node has. May throw
/// std::bad_alloc, which leaves the node as it was.
void AddArgument(ArenaResource& arena, ExpressionNode& node, ExpressionNode* argument);

/// Gives a node that has no arguments `count` empty slots, for a reader that fills them one by one.
void AllocateArguments(ArenaResource& arena, ExpressionNode& node, std::int32_t count);

/// A deep copy of `source`, a tree of `nodeCount` nodes. Constants and compound leaves are copied with what they hold,
/// all others with their arguments.
ExpressionTree CloneExpression(const ExpressionNode& source, std::size_t nodeCount);

}  // namespace reka
