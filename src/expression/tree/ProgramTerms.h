// SPDX-License-Identifier: MIT
// Which parts of a tree are computed by one step from leaves alone.

#pragma once

#include <cstddef>

#include "expression/tree/ExpressionNode.h"
#include "expression/tree/ExpressionProgram.h"

namespace reka {

inline bool IsLeaf(const ExpressionNode& node) {
    return node.argumentCount == 0;
}

inline const ExpressionNode& Left(const ExpressionNode& node) {
    return *node.arguments[0];
}

inline const ExpressionNode& Right(const ExpressionNode& node) {
    return *node.arguments[1];
}

inline bool IsConstant(const ExpressionNode& node, double value) {
    return node.kind == NodeKind::RealConstant && node.value == value;
}

/// What a step computes from leaves alone.
struct Term {
    ProgramCode code = ProgramCode::Count;  // as it begins a value; `Count` for none
    std::size_t leafCount = 0;
    const ExpressionNode* leaves[operandLimit] = {};

    explicit operator bool() const { return code != ProgramCode::Count; }
    Term With(ProgramCode longerCode, const ExpressionNode& leaf) const {
        Term longer = *this;
        longer.code = longerCode;
        longer.leaves[longer.leafCount++] = &leaf;
        return longer;
    }
};

/// The term that `node` is, a node of a tree in which each operation has its operands; none for most.
Term FindTerm(const ExpressionNode& node);

}  // namespace reka
