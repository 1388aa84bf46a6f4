// SPDX-License-Identifier: MIT
// The actions of the grammars. A generated parser is C at heart and frees nothing when an exception passes through it,
// so the actions keep a shortage of memory to themselves and the driver raises it afterwards. What its stack drops when
// it recovers from an error lies in the arena, and goes with it.

#include "expression/parse/GrammarActions.h"

#include <algorithm>
#include <new>
#include <string>
#include <utility>

#include "expression/tree/NodeKinds.h"

namespace reka {

namespace {

constexpr std::size_t charactersPerNode = 2;  // of a formula without blanks
constexpr std::size_t leastExpectedNodes = 8;
constexpr std::size_t mostExpectedNodes = 256;

}  // namespace

CGrammarActions::CGrammarActions(std::size_t textSize, ParseErrors& parseErrors)
    : arena(MakeArena(std::clamp(textSize / charactersPerNode, leastExpectedNodes, mostExpectedNodes))),
      errors(parseErrors) {}

template <class Action>
ExpressionNode* CGrammarActions::Run(const Action& action) noexcept {
    if (errors.HasFailed()) return nullptr;
    try {
        return &action();
    } catch (const std::bad_alloc&) {
        errors.isOutOfMemory = true;
        return nullptr;
    }
}

ExpressionNode& CGrammarActions::AddNode(NodeKind kind) {
    ExpressionNode& node = reka::MakeNode(*arena, kind);
    pool.PoolAdd(node);
    return node;
}

// The argument has a parent from here on.
void CGrammarActions::TakeArgument(ExpressionNode& node, ExpressionNode& argument) {
    AddArgument(*arena, node, &argument);
    pool.PoolRemove(argument);
}

ExpressionNode* CGrammarActions::MakeConstant(double value) noexcept {
    return Run([&]() -> ExpressionNode& {
        ExpressionNode& node = AddNode(NodeKind::RealConstant);
        node.value = value;
        return node;
    });
}

ExpressionNode* CGrammarActions::MakeNode(NodeKind kind) noexcept {
    return Run([&]() -> ExpressionNode& { return AddNode(kind); });
}

ExpressionNode* CGrammarActions::MakeCompoundLeaf(NodeKind kind, std::int32_t compoundIndex) noexcept {
    return Run([&]() -> ExpressionNode& {
        ExpressionNode& node = AddNode(kind);
        node.compoundIndex = compoundIndex;
        return node;
    });
}

ExpressionNode* CGrammarActions::MakeFunction(std::int32_t functionRow, ExpressionNode* argumentList) noexcept {
    return MakeOperation(FunctionTable[static_cast<std::size_t>(functionRow)].kind, argumentList);
}

ExpressionNode* CGrammarActions::MakeOperation(NodeKind kind, ExpressionNode* operand) noexcept {
    return Run([&]() -> ExpressionNode& {
        ExpressionNode& node = reka::MakeNode(*arena, kind);
        TakeArgument(node, *operand);
        pool.PoolAdd(node);
        return node;
    });
}

ExpressionNode* CGrammarActions::MakeOperation(NodeKind kind, ExpressionNode* left, ExpressionNode* right) noexcept {
    return Run([&]() -> ExpressionNode& {
        ExpressionNode& node = reka::MakeNode(*arena, kind);
        TakeArgument(node, *left);
        TakeArgument(node, *right);
        pool.PoolAdd(node);
        return node;
    });
}

ExpressionNode* CGrammarActions::AppendArgument(ExpressionNode* list, ExpressionNode* argument) noexcept {
    return Run([&]() -> ExpressionNode& {
        TakeArgument(*list, *argument);
        return *list;
    });
}

void CGrammarActions::ReportGrammarError(std::string_view message) noexcept {
    if (errors.isOutOfMemory) return;
    try {
        errors.ReportParseError(std::u16string(message.begin(), message.end()));
    } catch (const std::bad_alloc&) {
        errors.isOutOfMemory = true;
    }
}

ExpressionTree CGrammarActions::TakeTree() {
    if (errors.HasFailed() || pool.NodeCount() == 0) return nullptr;
    ExpressionNode& root = pool.FirstNode();
    pool.PoolRemove(root);
    if (pool.NodeCount() > 0) {
        errors.ReportParseError(u"internal error: more than one expression remaining after parsing is finished");
        return nullptr;
    }
    return MakeTree(std::move(arena), root);
}

}  // namespace reka
