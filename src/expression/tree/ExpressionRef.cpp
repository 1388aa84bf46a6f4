// SPDX-License-Identifier: MIT
// The owner of a finished expression. All that is derived from its tree is made here, once.

#include "expression/tree/ExpressionRef.h"

#include <utility>

namespace reka {

ExpressionRef::ExpressionRef(ExpressionTree tree) : ExpressionRef(std::move(tree), SurveyTree(*tree)) {}

ExpressionRef::ExpressionRef(ExpressionTree&& tree, const TreeSurvey& surveyed)
    : survey(surveyed), root(std::move(tree)), program(*root, surveyed) {}

std::unique_ptr<ExpressionRef> ExpressionRef::Clone() const {
    auto copy = std::make_unique<ExpressionRef>(CloneExpression(*root, survey.nodeCount));
    copy->dependencies = dependencies;
    return copy;
}

void CollectDependencies(const ExpressionNode& node, ExpressionRef& expression) {
    expression.dependencies |= SurveyTree(node).dependencies;
}

}  // namespace reka
