// SPDX-License-Identifier: MIT
// The rate wizard as it opens, what its fields and its list hold, and names of compounds in what it writes.

#include "editor/RateWizard.h"

#include <gtest/gtest.h>

#include "editor/WizardOfReaction.h"
#include "expression/parse/ParseExpression.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

// Written as it is: the check of the definition tells.
TEST(RateWizard, LeavesAnOpenProductWithoutACompoundInADirection) {
    CWizardOf wizard({u"A", u"B"}, {0.0, 1.0});
    SetForward(*wizard, u"2");
    EXPECT_EQ(wizard->UpdatePreview(), u"2*");
    SetEnergy(wizard->fields.forward, u"5000");
    EXPECT_EQ(wizard->UpdatePreview(), u"2*exp(-5000/(R*T))*");
    SetForward(*wizard, u"1");
    wizard->fields.forward.hasEnergy = false;
    EXPECT_EQ(wizard->UpdatePreview(), u"");  // a text all the same
    std::u16string errorText;
    EXPECT_TRUE(wizard->BuildRateExpression(errorText));
}

TEST(RateWizard, LeavesOutACompoundWithoutACoefficient) {
    EXPECT_EQ(CWizardOf({u"A", u"B"}, {-1.0})->CompoundNames(), (std::vector<std::u16string>{u"A"}));
    EXPECT_EQ(CWizardOf({u"A", u"B"}, {-1.0, 0.0, 2.0})->CompoundNames(), (std::vector<std::u16string>{u"A"}));
}

TEST(RateWizard, OpensBlank) {
    CWizardOf wizard({u"A", u"B"}, {-1.0, 1.0});
    wizard.reaction.rateEquation = u"2*A(A)";  // is never read
    EXPECT_EQ(wizard->fields.variable, RateVariable::Activity);
    EXPECT_EQ(wizard->fields.inhibitionPower, u"1.0");
    EXPECT_EQ(wizard->fields.referenceTemperature, u"");
    for (const RateDirectionFields& direction : {wizard->fields.forward, wizard->fields.backward}) {
        EXPECT_FALSE(direction.isOn);
        EXPECT_FALSE(direction.hasEnergy);
        EXPECT_EQ(direction.constant, u"");
        EXPECT_EQ(direction.energy, u"");
    }
    EXPECT_EQ(wizard->UpdatePreview(), u"");
    EXPECT_EQ(wizard.reaction.rateEquation, u"2*A(A)");
}

TEST(RateWizard, ShowsTheUnitOfTheBasis) {
    CWizardOf wizard({u"A", u"B"}, {-1.0, 1.0});
    EXPECT_EQ(std::u16string_view(wizard->UnitText()), u"Unit: mol/s/m3");
    wizard.reaction.rateBasis = RateBasis::Heterogeneous;
    const CRateWizard heterogeneous(wizard.reaction, *wizard.definition);
    EXPECT_EQ(std::u16string_view(heterogeneous.UnitText()), u"Unit: mol/s/kg-cat");
}

TEST(RateWizard, ListsTheCompoundsThatTakePart) {
    CWizardOf wizard({u"A", u"inert", u"B", u"C1"}, {-1.0, 0.0, 1e-300, -0.0});
    wizard.definition->compounds[2]->name.Reset();
    const CRateWizard listed(wizard.reaction, *wizard.definition);
    EXPECT_EQ(listed.CompoundNames(), (std::vector<std::u16string>{u"A", u""}));
    EXPECT_EQ(wizard->CompoundNames(), (std::vector<std::u16string>{u"A", u"B"}));
}

TEST(RateWizard, EnablesTheFieldsOfADirectionThatIsOn) {
    for (const bool isOn : {false, true}) {
        for (const bool hasEnergy : {false, true}) {
            RateDirectionFields direction;
            direction.isOn = isOn;
            direction.hasEnergy = hasEnergy;
            EXPECT_EQ(direction.IsConstantEnabled(), isOn);
            EXPECT_EQ(direction.IsEnergyEnabled(), isOn && hasEnergy);
        }
    }
}

TEST(RateWizard, KeepsTheInhibitionConstantWhenATextIsNoNumber) {
    CWizardOf wizard({u"A", u"B"}, {-1.0, 1.0});
    SetForward(*wizard, u"1");
    EXPECT_TRUE(wizard->EditInhibitionConstant(1, u"2*3"));
    EXPECT_EQ(wizard->RateText(), u"A(A)/(1.0+6*A(B))");  // without another call
    for (const char16_t* text : {u"", u" ", u"(", u"T", u"1,5", u"1/0"}) {
        EXPECT_FALSE(wizard->EditInhibitionConstant(1, text));
        EXPECT_EQ(wizard->UpdatePreview(), u"A(A)/(1.0+6*A(B))");
    }
    EXPECT_FALSE(wizard->EditInhibitionConstant(2, u"1"));
    EXPECT_TRUE(wizard->EditInhibitionConstant(0, u"1.0000001"));
    EXPECT_EQ(wizard->RateText(), u"A(A)/(1.0+A(A)+6*A(B))");
}

struct NameCase {
    const char* name;
    const char16_t* compound;
    const char* quoted;
};

