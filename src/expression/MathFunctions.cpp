// The functions of the language that every runtime computes without error, or, for the square root, rounds correctly.

#include "expression/MathFunctions.h"

#include <emmintrin.h>

#include <cmath>

namespace reka::math {

double Sqrt(double x) {
    // The processor's own: a runtime may take the detour over the x87 unit, which rounds twice.
    return _mm_cvtsd_f64(_mm_sqrt_sd(_mm_setzero_pd(), _mm_set_sd(x)));
}

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
