#include "expression/tree/TreeSurvey.h"

#include "expression/tree/NodeOperation.h"
#include "expression/tree/NodeSource.h"
#include "expression/tree/WalkStack.h"

namespace reka {

namespace {

bool IsSound(const ExpressionNode& node) {
    const std::int32_t operandCount = OperandCount(node.kind);
    if (node.argumentCount != operandCount) return false;
    for (std::int32_t i = 0; i < operandCount; ++i) {
        if (!node.arguments[i]) return false;
    }
    if (operandCount > 0) return true;
    switch (node.kind) {
        case NodeKind::RealConstant:
        case NodeKind::Temperature:
        case NodeKind::Pressure:
            return true;
        case NodeKind::Molarity:
        case NodeKind::Activity:
        case NodeKind::Fugacity:
        case NodeKind::MoleFraction:
            return node.compoundIndex >= 0;
        default:
            return false;
    }
}

}  // namespace

TreeSurvey SurveyTree(const ExpressionNode& root) {
    TreeSurvey survey;
    const NodeBlock* const block = BlockOf(root);
    bool isInBlock = block != nullptr;
    CWalkStack<const ExpressionNode*> waiting;
    waiting.Push(&root);
    while (!waiting.IsEmpty()) {
        const ExpressionNode& node = *waiting.Top();
        waiting.Pop();
        ++survey.nodeCount;
        if (node.kind == NodeKind::RealConstant) ++survey.constantCount;
        survey.isSound = survey.isSound && IsSound(node);
        isInBlock = isInBlock && BlockOf(node) == block && HoldsItsArguments(node);
        for (std::int32_t i = 0; i < node.argumentCount; ++i) {
            if (node.arguments[i]) waiting.Push(node.arguments[i]);
        }
    }
    survey.isWholeBlock = isInBlock && CountHolders(*block) == survey.nodeCount;
    return survey;
}

}  // namespace reka
