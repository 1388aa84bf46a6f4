// SPDX-License-Identifier: MIT
// The reactors of rekasim against closed forms and balances made by hand.

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "DocumentFixture.h"
#include "FormatNumber.h"

namespace rekasim {

namespace {

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

    std::string Text() const {
        const bool isPair = compounds.find("three") == std::string::npos;
        const std::string nulls = isPair ? "[null, null]" : "[null, null, null]";
        const std::string zeros = isPair ? "[0, 0]" : "[0, 0, 0]";
        const auto quoted = [](const std::string& text) {
            return text.starts_with("null") ? text : "\"" + text + "\"";
        };
        return R"({"package": {"Name": "Gas", "Description": "", "compoundId": )" + compounds +
               R"(, "compoundName": )" + compounds + R"(, "compoundCAS": )" + nulls + R"(, "compoundFormula": )" +
               nulls + R"(, "compoundMolecularWeight": )" + zeros + R"(, "compoundCharge": )" + zeros +
               (isPairOfReactions ? R"(, "reactionID": ["R", "S"], "reactionPhase": ["Vapor", "Vapor"],)"
                                  : R"(, "reactionID": ["R"], "reactionPhase": ["Vapor"],)") +
               R"( "reactionType": [")" + type + R"("], "reactionRateBasis": [")" + rateBasis +
               R"("], "reactionRateEquation": [)" + quoted(rate) + R"(], "reactionEquilibriumBasis": [")" + basis +
               R"("], "reactionEquilibriumConstantEquation": [)" + quoted(constant) +
               R"(], "reactionHeatEquation": [)" + quoted(heat) + R"(], "stoichiometry[R]": )" + coefficients +
               R"(, "thermoVersion": "1.1"}, "material": {"phase": "Vapor", "model": "ideal gas",)" +
               R"("temperature": 500, "pressure": 100000, "compounds": )" + feed + "}}";
    }
};

