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

/// The table of a document, which is called FILE where it is told of.
RunResult RunText(const std::string& text, const std::vector<std::string>& more = {}) {
    const CTemporaryFile file("changed.json", text);
    std::vector<std::string> arguments = {"table", "--document", file.Path()};
    arguments.insert(arguments.end(), more.begin(), more.end());
    RunResult result = RunProgram(arguments);
    for (std::size_t at = result.err.find(file.Path()); at != std::string::npos; at = result.err.find(file.Path())) {
        result.err.replace(at, file.Path().size(), "FILE");
    }
    return result;
}

/// The table of an example after a change to its document.
RunResult RunChanged(const std::string& name, const char* patch, const std::vector<std::string>& more = {}) {
    packagetext::Json document = ReadExample(name);
    document.merge_patch(packagetext::Json::parse(patch));
    return RunText(document.dump(), more);
}

struct FailureCase {
    const char* name;
    const char* document;
    const char* patch;
    const char* line;
};
const FailureCase failureCases[] = {
    {"NoPackage", "ammonia-synthesis.json", R"({"package": null})",
     "FILE: line 1: package: the member is missing or no object"},
    {"BagMember", "ammonia-synthesis.json", R"({"package": {"Name": 3}})",
     "FILE: line 1: package.Name: a text, a list of texts or null, or a list of numbers is expected"},
    {"NoMaterial", "ammonia-synthesis.json", R"({"material": null})", "FILE: line 1: material: the member is missing"},
    {"MaterialMember", "ammonia-synthesis.json", R"({"material": {"pressure": -1}})",
     "FILE: line 1: material.pressure: a number above 0 is expected"},
    {"LoadRefused", "ammonia-synthesis.json", R"({"package": {"compoundCharge": [0]}})",
     "FILE: line 1: package.compoundCharge: array size mismatch"},
    {"MissingKey", "ammonia-synthesis.json", R"({"package": {"reactionPhase": null}})",
     "FILE: line 1: package.reactionPhase: the member is missing"},
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

TEST(LoadReports, AreFailuresOfTheirDocument) {
    const char patch[] = R"({"package": {"reactionHeatEquation": ["1+"], "reactionEquilibriumBasis": ["fugacity"]}})";
    const RunResult result = RunChanged("water-gas-shift.json", patch);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err,
              "rekasim: FILE: line 1: package.reactionEquilibriumBasis[0]: invalid value 'fugacity'\n"
              "rekasim: FILE: line 1: package.reactionHeatEquation[0]: error parsing expression for reaction shift: "
              "syntax error, unexpected $end\n");
}

TEST(LoadReports, AreToldWithTheirInterfaceWhenALoadFailsVerbosely) {
    const RunResult result =
        RunChanged("water-gas-shift.json", R"({"package": {"compoundCharge": [0]}})", {"--verbose"});
    EXPECT_EQ(result.err,
              "rekasim: FILE: line 1: package.compoundCharge: array size mismatch\n"
              "rekasim: scope Load, interface IPersistPropertyBag\n");
}

TEST(LoadReports, EndAfterTwenty) {
    packagetext::Json document = ReadExample("water-gas-shift.json");
    for (int i = 0; i < 30; ++i) document["package"]["unknown" + std::to_string(i)] = "";
    const RunResult result = RunText(document.dump());
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 20);
    EXPECT_EQ(result.err.substr(result.err.size() - 92),
              "rekasim: FILE: line 1: package.unknown19: a package has no such member (and 10 more faults)\n");
}

