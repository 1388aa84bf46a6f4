// SPDX-License-Identifier: MIT
// Plug flow against closed forms of textbooks and against balances made by hand: first order with and without a change
// of volume, catalyst, heat, elements, and what runs out on the way.

#include <gtest/gtest.h>

#include <cmath>

#include "ReactorFixture.h"

namespace rekasim {

namespace {

TEST(PlugFlowReactor, OfFirstOrderDecaysExponentially) {
    const auto lines = Solve({}, {"--pfr", "--volume", "0.3", "--points", "11"});
    ASSERT_EQ(lines.size(), 11U);
    for (const auto& line : lines) {
        EXPECT_NEAR(line[firstFlow], std::exp(-0.5 * line[position] / volumeFlow), 1e-8);
        EXPECT_NEAR(line[conversion], 1 - line[firstFlow], 1e-12);
        EXPECT_EQ(line[temperature], 500);
    }
    EXPECT_EQ(lines.front()[position], 0);
    EXPECT_EQ(lines.back()[position], 0.3);
}

TEST(PlugFlowReactor, FollowsTheVolumeOfAGasThatGrows) {
    // A -> 2 B: k V / v0 = 2 ln(1 / (1 - x)) - x
    GasDocument document;
    document.coefficients = "[-1, 2]";
    document.feed = R"([{"id": "one", "moleFraction": 1}, {"id": "two", "moleFraction": 0}])";
    const auto lines = Solve(document, {"--pfr", "--volume", "0.2"});
    ASSERT_EQ(lines.size(), 21U);
    for (const auto& line : lines) {
        const double x = line[conversion];
        EXPECT_NEAR(0.5 * line[position] / volumeFlow, 2 * std::log(1 / (1 - x)) - x, 1e-7);
    }
}

TEST(PlugFlowReactor, CountsCatalystByItsMass) {
    GasDocument document;
    document.rateBasis = "Heterogeneous";
    const auto lines = Solve(document, {"--pfr", "--catalyst", "0.1", "--flow", "2", "--points", "2"});
    EXPECT_NEAR(lines.back()[firstFlow], 2 * std::exp(-0.5 * 0.1 / (2 * volumeFlow)), 1e-8);
    EXPECT_NE(FailureOf(document, {"--pfr", "--volume", "1"}).find("--catalyst gives it in kg"), std::string::npos);
}

TEST(PlugFlowReactor, WarmsByItsHeat) {
    GasDocument document;
    document.rate = "0.5*C(one)";
    document.heat = "-1500";
    const auto lines = Solve(document, {"--pfr", "--volume", "0.3", "--adiabatic"});
    // Both have 30 J/(mol K): 1500 J/mol warm by 50 K per part converted.
    for (const auto& line : lines) EXPECT_NEAR(line[temperature], 500 + 50 * line[conversion], 1e-6);
    EXPECT_GT(lines.back()[conversion], 0.9);
}

TEST(PlugFlowReactor, ConservesElements) {
    const RunResult result =
        RunProgram({"reactor", "--csv", "--document", ExamplePath("toluene-hydrodealkylation.json"), "--pfr", "--flow",
                    "1000", "--volume", "500"});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out.substr(0, result.out.find('\n')),
              "volume_m3,temperature_K,conversion_C7H8,flow_H2_mol_per_s,flow_CH4_mol_per_s,flow_C6H6_mol_per_s,"
              "flow_C7H8_mol_per_s,flow_C12H10_mol_per_s");
    double carbonBefore = 0;
    double hydrogenBefore = 0;
    const auto lines = LinesOf(result.out);
    ASSERT_EQ(lines.size(), 21U);
    for (const auto& numbers : lines) {
        ASSERT_EQ(numbers.size(), 8U);
        const double carbon = numbers[4] + 6 * numbers[5] + 7 * numbers[6] + 12 * numbers[7];
        const double hydrogen = 2 * numbers[3] + 4 * numbers[4] + 6 * numbers[5] + 8 * numbers[6] + 10 * numbers[7];
        if (&numbers == &lines.front()) {
            carbonBefore = carbon;
            hydrogenBefore = hydrogen;
        }
        EXPECT_NEAR(carbon / carbonBefore, 1, 1e-9);
        EXPECT_NEAR(hydrogen / hydrogenBefore, 1, 1e-9);
    }
}

TEST(PlugFlowReactor, FollowsATraceToItsEnd) {
    GasDocument document;
    document.rate = "5E3*C(one)";
    document.feed = R"([{"id": "one", "moleFraction": 1E-4, "formula": "C7H8"},
                        {"id": "two", "moleFraction": 0, "formula": "C7H8"},
                        {"id": "N2", "moleFraction": 0.9999, "formula": "N2"}])";
    const auto lines = Solve(document, {"--pfr", "--volume", "1"});
    EXPECT_NEAR(lines.back()[conversion], 1, 1e-9);
    EXPECT_GE(lines.back()[firstFlow], 0);
    document.rate = "50*C(one)^0.5";  // ends at a volume, not only in the long run
    EXPECT_NEAR(Solve(document, {"--pfr", "--volume", "1"}).back()[conversion], 1, 1e-8);
    const double x = Solve(document, {"--cstr", "--volume", "1"})[1][conversion];
    const double c0 = 1e-4 / volumeFlow;
    EXPECT_NEAR(50 * std::sqrt(c0 * (1 - x)) / (1e-4 * x), 1, 1e-6);
}

TEST(PlugFlowReactor, RunsOutOfWhatReacts) {
    GasDocument document;
    document.rate = "1E30*C(one)";
    const auto lines = Solve(document, {"--pfr", "--volume", "1"});
    EXPECT_EQ(lines.back()[firstFlow], 0);
    EXPECT_NEAR(lines.back()[conversion], 1, 1e-9);
}

}  // namespace

}  // namespace rekasim
