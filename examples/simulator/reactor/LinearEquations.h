// SPDX-License-Identifier: MIT
// A few linear equations. Boost's own don't compile with this version of the language any more.

#pragma once

#include <vector>

namespace rekasim {

/// Solves as many equations as there are rows, by elimination with the largest pivot of each column first. The last
/// column is the right-hand side, and gets the solution. False for equations without one.
bool SolveLinear(std::vector<std::vector<double>>& rows);

}  // namespace rekasim
