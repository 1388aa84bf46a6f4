// SPDX-License-Identifier: MIT
// What the tests of the reactors share: a gas that is written down in a few words, and the program's table as numbers.

#pragma once

#include <string>
#include <vector>

#include "DocumentFixture.h"

namespace rekasim {

/// A document with two or three ideal gases at 1 bar and 500 K, and one reaction.
struct GasDocument {
    std::string compounds = R"(["one", "two"])";
    std::string type = "Kinetic";
    std::string rate = "0.5*C(one)";
    std::string rateBasis = "Homogeneous";
    std::string basis = "Fugacity";
    std::string constant = "null";
    std::string heat = "null";
    std::string coefficients = "[-1, 1]";
    bool isPairOfReactions = false;
    std::string feed = R"([{"id": "one", "moleFraction": 1, "formula": "H2", "heatCapacity": 30},
                           {"id": "two", "moleFraction": 0, "formula": "H2", "heatCapacity": 30}])";

    std::string Text() const;
};

/// The lines of a table in CSV without its header; a failure of the test where a field is no number.
std::vector<std::vector<double>> LinesOf(const std::string& csv);

/// The last of some lines; a failure of the test, and none of numbers, where there is none.
std::vector<double> LastOf(const std::vector<std::vector<double>>& lines);

/// Runs the reactor with `options` on a document; the lines of its table. A failure of the test unless that works.
std::vector<std::vector<double>> SolveFile(const std::string& path, const std::vector<std::string>& options);
std::vector<std::vector<double>> Solve(const GasDocument& document, const std::vector<std::string>& options);

/// What the program says when it can't solve the reactor; a failure of the test if it can.
std::string FailureOf(const GasDocument& document, const std::vector<std::string>& options);

/// The columns of the table.
constexpr std::size_t position = 0;
constexpr std::size_t temperature = 1;
constexpr std::size_t conversion = 2;
constexpr std::size_t firstFlow = 3;

/// Volume flow of 1 mol/s of the gas, m3/s.
constexpr double volumeFlow = 8.314462618 * 500 / 1e5;

}  // namespace rekasim
