// SPDX-License-Identifier: MIT
// A product of several factors is rounded at each of them. So the error of each rounding is computed beside it, by the
// halves of the digits, and brought in at the end: one rounding counts. What comes near the limits of the numbers,
// where an error can't be held, and what is no ordinary number goes to the power of the library.

#include "expression/math/SmallPowers.h"

namespace reka::math {

namespace {

DoubleDouble SquareOf(double x) {
    return NearProduct(x, x);
}

/// The square root by one step of Newton's method from the root in double precision.
DoubleDouble RootOf(double x) {
    const double root = Sqrt(x);
    const DoubleDouble square = SquareOf(root);
    return {root, ((x - square.high) - square.low) * (0.5 / root)};
}

double ProductOf(DoubleDouble a, DoubleDouble b) {
    const DoubleDouble product = NearProduct(a.high, b.high);
    return product.high + (product.low + (a.high * b.low + a.low * b.high));
}

double ReciprocalOf(DoubleDouble x) {
    const double quotient = 1.0 / x.high;
    const DoubleDouble product = NearProduct(quotient, x.high);
    const double rest = ((1.0 - product.high) - product.low) - quotient * x.low;
    return quotient + quotient * rest;
}

DoubleDouble CubeOf(double x) {
    const DoubleDouble square = SquareOf(x);
    const DoubleDouble cube = NearProduct(square.high, x);
    return {cube.high, cube.low + square.low * x};
}

DoubleDouble FourthOf(double x) {
    const DoubleDouble square = SquareOf(x);
    const DoubleDouble fourth = SquareOf(square.high);
    return {fourth.high, fourth.low + 2.0 * square.high * square.low};
}

}  // namespace

double SmallPower(double base, double exponent) {
    const int halves = static_cast<int>(2.0 * exponent);
    switch (halves) {  // those that one rounding is enough for
        case -2:
            return 1.0 / base;
        case 0:
            return 1.0;
        case 2:
            return base;
        case 4:
            return base * base;
        default:
            break;
    }
    const bool isWhole = halves % 2 == 0;
    if (halves == 1 && base >= 0.0) return SquareRootPower(base);
    if (!IsFarFromLimits(base) || (!isWhole && base < 0.0)) return Pow(base, exponent);
    switch (halves) {
        case -8:
            return ReciprocalOf(FourthOf(base));
        case -6:
            return ReciprocalOf(CubeOf(base));
        case -4:
            return ReciprocalOf(SquareOf(base));
        case -1:
            return ReciprocalOf(RootOf(base));
        case 3:
            return ProductOf({base}, RootOf(base));
        case 5:
            return ProductOf(SquareOf(base), RootOf(base));
        case 6:
            return Cube(base);
        case 8:
            return Round(FourthOf(base));
        default:
            return Pow(base, exponent);
    }
}

}  // namespace reka::math
