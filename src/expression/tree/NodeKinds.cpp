// SPDX-License-Identifier: MIT
// The operations by their rows, and the one that has cases of its own. These are calls for whoever has a kind at hand:
// the run of a program keeps its registers for its steps.

#include "expression/tree/NodeKinds.h"

namespace reka {

double RaiseTo(double base, double exponent) {
    if (exponent == 2.0) return base * base;
    if (exponent == 3.0) return base * base * base;
    if (exponent == 0.5 && base >= 0.0) return math::Sqrt(base + 0.0);  // a zero loses its sign
    if (base == 10.0) return math::Exp10(exponent);
    return math::Pow(base, exponent);
}

const char16_t* FindRefusal(NodeKind kind, double a, double b) {
    const Guard& guard = RowOf(kind).guard;
    return guard.refuses && guard.refuses(a, b) ? guard.text : nullptr;
}

double ComputeOperation(NodeKind kind, double a, double b) {
    return RowOf(kind).compute(a, b);
}

}  // namespace reka
