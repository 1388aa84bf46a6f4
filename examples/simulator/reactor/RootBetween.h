// SPDX-License-Identifier: MIT
// The root of a function of one variable.

#pragma once

#include <functional>
#include <optional>

namespace rekasim {

/// The root of `function` between `low` and `high`, where it has different signs, to the last digits. None if it has
/// not.
std::optional<double> RootBetween(const std::function<double(double)>& function, double low, double high);

}  // namespace rekasim
