// SPDX-License-Identifier: MIT
// Equilibria against their closed forms: each basis of the constant, constants of any size, several reactions at once
// and the heat that they take or give.

#include <gtest/gtest.h>

#include <cmath>

#include "FormatNumber.h"
#include "ReactorFixture.h"

namespace rekasim {

namespace {

TEST(ReactionEquilibrium, OfTheShiftIsTheRootOfItsSquare) {
    const auto numbers = LastOf(SolveFile(ExamplePath("water-gas-shift.json"), {"--equilibrium", "--key", "co"}));
    ASSERT_GT(numbers.size(), firstFlow + 2);
    // H2O 0.4, H2 0.4, CO 0.1, CO2 0.1: (0.1 + e)(0.4 + e) = K (0.1 - e)(0.4 - e)
    const double k = std::exp(4577.8 / 700 - 4.33);
    const double a = 1 - k;
    const double b = 0.5 * (1 + k);
    const double c = 0.04 * (1 - k);
    const double extent = (-b + std::sqrt(b * b - 4 * a * c)) / (2 * a);
    EXPECT_NEAR(numbers[firstFlow], 0.4 - extent, 1e-12);
    EXPECT_NEAR(numbers[firstFlow + 2], 0.1 - extent, 1e-12);
    EXPECT_NEAR(numbers[conversion], extent / 0.1, 1e-11);
}

TEST(ReactionEquilibrium, OfADissociationHasItsClosedForm) {
    // A = 2 B with Kp: x = sqrt(Kp / (Kp + 4 P))
    GasDocument document;
    document.type = "Equilibrium";
    document.rate = "null";
    document.constant = "5E4";
    document.coefficients = "[-1, 2]";
    document.feed = R"([{"id": "one", "moleFraction": 1}, {"id": "two", "moleFraction": 0}])";
    EXPECT_NEAR(Solve(document, {"--equilibrium"})[1][conversion], std::sqrt(5e4 / (5e4 + 4e5)), 1e-12);
    EXPECT_NEAR(Solve(document, {"--equilibrium", "--pressure", "1e6"})[1][conversion], std::sqrt(5e4 / (5e4 + 4e6)),
                1e-12);
    document.basis = "MoleFraction";  // K = 4 x^2 / (1 - x^2)
    document.constant = "0.5";
    EXPECT_NEAR(Solve(document, {"--equilibrium"})[1][conversion], std::sqrt(0.5 / 4.5), 1e-12);
    document.basis = "Molarity";  // the same with K R T / P
    document.constant = "0.5*1E5/(8.314462618*500)";
    EXPECT_NEAR(Solve(document, {"--equilibrium"})[1][conversion], std::sqrt(0.5 / 4.5), 1e-9);
}

TEST(ReactionEquilibrium, ReachesBothEnds) {
    GasDocument document;
    document.type = "Equilibrium";
    document.rate = "null";
    document.constant = "1E30";
    EXPECT_NEAR(Solve(document, {"--equilibrium"})[1][conversion], 1, 1e-12);
    document.constant = "1E-30";
    EXPECT_NEAR(Solve(document, {"--equilibrium"})[1][conversion], 0, 1e-12);
}

TEST(ReactionEquilibrium, ClosesItsHeatBalance) {
    GasDocument document;
    document.type = "Equilibrium";
    document.rate = "null";
    document.constant = "EXP(1000/T-2)";
    document.heat = "-6000";
    const auto lines = Solve(document, {"--equilibrium", "--adiabatic"});
    const double x = lines[1][conversion];
    const double outlet = lines[1][temperature];
    EXPECT_NEAR(outlet, 500 + 200 * x, 1e-6);
    const double k = std::exp(1000 / outlet - 2);
    EXPECT_NEAR(x, k / (1 + k), 1e-9);
}

TEST(ReactionEquilibrium, TakesConstantsOfAnySize) {
    GasDocument document;
    document.type = "Equilibrium";
    document.rate = "null";
    document.coefficients = "[-2, 2]";
    for (const char* const constant : {"1E305", "1E-300"}) {
        document.constant = constant;
        const double x = Solve(document, {"--equilibrium"})[1][conversion];
        EXPECT_NEAR(x, constant[2] == '3' ? 1 : 0, 1e-12) << constant;
    }
}

/// Three isomers in a row, with the constants K1 and K2 on the basis of mole fractions.
GasDocument Isomers(const std::string& first, const std::string& second) {
    GasDocument document;
    document.compounds = R"(["one", "two", "three"])";
    document.type = R"(Equilibrium", "Equilibrium)";
    document.rateBasis = R"(Homogeneous", "Homogeneous)";
    document.basis = R"(MoleFraction", "MoleFraction)";
    document.rate = "null, null";
    document.heat = "null, null";
    document.feed =
        R"([{"id": "one", "moleFraction": 1}, {"id": "two", "moleFraction": 0}, {"id": "three", "moleFraction": 0}])";
    document.constant = first + R"(", ")" + second;
    document.coefficients = R"([-1, 1, 0], "stoichiometry[S]": [0, -1, 1])";
    document.isPairOfReactions = true;
    return document;
}

TEST(ReactionEquilibrium, OfSeveralReactionsIsThatOfAll) {
    const std::pair<double, double> constants[] = {{2, 3}, {1e6, 1e6}, {1e-6, 1e6}, {1e-12, 1e12}, {1e-9, 1e-9}};
    for (const auto& [k1, k2] : constants) {
        const auto lines = Solve(Isomers(FormatNumber(k1, 17), FormatNumber(k2, 17)), {"--equilibrium"});
        ASSERT_EQ(lines.size(), 2U);
        const double one = 1 / (1 + k1 + k1 * k2);
        EXPECT_NEAR(lines[1][firstFlow], one, 1e-9 * one + 1e-15) << k1 << " " << k2;
        EXPECT_NEAR(lines[1][firstFlow + 1], k1 * one, 1e-9 * k1 * one + 1e-15) << k1 << " " << k2;
        EXPECT_NEAR(lines[1][firstFlow + 2], k1 * k2 * one, 1e-9 * k1 * k2 * one + 1e-15) << k1 << " " << k2;
    }
}

}  // namespace

}  // namespace rekasim
