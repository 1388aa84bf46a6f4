// The operators and functions of the language, kind by kind.

#include "expression/tree/NodeOperation.h"

#include <limits>

#include "expression/math/MathFunctions.h"

namespace reka {

// A NaN passes every guard, and so does a zero where only negative operands are refused: LOG(0) is minus infinity and
// 0^0 is 1. The natural logarithm speaks of "ln".
const char16_t* FindRefusal(NodeKind kind, double a, double b) {
    switch (kind) {
        case NodeKind::Division:
            return b == 0 ? u"division by zero" : nullptr;
        case NodeKind::Power:
            return a < 0 ? u"negative base in power" : nullptr;
        case NodeKind::Sqrt:
            return a < 0 ? u"sqrt of negative number" : nullptr;
        case NodeKind::Asin:
            return a < -1 || a > 1 ? u"domain error in asin" : nullptr;
        case NodeKind::Acos:
            return a < -1 || a > 1 ? u"domain error in acos" : nullptr;
        case NodeKind::Log:
            return a < 0 ? u"ln of negative number" : nullptr;
        case NodeKind::Log10:
            return a < 0 ? u"log of negative number" : nullptr;
        default:
            return nullptr;
    }
}

double RaiseTo(double base, double exponent) {
    if (exponent == 2.0) return base * base;
    if (exponent == 3.0) return base * base * base;
    if (exponent == 0.5 && base >= 0.0) return math::Sqrt(base + 0.0);  // a zero loses its sign
    if (base == 10.0) return math::Exp10(exponent);
    return math::Pow(base, exponent);
}

double ComputeOperation(NodeKind kind, double a, double b) {
    switch (kind) {
        case NodeKind::Addition:
            return a + b;
        case NodeKind::Subtraction:
            return a - b;
        case NodeKind::Multiplication:
            return a * b;
        case NodeKind::Division:
            return a / b;
        case NodeKind::Negation:
            return -a;
        case NodeKind::Power:
            return RaiseTo(a, b);
        case NodeKind::Sqrt:
            return math::Sqrt(a);
        case NodeKind::Sin:
            return math::Sin(a);
        case NodeKind::Cos:
            return math::Cos(a);
        case NodeKind::Sinh:
            return math::Sinh(a);
        case NodeKind::Cosh:
            return math::Cosh(a);
        case NodeKind::Asin:
            return math::Asin(a);
        case NodeKind::Acos:
            return math::Acos(a);
        case NodeKind::Tan:
            return math::Tan(a);
        case NodeKind::Atan:
            return math::Atan(a);
        case NodeKind::Abs:
            return math::Fabs(a);
        case NodeKind::Floor:
            return math::Floor(a);
        case NodeKind::Ceil:
            return math::Ceil(a);
        case NodeKind::Round:
            return math::Floor(a + 0.5);  // halves go up, below zero too
        case NodeKind::Exp:
            return math::Exp(a);
        case NodeKind::Log:
            return math::Log(a);
        case NodeKind::Log10:
            return math::Log10(a);
        case NodeKind::Tanh:
            return math::Tanh(a);
        case NodeKind::Min:
            return a < b ? a : b;  // b when a is a NaN
        case NodeKind::Max:
            return a > b ? a : b;
        case NodeKind::Mod:
            return math::Fmod(a, b);
        default:
            return std::numeric_limits<double>::quiet_NaN();
    }
}

}  // namespace reka
