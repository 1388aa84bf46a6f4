// SPDX-License-Identifier: MIT
// The tank against closed forms and balances made by hand, and where numbers are hard to find: fast reactions, several
// steady states, what a feed has none of or in the very ratio of its reaction.

#include <gtest/gtest.h>

#include <cmath>

#include "ReactorFixture.h"

namespace rekasim {

namespace {

TEST(StirredTank, OfFirstOrderHasItsClosedForm) {
    const auto lines = Solve({}, {"--cstr", "--volume", "0.3"});
    ASSERT_EQ(lines.size(), 2U);
    const double damkoehler = 0.5 * 0.3 / volumeFlow;
    EXPECT_NEAR(lines[1][conversion], damkoehler / (1 + damkoehler), 1e-9);
    EXPECT_EQ(lines[1][position], 0.3);
}

TEST(StirredTank, OfSecondOrderSolvesItsSquare) {
    GasDocument document;
    document.rate = "0.01*C(one)^2";
    const auto lines = Solve(document, {"--cstr", "--volume", "0.5"});
    const double c0 = 1 / volumeFlow;
    const double a = 0.01 * c0 * c0 * 0.5;  // a (1 - x)^2 = x
    EXPECT_NEAR(lines[1][conversion], (2 * a + 1 - std::sqrt(4 * a + 1)) / (2 * a), 1e-9);
}

TEST(StirredTank, ManagesFastReactions) {
    GasDocument document;
    document.rate = "1E6*C(one)";
    const auto lines = Solve(document, {"--cstr", "--volume", "1"});
    const double damkoehler = 1e6 / volumeFlow;
    EXPECT_NEAR(lines[1][firstFlow] * (1 + damkoehler), 1, 1e-3);
}

TEST(StirredTank, ClosesItsHeatBalance) {
    GasDocument document;
    document.rate = "1E4*EXP(-5000/T)*C(one)";
    document.heat = "-3000";
    const auto lines = Solve(document, {"--cstr", "--volume", "0.1", "--adiabatic"});
    const double x = lines[1][conversion];
    const double outlet = lines[1][temperature];
    EXPECT_NEAR(outlet, 500 + 100 * x, 1e-6);
    const double concentration = (1 - x) * 1e5 / (8.314462618 * outlet);
    EXPECT_NEAR(1e4 * std::exp(-5000 / outlet) * concentration * 0.1, x, 1e-8);
    EXPECT_GT(x, 0.1);
}

TEST(StirredTank, IgnitesWhereTheColdStateEnds) {
    GasDocument document;
    document.rate = "1E13*EXP(-15000/T)*C(one)";
    document.heat = "-15000";  // 500 K in all
    const auto rateOfConversion = [](double x, double volume) {
        const double outlet = 500 + 500 * x;
        return 1e13 * std::exp(-15000 / outlet) * (1 - x) * 1e5 / (8.314462618 * outlet) * volume;
    };
    // Up to some 2e-4 m3 there are three steady states, and a tank full of feed comes to rest in the coldest.
    const double cold = Solve(document, {"--cstr", "--volume", "1E-5", "--adiabatic"})[1][conversion];
    EXPECT_NEAR(rateOfConversion(cold, 1e-5), cold, 1e-9);
    EXPECT_LT(cold, 0.01);
    ASSERT_GT(rateOfConversion(0.9, 1e-5), 0.9);  // a hotter one exists
    for (const std::string size : {"1E-3", "1", "1E6"}) {
        const double volume = std::stod(size);
        const auto lines = Solve(document, {"--cstr", "--volume", size, "--adiabatic"});
        const double x = lines[1][conversion];
        EXPECT_GT(x, 0.999) << volume;
        EXPECT_NEAR(lines[1][temperature], 500 + 500 * x, 1e-6) << volume;
        const double left = 8.314462618 * 1000 / (1e13 * std::exp(-15) * 1e5 * volume);  // r V = x with x near 1
        EXPECT_NEAR(lines[1][firstFlow] / left, 1, 0.01) << volume;
    }
}

/// Toluene hydrodealkylation, fed with `fractions` of H2, CH4, C6H6, C7H8 and C12H10; the flows at the outlet.
std::vector<double> SolveHydrodealkylation(const std::vector<double>& fractions, std::vector<std::string> options) {
    packagetext::Json document = ReadExample("toluene-hydrodealkylation.json");
    for (std::size_t i = 0; i < fractions.size(); ++i) {
        document["material"]["compounds"][i]["moleFraction"] = fractions[i];
    }
    const CTemporaryFile file("toluene.json", document.dump());
    options.push_back("--cstr");
    std::vector<double> numbers = LastOf(SolveFile(file.Path(), options));
    EXPECT_EQ(numbers.size(), firstFlow + 5);
    numbers.resize(firstFlow + 5);
    return {numbers.begin() + firstFlow, numbers.end()};
}

/// The rate of the dealkylation, mol/(m3 s), with the constants of the document.
double DealkylationRate(const std::vector<double>& flows, double kelvin, double pressure) {
    double total = 0;
    for (const double flow : flows) total += flow;
    const double toluene = flows[3] / total * pressure / 6894.757293;
    const double hydrogen = flows[0] / total * pressure / 6894.757293;
    return 453.59237 / (60 * 0.028316846592) * 3.6858e6 * std::exp(-25616 / kelvin) * toluene * std::sqrt(hydrogen);
}

TEST(StirredTank, UsesUpHydrogenToTheLastDigits) {
    const auto flows = SolveHydrodealkylation({0.05, 0.45, 0.05, 0.45, 0}, {"--flow", "1000", "--volume", "1e6"});
    EXPECT_NEAR(DealkylationRate(flows, 922, 3.4e6) * 1e6 / (flows[1] - 450), 1, 1e-9);  // makes the methane
    EXPECT_GT(flows[0], 0);
    EXPECT_LT(flows[0], 1e-5);
    EXPECT_NEAR(flows[0] + flows[1] - flows[4], 500, 1e-9);
}

TEST(StirredTank, WorksWithHydrogenThatOnlyAReactionBrings) {
    const auto flows = SolveHydrodealkylation(
        {0, 0.0428, 0.1241, 0.5992, 0.2339},
        {"--temperature", "1144.04", "--pressure", "2.004e7", "--flow", "0.0205067", "--volume", "2537.64"});
    const double methane = flows[1] - 0.0428 * 0.0205067;
    EXPECT_NEAR(DealkylationRate(flows, 1144.04, 2.004e7) * 2537.64 / methane, 1, 1e-9);
    EXPECT_GT(flows[0], 0);
    EXPECT_LT(flows[0], 1e-20);
}

TEST(StirredTank, LetsAFeedInTheRatioOfItsReactionRunOut) {
    GasDocument document;
    document.compounds = R"(["one", "two", "three"])";
    document.rate = "1E30*C(one)*C(two)";
    document.coefficients = "[-1, -3, 1]";
    document.feed = R"([{"id": "one", "moleFraction": 0.1}, {"id": "two", "moleFraction": 0.3},
                        {"id": "three", "moleFraction": 0.6}])";  // 0.3 isn't 3 * 0.1 to the last digit
    const auto lines = Solve(document, {"--cstr", "--volume", "1"});
    ASSERT_EQ(lines.size(), 2U);
    const double rest = std::sqrt(0.1 / 3e30) * volumeFlow * 0.7;  // 1e30 F * 3 F / (0.7 v)^2 = 0.1
    EXPECT_NEAR(lines[1][firstFlow] / rest, 1, 1e-9);
    EXPECT_NEAR(lines[1][firstFlow + 1] / (3 * rest), 1, 1e-9);
}

