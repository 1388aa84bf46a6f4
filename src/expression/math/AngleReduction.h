// SPDX-License-Identifier: MIT
// Angles of any size, brought down to an eighth of a turn.

#pragma once

#include "expression/math/DoubleDouble.h"

namespace reka {

/// The angle `rest` behind `quadrant` quarters of a turn.
struct ReducedAngle {
    DoubleDouble rest;  // between -pi/4 and pi/4
    int quadrant;       // 0 to 3
};

/// Reduces `angle`, which is finite and not below 0, with about 100 bits of the rest, however close it comes to a
/// multiple of pi/2.
ReducedAngle ReduceAngle(double angle);

}  // namespace reka
