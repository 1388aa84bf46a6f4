// Lays a tree out for evaluation: one walk in postfix order, which also finds how many values stand at one time.

#include "expression/ExpressionProgram.h"

#include <algorithm>

#include "expression/NodeOperation.h"
#include "expression/WalkStack.h"

namespace reka {

ExpressionStep StepOf(const ExpressionNode& node) {
    ExpressionStep step;
    step.argumentCount = std::max(node.argumentCount, 0);
    if (node.argumentCount < OperandCount(node.kind)) return step;
    step.kind = node.kind;
    if (node.kind == NodeKind::RealConstant) step.value = node.value;
    if (IsCompoundLeaf(node.kind)) step.compoundIndex = node.compoundIndex;
    return step;
}

CExpressionProgram::CExpressionProgram(const ExpressionNode& root) {
    struct Visit {
        const ExpressionNode* node;
        std::int32_t nextArgument;
    };
    std::size_t depth = 0;
    std::size_t greatestDepth = 0;
    const auto addStep = [&](const ExpressionStep& step) {
        steps.push_back(step);
        depth = depth - static_cast<std::size_t>(step.argumentCount) + 1;
        greatestDepth = std::max(greatestDepth, depth);
    };
    CWalkStack<Visit> visits;
    visits.Push({&root, 0});
    while (!visits.IsEmpty()) {
        Visit& visit = visits.Top();
        if (visit.nextArgument >= visit.node->argumentCount) {
            addStep(StepOf(*visit.node));
            visits.Pop();
        } else if (const ExpressionNode* argument = visit.node->arguments[visit.nextArgument++]) {
            visits.Push({argument, 0});
        } else {
            addStep(ExpressionStep());  // an empty slot fails when its turn comes
        }
    }
    steps.shrink_to_fit();
    if (greatestDepth > localValueCount) valueStack = std::make_unique<double[]>(greatestDepth);
}

}  // namespace reka
