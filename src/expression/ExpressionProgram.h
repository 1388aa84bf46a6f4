// A tree laid out for evaluation: its nodes in the order in which they are computed, arguments before their parent.

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "expression/ExpressionNode.h"

namespace reka {

/// What it takes to compute one node. A node that can't be computed, whatever the operands, is a step of kind `Failed`.
struct ExpressionStep {
    NodeKind kind = NodeKind::Failed;
    std::int32_t argumentCount =
        0;  // values that the step takes from the stack; an operation uses the first one or two
    union {
        double value = 0.0;          // of a real constant
        std::int32_t compoundIndex;  // of a compound leaf
    };
};

/// The step for `node`: of kind `Failed` for an operation with too few arguments, which stored data may hold.
ExpressionStep StepOf(const ExpressionNode& node);

/// Values that an evaluation keeps on its own stack, without help from the program.
constexpr std::size_t localValueCount = 64;

/// The steps of one tree. Made once, with everything that an evaluation needs besides the working values, so that an
/// evaluation allocates nothing.
class CExpressionProgram {
public:
    explicit CExpressionProgram(const ExpressionNode& root);

    const std::vector<ExpressionStep>& Steps() const { return steps; }
    /// Room for all values that stand at one time, for the one evaluation that may run at a time. Null when
    /// `localValueCount` values are enough.
    double* ValueStack() const { return valueStack.get(); }

private:
    std::vector<ExpressionStep> steps;
    std::unique_ptr<double[]> valueStack;
};

}  // namespace reka
