// SPDX-License-Identifier: MIT
// Checks a tree that the grammar has delivered, and folds its constants. Each node is visited twice: on the way down
// its argument list is dissolved, on the way up the node itself is checked and folded.

#include "expression/parse/CheckExpression.h"

#include <boost/container/small_vector.hpp>

#include "expression/tree/NodeKinds.h"

namespace reka {

namespace {

constexpr std::int32_t scalarKindCount = static_cast<std::int32_t>(NodeKind::Mod) + 1;  // behind it: what is read

// A function comes from the grammar with one argument, the list of its real ones. The node takes those over where they
// lie: the list stays in the arena and is looked at no more.
void DissolveList(ExpressionNode& node) {
    if (node.argumentCount != 1 || !node.arguments[0]) return;
    const ExpressionNode& list = *node.arguments[0];
    if (list.kind != NodeKind::ExpressionList) return;
    node.arguments = list.arguments;
    node.argumentCount = list.argumentCount;
}

bool Refuse(std::u16string& errorText, std::u16string_view word, std::u16string_view reason) {
    errorText += word;
    errorText += reason;
    return false;
}

// Whether the node has the number of arguments that its kind asks for; false with a line when the node has another
// number, or when its kind isn't one of the first `kindCount`.
bool CheckArgumentCount(const ExpressionNode& node, std::int32_t kindCount, std::u16string& errorText) {
    const auto number = static_cast<std::int32_t>(node.kind);
    if (node.kind == NodeKind::Failed) return true;
    if (number < 0 || number >= kindCount) {
        return Refuse(errorText, u"", u"internal error: unknown expression type\r\n");
    }
    if (node.kind == NodeKind::ExpressionList) return Refuse(errorText, u"", u"unexpected expression list\r\n");
    const std::u16string_view word = RowOf(node.kind).word;
    const std::int32_t required = RowOf(node.kind).operandCount;
    if (node.argumentCount == required) return true;
    if (required == 2) return Refuse(errorText, word, u" should have two arguments\r\n");
    if (required == 1) return Refuse(errorText, word, u" should have one argument\r\n");
    if (node.kind == NodeKind::RealConstant) {
        return Refuse(errorText, u"", u"internal error: real constant with sub expressions\r\n");
    }
    if (IsCompoundLeaf(node.kind) && node.kind != NodeKind::MolecularWeight) {
        return Refuse(errorText, u"", u"internal error: array property with sub expressions\r\n");
    }
    return Refuse(errorText, word, u" should not have arguments\r\n");
}

bool IsConstant(const ExpressionNode* node) {
    return node && node->kind == NodeKind::RealConstant;
}

// An operation on constants becomes a constant.
void FoldConstants(ExpressionNode& node) {
    for (std::int32_t i = 0; i < node.argumentCount; ++i) {
        if (!IsConstant(node.arguments[i])) return;
    }
    const double first = node.arguments[0]->value;
    const double second = node.argumentCount == 2 ? node.arguments[1]->value : 0.0;
    node.value = ComputeOperation(node.kind, first, second);
    node.kind = NodeKind::RealConstant;
    node.arguments = nullptr;
    node.argumentCount = 0;
}

// A molecular weight never changes, so it is read once and for all.
void ReadMolecularWeight(ExpressionNode& node, const INamedCompounds& compounds, std::u16string& errorText) {
    const std::int32_t index = node.compoundIndex;
    if (index < 0 || static_cast<std::size_t>(index) >= compounds.CompoundCount()) {
        Refuse(errorText, u"", u"internal error: unknown expression type\r\n");
        return;
    }
    node.kind = NodeKind::RealConstant;
    node.value = compounds.MolecularWeight(static_cast<std::size_t>(index));
}

// Checks and folds one node whose arguments have been seen to. Without compounds there is no material either.
void CheckNode(ExpressionNode& node, const INamedCompounds* compounds, std::u16string& errorText) {
    if (!CheckArgumentCount(node, compounds ? nodeKindCount : scalarKindCount, errorText)) return;
    if (node.kind == NodeKind::MolecularWeight) {
        ReadMolecularWeight(node, *compounds, errorText);
        return;
    }
    if (OperandCount(node.kind) == 0) return;
    // The numerator plays no part: T/0 is refused here and not when it is evaluated.
    if (node.kind == NodeKind::Division && IsConstant(node.arguments[1]) && node.arguments[1]->value == 0) {
        errorText += u"division by zero\r\n";
        return;
    }
    FoldConstants(node);
}

// A leaf of which there is nothing to check: a constant, or what is read from a material.
bool IsFinished(const ExpressionNode& node, const INamedCompounds* compounds) {
    if (node.argumentCount != 0) return false;
    if (node.kind == NodeKind::RealConstant) return true;
    const NodeKindRow* const row = FindRow(node.kind);
    return compounds && row && row->dependency != 0;
}

void CheckTree(ExpressionNode& node, const INamedCompounds* compounds, std::u16string& errorText) {
    struct Visit {
        ExpressionNode* node;
        std::int32_t nextArgument;
    };
    DissolveList(node);
    boost::container::small_vector<Visit, 64> visits = {{&node, 0}};
    while (!visits.empty()) {
        Visit& visit = visits.back();
        if (visit.nextArgument < visit.node->argumentCount) {
            ExpressionNode* argument = visit.node->arguments[visit.nextArgument++];
            if (!argument || IsFinished(*argument, compounds)) continue;
            DissolveList(*argument);
            visits.push_back({argument, 0});
        } else {
            CheckNode(*visit.node, compounds, errorText);
            visits.pop_back();
        }
    }
}

}  // namespace

void CheckExpression(ExpressionNode& node, const INamedCompounds& compounds, std::u16string& errorText) {
    CheckTree(node, &compounds, errorText);
}

void CheckScalarExpression(ExpressionNode& node, std::u16string& errorText) {
    CheckTree(node, nullptr, errorText);
}

}  // namespace reka
