// SPDX-License-Identifier: MIT
// What a person may write wrong in the readable form, and what is said to it.

#include <gtest/gtest.h>

#include <functional>

#include "PackageFile.h"
#include "SampleBlocks.h"

namespace rekatool {

namespace {

Json Good() {
    CStoredBytes block = Head(u"A", 3).U32(1).Wide(u"W").Wide(u"").Wide(u"water").Wide(u"").F64(18).F64(0).U32(1);
    block.Wide(u"R").Wide(u"").U32(1).U32(0).Narrow("T").Narrow("").Narrow("").F64(-1).Add(TemperatureTree());
    block.U8(0).U8(0).U32(0).U32(0);
    PackageFile file;
    EXPECT_TRUE(ReadPackageFile(block.bytes, file));
    return JsonFromFile(file);
}

struct FaultCase {
    const char* name;
    std::function<void(Json&)> change;
    const char* errorText;
};

Json& PackageIn(Json& content) {
    return content["packages"][0];
}
Json& ReactionIn(Json& content) {
    return PackageIn(content)["reactions"][0];
}

const FaultCase faultCases[] = {
    {"NotAnObject", [](Json& j) { j = Json::array(); }, "not what rekatool export writes"},
    {"OtherProgram", [](Json& j) { j["rekatool"] = 2; }, "not what rekatool export writes"},
    {"UnknownForm", [](Json& j) { j["form"] = "x"; }, "form: \"templates\", \"block\" or \"stream\" is expected"},
    {"NoPackages", [](Json& j) { j.erase("packages"); }, "packages: a list is expected"},
    {"TwoInABlock", [](Json& j) { j["packages"].push_back(j["packages"][0]); }, "packages: one package is expected"},
    {"BadRaw",
     [](Json& j) {
         PackageIn(j) = {{"raw", "1"}};
     },
     "packages[0].raw: pairs of hexadecimal digits are expected"},
    {"BadRest", [](Json& j) { j["form"] = "templates", j["rest"] = "xx"; },
     "rest: pairs of hexadecimal digits are expected, in a file of templates"},
    {"BadCount", [](Json& j) { j["form"] = "templates", j["count"] = -1; },
     "count: a number below 0 is expected, in a file of templates without packages"},
    {"CountThatWrapsAround",
     [](Json& j) {
         j["form"] = "templates";
         j["packages"] = Json::array();
         j["count"] = 18446744073709551615U;
     },
     "count: a number below 0 is expected, in a file of templates without packages"},
    {"CountOfCompoundsThatWrapsAround",
     [](Json& j) {
         PackageIn(j)["compounds"] = Json::array();
         PackageIn(j)["compoundCount"] = 18446744073709551615U;
         ReactionIn(j)["stoichiometry"] = Json::array();
         ReactionIn(j)["rateEquation"] = nullptr;
     },
     "packages[0].compoundCount: a whole number from -2147483648 to -1 is expected"},
    {"VersionThatWrapsAround", [](Json& j) { PackageIn(j)["version"] = 18446744069414584323U; },
     "packages[0].version: a whole number from 0 to 4294967295 is expected"},
    {"CountOfABlock", [](Json& j) { j["count"] = -1; },
     "count: a number below 0 is expected, in a file of templates without packages"},
    {"RestOfABlock", [](Json& j) { j["rest"] = "00"; },
     "rest: pairs of hexadecimal digits are expected, in a file of templates"},
    {"MisspeltInTheFile", [](Json& j) { j["rset"] = "00"; }, "rset: there is no such member"},
    {"MisspeltInRaw",
     [](Json& j) {
         PackageIn(j) = {{"raw", "00"}, {"name", "A"}};
     },
     "packages[0].name: there is no such member"},
    {"CountOfCompounds", [](Json& j) { PackageIn(j)["compoundCount"] = -1; },
     "packages[0].compoundCount: only an empty list can have another count"},
    {"CountOfReactions", [](Json& j) { PackageIn(j)["reactionCount"] = -1; },
     "packages[0].reactionCount: only an empty list can have another count"},
    {"TextOfOlderVersions", [](Json& j) { ReactionIn(j)["obsolete"] = "left over"; },
     "packages[0].reactions[0].obsolete: only versions 0 and 1 have this text"},
    {"BasisOfNewerVersions",
     [](Json& j) {
         PackageIn(j)["version"] = 1;
         ReactionIn(j)["obsolete"] = nullptr;
     },
     "packages[0].reactions[0].equilibriumBasis: versions 0 and 1 have no basis"},
    {"MissingName", [](Json& j) { PackageIn(j).erase("name"); }, "packages[0].name: the member is missing"},
    {"Misspelt", [](Json& j) { PackageIn(j)["nmae"] = "x"; }, "packages[0].nmae: there is no such member"},
    {"NumberForText", [](Json& j) { PackageIn(j)["name"] = 1; }, "packages[0].name: an object is expected"},
    {"BadUnits",
     [](Json& j) {
         PackageIn(j)["name"] = {{"units", {"0x12345"}}};
     },
     "packages[0].name.units[0]: \"0x\" and four digits are expected"},
    {"VersionBelowZero", [](Json& j) { PackageIn(j)["version"] = -1; },
     "packages[0].version: a whole number from 0 to 4294967295 is expected"},
    {"VersionWithAPoint", [](Json& j) { PackageIn(j)["version"] = 1.5; },
     "packages[0].version: a whole number from 0 to 4294967295 is expected"},
    {"VersionWithoutMarker", [](Json& j) { PackageIn(j)["marker"] = false; },
     "packages[0]: a version without its marker can't be stored"},
    {"OutsideTheCodePage", [](Json& j) { PackageIn(j)["pcdFile"] = "\xE4\xB8\xAD"; },
     "packages[0].pcdFile: the code page has not all of these characters"},
    {"TooFewCoefficients", [](Json& j) { ReactionIn(j)["stoichiometry"] = Json::array(); },
     "packages[0].reactions[0].stoichiometry: one number for each compound is expected"},
    {"TextForNumber", [](Json& j) { ReactionIn(j)["stoichiometry"][0] = "many"; },
     "packages[0].reactions[0].stoichiometry[0]: a number, or its bits as \"0x...\", is expected"},
    {"UnknownWord", [](Json& j) { ReactionIn(j)["type"] = "kinetic"; },
     "packages[0].reactions[0].type: there is no \"kinetic\" here"},
    {"UnknownNode",
     [](Json& j) {
         ReactionIn(j)["rateTree"] = {{"dependencies", 0}, {"nodes", {"Sum 2"}}};
     },
     "packages[0].reactions[0].rateTree.nodes[0]: there is no kind \"Sum\""},
    {"NodeWithoutNumber",
     [](Json& j) {
         ReactionIn(j)["rateTree"] = {{"dependencies", 0}, {"nodes", {"Pressure"}}};
     },
     "packages[0].reactions[0].rateTree.nodes[0]: a number is expected behind the kind"},
    {"TooFewNodes",
     [](Json& j) {
         ReactionIn(j)["rateTree"] = {{"dependencies", 0}, {"nodes", {"Addition 2"}}};
     },
     "packages[0].reactions[0].rateTree.nodes: the nodes are not one tree"},
    {"TooManyNodes",
     [](Json& j) {
         ReactionIn(j)["rateTree"] = {{"dependencies", 0}, {"nodes", {"Pressure 0", "Pressure 0"}}};
     },
     "packages[0].reactions[0].rateTree.nodes: the nodes are not one tree"},
    {"FlagOfZero",
     [](Json& j) {
         ReactionIn(j)["rateTree"] = {{"flag", 0}, {"dependencies", 0}, {"nodes", {"Pressure 0"}}};
     },
     "packages[0].reactions[0].rateTree.flag: a whole number from 1 to 255 is expected"},
};
void PrintTo(const FaultCase& row, std::ostream* stream) {
    *stream << row.name;
}

class FormFaults : public testing::TestWithParam<FaultCase> {};

TEST_P(FormFaults, AreToldWithTheirPlace) {
    Json content = Good();
    PackageFile file;
    std::string errorText;
    EXPECT_TRUE(FileFromJson(content, file, errorText)) << errorText;
    GetParam().change(content);
    EXPECT_FALSE(FileFromJson(content, file, errorText));
    EXPECT_EQ(errorText, GetParam().errorText);
}
INSTANTIATE_TEST_SUITE_P(Table, FormFaults, testing::ValuesIn(faultCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(PackageFromJson, ParsesTextsThatWereChanged) {
    Json content = Good();
    ReactionIn(content)["rateEquation"] = "P";
    PackageFile file;
    std::string errorText;
    ASSERT_TRUE(FileFromJson(content, file, errorText)) << errorText;
    StoredPackage package;
    ASSERT_TRUE(ReadStoredPackage(file.blocks[0], package));
    EXPECT_EQ(package.reactions[0].rateTree.dependencies, 16U);
    EXPECT_EQ(package.reactions[0].rateTree.nodes, (Bytes{28, 0, 0, 0, 0, 0, 0, 0}));
}

}  // namespace

}  // namespace rekatool
