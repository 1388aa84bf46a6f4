// SPDX-License-Identifier: MIT
// The properties of the two models, worked out by hand.

#include "material/MaterialProperties.h"

#include <gtest/gtest.h>

#include "DocumentFixture.h"

namespace rekasim {

namespace {

std::vector<double> Compute(const MaterialState& state, const char16_t* property, bool massBasis = false) {
    std::vector<double> values;
    std::u16string errorText;
    EXPECT_TRUE(ComputeMaterialProperty(state, *FindMaterialProperty(property), massBasis, values, errorText));
    return values;
}

std::u16string ErrorOf(const MaterialState& state, const char16_t* property, bool massBasis = false) {
    std::vector<double> values;
    std::u16string errorText;
    EXPECT_FALSE(ComputeMaterialProperty(state, *FindMaterialProperty(property), massBasis, values, errorText));
    return errorText;
}

void ExpectValues(const std::vector<double>& values, const std::vector<double>& expected) {
    ASSERT_EQ(values.size(), expected.size());
    for (std::size_t i = 0; i < values.size(); ++i) EXPECT_DOUBLE_EQ(values[i], expected[i]);
}

TEST(MaterialProperties, OfAnIdealGas) {
    const MaterialState gas = SampleGas();
    ExpectValues(Compute(gas, u"temperature"), {400});
    ExpectValues(Compute(gas, u"pressure"), {200000});
    ExpectValues(Compute(gas, u"fraction"), {0.5, 0.3, 0.2});
    ExpectValues(Compute(gas, u"density"), {200000 / (8.314462618 * 400)});
    ExpectValues(Compute(gas, u"fugacity"), {100000, 60000, 40000});
    ExpectValues(Compute(gas, u"activity"), {1, 0.6, 0.4});  // partial pressures over 1e5 Pa
}

TEST(MaterialProperties, OfAnIdealGasByAnotherStandardPressure) {
    MaterialState gas = SampleGas();
    gas.standardPressure = 200000;
    ExpectValues(Compute(gas, u"activity"), {0.5, 0.3, 0.2});
}

TEST(MaterialProperties, OfALiquid) {
    const MaterialState liquid = SampleLiquid();
    ExpectValues(Compute(liquid, u"density"), {1 / 3e-5});  // 0.75 * 2e-5 + 0.25 * 6e-5 m3/mol
    ExpectValues(Compute(liquid, u"activity"), {1.5, 0.375});
    ExpectValues(Compute(liquid, u"fugacity"), {6000, 3000});
}

TEST(MaterialProperties, PreferTheGivenDensityToMolarVolumes) {
    MaterialState liquid = SampleLiquid();
    liquid.molarDensity = 40000;
    ExpectValues(Compute(liquid, u"density"), {40000});
}

TEST(MaterialProperties, OnAMassBasis) {
    const MaterialState liquid = SampleLiquid();  // 0.75 * 18 + 0.25 * 46 = 25 g/mol
    ExpectValues(Compute(liquid, u"fraction", true), {13.5 / 25, 11.5 / 25});
    ExpectValues(Compute(liquid, u"density", true), {1 / 3e-5 * 25 / 1000});
}

TEST(MaterialProperties, AreRefusedWhereTheDocumentSaysTooLittle) {
    MaterialState liquid = SampleLiquid();
    liquid.compounds[1].molarVolume.reset();
    liquid.compounds[1].vapourPressure.reset();
    EXPECT_EQ(ErrorOf(liquid, u"density"),
              u"the density of the liquid is not known: the document gives neither its molarDensity nor the "
              u"molarVolume of Ethanol");
    EXPECT_EQ(ErrorOf(liquid, u"fugacity"),
              u"the fugacity of the liquid is not known: the document gives no vapourPressure of Ethanol");
    EXPECT_EQ(ErrorOf(SampleGas(), u"fraction", true),
              u"the molecular weight of Tracer is not known, so there is no mass basis");
    EXPECT_EQ(ErrorOf(SampleGas(), u"density", true),
              u"the molecular weight of Tracer is not known, so there is no mass basis");
}

TEST(MaterialProperties, AreFoundInAnyCaseOfLetters) {
    ASSERT_NE(FindMaterialProperty(u"FUGACITY"), nullptr);
    EXPECT_EQ(FindMaterialProperty(u"FUGACITY")->name, u"fugacity");
    EXPECT_EQ(FindMaterialProperty(u"viscosity"), nullptr);
    EXPECT_EQ(MaterialPropertyNames(true), (std::vector<std::u16string>{u"density", u"activity", u"fugacity"}));
    EXPECT_EQ(MaterialPropertyNames(false).size(), 6U);
}

}  // namespace

}  // namespace rekasim
