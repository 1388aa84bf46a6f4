// SPDX-License-Identifier: MIT
// The terms are those that rates are made of. Each is recognised in the shape that its text gives: a product of three
// is (a * b) * c.

#include "expression/tree/ProgramTerms.h"

#include <initializer_list>

namespace reka {

namespace {

bool IsOfLeaves(const ExpressionNode& node, NodeKind kind) {
    return node.kind == kind && IsLeaf(Left(node)) && IsLeaf(Right(node));
}

/// A leaf to the power of `exponent`.
bool IsPowerOfLeaf(const ExpressionNode& node, double exponent) {
    return IsOfLeaves(node, NodeKind::Power) && IsConstant(Right(node), exponent);
}

Term TermOf(ProgramCode code, std::initializer_list<const ExpressionNode*> leaves) {
    Term term;
    term.code = code;
    for (const ExpressionNode* leaf : leaves) term.leaves[term.leafCount++] = leaf;
    return term;
}

Term FindArrhenius(const ExpressionNode& node) {
    if (node.kind != NodeKind::Exp) return {};
    const ExpressionNode& quotient = Left(node);
    if (quotient.kind != NodeKind::Division || !IsLeaf(Left(quotient))) return {};
    const ExpressionNode& divisor = Right(quotient);
    if (!IsOfLeaves(divisor, NodeKind::Multiplication)) return {};
    return TermOf(ProgramCode::Arrhenius, {&Left(quotient), &Left(divisor), &Right(divisor)});
}

/// An Arrhenius term with a factor, in whatever order.
Term FindScaledArrhenius(const ExpressionNode& node) {
    if (node.kind != NodeKind::Multiplication) return {};
    const bool isFactorFirst = IsLeaf(Left(node));
    const ExpressionNode& factor = isFactorFirst ? Left(node) : Right(node);
    if (!IsLeaf(factor)) return {};
    const Term term = FindArrhenius(isFactorFirst ? Right(node) : Left(node));
    return term ? term.With(ProgramCode::ScaledArrhenius, factor) : term;
}

Term FindProductWithLeaf(const ExpressionNode& left, const ExpressionNode& leaf) {
    if (IsOfLeaves(left, NodeKind::Multiplication)) {
        return TermOf(ProgramCode::TripleProduct, {&Left(left), &Right(left), &leaf});
    }
    if (const Term scaled = FindScaledArrhenius(left)) return scaled.With(ProgramCode::RateTerm, leaf);
    if (left.kind != NodeKind::Multiplication || !IsLeaf(Right(left))) return {};
    const Term scaled = FindScaledArrhenius(Left(left));
    if (!scaled) return {};
    return scaled.With(ProgramCode::RateTerm, Right(left)).With(ProgramCode::LongRateTerm, leaf);
}

Term FindProduct(const ExpressionNode& node) {
    const ExpressionNode& left = Left(node);
    const ExpressionNode& right = Right(node);
    if (IsLeaf(left) && IsLeaf(right)) return TermOf(ProgramCode::Product, {&left, &right});
    if (const Term scaled = FindScaledArrhenius(node)) return scaled;
    if (IsLeaf(right)) return FindProductWithLeaf(left, right);
    if (IsLeaf(left) && IsPowerOfLeaf(right, 0.5)) return TermOf(ProgramCode::RootProduct, {&left, &Left(right)});
    if (IsLeaf(left) && IsPowerOfLeaf(right, 2.0)) return TermOf(ProgramCode::SquareProduct, {&left, &Left(right)});
    if (IsLeaf(left) && right.kind == NodeKind::Log10 && IsLeaf(Left(right))) {
        return TermOf(ProgramCode::LogarithmProduct, {&left, &Left(right)});
    }
    if (!IsPowerOfLeaf(right, 0.5)) return {};
    const Term scaled = FindScaledArrhenius(left);
    return scaled ? scaled.With(ProgramCode::RootRateTerm, Left(right)) : scaled;
}

Term FindQuotient(const ExpressionNode& node) {
    const ExpressionNode& left = Left(node);
    const ExpressionNode& right = Right(node);
    if (!IsLeaf(left)) return {};
    if (IsLeaf(right)) return TermOf(ProgramCode::Quotient, {&left, &right});
    const Term scaled = FindScaledArrhenius(right);
    return scaled ? scaled.With(ProgramCode::InverseRateTerm, left) : scaled;
}

}  // namespace

Term FindTerm(const ExpressionNode& node) {
    if (IsLeaf(node)) return TermOf(ProgramCode::Value, {&node});
    switch (node.kind) {
        case NodeKind::Multiplication:
            return FindProduct(node);
        case NodeKind::Division:
            return FindQuotient(node);
        case NodeKind::Power:
            return IsPowerOfLeaf(node, 0.5) ? TermOf(ProgramCode::Root, {&Left(node)}) : Term();
        default:
            return FindArrhenius(node);
    }
}

}  // namespace reka
