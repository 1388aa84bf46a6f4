// SPDX-License-Identifier: MIT
// Failures of rekasim: one line on standard error, and the exit status.

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <streambuf>

#include "DocumentFixture.h"
#include "RunRekasim.h"

namespace rekasim {

namespace {

/// The table of an example after a change to its document.
RunResult RunChanged(const std::string& name, const char* patch, const std::vector<std::string>& more = {}) {
    packagetext::Json document = ReadExample(name);
    document.merge_patch(packagetext::Json::parse(patch));
    const CTemporaryFile file("changed.json", document.dump());
    std::vector<std::string> arguments = {"table", "--document", file.Path()};
    arguments.insert(arguments.end(), more.begin(), more.end());
    RunResult result = RunProgram(arguments);
    const std::size_t path = result.err.find(file.Path());
    if (path != std::string::npos) result.err.replace(path, file.Path().size(), "FILE");
    return result;
}

struct FailureCase {
    const char* name;
    const char* document;
    const char* patch;
    const char* line;
};
const FailureCase failureCases[] = {
    {"NoPackage", "ammonia-synthesis.json", R"({"package": null})",
     "FILE: package: the member is missing or no object"},
    {"BagMember", "ammonia-synthesis.json", R"({"package": {"Name": 3}})",
     "FILE: package.Name: a text, a list of texts or null, or a list of numbers is expected"},
    {"NoMaterial", "ammonia-synthesis.json", R"({"material": null})", "FILE: material: the member is missing"},
    {"MaterialMember", "ammonia-synthesis.json", R"({"material": {"pressure": -1}})",
     "FILE: material.pressure: a number above 0 is expected"},
    {"LoadRefused", "ammonia-synthesis.json", R"({"package": {"compoundCharge": [0]}})",
     "the package can't be loaded: compoundCharge: array size mismatch"},
    {"MissingKey", "ammonia-synthesis.json", R"({"package": {"reactionPhase": null}})",
     "the package can't be loaded: a member of the package is missing"},
    {"WrongPhase", "water-gas-shift.json", R"({"package": {"reactionPhase": ["Liquid"]}})",
     "Failed to obtain temperature for phase Liquid: the material has no phase Liquid, it is Vapor"},
    {"NoExpression", "ammonia-synthesis.json", R"({"package": {"reactionEquilibriumConstantEquation": [null]}})",
     "equilibrium constant expression not defined for requested reaction"},
    {"DivisionByZero", "water-gas-shift.json", R"-({"package": {"reactionEquilibriumConstantEquation": ["1/(T-T)"]}})-",
     "Failed to calculate ChemicalEquilibriumConstant for reaction shift: division by zero"},
    {"CompoundMissing", "water-gas-shift.json", R"({"material": {"compounds": [{"id": "CO", "moleFraction": 1}]}})",
     "unable to resolve reaction compound carbon monoxide"},
};
class Failures : public testing::TestWithParam<FailureCase> {};

TEST_P(Failures, AreToldInOneLine) {
    const RunResult result = RunChanged(GetParam().document, GetParam().patch);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, std::string("rekasim: ") + GetParam().line + "\n");
}
INSTANTIATE_TEST_SUITE_P(Table, Failures, testing::ValuesIn(failureCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Failure, OfAMissingFile) {
    for (const char* command : {"table", "show"}) {
        const RunResult result = RunProgram({command, "--document", "no-such-file.json"});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.err, "rekasim: no-such-file.json: the file can't be opened\n");
    }
}

TEST(Failure, OfMalformedJson) {
    const CTemporaryFile file("malformed.json", "{\n  \"package\": {,}\n}\n");
    const RunResult result = RunProgram({"show", "--document", file.Path()});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "rekasim: " + file.Path() +
                              ": line 2, column 15: syntax error while parsing object key - unexpected ','; expected "
                              "string literal\n");
}

TEST(Failure, OfAnOutputThatCannotBeWritten) {
    const RunResult result =
        RunProgram({"save", "--document", ExamplePath("water-gas-shift.json"), "--to", "no-such-folder/copy.json"});
    EXPECT_EQ(result.status, 1);
    const std::string start = "rekasim: no-such-folder/copy.json: the file can't be written: ";
    EXPECT_EQ(result.err.substr(0, start.size()), start);
    EXPECT_EQ(result.err.find('\n'), result.err.size() - 1);
}

TEST(Failure, TellsScopeAndInterfaceWhenVerbose) {
    const RunResult result = RunChanged(
        "water-gas-shift.json", R"({"material": {"compounds": [{"id": "CO", "moleFraction": 1}]}})", {"--verbose"});
    EXPECT_EQ(result.err,
              "rekasim: unable to resolve reaction compound carbon monoxide\n"
              "rekasim: scope SetMaterial, interface ICapeThermoContext\n");
}

TEST(Failure, OfAHeatThatCannotBeCalculated) {
    const RunResult result =
        RunChanged("water-gas-shift.json", R"-({"package": {"reactionHeatEquation": ["1/(T-700)"]}})-");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "rekasim: Failed to calculate EnthalpyOfReaction for reaction shift: division by zero\n");
}

