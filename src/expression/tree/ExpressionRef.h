// SPDX-License-Identifier: MIT
// The owner of a finished expression.

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "expression/tree/ExpressionNode.h"
#include "expression/tree/ExpressionProgram.h"
#include "expression/tree/TreeSurvey.h"

namespace reka {

/// The owner of one finished expression: its tree, the mask of what the tree reads, and what its evaluation needs.
/// Never shared; a copy is a deep copy. The tree can't be changed once it is here, so whatever is derived from it stays
/// true.
struct ExpressionRef {
    /// Takes over `tree`, which isn't null, and collects `dependencies` from it. May throw std::bad_alloc.
    explicit ExpressionRef(ExpressionTree tree);
    /// The same for a tree whose survey is at hand.
    ExpressionRef(ExpressionTree&& tree, const TreeSurvey& surveyed);
    ExpressionRef(const ExpressionRef&) = delete;
    ExpressionRef& operator=(const ExpressionRef&) = delete;

    /// A deep copy, with the mask as it stands here.
    std::unique_ptr<ExpressionRef> Clone() const;

    const TreeSurvey survey;
    std::uint32_t dependencies = survey.dependencies;  // bits of `dependency`
    const std::unique_ptr<const ExpressionNode, TreeDeleter> root;
    mutable CExpressionProgram program;  // of `root`; what `EvaluateExpression` runs, and where that notes its operands
};

/// ORs the bits of `node` and of everything under it into `expression.dependencies`. A compound leaf, the pressure and
/// the temperature set theirs; molecular weight has none.
void CollectDependencies(const ExpressionNode& node, ExpressionRef& expression);

}  // namespace reka