const NameCase nameCases[] = {
    {"Letters", u"waterWATER", "waterWATER"},
    {"DigitsAndUnderscores", u"C2_H6", "C2_H6"},
    {"DigitFirst", u"1butene", "1butene"},
    {"Hyphen", u"n-butane", "\"n-butane\""},
    {"Blank", u"carbon dioxide", "\"carbon dioxide\""},
    {"Comma", u"1,3-butadiene", "\"1,3-butadiene\""},
    {"LetterBeyondAscii", u"\u00E9thane", "\"\u00E9thane\""},
    {"Quote", u"a\"b", "\"a\"b\""},
    {"Empty", u"", ""},
    {"NextToTheLetters", u"@[`{", "\"@[`{\""},
    {"NextToTheDigits", u"/:", "\"/:\""},
};

class CompoundNamesInRates : public testing::TestWithParam<NameCase> {};

TEST_P(CompoundNamesInRates, AreQuotedWhereNeeded) {
    EXPECT_EQ(Utf8FromUtf16(QuoteCompoundName(GetParam().compound)), GetParam().quoted);
    CWizardOf wizard({GetParam().compound, u"B"}, {-1.0, 1.0});
    SetForward(*wizard, u"1");
    EXPECT_EQ(Utf8FromUtf16(wizard->UpdatePreview()), "A(" + std::string(GetParam().quoted) + ")");
}
INSTANTIATE_TEST_SUITE_P(Table, CompoundNamesInRates, testing::ValuesIn(nameCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(RateWizard, WritesNamesOfAnyLength) {
    const std::u16string name = u"n-" + std::u16string(5000, u'x');
    CWizardOf wizard({name.c_str(), u"B"}, {-1.0, 1.0});
    SetForward(*wizard, u"1");
    EXPECT_EQ(wizard->UpdatePreview(), u"A(\"" + name + u"\")");
}

TEST(RateWizard, WritesWhatTheParserReads) {
    CWizardOf wizard({u"carbon dioxide", u"H2", u"1,3-butadiene"}, {-1.0, -3.5, 2.0});
    SetForward(*wizard, u"1.2e-7");
    SetBackward(*wizard, u"-0.5");
    SetEnergy(wizard->fields.forward, u"-5000");
    SetEnergy(wizard->fields.backward, u"60e3");
    wizard->fields.referenceTemperature = u"25+273.15";
    for (std::size_t row = 0; row < 3; ++row) EXPECT_TRUE(wizard->EditInhibitionConstant(row, u"-1e-9"));
    wizard->fields.inhibitionPower = u"-2";
    for (const RateVariable variable : {RateVariable::Activity, RateVariable::Molarity, RateVariable::MoleFraction}) {
        wizard->fields.variable = variable;
        std::u16string errorText;
        EXPECT_NE(ParseExpression(*wizard.definition, wizard->UpdatePreview(), errorText, nullptr), nullptr)
            << Utf8FromUtf16(wizard->RateText()) << ": " << Utf8FromUtf16(errorText);
    }
}

TEST(ParseFieldNumber, ReadsWhatAFieldHolds) {
    double value = 7.0;
    EXPECT_TRUE(ParseFieldNumber(u" 2*PI ", value));
    EXPECT_EQ(value, 6.283185307179586);
    EXPECT_FALSE(ParseFieldNumber(u"", value));
    EXPECT_FALSE(ParseFieldNumber(u"1,5", value));
    EXPECT_EQ(value, 6.283185307179586);
    const std::u16string blanks(2044, u' ');
    EXPECT_TRUE(ParseFieldNumber(u"1" + blanks + u"+23", value));  // the 3 is one character too many
    EXPECT_EQ(value, 3.0);
    EXPECT_TRUE(ParseFieldNumber(u"1  " + blanks + u"+2", value));
    EXPECT_EQ(value, 1.0);
    EXPECT_FALSE(ParseFieldNumber(u"1 " + blanks + u"+2", value));
    EXPECT_EQ(value, 1.0);
}

/// A field is read so far; a cell of the list is read to its end.
TEST(RateWizard, ReadsAllOfAnInhibitionConstant) {
    CWizardOf wizard({u"A", u"B"}, {-1.0, 1.0});
    SetForward(*wizard, u"1");
    for (const std::size_t length : {2047U, 2048U, 2049U, 5000U}) {
        const std::u16string text = u"1" + std::u16string(length - 4, u' ') + u"+23";
        EXPECT_TRUE(wizard->EditInhibitionConstant(1, text)) << length;
        EXPECT_EQ(wizard->RateText(), u"A(A)/(1.0+24*A(B))") << length;
        EXPECT_FALSE(wizard->EditInhibitionConstant(1, u"1" + std::u16string(length - 2, u' ') + u"x")) << length;
        EXPECT_EQ(wizard->UpdatePreview(), u"A(A)/(1.0+24*A(B))") << length;
    }
}

TEST(RateWizard, DividesTheWidthOfItsList) {
    const auto [constant, compound] = FitInhibitionColumns(403);
    EXPECT_EQ(constant, 99);
    EXPECT_EQ(compound, 297);
}

}  // namespace
}  // namespace reka::test
