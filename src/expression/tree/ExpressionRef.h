// The owner of a finished expression.

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "expression/tree/ExpressionNode.h"
#include "expression/tree/ExpressionProgram.h"
#include "expression/tree/TreeSurvey.h"

namespace reka {

/// Bits of `ExpressionRef::dependencies`: what a tree reads from the material. Stored.
namespace dependency {
constexpr std::uint32_t moleFraction = 1;
constexpr std::uint32_t molarity = 2;
constexpr std::uint32_t activity = 4;
constexpr std::uint32_t temperature = 8;
constexpr std::uint32_t pressure = 16;
constexpr std::uint32_t fugacity = 32;
}  // namespace dependency

/// Frees a finished tree.
struct FinishedTreeDeleter {
    bool isWholeBlock;
    void operator()(const ExpressionNode* root) const noexcept;
};

/// The owner of one finished expression: its tree, the mask of what the tree reads, and what its evaluation needs.
/// Never shared; a copy is a deep copy. The tree can't be changed once it is here, so whatever is derived from it stays
/// true.
struct ExpressionRef {
    /// Takes over `tree`, which isn't null, and collects `dependencies` from it. May throw std::bad_alloc.
    explicit ExpressionRef(ExpressionTree tree);
    ExpressionRef(const ExpressionRef&) = delete;
    ExpressionRef& operator=(const ExpressionRef&) = delete;

    /// A deep copy, with the mask as it stands here.
    std::unique_ptr<ExpressionRef> Clone() const;

    std::uint32_t dependencies = 0;  // bits of `dependency`; a reader of stored data puts the stored mask here
    const TreeSurvey survey;
    const std::unique_ptr<const ExpressionNode, FinishedTreeDeleter> root;
    mutable CExpressionProgram program;  // of `root`; what `EvaluateExpression` runs, and where that notes its operands

private:
    ExpressionRef(ExpressionTree&& tree, const TreeSurvey& surveyed);
};

/// ORs the bits of `node` and of everything under it into `expression.dependencies`. A compound leaf, the pressure and
/// the temperature set theirs; molecular weight has none.
void CollectDependencies(const ExpressionNode& node, ExpressionRef& expression);

}  // namespace reka
