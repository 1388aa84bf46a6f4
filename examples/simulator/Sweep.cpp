// SPDX-License-Identifier: MIT
// Each temperature is the first one plus a number of steps: adding step to step would carry the rounding of each along,
// and after a thousand of them miss the end. The end itself is put in exactly, so that it prints as it was typed.

#include "Sweep.h"

#include <cmath>

namespace rekasim {

bool ListTemperatures(double from, double to, double step, std::vector<double>& temperatures, std::string& errorText) {
    constexpr double mostSteps = 99999;
    constexpr double rounding = 1e-9;  // of a step
    temperatures.clear();
    errorText.clear();
    if (!(from > 0))
        errorText = "the sweep must begin above 0 K";
    else if (!(to >= from))
        errorText = "the sweep must not end below its beginning";
    else if (!(step > 0))
        errorText = "the step of the sweep must be above 0 K";
    else if ((to - from) / step > mostSteps)
        errorText = "the sweep has more than 100000 temperatures";
    if (!errorText.empty()) return false;

    const int lastStep = static_cast<int>(std::floor((to - from) / step + rounding));
    for (int i = 0; i <= lastStep; ++i) temperatures.push_back(from + i * step);
    if (std::fabs(temperatures.back() - to) <= rounding * step) temperatures.back() = to;
    return true;
}

}  // namespace rekasim
