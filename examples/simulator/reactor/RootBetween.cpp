// SPDX-License-Identifier: MIT
// By Algorithm 748 of Alefeld, Potra and Shi (ACM Trans. Math. Softw. 21 (1995) 327-344), which needs no slope: the
// functions are made of what a package calculates, and a package gives none.

#include "reactor/RootBetween.h"

#include <boost/math/tools/toms748_solve.hpp>
#include <cstdint>

namespace rekasim {

std::optional<double> RootBetween(const std::function<double(double)>& function, double low, double high) {
    const double atLow = function(low);
    const double atHigh = function(high);
    if (atLow == 0) return low;
    if (atHigh == 0) return high;
    if (!((atLow < 0 && atHigh > 0) || (atLow > 0 && atHigh < 0))) return {};
    constexpr int digits = 52;
    std::uintmax_t steps = 300;
    const auto [left, right] = boost::math::tools::toms748_solve(
        function, low, high, atLow, atHigh, boost::math::tools::eps_tolerance<double>(digits), steps);
    return left + (right - left) / 2;
}

}  // namespace rekasim
