// What the operators and functions of the language compute. Folding and evaluation share this, so that a constant and a
// run-time value meet the same arithmetic.

#pragma once

#include <cstdint>

#include "expression/tree/ExpressionNode.h"

namespace reka {

/// The number of operands of an operator or function; 0 for every other kind.
constexpr std::int32_t OperandCount(NodeKind kind) {
    switch (kind) {
        case NodeKind::Addition:
        case NodeKind::Subtraction:
        case NodeKind::Multiplication:
        case NodeKind::Division:
        case NodeKind::Power:
        case NodeKind::Min:
        case NodeKind::Max:
        case NodeKind::Mod:
            return 2;
        case NodeKind::Negation:
            return 1;
        default:
            return kind >= NodeKind::Sqrt && kind <= NodeKind::Tanh ? 1 : 0;
    }
}

/// Why an operator or function is refused for the operands `a` and `b`; null if it isn't.
const char16_t* FindRefusal(NodeKind kind, double a, double b);

/// The value of the operator ^. The exponents 2, 3 and 0.5 and the base 10 have powers of their own.
double RaiseTo(double base, double exponent);

/// The value of an operator or function for the operands `a` and `b`, of which a kind with one operand reads the first
/// alone. Nothing is guarded: what the arithmetic makes of any operands is the value. A quiet NaN for other kinds.
double ComputeOperation(NodeKind kind, double a, double b);

}  // namespace reka
