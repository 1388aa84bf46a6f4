// SPDX-License-Identifier: MIT
// Reactions and units in writing.

#include "WriteEquation.h"

#include <gtest/gtest.h>

#include "DocumentFixture.h"

namespace rekasim {

namespace {

Reaction MakeReaction(const std::vector<std::pair<std::u16string, double>>& participants) {
    Reaction reaction;
    for (const auto& [id, coefficient] : participants) reaction.participants.push_back({id, u"", 0, coefficient});
    return reaction;
}

TEST(WriteEquation, UsesFormulasWhereTheMaterialHasThem) {
    const Reaction reaction = MakeReaction({{u"argon", -1}, {u"N-BUTANE", -3}, {u"Tracer", 2}, {u"Xenon", 0.5}});
    EXPECT_EQ(WriteEquation(reaction, SampleGas()), "Ar + 3 C4H10 = 2 Tracer + 0.5 Xenon");
}

TEST(WriteEquation, UsesIdentifiersWithoutAMaterial) {
    EXPECT_EQ(WriteEquation(MakeReaction({{u"A", 2}, {u"B", -1}}), {}), "B = 2 A");
}

TEST(RateUnit, FollowsTheRateBasis) {
    Reaction reaction;
    EXPECT_EQ(RateUnit(reaction), "mol/(m3 s)");
    reaction.isHeterogeneous = true;
    EXPECT_EQ(RateUnit(reaction), "mol/(kg s)");
}

struct UnitCase {
    const char* name;
    const char16_t* basis;
    double power;
    const char* unit;
};
const UnitCase unitCases[] = {
    {"Fugacity", u"Fugacity", -1, "Pa^-1"},
    {"FugacityToTheFirst", u"Fugacity", 1, "Pa"},
    {"FugacityBroken", u"Fugacity", -0.5, "Pa^-0.5"},
    {"Molarity", u"Molarity", 2, "(mol/m3)^2"},
    {"MolarityToTheFirst", u"Molarity", 1, "(mol/m3)"},
    {"Concentration", u"Concentration", -2, "(kg/m3)^-2"},
    {"MoleFraction", u"MoleFraction", 1, ""},
    {"MassFraction", u"MassFraction", 2, ""},
    {"Activity", u"Activity", -1, ""},
    {"SumOfZero", u"Fugacity", 0, ""},
};
class EquilibriumUnits : public testing::TestWithParam<UnitCase> {};

TEST_P(EquilibriumUnits, FollowBasisAndCoefficients) {
    Reaction reaction = MakeReaction({{u"A", -3}, {u"B", 3 + GetParam().power}});
    reaction.concentrationBasis = GetParam().basis;
    EXPECT_EQ(EquilibriumUnit(reaction), GetParam().unit);
}
INSTANTIATE_TEST_SUITE_P(Table, EquilibriumUnits, testing::ValuesIn(unitCases),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace

}  // namespace rekasim
