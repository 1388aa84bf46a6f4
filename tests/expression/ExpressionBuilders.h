// SPDX-License-Identifier: MIT
// Trees and definitions for the tests of the expression language, and a short way to write a tree down.

#pragma once

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <random>
#include <string>
#include <utility>

#include "expression/tree/ExpressionNode.h"
#include "records/Definition.h"

namespace reka::test {

ExpressionTree MakeConstant(double value);
ExpressionTree MakeCompoundLeaf(NodeKind kind, std::int32_t compoundIndex);

/// Appends a copy of `argument`, with everything that hangs on it, to the arguments of a tree's root. A null argument
/// makes an empty slot.
void AppendCopy(ExpressionTree& tree, const ExpressionTree& argument);

/// A node of any kind with copies of any arguments; a null argument makes an empty slot.
template <class... Arguments>
ExpressionTree MakeNode(NodeKind kind, const Arguments&... arguments) {
    ExpressionArena arena = MakeArena(1);
    ExpressionNode& root = MakeNode(*arena, kind);
    ExpressionTree tree = MakeTree(std::move(arena), root);
    (AppendCopy(tree, arguments), ...);
    return tree;
}

/// A copy of a tree.
ExpressionTree Clone(const ExpressionTree& tree);

/// A definition with compounds of these names, of which nullptr stands for an absent one, and with working arrays whose
/// elements are all 0.
std::unique_ptr<ReactionPackDefinition> MakeDefinitionOf(std::initializer_list<const char16_t*> compoundNames);

/// The shortest decimal form that reads back the same; "nan" for either sign.
std::string ShowNumber(double value);

/// The tree in one line: a constant as its value, a compound leaf as "30:1", another node as its kind with the
/// arguments in parentheses, "3(29,2)"; an empty slot as "null".
std::string Show(const ExpressionNode* node);

/// The shapes of a very deep tree.
enum class DeepShape {
    LeftDeep,   // T+T+T+...
    RightDeep,  // T+(T+(T+...))
    Chain,      // ABS(ABS(ABS(...)))
};

/// A tree with `levels` levels above its leaf, every leaf of kind `leafKind`.
ExpressionTree MakeDeepTree(DeepShape shape, int levels, NodeKind leafKind);

/// One of 0 to `bound` - 1, the same on every build.
int RandomBelow(std::mt19937& random, unsigned bound);

/// A random tree of all kinds that evaluate, and a few malformed ones among them. Compounds are 0 to 2; index 3 and -1,
/// kinds without a value, missing and surplus arguments and empty slots turn up when `allowMalformed`.
ExpressionTree MakeRandomTree(std::mt19937& random, int levels, bool allowMalformed);

inline std::uint64_t BitsOf(double value) {
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

constexpr std::uint64_t quietNaNBits = 0x7FF8000000000000;

}  // namespace reka::test
