// SPDX-License-Identifier: MIT
// What no reactor is calculated for, although each part of it is sound: one line on standard error, and the exit
// status.

#include <gtest/gtest.h>

#include "DocumentFixture.h"

namespace rekasim {

namespace {

struct RefusalCase {
    const char* name;
    const char* patch;  // of two kinetic reactions in a gas
    std::vector<std::string> more;
    const char* line;
};
const RefusalCase refusalCases[] = {
    {"TwoPhases",
     R"({"package": {"reactionPhase": ["Vapor", "Liquid"]}})",
     {},
     "the reactions run in different phases, and a reactor here has one"},
    {"TwoBases",
     R"({"package": {"reactionRateBasis": ["Homogeneous", "Heterogeneous"]}})",
     {},
     "some rates count per volume and others per mass of catalyst"},
    {"PictureOfAnotherKind", "{}", {"--plot", "profile.pdf"}, "--plot: the name of the file must end in .svg or .png"},
    {"PictureWithoutAName", "{}", {"--plot", ".gif"}, "--plot: the name of the file must end in .svg or .png"},
};
class ReactorRefusals : public testing::TestWithParam<RefusalCase> {};

TEST_P(ReactorRefusals, AreToldInOneLine) {
    packagetext::Json document = ReadExample("toluene-hydrodealkylation.json");
    document.merge_patch(packagetext::Json::parse(GetParam().patch));
    const CTemporaryFile file("changed.json", document.dump());
    std::vector<std::string> arguments = {"reactor", "--document", file.Path(), "--pfr", "--volume", "0.1"};
    arguments.insert(arguments.end(), GetParam().more.begin(), GetParam().more.end());
    const RunResult result = RunProgram(arguments);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, std::string("rekasim: ") + GetParam().line + "\n");
}
INSTANTIATE_TEST_SUITE_P(Table, ReactorRefusals, testing::ValuesIn(refusalCases),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace

}  // namespace rekasim
