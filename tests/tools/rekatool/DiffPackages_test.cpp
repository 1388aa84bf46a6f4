// SPDX-License-Identifier: MIT
// Two packages that differ in one thing, and the line that tells it.

#include "DiffPackages.h"

#include <gtest/gtest.h>

#include <functional>

#include "support/Builders.h"

namespace rekatool {

namespace {

using Lines = std::vector<std::string>;

std::unique_ptr<reka::ReactionPackDefinition> MakeSample() {
    auto definition = reka::test::MakePackage({u"ethanol", u"water"});
    definition->name = reka::CBstr::Make(u"Sample");
    reka::test::AddKinetic(*definition, u"forward", u"2*C(ethanol)").stoichiometry = {-1, 1};
    reka::test::AddEquilibrium(*definition, u"balance", u"EXP(1000/T)").stoichiometry = {-2, 0};
    return definition;
}

struct Row {
    const char* name;
    std::function<void(reka::ReactionPackDefinition&)> change;
    Lines expected;
};
class Changes : public testing::TestWithParam<Row> {};

Lines Diff(std::unique_ptr<reka::ReactionPackDefinition> before, std::unique_ptr<reka::ReactionPackDefinition> after) {
    Definitions first;
    Definitions second;
    first.push_back(std::move(before));
    second.push_back(std::move(after));
    return DiffPackages(first, second);
}

TEST_P(Changes, AreTold) {
    auto changed = MakeSample();
    GetParam().change(*changed);
    EXPECT_EQ(Diff(MakeSample(), std::move(changed)), GetParam().expected);
}

reka::CBstr Text(const char16_t* text) {
    return reka::CBstr::Make(text);
}

using Package = reka::ReactionPackDefinition;
INSTANTIATE_TEST_SUITE_P(
    Table, Changes,
    testing::Values(
        Row{"Nothing", [](Package&) {}, {}},
        Row{"CaseOfTheName",
            [](Package& package) { package.name = Text(u"SAMPLE"); },
            {"SAMPLE: name: \"Sample\" became \"SAMPLE\""}},
        Row{"Description",
            [](Package& package) { package.description = Text(u"two\r\nlines"); },
            {"Sample: description: nothing became \"two lines\""}},
        Row{"CompoundFile",
            [](Package& package) { package.pcdFile = u"x.pcd"; },
            {"Sample: compound file: nothing became \"x.pcd\""}},
        Row{"TypeWithoutAWord",
            [](Package& package) { package.reactions[1]->type = reka::ReactionType(7); },
            {"Sample: reaction balance: type: \"Equilibrium\" became \"7\""}},
        Row{"BasisWithoutAWord",
            [](Package& package) { package.reactions[0]->rateBasis = reka::RateBasis(-1); },
            {"Sample: reaction forward: basis of the rate: \"Homogeneous\" became \"-1\""}},
        Row{"NoName", [](Package& package) { package.name = Text(u""); }, {"package 1: is new", "Sample: is gone"}},
        Row{"ThermoVersion",
            [](Package& package) { package.thermoVersion = reka::ThermoVersion::Version11; },
            {"Sample: thermo version: \"1.0\" became \"1.1\""}},
        Row{"CasNumber",
            [](Package& package) { package.compounds[0]->casNumber = Text(u"64-17-5"); },
            {"Sample: compound ethanol: CAS number: nothing became \"64-17-5\""}},
        Row{"Weight",
            [](Package& package) { package.compounds[1]->molecularWeight = 18.015; },
            {"Sample: compound water: molecular weight: 0 became 18.015"}},
        Row{"Coefficient",
            [](Package& package) { package.reactions[0]->stoichiometry[0] = -3; },
            {"Sample: reaction forward: coefficient of ethanol: -1 became -3"}},
        Row{"Phase",
            [](Package& package) { package.reactions[1]->phase = Text(u"Vapor"); },
            {"Sample: reaction balance: phase: \"Liquid\" became \"Vapor\""}},
        Row{"Type",
            [](Package& package) { package.reactions[1]->type = reka::ReactionType::Kinetic; },
            {"Sample: reaction balance: type: \"Equilibrium\" became \"Kinetic\""}},
        Row{"RateBasis",
            [](Package& package) { package.reactions[0]->rateBasis = reka::RateBasis::Heterogeneous; },
            {"Sample: reaction forward: basis of the rate: \"Homogeneous\" became \"Heterogeneous\""}},
        Row{"EquilibriumBasis",
            [](Package& package) { package.reactions[1]->equilibriumBasis = reka::EquilibriumBasis::Fugacity; },
            {"Sample: reaction balance: basis of the equilibrium constant: \"Molarity\" became \"Fugacity\""}},
        Row{"RateTextAndTree",
            [](Package& package) {
                package.reactions[0]->rateEquation = u"3*C(ethanol)";
                package.reactions[0]->rateExpression = reka::test::Parse(package, u"3*C(ethanol)");
            },
            {"Sample: reaction forward: rate: \"2*C(ethanol)\" became \"3*C(ethanol)\""}},
        Row{"TreeAlone",
            [](Package& package) { package.reactions[0]->rateExpression = nullptr; },
            {"Sample: reaction forward: the stored tree of the rate has changed, its text hasn't"}},
        Row{"Heat",
            [](Package& package) { reka::test::SetHeat(package, *package.reactions[1], u"-8314"); },
            {"Sample: reaction balance: heat of reaction: nothing became \"-8314\""}},
        Row{"NewReaction",
            [](Package& package) { reka::test::AddKinetic(package, u"third", u"1"); },
            {"Sample: reaction third: is new"}},
        Row{"ReactionGone",
            [](Package& package) { package.reactions.pop_back(); },
            {"Sample: reaction balance: is gone"}},
        Row{"OrderOfReactions",
            [](Package& package) { std::swap(package.reactions[0], package.reactions[1]); },
            {"Sample: the order of the reactions has changed"}},
        Row{"SecondReactionOfThatName",
            [](Package& package) { reka::test::AddKinetic(package, u"FORWARD", u"1"); },
            {"Sample: reaction FORWARD: is new"}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(DiffPackages, TellsACompoundThatCameWithItsCoefficients) {
    auto after = reka::test::MakePackage({u"ethanol", u"acid", u"water"});
    after->name = Text(u"Sample");
    reka::test::AddKinetic(*after, u"forward", u"2*C(ethanol)").stoichiometry = {-1, -1, 1};
    reka::test::AddEquilibrium(*after, u"balance", u"EXP(1000/T)").stoichiometry = {-2, 0, 0};
    EXPECT_EQ(Diff(MakeSample(), std::move(after)),
              (Lines{"Sample: compound acid: is new", "Sample: reaction forward: coefficient of acid: 0 became -1"}));
    auto before = reka::test::MakePackage({u"water", u"ethanol"});
    before->name = Text(u"Sample");
    reka::test::AddKinetic(*before, u"forward", u"2*C(ethanol)").stoichiometry = {1, -1};
    reka::test::AddEquilibrium(*before, u"balance", u"EXP(1000/T)").stoichiometry = {0, -2};
    EXPECT_EQ(Diff(std::move(before), MakeSample()), Lines{"Sample: the order of the compounds has changed"});
}

TEST(DiffPackages, TellsWhichPackagesCameAndWent) {
    const auto named = [](std::initializer_list<const char16_t*> names) {
        Definitions definitions;
        for (const char16_t* const name : names) {
            definitions.push_back(MakeSample());
            definitions.back()->name = Text(name);
        }
        return definitions;
    };
    EXPECT_EQ(DiffPackages(named({u"one", u"two"}), named({u"two", u"three"})),
              (Lines{"three: is new", "one: is gone"}));
    EXPECT_EQ(DiffPackages(named({u"one", u"two"}), named({u"two", u"one"})),
              Lines{"the order of the packages has changed"});
    EXPECT_EQ(DiffPackages(named({u"\x1B[2Jbad"}), {}), Lines{"[2Jbad: is gone"});
    EXPECT_EQ(DiffPackages({}, {}), Lines{});
}

}  // namespace

}  // namespace rekatool