/// A typing error in the document of the hydrodealkylation.
struct SlipCase {
    const char* name;
    const char* right;
    const char* wrong;
    std::vector<const char*> lines;  // behind "rekasim: FILE: "
};
const SlipCase slipCases[] = {
    {"RateBasis",
     R"("Homogeneous", "Homogeneous")",
     R"("Homogeneous", "Homogenous")",
     {"line 20: package.reactionRateBasis[1]: invalid value 'Homogenous'"}},
    {"BothTypes",
     R"("Kinetic", "Kinetic")",
     R"("Kinetik", "Kinetik")",
     {"line 19: package.reactionType[0]: invalid value 'Kinetik'",
      "line 19: package.reactionType[1]: invalid value 'Kinetik'"}},
    {"EquilibriumBasis",
     R"("Fugacity", "Fugacity")",
     R"("Fugacity", "fugacity")",
     {"line 25: package.reactionEquilibriumBasis[1]: invalid value 'fugacity'"}},
    {"ThermoVersion",
     R"("thermoVersion": "1.0")",
     R"("thermoVersion": "1.2")",
     {"line 30: package.thermoVersion: invalid value '1.2'"}},
    {"Expression",
     "F(benzene)/6894",
     "F(benzol)/6894",
     {"line 23: package.reactionRateEquation[1]: error parsing expression for reaction diphenyl: unknown token "
      "BENZOL syntax error, unexpected $end, expecting COMPONENT"}},
    {"NameOfCoefficients",
     "stoichiometry[diphenyl]",
     "stoichiometry[diphenil]",
     {"line 29: package.stoichiometry[diphenil]: there is no such reaction",
      "line 8: package.stoichiometry[diphenyl]: the member is missing"}},
    {"NumberOfCoefficients",
     "[0, 1, -2, 0, 1]",
     "[0, 1, -2, 0]",
     {"line 29: package.stoichiometry[diphenyl]: array size mismatch"}},
    {"NameOfAMember",
     R"("thermoVersion")",
     R"("thermoversion")",
     {"line 30: package.thermoversion: a package has no such member"}},
    {"NameOfANeededMember",
     R"("compoundCAS")",
     R"("compoundCas")",
     {"line 8: package.compoundCAS: the member is missing"}},
    {"MemberTwice",
     R"("thermoVersion": "1.0")",
     "\"thermoVersion\": \"1.0\",\n\"Name\": \"HDA\"",
     {"line 31: package.Name: the member is there twice in one object"}},
    {"TextForNumbers",
     "[0, 0, 0, 0, 0]",
     R"(["0", "0", "0", "0", "0"])",
     {"line 16: package.compoundCharge: Expected an array of type double precision"}},
    {"TextAmongNumbers",
     "[0, 0, 0, 0, 0]",
     R"([0, 0, "0", 0, 0])",
     {"line 16: package.compoundCharge: a text, a list of texts or null, or a list of numbers is expected"}},
    {"ListForText",
     R"("thermoVersion": "1.0")",
     R"("thermoVersion": ["1.0"])",
     {"line 30: package.thermoVersion: unexpected data type"}},
    {"ReactionTwice",
     R"(["dealkylation", "diphenyl"])",
     R"(["dealkylation", "Dealkylation"])",
     {"line 29: package.stoichiometry[diphenyl]: there is no such reaction",
      "line 8: package.stoichiometry[Dealkylation]: the member is missing",
      "line 17: package.reactionID[1]: \"Dealkylation\" is there twice"}},
    {"MaterialMember",
     R"("temperature": 922)",
     R"("temprature": 922)",
     {"line 35: material.temprature: rekasim knows no such member"}},
    {"MaterialCompoundTwice",
     R"("id": "CH4")",
     R"("id": "h2")",
     {"line 39: material.compounds[1].id: the compound is there twice"}},
};
void PrintTo(const SlipCase& row, std::ostream* stream) {
    *stream << row.name;
}

class Slips : public testing::TestWithParam<SlipCase> {};

TEST_P(Slips, AreToldWithTheirLine) {
    std::string text = ReadExampleText("toluene-hydrodealkylation.json");
    const std::size_t at = text.find(GetParam().right);
    ASSERT_NE(at, std::string::npos);
    text.replace(at, std::string(GetParam().right).size(), GetParam().wrong);
    std::string expected;
    for (const char* const line : GetParam().lines) expected += std::string("rekasim: FILE: ") + line + "\n";
    const RunResult result = RunText(text);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, expected);
}
INSTANTIATE_TEST_SUITE_P(Table, Slips, testing::ValuesIn(slipCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Slips, AreNotFoundInGoodDocuments) {
    for (const std::string& name : ExampleNames()) {
        const CTemporaryFile saved("saved.json", "");
        EXPECT_EQ(RunProgram({"save", "--document", ExamplePath(name), "--to", saved.Path()}).err, "") << name;
        for (const std::string& path : {ExamplePath(name), saved.Path()}) {
            const RunResult result = RunProgram({"table", "--document", path});
            EXPECT_EQ(result.status, 0) << path;
            EXPECT_EQ(result.err, "") << path;
        }
    }
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