/// The lines of a reactor's values, without the header.
std::vector<std::vector<double>> Solve(const GasDocument& document, std::vector<std::string> options) {
    const CTemporaryFile file("gas.json", document.Text());
    std::vector<std::string> arguments = {"reactor", "--csv", "--document", file.Path()};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const RunResult result = RunProgram(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    std::vector<std::vector<double>> lines;
    std::istringstream text(result.out);
    std::string line;
    std::getline(text, line);
    while (std::getline(text, line)) {
        std::istringstream fields(line);
        std::vector<double>& numbers = lines.emplace_back();
        for (std::string field; std::getline(fields, field, ',');) {
            double number = 0;
            EXPECT_TRUE(ParseNumber(field, number)) << line;
            numbers.push_back(number);
        }
    }
    return lines;
}

std::string FailureOf(const GasDocument& document, std::vector<std::string> options) {
    const CTemporaryFile file("gas.json", document.Text());
    std::vector<std::string> arguments = {"reactor", "--document", file.Path()};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const RunResult result = RunProgram(arguments);
    EXPECT_NE(result.status, 0);
    EXPECT_EQ(result.out, "");
    return result.err;
}

constexpr std::size_t position = 0;
constexpr std::size_t temperature = 1;
constexpr std::size_t conversion = 2;
constexpr std::size_t firstFlow = 3;

/// Volume flow of 1 mol/s of the gas, m3/s.
constexpr double volumeFlow = 8.314462618 * 500 / 1e5;

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
    std::istringstream text(result.out);
    std::string line;
    std::getline(text, line);
    EXPECT_EQ(line,
              "volume_m3,temperature_K,conversion_C7H8,flow_H2_mol_per_s,flow_CH4_mol_per_s,flow_C6H6_mol_per_s,"
              "flow_C7H8_mol_per_s,flow_C12H10_mol_per_s");
    double carbonBefore = 0;
    double hydrogenBefore = 0;
    int count = 0;
    while (std::getline(text, line)) {
        std::vector<double> numbers;
        std::istringstream fields(line);
        for (std::string field; std::getline(fields, field, ',');) {
            double number = 0;
            ASSERT_TRUE(ParseNumber(field, number));
            numbers.push_back(number);
        }
        ASSERT_EQ(numbers.size(), 8U);
        const double carbon = numbers[4] + 6 * numbers[5] + 7 * numbers[6] + 12 * numbers[7];
        const double hydrogen = 2 * numbers[3] + 4 * numbers[4] + 6 * numbers[5] + 8 * numbers[6] + 10 * numbers[7];
        if (count++ == 0) {
            carbonBefore = carbon;
            hydrogenBefore = hydrogen;
        }
        EXPECT_NEAR(carbon / carbonBefore, 1, 1e-9);
        EXPECT_NEAR(hydrogen / hydrogenBefore, 1, 1e-9);
    }
    EXPECT_EQ(count, 21);
}

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
    std::vector<std::string> arguments = {"reactor", "--csv", "--cstr", "--document", file.Path()};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const RunResult result = RunProgram(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    const std::size_t last = result.out.rfind('\n', result.out.size() - 2);
    std::istringstream fields(result.out.substr(last == std::string::npos ? 0 : last + 1));
    std::vector<double> numbers;
    for (std::string field; std::getline(fields, field, ',');) {
        ParseNumber(field.substr(0, field.find('\n')), numbers.emplace_back());
    }
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
    const RunResult result =
        RunProgram({"reactor", "--csv", "--cstr", "--document", file.Path(), "--key", "Hydrogen", "--temperature",
                    "535.1", "--pressure", "1.4e8", "--flow", "1.374e-6", "--catalyst", "1.65e8"});
    EXPECT_EQ(result.status, 0) << result.err;
    const std::string line = result.out.substr(result.out.rfind('\n', result.out.size() - 2) + 1);
    std::istringstream fields(line);
    std::vector<double> numbers;
    for (std::string field; std::getline(fields, field, ',');) ParseNumber(field, numbers.emplace_back());
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

TEST(ReactionEquilibrium, OfTheShiftIsTheRootOfItsSquare) {
    const RunResult result = RunProgram(
        {"reactor", "--csv", "--document", ExamplePath("water-gas-shift.json"), "--equilibrium", "--key", "co"});
    ASSERT_EQ(result.status, 0) << result.err;
    const std::string last = result.out.substr(result.out.rfind('\n', result.out.size() - 2) + 1);
    std::istringstream fields(last);
    std::vector<double> numbers;
    for (std::string field; std::getline(fields, field, ',');) {
        double number = 0;
        ASSERT_TRUE(ParseNumber(field.substr(0, field.find('\n')), number));
        numbers.push_back(number);
    }
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

TEST(ReactorCommand, SaysWhatIsMissing) {
    EXPECT_NE(FailureOf({}, {"--pfr"}).find("--volume gives it in m3"), std::string::npos);
    EXPECT_NE(FailureOf({}, {"--equilibrium"}).find("no equilibrium reaction"), std::string::npos);
    EXPECT_NE(FailureOf({}, {"--pfr", "--volume", "1", "--catalyst", "1"}).find("--catalyst has no use"),
              std::string::npos);
    EXPECT_NE(FailureOf({}, {"--pfr", "--volume", "1", "--key", "nobody"}).find("the feed has no nobody"),
              std::string::npos);
    EXPECT_NE(FailureOf({}, {"--pfr", "--volume", "-1"}).find("is not a number above 0"), std::string::npos);
    EXPECT_NE(FailureOf({}, {"--pfr", "--volume", "1", "--points", "1"}).find("from 2 to 100000"), std::string::npos);
    EXPECT_NE(FailureOf({}, {"--cstr", "--volume", "1", "--plot", "x.svg"}).find("--pfr"), std::string::npos);
    EXPECT_NE(FailureOf({}, {"--cstr", "--pfr", "--volume", "1"}).find("rekasim: "), std::string::npos);
    EXPECT_NE(FailureOf({}, {"--volume", "1"}).find("rekasim: "), std::string::npos);
    GasDocument cold;
    cold.feed = R"([{"id": "one", "moleFraction": 1}, {"id": "two", "moleFraction": 0}])";
    cold.heat = "-1";
    EXPECT_NE(FailureOf(cold, {"--pfr", "--volume", "1", "--adiabatic"}).find("heatCapacity of one"),
              std::string::npos);
    EXPECT_NE(FailureOf({}, {"--pfr", "--volume", "1", "--adiabatic"}).find("rekasim: "), std::string::npos);
}

TEST(ReactorCommand, NoticesReactionsThatLoseElements) {
    GasDocument document;
    document.feed =
        R"([{"id": "one", "moleFraction": 1, "formula": "H2"}, {"id": "two", "moleFraction": 0, "formula": "H3"}])";
    EXPECT_NE(FailureOf(document, {"--pfr", "--volume", "1"}).find("don't conserve H"), std::string::npos);
}

TEST(PlugFlowReactor, RunsOutOfWhatReacts) {
    GasDocument document;
    document.rate = "1E30*C(one)";
    const auto lines = Solve(document, {"--pfr", "--volume", "1"});
    EXPECT_EQ(lines.back()[firstFlow], 0);
    EXPECT_NEAR(lines.back()[conversion], 1, 1e-9);
}

TEST(ReactorCommand, EndsWhereTheProfileIsTooSteep) {
    GasDocument document;
    document.rate = "1E12*(C(one)-C(two))";  // at equilibrium after a nanolitre
    EXPECT_NE(FailureOf(document, {"--pfr", "--volume", "1"}).find("too steep"), std::string::npos);
}

TEST(ReactorCommand, PrintsATable) {
    const CTemporaryFile file("gas.json", GasDocument().Text());
    const RunResult result =
        RunProgram({"reactor", "--document", file.Path(), "--pfr", "--volume", "0.1", "--points", "2"});
    EXPECT_EQ(result.out,
              "  volume        T  conversion       one       two\n"
              "      m3        K         one     mol/s     mol/s\n"
              "  ------  -------  ----------  --------  --------\n"
              "       0  500.000           0   1.00000         0\n"
              "     0.1  500.000    0.699625  0.300375  0.699625\n");
    // exp(-0.5 * 0.1 / 0.04157231) = 0.300375
}

TEST(ReactorCommand, DrawsWithGnuplotOrSaysThatItIsNotThere) {
    const CTemporaryFile file("gas.json", GasDocument().Text());
    const CTemporaryFile plot("profile.svg", "");
    const RunResult result =
        RunProgram({"reactor", "--document", file.Path(), "--pfr", "--volume", "0.1", "--plot", plot.Path()});
    if (result.status == 0) {
        EXPECT_NE(plot.Content().find("</svg>"), std::string::npos);
    } else {
        EXPECT_NE(result.err.find("gnuplot, which draws the plot, isn't there"), std::string::npos);
        EXPECT_EQ(result.out, "");
    }
}

}  // namespace

}  // namespace rekasim
