#include "expression/tree/ExpressionRef.h"

#include <utility>

#include "expression/tree/NodeSource.h"
#include "expression/tree/WalkStack.h"

namespace reka {

namespace {

std::uint32_t DependencyOf(NodeKind kind) {
    switch (kind) {
        case NodeKind::Pressure:
            return dependency::pressure;
        case NodeKind::Temperature:
            return dependency::temperature;
        case NodeKind::Molarity:
            return dependency::molarity;
        case NodeKind::MoleFraction:
            return dependency::moleFraction;
        case NodeKind::Activity:
            return dependency::activity;
        case NodeKind::Fugacity:
            return dependency::fugacity;
        default:
            return 0;
    }
}

}  // namespace

void FinishedTreeDeleter::operator()(const ExpressionNode* root) const noexcept {
    if (isWholeBlock) {
        FreeBlockOf(*root);
    } else {
        DestroyExpression(const_cast<ExpressionNode*>(root));
    }
}

ExpressionRef::ExpressionRef(ExpressionTree tree) : ExpressionRef(std::move(tree), SurveyTree(*tree)) {}

ExpressionRef::ExpressionRef(ExpressionTree&& tree, const TreeSurvey& surveyed)
    : survey(surveyed), root(tree.release(), FinishedTreeDeleter{surveyed.isWholeBlock}), program(*root, surveyed) {
    CollectDependencies(*root, *this);
}

std::unique_ptr<ExpressionRef> ExpressionRef::Clone() const {
    auto copy = std::make_unique<ExpressionRef>(CloneExpression(*root));
    copy->dependencies = dependencies;
    return copy;
}

void CollectDependencies(const ExpressionNode& node, ExpressionRef& expression) {
    CWalkStack<const ExpressionNode*> waiting;
    waiting.Push(&node);
    while (!waiting.IsEmpty()) {
        const ExpressionNode* current = waiting.Top();
        waiting.Pop();
        const std::uint32_t bit = DependencyOf(current->kind);
        expression.dependencies |= bit;
        if (bit != 0) continue;
        for (std::int32_t i = 0; i < current->argumentCount; ++i) {
            if (current->arguments[i]) waiting.Push(current->arguments[i]);
        }
    }
}

}  // namespace reka
