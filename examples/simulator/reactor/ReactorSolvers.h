// SPDX-License-Identifier: MIT
// The three reactors. All throw ReactorFailure.

#pragma once

#include <vector>

#include "reactor/ReactorModel.h"

namespace rekasim {

/// Plug flow: follows the extents (and the temperature, if `isAdiabatic`) from the inlet to `size`, which is the volume
/// in m3 or the catalyst mass in kg, as the rates count. `pointCount` points at equal distances, the inlet included.
///     d(extent)/d(position) = rate
///     d(temperature)/d(position) = -sum(rate * heat) / sum(flow * heat capacity)
std::vector<ReactorPoint> SolvePlugFlow(CReactorModel& model, double size, std::size_t pointCount, bool isAdiabatic);

/// Stirred tank: extent = rate at the outlet * size; adiabatic, the feed's heat capacity flow times the rise of the
/// temperature takes up the heat of the extents at the outlet. Of several steady states it is the one that a tank full
/// of feed comes to. Gives up after a bounded number of calculations. The inlet and the outlet.
std::vector<ReactorPoint> SolveStirredTank(CReactorModel& model, double size, bool isAdiabatic);

/// Equilibrium: each reaction's product of concentrations, on its basis, to the powers of the coefficients is its
/// equilibrium constant. The inlet and the outlet.
std::vector<ReactorPoint> SolveEquilibrium(CReactorModel& model, bool isAdiabatic);

}  // namespace rekasim
