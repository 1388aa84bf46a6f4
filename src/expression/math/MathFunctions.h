// SPDX-License-Identifier: MIT
// The library functions of the expression language; its operator ^ is `RaiseTo`. Each is within one unit in the last
// place of the true value, on every build, for every argument.

#pragma once

#include <emmintrin.h>

namespace reka::math {

/// The processor's own: a runtime may take the detour over the x87 unit, which rounds twice.
inline double Sqrt(double x) {
    return _mm_cvtsd_f64(_mm_sqrt_sd(_mm_setzero_pd(), _mm_set_sd(x)));
}

double Pow(double base, double exponent);
double Exp(double x);
/// 10 to the power of `x`, at the cost of an exponential. Of a whole `x` the double nearest to it.
double Exp10(double x);
double Log(double x);
double Log10(double x);
double Sin(double x);
double Cos(double x);
double Tan(double x);
double Asin(double x);
double Acos(double x);
double Atan(double x);
double Sinh(double x);
double Cosh(double x);
double Tanh(double x);
double Floor(double x);
double Ceil(double x);
double Fabs(double x);
double Fmod(double x, double y);

}  // namespace reka::math
