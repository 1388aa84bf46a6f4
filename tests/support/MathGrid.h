// SPDX-License-Identifier: MIT
// The grid of true values that the build writes with MPFR.

#pragma once

#include <cstddef>
#include <cstdint>

namespace reka::test {

/// The functions by their number in the grid.
enum class GridFunction {
    Sqrt,
    Pow,
    Exp,
    Log,
    Log10,
    Sin,
    Cos,
    Tan,
    Asin,
    Acos,
    Atan,
    Sinh,
    Cosh,
    Tanh,
    Floor,
    Ceil,
    Fabs,
    Fmod,
    Exp10,
    SmallPower,
};

struct GridRow {
    int function;
    std::uint64_t x;      // bits of the first argument
    std::uint64_t y;      // bits of the second one, 0 for a function of one
    std::uint64_t truth;  // bits of the true value, rounded to a double
    float rest;           // what the rounding cut off, in units in the last place
};

extern const GridRow gridRows[];
extern const std::size_t gridRowCount;

}  // namespace reka::test