/// Methanol comes apart the faster the more hydrogen it has made, from a trace of it on.
TEST(StirredTank, FollowsAReactionThatFeedsItself) {
    packagetext::Json document = ReadExample("methanol-synthesis.json");
    const std::pair<const char*, double> feed[] = {{"Hydrogen", 5e-5},         {"Nitrogen", 0.28845},
                                                   {"Carbon monoxide", 8e-12}, {"Carbon dioxide", 0.5257},
                                                   {"Methanol", 0.0844},       {"Water", 0.1014}};
    for (packagetext::Json& compound : document["material"]["compounds"]) {
        for (const auto& [id, fraction] : feed) {
            if (compound["id"] == id) compound["moleFraction"] = fraction;
        }
    }
    const CTemporaryFile file("methanol.json", document.dump());
    const auto numbers =
        LastOf(SolveFile(file.Path(), {"--cstr", "--key", "Hydrogen", "--temperature", "535.1", "--pressure", "1.4e8",
                                       "--flow", "1.374e-6", "--catalyst", "1.65e8"}));
    ASSERT_GT(numbers.size(), conversion);
    EXPECT_LT(numbers[conversion], -100);
}

TEST(StirredTank, AddsReactionsOfOneEquation) {
    GasDocument document;
    document.type = R"(Kinetic", "Kinetic)";
    document.rateBasis = R"(Homogeneous", "Homogeneous)";
    document.basis = R"(Fugacity", "Fugacity)";
    document.rate = R"-(0.2*C(one)", "0.3*C(one))-";
    document.constant = "null, null";
    document.heat = R"(-1000", "-2000)";
    document.coefficients = R"([-1, 1], "stoichiometry[S]": [-1, 1])";
    document.isPairOfReactions = true;
    const double damkoehler = 0.5 * 0.3 / volumeFlow;
    EXPECT_NEAR(Solve(document, {"--cstr", "--volume", "0.3"})[1][conversion], damkoehler / (1 + damkoehler), 1e-9);
    const auto lines = Solve(document, {"--cstr", "--volume", "0.3", "--adiabatic"});
    EXPECT_NEAR(lines[1][temperature], 500 + 1600.0 / 30 * lines[1][conversion], 1e-6);  // 0.4 * 1000 + 0.6 * 2000
}

TEST(StirredTank, SaysWhenThereIsNoSteadyState) {
    GasDocument document;
    document.rate = "1000";  // whether or not there is something left
    EXPECT_EQ(FailureOf(document, {"--cstr", "--volume", "1"}),
              "rekasim: no steady state of the tank is found within 50000 calculations of the rates: try a smaller "
              "tank\n");
}

}  // namespace

}  // namespace rekasim
