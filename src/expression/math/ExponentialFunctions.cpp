// SPDX-License-Identifier: MIT
// The exponential, the logarithms, the power and the hyperbolic functions of the language. Where the runtime's are not
// known to be good, and the runtime of one build is as unlike another's as their makers are, they are computed here: in
// higher precision, rounded once at the end.

#include <cmath>
#include <limits>

#include "expression/math/Exponential.h"
#include "expression/math/Logarithm.h"
#include "expression/math/MathFunctions.h"
#include "expression/math/PowersOfTen.h"

#include "RuntimeMath.h"

namespace reka::math {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

// Below this, x^3 is beyond the last place of x.
constexpr double tiny = 0x1p-28;

// From here on exp(-x) is beyond the last place of exp(x).
constexpr double farOut = 22.0;

bool IsWhole(double x) {
    return std::floor(x) == x;
}

bool IsOdd(double x) {
    return IsWhole(x) && !IsWhole(x * 0.5);
}

// The power where the base is 0 or infinite or the exponent is infinite.
double PowerAtALimit(double base, double exponent) {
    if (std::isinf(exponent)) {
        const double magnitude = std::fabs(base);
        if (magnitude == 1.0) return 1.0;
        return (magnitude > 1.0) == (exponent > 0.0) ? infinity : 0.0;
    }
    const double magnitude = (base == 0.0) == (exponent < 0.0) ? infinity : 0.0;
    return std::signbit(base) && IsOdd(exponent) ? -magnitude : magnitude;
}

// The power of a finite base above 0.
double PowerOfPositive(double base, double exponent) {
    if (base == 1.0) return 1.0;
    const DoubleDouble logarithm = LogarithmOf(base);
    const double estimate = exponent * logarithm.high;
    if (std::fabs(estimate) > 800.0) return estimate > 0.0 ? infinity : 0.0;
    return RoundScaled(ExponentialOf(logarithm * exponent));
}

// The hyperbolic sine over x, less 1, over x^2; for x below 0.3.
double SinhSeries(double square) {
    const double farTerms = 1.0 / 39916800 + square * (1.0 / 6227020800 + square * (1.0 / 1307674368000));
    return 1.0 / 6 + square * (1.0 / 120 + square * (1.0 / 5040 + square * (1.0 / 362880 + square * farTerms)));
}

// The hyperbolic cosine, less 1, over x^2; for x below 0.3.
double CoshSeries(double square) {
    const double farTerms = 1.0 / 3628800 + square * (1.0 / 479001600 + square * (1.0 / 87178291200));
    return 1.0 / 2 + square * (1.0 / 24 + square * (1.0 / 720 + square * (1.0 / 40320 + square * farTerms)));
}

// exp(x) / 2 and exp(-x) / 2, for x from 0 to `farOut`.
struct HalfExponentials {
    DoubleDouble rising;
    DoubleDouble falling;
};

HalfExponentials HalvesOf(double x) {
    const ScaledNumber exponential = ExponentialOf({x});
    return {Shift(exponential.value, exponential.exponent - 1),
            Shift(DoubleDouble{1.0} / exponential.value, -exponential.exponent - 1)};
}

// exp(x) / 2 for x above `farOut`.
double HalfExponential(double x) {
    if (x > 720.0) return infinity;
    ScaledNumber exponential = ExponentialOf({x});
    --exponential.exponent;
    return RoundScaled(exponential);
}

}  // namespace

double Exp(double x) {
    if constexpr (hasGoodExponentials) return std::exp(x);
    if (x > 720.0) return infinity;
    if (x < -760.0) return 0.0;
    if (x != x) return x;
    return RoundScaled(ExponentialOf({x}));
}

double Log(double x) {
    if constexpr (hasGoodExponentials) return std::log(x);
    if (x == 0.0) return -infinity;
    if (x < 0.0) return notANumber;
    if (!std::isfinite(x)) return x;
    return Round(LogarithmOf(x));
}

double Exp10(double x) {
    if (std::fabs(x) <= 400.0 && x == static_cast<int>(x)) return PowerOfTen(x);
    if (!(std::fabs(x) <= 300.0)) return Pow(10.0, x);
    return RoundScaled(PowerOfTenOf(x));
}

double Log10(double x) {
    if (x == 0.0) return -infinity;
    if (x < 0.0) return notANumber;
    if (!std::isfinite(x)) return x;
    return DecimalLogarithmOf(x);
}

double Pow(double base, double exponent) {
    if constexpr (hasGoodExponentials) return std::pow(base, exponent);
    if (exponent == 0.0 || base == 1.0) return 1.0;
    if (base != base || exponent != exponent) return base + exponent;
    if (base == 0.0 || std::isinf(base) || std::isinf(exponent)) return PowerAtALimit(base, exponent);
    if (base > 0.0) return PowerOfPositive(base, exponent);
    if (!IsWhole(exponent)) return notANumber;
    const double magnitude = PowerOfPositive(-base, exponent);
    return IsOdd(exponent) ? -magnitude : magnitude;
}

double Sinh(double x) {
    const double magnitude = std::fabs(x);
    if (!(magnitude >= tiny)) return x;  // a NaN too
    if (magnitude < 0.3) return x + x * (x * x) * SinhSeries(x * x);
    if (magnitude > farOut) return std::copysign(HalfExponential(magnitude), x);
    const HalfExponentials halves = HalvesOf(magnitude);
    return std::copysign(Round(halves.rising - halves.falling), x);
}

double Cosh(double x) {
    const double magnitude = std::fabs(x);
    if (x != x) return x;
    if (magnitude > farOut) return HalfExponential(magnitude);
    const HalfExponentials halves = HalvesOf(magnitude);
    return Round(halves.rising + halves.falling);
}

double Tanh(double x) {
    const double magnitude = std::fabs(x);
    if (!(magnitude >= tiny)) return x;  // a NaN too
    if (magnitude > farOut) return std::copysign(1.0, x);
    if (magnitude < 0.3) {
        const double square = x * x;
        return Round(FastTwoSum(x, x * square * SinhSeries(square)) / FastTwoSum(1.0, square * CoshSeries(square)));
    }
    const HalfExponentials halves = HalvesOf(magnitude);
    return std::copysign(Round((halves.rising - halves.falling) / (halves.rising + halves.falling)), x);
}

}  // namespace reka::math
