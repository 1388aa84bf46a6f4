// SPDX-License-Identifier: MIT
// The slips that the editor takes, each with what is near it and none.

#include "PackageLints.h"

#include <gtest/gtest.h>

#include "support/Builders.h"

namespace rekatool {

namespace {

struct CasRow {
    const char* name;
    const char16_t* number;
    const char16_t* expected;
};
class CasNumbers : public testing::TestWithParam<CasRow> {};

TEST_P(CasNumbers, HaveAShapeAndACheckDigit) {
    EXPECT_EQ(LintCasNumber(GetParam().number), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    Table, CasNumbers,
    testing::Values(CasRow{"None", u"", u""}, CasRow{"Water", u"7732-18-5", u""}, CasRow{"Shortest", u"50-00-0", u""},
                    CasRow{"TenDigits", u"2252403-56-6", u""},
                    CasRow{"DigitOff", u"7732-18-6", u"is no CAS number: its last digit would have to be 5"},
                    CasRow{"TwoSwapped", u"7723-18-5", u"is no CAS number: its last digit would have to be 4"},
                    CasRow{"NoHyphens", u"7732185", u"is no CAS number"},
                    CasRow{"HyphenElsewhere", u"773-218-5", u"is no CAS number"},
                    CasRow{"OneDigitInFront", u"5-00-0", u"is no CAS number"},
                    CasRow{"Letters", u"77x2-18-5", u"is no CAS number"},
                    CasRow{"LetterAtTheEnd", u"7732-18-x", u"is no CAS number"},
                    CasRow{"EightDigitsInFront", u"12345678-12-1", u"is no CAS number"},
                    CasRow{"Blank", u" 7732-18-5", u"is no CAS number"}),
    [](const auto& row) { return std::string(row.param.name); });

struct IntegerRow {
    const char* name;
    const char16_t* expression;
    const char16_t* expected;
};
class LongIntegers : public testing::TestWithParam<IntegerRow> {};

TEST_P(LongIntegers, AreFoundOutsideNames) {
    EXPECT_EQ(FindLongInteger(GetParam().expression), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    Table, LongIntegers,
    testing::Values(IntegerRow{"Empty", u"", u""}, IntegerRow{"EighteenDigits", u"2*123456789012345678", u""},
                    IntegerRow{"NineteenDigits", u"2*1234567890123456789+1", u"1234567890123456789"},
                    IntegerRow{"AtTheEnd", u"T+1234567890123456789", u"1234567890123456789"},
                    IntegerRow{"LeadingZeros", u"0000000000000000000012", u""},
                    IntegerRow{"AllZeros", u"00000000000000000000000", u""},
                    IntegerRow{"BeforeThePoint", u"1234567890123456789.5", u"1234567890123456789"},
                    IntegerRow{"BeforeTheExponent", u"1234567890123456789E2", u"1234567890123456789"},
                    IntegerRow{"BehindThePoint", u"3.1415926535897932384626*T", u""},
                    IntegerRow{"BehindAPointAlone", u".1415926535897932384626", u""},
                    IntegerRow{"InAName", u"C(a1234567890123456789)", u""},
                    IntegerRow{"InQuotes", u"C(\"1234567890123456789\")*2", u""},
                    IntegerRow{"InOpenQuotes", u"C(\"1234567890123456789", u""},
                    IntegerRow{"BehindQuotes", u"C(\"x\")*1234567890123456789", u"1234567890123456789"}),
    [](const auto& row) { return std::string(row.param.name); });

struct HeatRow {
    const char* name;
    const char16_t* constant;
    const char16_t* heat;
    reka::EquilibriumBasis basis;
    const char16_t* expected;
};
class HeatAndConstant : public testing::TestWithParam<HeatRow> {};

TEST_P(HeatAndConstant, AreCompared) {
    auto definition = reka::test::MakePackage({u"First", u"Second"});
    reka::ReactionDefinition& reaction = reka::test::AddEquilibrium(*definition, u"R", GetParam().constant);
    reaction.stoichiometry = {-1, 2};
    reaction.equilibriumBasis = GetParam().basis;
    if (*GetParam().heat) reka::test::SetHeat(*definition, reaction, GetParam().heat);
    definition->AllocateWorkArrays();
    EXPECT_EQ(CompareHeatWithConstant(*definition, reaction), GetParam().expected);
}
using Basis = reka::EquilibriumBasis;
// ln K = 6000/T falls, so the reaction gives off 6000 R = 49.89 kJ/mol.
INSTANTIATE_TEST_SUITE_P(
    Table, HeatAndConstant,
    testing::Values(
        HeatRow{"Agree", u"EXP(6000/T)", u"-49887", Basis::Activity, u""},
        HeatRow{"AreClose", u"EXP(6000/T)", u"-54000", Basis::Activity, u""},
        HeatRow{"WrongSign", u"EXP(6000/T)", u"49887", Basis::Activity,
                u"the heat of reaction is 49.89 kJ/mol at 273.15 K, but the slope of the equilibrium constant says "
                u"-49.89 kJ/mol"},
        HeatRow{"OtherUnit", u"EXP(6000/T)", u"-11.92", Basis::Activity,
                u"the heat of reaction is -0.01 kJ/mol at 273.15 K, but the slope of the equilibrium constant says "
                u"-49.89 kJ/mol"},
        HeatRow{"AgreeAtOneTemperature", u"EXP(6000/T)", u"-100*T", Basis::Activity, u""},
        HeatRow{"NeverAgree", u"EXP(6000/T)", u"20*T", Basis::Activity,
                u"the heat of reaction is 5.46 kJ/mol at 273.15 K, but the slope of the equilibrium constant says "
                u"-49.89 kJ/mol"},
        HeatRow{"SlopeOfTheInnerEnergy", u"EXP(-1600/T)", u"R*(1600+1000)", Basis::Molarity, u""},
        HeatRow{"SameOfActivities", u"EXP(-1600/T)", u"R*(1600+1000)", Basis::Activity,
                u"the heat of reaction is 21.62 kJ/mol at 273.15 K, but the slope of the equilibrium constant says "
                u"13.3 kJ/mol"},
        HeatRow{"ReadsPressure", u"EXP(6000/T)*P", u"49887", Basis::Activity, u""},
        HeatRow{"HeatReadsPressure", u"EXP(6000/T)", u"49887+P", Basis::Activity, u""},
        HeatRow{"NoHeat", u"EXP(6000/T)", u"", Basis::Activity, u""},
        HeatRow{"NoConstant", u"", u"49887", Basis::Activity, u""},
        HeatRow{"NoValue", u"LOG(-T)", u"49887", Basis::Activity, u""},
        HeatRow{"NegativeConstant", u"-T", u"49887", Basis::Activity, u""}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(HeatAndConstant, OfAKineticReactionAreNotCompared) {
    auto definition = reka::test::MakePackage({u"First"});
    reka::ReactionDefinition& reaction = reka::test::AddEquilibrium(*definition, u"R", u"EXP(6000/T)");
    reka::test::SetHeat(*definition, reaction, u"49887");
    reaction.type = reka::ReactionType::Kinetic;
    definition->AllocateWorkArrays();
    EXPECT_EQ(CompareHeatWithConstant(*definition, reaction), u"");
}

}  // namespace

}  // namespace rekatool
