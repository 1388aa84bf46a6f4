// SPDX-License-Identifier: MIT
// Sine, cosine, tangent and their inverses. They round once, at the end of a computation in higher precision, and use
// nothing of the runtime's mathematics but the square root, so that they give the same numbers on every build.

#include <array>
#include <cmath>
#include <limits>

#include "expression/math/AngleReduction.h"
#include "expression/math/MathFunctions.h"

namespace reka::math {

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

// Below this, x^3 is beyond the last place of x.
constexpr double tiny = 0x1p-28;

// The sine of an angle between -pi/4 and pi/4. The cube is kept in full, since a sixth of it is the second term.
DoubleDouble SineOf(DoubleDouble angle) {
    constexpr DoubleDouble minusSixth = DoubleDouble{-1.0} / DoubleDouble{6.0};
    const double x = angle.high;
    const DoubleDouble cube = TwoProduct(x, x) * x;
    const DoubleDouble second = cube * minusSixth;
    const double z = x * x;
    const double series =
        1.0 / 120 -
        z * (1.0 / 5040 -
             z * (1.0 / 362880 - z * (1.0 / 39916800 - z * (1.0 / 6227020800 -
                                                            z * (1.0 / 1307674368000 - z * (1.0 / 355687428096000))))));
    const DoubleDouble start = FastTwoSum(x, second.high);
    const double rest = start.low + (second.low + angle.low * (1.0 - 0.5 * z)) + cube.high * z * series;
    return FastTwoSum(start.high, rest);
}

// The cosine of an angle between -pi/4 and pi/4. The square is kept in full, since half of it is the second term.
DoubleDouble CosineOf(DoubleDouble angle) {
    const DoubleDouble square = TwoProduct(angle.high, angle.high);
    const double z = square.high;
    const double series =
        1.0 / 24 -
        z * (1.0 / 720 -
             z * (1.0 / 40320 -
                  z * (1.0 / 3628800 -
                       z * (1.0 / 479001600 -
                            z * (1.0 / 87178291200 - z * (1.0 / 20922789888000 - z * (1.0 / 6402373705728000)))))));
    const DoubleDouble start = FastTwoSum(1.0, -0.5 * z);
    const double rest = start.low - 0.5 * square.low - angle.high * angle.low + z * z * series;
    return FastTwoSum(start.high, rest);
}

// atan(i / 64): each entry adds, to the one before, the angle between the two.
constexpr int arcSteps = 64;

constexpr std::array<DoubleDouble, arcSteps + 1> MakeArcs() {
    std::array<DoubleDouble, arcSteps + 1> arcs{};
    for (int i = 1; i <= arcSteps; ++i) {
        const DoubleDouble ratio =
            DoubleDouble{1.0 / arcSteps} / DoubleDouble{1.0 + static_cast<double>(i * (i - 1)) / (arcSteps * arcSteps)};
        const DoubleDouble square = ratio * ratio;
        DoubleDouble sum;
        for (int n = 19; n >= 1; n -= 2) sum = DoubleDouble{1.0} / DoubleDouble{static_cast<double>(n)} - sum * square;
        arcs[static_cast<std::size_t>(i)] = arcs[static_cast<std::size_t>(i - 1)] + ratio * sum;
    }
    return arcs;
}

constexpr std::array<DoubleDouble, arcSteps + 1> arcs = MakeArcs();

// The angle whose tangent is y / x, for y from 0 to x and x above 0:
//     atan(y / x) = atan(c) + atan((y - c * x) / (x + c * y))   with c = i / 64 near the ratio.
DoubleDouble ArcUpToAnEighth(DoubleDouble y, DoubleDouble x) {
    const auto i = static_cast<std::size_t>(y.high / x.high * arcSteps + 0.5);
    const double c = static_cast<double>(i) / arcSteps;
    const DoubleDouble ratio = i == 0 ? y / x : (y - x * c) / (x + y * c);
    const double z = ratio.high * ratio.high;
    const double series = -1.0 / 3 + z * (1.0 / 5 - z * (1.0 / 7 - z * (1.0 / 9 - z * (1.0 / 11))));
    return arcs[i] + (ratio + DoubleDouble{ratio.high * z * series});
}

// The same for any y and x from 0 on that aren't both 0: an angle from 0 to pi/2.
DoubleDouble ArcOf(DoubleDouble y, DoubleDouble x) {
    if (y.high <= x.high) return ArcUpToAnEighth(y, x);
    return constants::halfPi - ArcUpToAnEighth(x, y);
}

// The square root of 1 - x^2, for x from 0 to 1, by one step of Newton's method from the root in double precision.
DoubleDouble OtherLeg(double x) {
    const DoubleDouble square = TwoSum(1.0, -x) * TwoSum(1.0, x);
    if (square.high == 0.0) return {};
    const double root = std::sqrt(square.high);
    const DoubleDouble rest = square - TwoProduct(root, root);
    return FastTwoSum(root, 0.5 * (rest.high + rest.low) / root);
}

}  // namespace

double Sin(double x) {
    const double magnitude = std::fabs(x);
    if (!(magnitude >= tiny)) return x;  // a NaN too
    if (std::isinf(x)) return notANumber;
    const auto [rest, quadrant] = ReduceAngle(magnitude);
    const double value = Round(quadrant % 2 == 0 ? SineOf(rest) : CosineOf(rest));
    return (quadrant >= 2) != (x < 0.0) ? -value : value;
}

double Cos(double x) {
    if (!std::isfinite(x)) return notANumber;
    const auto [rest, quadrant] = ReduceAngle(std::fabs(x));
    const double value = Round(quadrant % 2 == 0 ? CosineOf(rest) : SineOf(rest));
    return quadrant == 1 || quadrant == 2 ? -value : value;
}

double Tan(double x) {
    const double magnitude = std::fabs(x);
    if (!(magnitude >= tiny)) return x;  // a NaN too
    if (std::isinf(x)) return notANumber;
    const auto [rest, quadrant] = ReduceAngle(magnitude);
    const DoubleDouble sine = SineOf(rest);
    const DoubleDouble cosine = CosineOf(rest);
    const double value = Round(quadrant % 2 == 0 ? sine / cosine : -cosine / sine);
    return x < 0.0 ? -value : value;
}

double Asin(double x) {
    const double magnitude = std::fabs(x);
    if (!(magnitude >= tiny)) return x;  // a NaN too
    if (magnitude > 1.0) return notANumber;
    return std::copysign(Round(ArcOf({magnitude}, OtherLeg(magnitude))), x);
}

double Acos(double x) {
    const double magnitude = std::fabs(x);
    if (!(magnitude <= 1.0)) return notANumber;
    const DoubleDouble arc = ArcOf(OtherLeg(magnitude), {magnitude});
    return Round(x < 0.0 ? constants::pi - arc : arc);
}

double Atan(double x) {
    const double magnitude = std::fabs(x);
    if (!(magnitude >= tiny)) return x;  // a NaN too
    if (magnitude > 0x1p60) return std::copysign(constants::halfPi.high, x);
    return std::copysign(Round(ArcOf({magnitude}, {1.0})), x);
}

}  // namespace reka::math
