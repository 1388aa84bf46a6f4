// SPDX-License-Identifier: MIT
// What there is to know of a finished tree before it is put to use, found out in one walk.

#pragma once

#include <cstddef>
#include <cstdint>

#include "expression/tree/ExpressionNode.h"

namespace reka {

struct TreeSurvey {
    /// Whether an evaluation looks at nothing but what is there: each operation has just its operands, and each leaf
    /// has a value.
    bool isSound = true;
    /// Bits of `dependency`. A leaf sets its own; molecular weight has none, nor has what hangs on a leaf by mistake.
    std::uint32_t dependencies = 0;
    std::size_t nodeCount = 0;
    std::size_t constantCount = 0;

    /// Counts a node and looks at its soundness, but for its arguments and what it reads.
    void AddNode(const ExpressionNode& node);
};

TreeSurvey SurveyTree(const ExpressionNode& root);

}  // namespace reka
