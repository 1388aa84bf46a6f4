// SPDX-License-Identifier: MIT
// The temperatures of a table.

#pragma once

#include <string>
#include <vector>

namespace rekasim {

/// Temperatures in K from `from` on, each `step` above the one before, up to `to`. The end belongs to the sweep when a
/// step reaches it within rounding, and is then exact. False, with a sentence in `errorText`, for a sweep that
/// doesn't go upwards from above 0 K, or has more than 100000 temperatures.
bool ListTemperatures(double from, double to, double step, std::vector<double>& temperatures, std::string& errorText);

}  // namespace rekasim
