// SPDX-License-Identifier: MIT
// The exponential beyond the precision and the range of a double, for the functions of the language that build on it.

#pragma once

#include "expression/math/DoubleDouble.h"

namespace reka {

/// The number `value` times 2 to the power `exponent`; `value` lies between 0.9 and 2.1.
struct ScaledNumber {
    DoubleDouble value;
    int exponent;
};

/// e to the power of `x`, which lies between -2000 and 2000, to about 2^-61 of its value.
ScaledNumber ExponentialOf(DoubleDouble x);

/// 10 to the power of `x`, which lies between -600 and 600, to about 2^-61 of its value.
ScaledNumber PowerOfTenOf(double x);

/// `number` as a double: 0, subnormal or infinite where the exponent, between -3000 and 3000, leads there.
double RoundScaled(const ScaledNumber& number);

/// `number` times 2 to the power `shift`, for results within the range of a double.
DoubleDouble Shift(DoubleDouble number, int shift);

}  // namespace reka
