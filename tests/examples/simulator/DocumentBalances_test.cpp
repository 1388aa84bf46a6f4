// SPDX-License-Identifier: MIT
// Every document of the examples is sound: elements and masses balance, CAS numbers are well formed, the source is
// told, and it calculates.

#include <gtest/gtest.h>

#include <cctype>
#include <cmath>
#include <map>

#include "DocumentFixture.h"

namespace rekasim {

namespace {

/// Adds the atoms of a flat formula such as "CH3COOH", each times `factor`.
void AddAtoms(const std::string& formula, double factor, std::map<std::string, double>& atoms) {
    for (std::size_t i = 0; i < formula.size();) {
        std::string symbol(1, formula[i++]);
        while (i < formula.size() && std::islower(static_cast<unsigned char>(formula[i]))) symbol += formula[i++];
        std::string digits;
        while (i < formula.size() && std::isdigit(static_cast<unsigned char>(formula[i]))) digits += formula[i++];
        atoms[symbol] += factor * (digits.empty() ? 1 : std::stoi(digits));
    }
}

/// The last digit of a CAS number is the sum of the others, each times its place counted from the right, modulo 10.
bool IsCasNumber(const std::string& text) {
    std::string digits;
    for (const char character : text) {
        if (character != '-') digits += character;
    }
    int sum = 0;
    const std::size_t last = digits.size() - 1;
    for (std::size_t i = 0; i < last; ++i) sum += (digits[i] - '0') * static_cast<int>(last - i);
    return digits.size() > 4 && text[text.size() - 2] == '-' && sum % 10 == digits[last] - '0';
}

class Documents : public testing::TestWithParam<std::string> {};

TEST_P(Documents, BalanceElementsAndMasses) {
    const packagetext::Json document = ReadExample(GetParam());
    const packagetext::Json& package = document["package"];
    for (const packagetext::Json& id : package["reactionID"]) {
        const packagetext::Json& coefficients = package["stoichiometry[" + id.get<std::string>() + "]"];
        ASSERT_EQ(coefficients.size(), package["compoundFormula"].size());
        std::map<std::string, double> atoms;
        double mass = 0;
        for (std::size_t i = 0; i < coefficients.size(); ++i) {
            const double coefficient = coefficients[i].get<double>();
            AddAtoms(package["compoundFormula"][i].get<std::string>(), coefficient, atoms);
            mass += coefficient * package["compoundMolecularWeight"][i].get<double>();
        }
        for (const auto& [symbol, amount] : atoms) EXPECT_NEAR(amount, 0, 1e-12) << id << ": " << symbol;
        EXPECT_NEAR(mass, 0, 0.005) << id;
    }
}

TEST_P(Documents, HaveCasNumbersWithTheRightLastDigit) {
    const packagetext::Json document = ReadExample(GetParam());
    for (const packagetext::Json& number : document["package"]["compoundCAS"]) {
        EXPECT_TRUE(IsCasNumber(number.get<std::string>())) << number;
    }
    for (const packagetext::Json& compound : document["material"]["compounds"]) {
        EXPECT_TRUE(IsCasNumber(compound["casNumber"].get<std::string>())) << compound;
    }
}

TEST_P(Documents, TellTitleSourceAndValidity) {
    const packagetext::Json document = ReadExample(GetParam());
    EXPECT_FALSE(document.value("title", "").empty());
    EXPECT_FALSE(document.value("validity", "").empty());
    ASSERT_TRUE(document["source"].is_array());
    EXPECT_FALSE(document["source"].empty());
}

TEST_P(Documents, CalculateWithoutAReport) {
    const RunResult result = RunProgram({"table", "--document", ExamplePath(GetParam())});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out.find("nan"), std::string::npos) << result.out;
    EXPECT_EQ(result.out.find("inf"), std::string::npos) << result.out;
}

TEST_P(Documents, ComeBackFromASaveWithTheSameTable) {
    CTemporaryFile copy("copy.json", "");
    const std::string path = ExamplePath(GetParam());
    ASSERT_EQ(RunProgram({"save", "--document", path, "--to", copy.Path()}).status, 0);
    for (const char* command : {"table", "show"}) {
        const RunResult saved = RunProgram({command, "--document", copy.Path()});
        const RunResult original = RunProgram({command, "--document", path});
        EXPECT_EQ(saved.out, original.out);
        EXPECT_EQ(saved.err, original.err);
    }
}

/// Longer expressions are explained part by part in the guide.
constexpr std::size_t longestQuotedExpression = 190;

TEST_P(Documents, StandInTheGuideWithTheirExpressions) {
    const std::string guide = ReadGuide();
    EXPECT_NE(guide.find("`" + GetParam() + "`"), std::string::npos);
    const packagetext::Json package = ReadExample(GetParam())["package"];
    for (const char* key : {"reactionRateEquation", "reactionEquilibriumConstantEquation", "reactionHeatEquation"}) {
        for (const packagetext::Json& expression : package[key]) {
            if (expression.is_null() || expression.get<std::string>().size() > longestQuotedExpression) continue;
            EXPECT_NE(guide.find("`" + expression.get<std::string>() + "`"), std::string::npos) << expression;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Examples, Documents, testing::ValuesIn(ExampleNames()), [](const auto& row) {
    std::string name;
    for (const char character : row.param.substr(0, row.param.find('.'))) {
        name += character == '-' ? '_' : character;
    }
    return name;
});

TEST(DocumentSet, UsesBothThermoVersions) {
    std::map<std::string, int> counts;
    for (const std::string& name : ExampleNames()) {
        ++counts[ReadExample(name)["package"]["thermoVersion"].get<std::string>()];
    }
    EXPECT_GE(counts["1.0"], 2);
    EXPECT_GE(counts["1.1"], 2);
    EXPECT_EQ(counts.size(), 2U);
}

}  // namespace

}  // namespace rekasim
