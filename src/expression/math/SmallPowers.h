// SPDX-License-Identifier: MIT
// Powers with the exponents that laws are full of, computed as products, quotients and roots.

#pragma once

#include <cmath>

#include "expression/math/DoubleDouble.h"
#include "expression/math/MathFunctions.h"

namespace reka::math {

/// Whether `exponent` is a whole number from -4 to 4, or one of -0.5, 0.5, 1.5 and 2.5.
inline bool IsSmallExponent(double exponent) {
    if (!(std::fabs(exponent) <= 4.0)) return false;
    const int halves = static_cast<int>(2.0 * exponent);
    return halves == 2.0 * exponent && (halves % 2 == 0 || (halves >= -1 && halves <= 5));
}

/// `base` to the power of `exponent`, one of those: within 0.51 units in the last place of the true value, and at
/// zeros, infinities, NaNs and where numbers end what `Pow` gives.
double SmallPower(double base, double exponent);

/// The power 0.5 of a base that isn't negative; it has no sign for a zero.
inline double SquareRootPower(double base) {
    return Sqrt(base + 0.0);
}

/// Whether neither the product of four such bases nor the last digit of an error within it leaves the range of a
/// double.
inline bool IsFarFromLimits(double base) {
    const double magnitude = std::fabs(base);
    return magnitude >= 0x1p-200 && magnitude <= 0x1p200;
}

/// The product of two doubles with what its rounding cuts off, to 2^-78 of it. Cheaper than `TwoProduct`.
inline DoubleDouble NearProduct(double a, double b) {
    const double product = a * b;
    const double aUpper = UpperDigits(a);
    const double aLower = a - aUpper;
    const double bUpper = UpperDigits(b);
    const double bLower = b - bUpper;
    return {product, ((aUpper * bUpper - product) + (aUpper * bLower + aLower * bUpper)) + aLower * bLower};
}

/// The power 3.
inline double Cube(double base) {
    if (!IsFarFromLimits(base)) [[unlikely]]
        return Pow(base, 3.0);
    const DoubleDouble square = NearProduct(base, base);
    const DoubleDouble cube = NearProduct(square.high, base);
    return cube.high + (cube.low + square.low * base);
}

}  // namespace reka::math
