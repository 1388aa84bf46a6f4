// SPDX-License-Identifier: MIT
// The material of a document.

#include "material/ReadMaterial.h"

#include <gtest/gtest.h>

namespace rekasim {

namespace {

/// A sound document with one gas.
packagetext::Json SampleDocument() {
    return packagetext::Json::parse(
        R"({"material": {"phase": "Vapor", "model": "ideal gas", "temperature": 300, "pressure": 1e5,
        "compounds": [{"id": "a", "moleFraction": 0.25}, {"id": "b", "moleFraction": 0.75}]}})");
}

TEST(ReadMaterial, TakesDefaultsForWhatIsLeftOut) {
    MaterialState state;
    std::string errorText;
    ASSERT_TRUE(ReadMaterial(SampleDocument(), state, errorText)) << errorText;
    EXPECT_EQ(state.phase, u"Vapor");
    EXPECT_EQ(state.model, PhaseModel::IdealGas);
    EXPECT_EQ(state.temperature, 300);
    EXPECT_EQ(state.pressure, 1e5);
    EXPECT_EQ(state.standardPressure, 1e5);
    ASSERT_EQ(state.compounds.size(), 2U);
    EXPECT_EQ(state.compounds[1].id, u"b");
    EXPECT_EQ(state.compounds[1].moleFraction, 0.75);
    EXPECT_EQ(state.compounds[1].casNumber, u"");
    EXPECT_EQ(state.compounds[1].activityCoefficient, 1);
    EXPECT_FALSE(state.compounds[1].molecularWeight.has_value());
}

TEST(ReadMaterial, TakesAllThatCanBeGiven) {
    const packagetext::Json document =
        packagetext::Json::parse(R"({"material": {"comment": "x", "phase": "Liquid", "model": "liquid",
        "temperature": 350.5, "pressure": 2e5, "standardPressure": 101325, "molarDensity": 15000,
        "compounds": [{"id": "n-butane", "casNumber": "106-97-8", "formula": "C4H10", "molecularWeight": 58.12,
                       "moleFraction": 1, "activityCoefficient": 1.1, "molarVolume": 9e-5, "vapourPressure": 9e5,
                       "comment": "y"}]}})");
    MaterialState state;
    std::string errorText;
    ASSERT_TRUE(ReadMaterial(document, state, errorText)) << errorText;
    EXPECT_EQ(state.model, PhaseModel::Liquid);
    EXPECT_EQ(state.standardPressure, 101325);
    EXPECT_EQ(state.molarDensity, 15000);
    const MaterialCompound& compound = state.compounds[0];
    EXPECT_EQ(compound.casNumber, u"106-97-8");
    EXPECT_EQ(compound.formula, u"C4H10");
    EXPECT_EQ(compound.molecularWeight, 58.12);
    EXPECT_EQ(compound.activityCoefficient, 1.1);
    EXPECT_EQ(compound.molarVolume, 9e-5);
    EXPECT_EQ(compound.vapourPressure, 9e5);
}

/// `patch` is merged into the sound document, null removing a member.
struct MaterialFault {
    const char* name;
    const char* patch;
    const char* errorText;
};
const MaterialFault materialFaults[] = {
    {"NoMaterial", R"({"material": null})", "material: the member is missing"},
    {"NoObject", R"({"material": 3})", "material: an object is expected"},
    {"NoPhase", R"({"material": {"phase": null}})", "material.phase: the member is missing, a text is expected"},
    {"EmptyPhase", R"({"material": {"phase": ""}})", "material.phase: the text is empty"},
    {"Model", R"({"material": {"model": "solid"}})", "material.model: \"ideal gas\" or \"liquid\" is expected"},
    {"TemperatureIsText", R"({"material": {"temperature": "300"}})", "material.temperature: a number is expected"},
    {"TemperatureIsZero", R"({"material": {"temperature": 0}})", "material.temperature: a number above 0 is expected"},
    {"NoPressure", R"({"material": {"pressure": null}})",
     "material.pressure: the member is missing, a number is expected"},
    {"Misspelt", R"({"material": {"molardensity": 1}})", "material.molardensity: rekasim knows no such member"},
    {"NoCompounds", R"({"material": {"compounds": []}})", "material.compounds: a list of compounds is expected"},
    {"CompoundIsText", R"({"material": {"compounds": ["a"]}})", "material.compounds[0]: an object is expected"},
    {"CompoundWithoutId", R"({"material": {"compounds": [{"moleFraction": 1}]}})",
     "material.compounds[0].id: the member is missing, a text is expected"},
    {"NegativeFraction", R"({"material": {"compounds": [{"id": "a", "moleFraction": -0.1}]}})",
     "material.compounds[0].moleFraction: a number from 0 to 1 is expected"},
    {"Sum", R"({"material": {"compounds": [{"id": "a", "moleFraction": 0.9}]}})",
     "material.compounds: the mole fractions add up to 0.9, not to 1"},
    {"CompoundTwice",
     R"({"material": {"compounds": [{"id": "a", "moleFraction": 0.5}, {"id": "A", "moleFraction": 0.5}]}})",
     "material.compounds[1].id: the compound is there twice"},
    {"MisspeltInCompound", R"({"material": {"compounds": [{"id": "a", "moleFraction": 1, "gamma": 2}]}})",
     "material.compounds[0].gamma: rekasim knows no such member"},
};
class MaterialFaults : public testing::TestWithParam<MaterialFault> {};

TEST_P(MaterialFaults, AreNamed) {
    packagetext::Json document = SampleDocument();
    document.merge_patch(packagetext::Json::parse(GetParam().patch));
    MaterialState state;
    std::string errorText;
    EXPECT_FALSE(ReadMaterial(document, state, errorText));
    EXPECT_EQ(errorText, GetParam().errorText);
}
INSTANTIATE_TEST_SUITE_P(Table, MaterialFaults, testing::ValuesIn(materialFaults),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace

}  // namespace rekasim
