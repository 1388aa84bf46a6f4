// SPDX-License-Identifier: MIT
// The one operation that has cases of its own.

#include "expression/tree/NodeKinds.h"

namespace reka {

double RaiseTo(double base, double exponent) {
    if (exponent == 2.0) return base * base;
    if (exponent == 3.0) return base * base * base;
    if (exponent == 0.5 && base >= 0.0) return math::Sqrt(base + 0.0);  // a zero loses its sign
    if (base == 10.0) return math::Exp10(exponent);
    return math::Pow(base, exponent);
}

}  // namespace reka
