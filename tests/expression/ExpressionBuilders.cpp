// SPDX-License-Identifier: MIT
// Trees and definitions for the tests of the expression language.

#include "expression/ExpressionBuilders.h"

#include <algorithm>
#include <charconv>

#include "expression/tree/TreeSurvey.h"

namespace reka::test {

namespace {

ExpressionNode* CopyInto(ArenaResource& arena, const ExpressionNode* source) {
    if (!source) return nullptr;
    ExpressionNode& copy = MakeNode(arena, source->kind);
    if (IsCompoundLeaf(source->kind)) {
        copy.compoundIndex = source->compoundIndex;
    } else {
        copy.value = source->value;
    }
    for (std::int32_t i = 0; i < source->argumentCount; ++i) {
        AddArgument(arena, copy, CopyInto(arena, source->arguments[i]));
    }
    return &copy;
}

}  // namespace

void AppendCopy(ExpressionTree& tree, const ExpressionTree& argument) {
    ArenaResource& arena = *tree.get_deleter().arena;
    AddArgument(arena, *tree, CopyInto(arena, argument.get()));
}

ExpressionTree Clone(const ExpressionTree& tree) {
    return CloneExpression(*tree, SurveyTree(*tree).nodeCount);
}

ExpressionTree MakeConstant(double value) {
    ExpressionTree node = MakeNode(NodeKind::RealConstant);
    node->value = value;
    return node;
}

ExpressionTree MakeCompoundLeaf(NodeKind kind, std::int32_t compoundIndex) {
    ExpressionTree node = MakeNode(kind);
    node->compoundIndex = compoundIndex;
    return node;
}

std::unique_ptr<ReactionPackDefinition> MakeDefinitionOf(std::initializer_list<const char16_t*> compoundNames) {
    auto definition = std::make_unique<ReactionPackDefinition>(nullptr);
    for (const char16_t* name : compoundNames) {
        definition->compounds.push_back(std::make_unique<CompoundDefinition>());
        if (name) definition->compounds.back()->name = CBstr::Make(name);
    }
    definition->AllocateWorkArrays();
    for (double* values : {definition->molarity.Get(), definition->activity.Get(), definition->fugacity.Get(),
                           definition->moleFraction.Get()}) {
        std::fill_n(values, definition->workArraySize, 0.0);
    }
    return definition;
}

std::string ShowNumber(double value) {
    if (value != value) return "nan";
    char digits[32];
    return std::string(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

std::string Show(const ExpressionNode* node) {
    if (!node) return "null";
    const std::string kind = std::to_string(static_cast<int>(node->kind));
    std::string text = kind;
    if (node->kind == NodeKind::RealConstant) {
        text = ShowNumber(node->value);
    } else if (IsCompoundLeaf(node->kind)) {
        text += ":" + std::to_string(node->compoundIndex);
    }
    if (node->argumentCount == 0) return text;
    text += "(";
    for (std::int32_t i = 0; i < node->argumentCount; ++i) {
        if (i > 0) text += ",";
        text += Show(node->arguments[i]);
    }
    return text + ")";
}

ExpressionTree MakeDeepTree(DeepShape shape, int levels, NodeKind leafKind) {
    ExpressionArena arena = MakeArena(2 * static_cast<std::size_t>(levels) + 1);
    ExpressionNode* tree = &MakeNode(*arena, leafKind);
    for (int level = 0; level < levels; ++level) {
        const bool isChain = shape == DeepShape::Chain;
        ExpressionNode& parent = MakeNode(*arena, isChain ? NodeKind::Abs : NodeKind::Addition);
        if (shape == DeepShape::RightDeep) AddArgument(*arena, parent, &MakeNode(*arena, leafKind));
        AddArgument(*arena, parent, tree);
        if (shape == DeepShape::LeftDeep) AddArgument(*arena, parent, &MakeNode(*arena, leafKind));
        tree = &parent;
    }
    return MakeTree(std::move(arena), *tree);
}

int RandomBelow(std::mt19937& random, unsigned bound) {
    return static_cast<int>(random() % bound);
}

namespace {

double MakeRandomValue(std::mt19937& random) {
    switch (RandomBelow(random, 8)) {
        case 0:
            return 0.0;
        case 1:
            return -1.0;
        case 2:
            return 1e300;
        default:
            return RandomBelow(random, 2001) / 500.0 - 2.0;
    }
}

ExpressionTree MakeRandomLeaf(std::mt19937& random, bool allowMalformed) {
    switch (RandomBelow(random, 4)) {
        case 0:
            return MakeConstant(MakeRandomValue(random));
        case 1:
            return MakeNode(RandomBelow(random, 2) ? NodeKind::Pressure : NodeKind::Temperature);
        default:
            break;
    }
    constexpr NodeKind kinds[] = {NodeKind::Molarity, NodeKind::MoleFraction, NodeKind::Activity, NodeKind::Fugacity};
    const bool isBeyond = allowMalformed && RandomBelow(random, 16) == 0;
    const auto index = isBeyond ? (RandomBelow(random, 2) ? -1 : 3) : RandomBelow(random, 3);
    return MakeCompoundLeaf(kinds[RandomBelow(random, 4)], index);
}

}  // namespace

ExpressionTree MakeRandomTree(std::mt19937& random, int levels, bool allowMalformed) {
    if (levels == 0 || RandomBelow(random, 6) == 0) return MakeRandomLeaf(random, allowMalformed);
    auto kind = static_cast<NodeKind>(1 + RandomBelow(random, 26));
    if (kind >= NodeKind::ExpressionList) kind = static_cast<NodeKind>(static_cast<int>(kind) + 1);
    const bool isBinary =
        (kind <= NodeKind::Power && kind != NodeKind::Negation) || (kind >= NodeKind::Min && kind <= NodeKind::Mod);
    int argumentCount = isBinary ? 2 : 1;
    if (allowMalformed && RandomBelow(random, 32) == 0) argumentCount = RandomBelow(random, 5);
    if (allowMalformed && RandomBelow(random, 64) == 0) kind = static_cast<NodeKind>(RandomBelow(random, 40) - 1);
    ExpressionTree node = MakeNode(kind);
    for (int i = 0; i < argumentCount; ++i) {
        const bool isEmpty = allowMalformed && RandomBelow(random, 128) == 0;
        AppendCopy(node, isEmpty ? ExpressionTree() : MakeRandomTree(random, levels - 1, allowMalformed));
    }
    return node;
}

}  // namespace reka::test
