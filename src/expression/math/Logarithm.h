// SPDX-License-Identifier: MIT
// The natural logarithm beyond the precision of a double, for the logarithm and the power of the language, and the
// decimal one.

#pragma once

#include "expression/math/DoubleDouble.h"

namespace reka {

/// The natural logarithm of `x`, which is finite and above 0, to about 2^-66 of its value, also near 1.
DoubleDouble LogarithmOf(double x);

/// The decimal logarithm of `x`, which is finite and above 0, rounded once.
double DecimalLogarithmOf(double x);

}  // namespace reka