TEST(LoadReports, AreCountedAndShownWhenVerbose) {
    const char patch[] = R"({"package": {"reactionHeatEquation": ["1+"], "reactionEquilibriumBasis": ["fugacity"]}})";
    const RunResult quiet = RunChanged("water-gas-shift.json", patch);
    EXPECT_EQ(quiet.status, 0);
    EXPECT_EQ(quiet.err, "rekasim: the package loaded with reported faults (2), which --verbose shows\n");
    const RunResult verbose = RunChanged("water-gas-shift.json", patch, {"--verbose"});
    EXPECT_EQ(verbose.status, 0);
    EXPECT_EQ(
        verbose.err,
        "rekasim: load report: reactionEquilibriumBasis: invalid value 'fugacity'\n"
        "rekasim: load report: reactionHeatEquation: error parsing expression for reaction shift: syntax error, "
        "unexpected $end\n"
        "rekasim: no heat of reaction: heat of reaction is not defined for reaction \"shift\". Cannot calculation "
        "property EnthalpyOfReaction\n");
}

TEST(LoadReports, AreToldBehindAFailureThatTheyCause) {
    const RunResult result =
        RunChanged("dinitrogen-pentoxide-decomposition.json", R"-({"package": {"reactionRateEquation": ["EXP(T"]}})-");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(
        result.err,
        "rekasim: rate expression not defined for requested reaction (the package loaded with a fault: "
        "reactionRateEquation: error parsing expression for reaction decomposition: syntax error, unexpected $end, "
        "expecting ')' or ',')\n");
}

TEST(LoadReports, AreShownWhenAFailedLoadIsVerbose) {
    const RunResult result =
        RunChanged("water-gas-shift.json", R"({"package": {"compoundCharge": [0]}})", {"--verbose"});
    EXPECT_EQ(result.err,
              "rekasim: load report: compoundCharge: array size mismatch\n"
              "rekasim: the package can't be loaded: compoundCharge: array size mismatch\n"
              "rekasim: scope Load, interface IPersistPropertyBag\n");
}

/// Takes everything and can't bring it to the disk, as a buffered file on a full one.
class CFullDisk : public std::streambuf {
protected:
    int_type overflow(int_type character) override {
        holdsSomething = true;
        return traits_type::not_eof(character);
    }
    int sync() override { return holdsSomething ? -1 : 0; }

private:
    bool holdsSomething = false;
};

struct OutputStatus {
    int status = 0;
    std::string err;
};
OutputStatus RunOnAFullDisk(const std::vector<std::string>& arguments) {
    CFullDisk disk;
    std::ostream out(&disk);
    std::ostringstream err;
    const int status = RunRekasim(arguments, out, err);
    return {status, err.str()};
}

TEST(Failure, OfAnOutputOnAFullDisk) {
    const std::string shift = ExamplePath("water-gas-shift.json");
    const std::vector<std::string> commands[] = {{"show", "--document", shift},
                                                 {"table", "--document", shift},
                                                 {"reactor", "--equilibrium", "--document", shift},
                                                 {"reactor", "--equilibrium", "--csv", "--document", shift},
                                                 {"--help"},
                                                 {"table", "--help"}};
    for (const std::vector<std::string>& arguments : commands) {
        const OutputStatus result = RunOnAFullDisk(arguments);
        EXPECT_EQ(result.status, 1) << arguments.front();
        EXPECT_EQ(result.err, "rekasim: the output can't be written\n") << arguments.front();
    }
    CTemporaryFile copy("copy.json", "");
    EXPECT_EQ(RunOnAFullDisk({"save", "--document", shift, "--to", copy.Path()}).status, 0);  // it prints nothing
}

struct MisuseCase {
    const char* name;
    std::vector<std::string> arguments;
    int status;
};
const MisuseCase misuseCases[] = {
    {"NoCommand", {}, 2},
    {"UnknownCommand", {"plot"}, 2},
    {"NoDocument", {"table"}, 2},
    {"NoStep", {"table", "--document", "x.json", "--from", "300", "--to", "400"}, 2},
    {"NoOutput", {"save", "--document", "x.json"}, 2},
    {"CommaNumber", {"table", "--document", "x.json", "--from", "300,5", "--to", "400", "--step", "10"}, 1},
    {"Downwards", {"table", "--document", "x.json", "--from", "400", "--to", "300", "--step", "10"}, 1},
};
class Misuses : public testing::TestWithParam<MisuseCase> {};

TEST_P(Misuses, AreToldInOneLine) {
    const RunResult result = RunProgram(GetParam().arguments);
    EXPECT_EQ(result.status, GetParam().status);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err.rfind("rekasim: ", 0), 0U) << result.err;
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
}
INSTANTIATE_TEST_SUITE_P(Table, Misuses, testing::ValuesIn(misuseCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Misuse, OfANumberNamesTheOption) {
    const RunResult result =
        RunProgram({"table", "--document", "x.json", "--from", "300,5", "--to", "400", "--step", "10"});
    EXPECT_EQ(result.err, "rekasim: --from: \"300,5\" is not a number\n");
}

}  // namespace

}  // namespace rekasim
