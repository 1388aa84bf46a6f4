// The parsed form of an expression: the tree that is stored, copied and checked.

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

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

/// One node of a parsed expression, a plain record. A node owns its arguments; whole trees are made, copied and
/// destroyed by the operations below, none of which recurses, since a tree may be a million levels deep.
struct ExpressionNode {
    NodeKind kind = NodeKind::Failed;
    std::int32_t argumentCount = 0;
    union {
        double value = 0.0;             // of a real constant
        std::int32_t compoundIndex;     // of kinds 30 to 34: index into the list of INamedCompounds
        ExpressionNode* nextToDestroy;  // of a node whose destruction has begun
    };
    ExpressionNode** arguments = nullptr;  // left to right; null while there are none; a slot may be null
    ExpressionNode* own[2];                // where `arguments` lie if there are no more than two
    std::uint32_t placeInBlock = 0;        // see CNodeSource; 0 for a node made by itself

    ExpressionNode() = default;
    ExpressionNode(const ExpressionNode&) = delete;  // `arguments` may point into the node
    ExpressionNode& operator=(const ExpressionNode&) = delete;
};

/// Kinds 30 to 34, whose slot holds a compound's index.
constexpr bool IsCompoundLeaf(NodeKind kind) {
    return kind >= NodeKind::Molarity && kind <= NodeKind::Fugacity;
}

/// Whether the slots for the arguments lie in the node itself, or there are none.
inline bool HoldsItsArguments(const ExpressionNode& node) {
    return node.arguments == nullptr || node.arguments == node.own;
}

/// Frees a node and everything under it. A null node and null argument slots are passed over. Allocates nothing.
void DestroyExpression(ExpressionNode* node) noexcept;

struct ExpressionDeleter {
    void operator()(const ExpressionNode* node) const noexcept { DestroyExpression(const_cast<ExpressionNode*>(node)); }
};

/// Sole owner of a tree under construction.
using ExpressionTree = std::unique_ptr<ExpressionNode, ExpressionDeleter>;

/// Appends `argument`, which the node then owns, behind the arguments that it has.
void AddArgument(ExpressionNode& node, ExpressionTree argument);

/// Moves the arguments of `source` to a node that has none.
void MoveArguments(ExpressionNode& node, ExpressionNode& source) noexcept;

/// Destroys the arguments of a node.
void ClearArguments(ExpressionNode& node) noexcept;

/// Gives a node that has no arguments `count` empty slots, for a reader that fills them one by one.
void AllocateArguments(ExpressionNode& node, std::int32_t count);

/// A deep copy of `source`. Constants and compound leaves are copied with what they hold, all others with their
/// arguments.
ExpressionTree CloneExpression(const ExpressionNode& source);

}  // namespace reka
