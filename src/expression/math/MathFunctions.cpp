// SPDX-License-Identifier: MIT
// The functions of the language that every runtime computes without error.

#include "expression/math/MathFunctions.h"

#include <cmath>

namespace reka::math {

double Floor(double x) {
    return std::floor(x);
}

double Ceil(double x) {
    return std::ceil(x);
}

double Fabs(double x) {
    return std::fabs(x);
}

double Fmod(double x, double y) {
    return std::fmod(x, y);
}

}  // namespace reka::math
