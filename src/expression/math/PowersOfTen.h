// SPDX-License-Identifier: MIT
// Powers of ten for the exponent of a number in a text.

#pragma once

#include <array>

namespace reka {

constexpr int smallestPowerOfTen = -323;  // 1E-324 rounds to 0
constexpr int greatestPowerOfTen = 308;

using PowerTable = std::array<double, greatestPowerOfTen - smallestPowerOfTen + 1>;

/// The table behind `PowerOfTen`, whatever floating point settings the host has by then.
PowerTable MakePowersOfTen();

/// The double nearest to 10 raised to `exponent`, a whole number: 0 and infinity beyond the range of a double. The
/// runtimes' own pow differs in the last bit from build to build, which would show in every constant.
double PowerOfTen(double exponent);

}  // namespace reka
