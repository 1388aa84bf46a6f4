// SPDX-License-Identifier: MIT
// The program runs whole, from a file on the disk to the text that it prints, so that a reactor is tested with all that
// stands between it and its user.

#include "ReactorFixture.h"

#include <gtest/gtest.h>

#include <sstream>

#include "FormatNumber.h"

namespace rekasim {

namespace {

RunResult RunReactor(const std::string& path, std::vector<std::string> arguments,
                     const std::vector<std::string>& options) {
    arguments.insert(arguments.end(), {"--document", path});
    arguments.insert(arguments.end(), options.begin(), options.end());
    return RunProgram(arguments);
}

}  // namespace

std::string GasDocument::Text() const {
    const bool isPair = compounds.find("three") == std::string::npos;
    const std::string nulls = isPair ? "[null, null]" : "[null, null, null]";
    const std::string zeros = isPair ? "[0, 0]" : "[0, 0, 0]";
    const auto quoted = [](const std::string& text) { return text.starts_with("null") ? text : "\"" + text + "\""; };
    return R"({"package": {"Name": "Gas", "Description": "", "compoundId": )" + compounds + R"(, "compoundName": )" +
           compounds + R"(, "compoundCAS": )" + nulls + R"(, "compoundFormula": )" + nulls +
           R"(, "compoundMolecularWeight": )" + zeros + R"(, "compoundCharge": )" + zeros +
           (isPairOfReactions ? R"(, "reactionID": ["R", "S"], "reactionPhase": ["Vapor", "Vapor"],)"
                              : R"(, "reactionID": ["R"], "reactionPhase": ["Vapor"],)") +
           R"( "reactionType": [")" + type + R"("], "reactionRateBasis": [")" + rateBasis +
           R"("], "reactionRateEquation": [)" + quoted(rate) + R"(], "reactionEquilibriumBasis": [")" + basis +
           R"("], "reactionEquilibriumConstantEquation": [)" + quoted(constant) + R"(], "reactionHeatEquation": [)" +
           quoted(heat) + R"(], "stoichiometry[R]": )" + coefficients +
           R"(, "thermoVersion": "1.1"}, "material": {"phase": "Vapor", "model": "ideal gas",)" +
           R"("temperature": 500, "pressure": 100000, "compounds": )" + feed + "}}";
}

std::vector<std::vector<double>> LinesOf(const std::string& csv) {
    std::vector<std::vector<double>> lines;
    std::istringstream text(csv);
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

std::vector<double> LastOf(const std::vector<std::vector<double>>& lines) {
    EXPECT_FALSE(lines.empty());
    return lines.empty() ? std::vector<double>() : lines.back();
}

std::vector<std::vector<double>> SolveFile(const std::string& path, const std::vector<std::string>& options) {
    const RunResult result = RunReactor(path, {"reactor", "--csv"}, options);
    EXPECT_EQ(result.status, 0) << result.err;
    return LinesOf(result.out);
}

std::vector<std::vector<double>> Solve(const GasDocument& document, const std::vector<std::string>& options) {
    const CTemporaryFile file("gas.json", document.Text());
    return SolveFile(file.Path(), options);
}

std::string FailureOf(const GasDocument& document, const std::vector<std::string>& options) {
    const CTemporaryFile file("gas.json", document.Text());
    const RunResult result = RunReactor(file.Path(), {"reactor"}, options);
    EXPECT_NE(result.status, 0);
    EXPECT_EQ(result.out, "");
    return result.err;
}

}  // namespace rekasim
