// SPDX-License-Identifier: MIT
// The operations by their rows, and the one that has cases of its own. These are calls for whoever has a kind at hand:
// the run of a program keeps its registers for its steps.

#include "expression/tree/NodeKinds.h"

#include "expression/math/SmallPowers.h"

namespace reka {

double RaiseTo(double base, double exponent) {
    if (math::IsSmallExponent(exponent)) return math::SmallPower(base, exponent);
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
