// SPDX-License-Identifier: MIT
// The operations that steps of a program are made of: those of the language, and the powers that have ways of their
// own.

#pragma once

#include <cstdint>

namespace reka {

/// What is done with one or two values.
enum class ProgramOperation : std::uint8_t {
    Fetch,  // an operand
    Add,
    Subtract,
    Multiply,
    Divide,
    Negate,
    Power,
    SmallPower,       // with a constant exponent that has a power of its own
    Square,           // the exponent 2
    Cube,             // 3
    SquareRootPower,  // 0.5
    PowerOfTen,       // the base 10
    SquareRoot,
    Exponential,
    Logarithm,
    DecimalLogarithm,
    Function,       // one of those that have no operation of their own; an operand tells which
    FunctionOfTwo,  // the same with two values
    Count
};

}  // namespace reka
