// SPDX-License-Identifier: MIT
// The command that solves a reactor.

#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "CPackageSession.h"
#include "Failure.h"

namespace rekasim {

enum class ReactorKind : unsigned char { PlugFlow, StirredTank, Equilibrium };

/// What the command line says of the reactor. Texts are UTF-8.
struct ReactorOptions {
    ReactorKind kind = ReactorKind::PlugFlow;
    bool isAdiabatic = false;
    bool isCsv = false;
    double flow = 1;                    // mol/s
    std::optional<double> volume;       // m3
    std::optional<double> catalyst;     // kg
    std::optional<double> temperature;  // K, in place of the material's
    std::optional<double> pressure;     // Pa, in place of the material's
    std::size_t pointCount = 21;        // of a profile, inlet and outlet included
    std::string key;                    // the compound whose conversion is told; empty for the one that runs out first
    std::string plotPath;
};

/// Solves the reactor with the numbers of the package in `session`, which has no material yet. Prints the profile to
/// `out`; false with the reason in `failure`.
bool SolveReactor(CPackageSession& session, MaterialState state, ThermoVersion version, const ReactorOptions& options,
                  std::ostream& out, Failure& failure);

}  // namespace rekasim
