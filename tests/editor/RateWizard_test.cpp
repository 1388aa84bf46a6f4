// SPDX-License-Identifier: MIT
// The rate wizard: its texts, what it reads in which order, and what it complains of.

#include "editor/RateWizard.h"

#include <gtest/gtest.h>

#include <functional>

#include "expression/parse/ParseExpression.h"
#include "support/Builders.h"
#include "support/FakeEditorUi.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

using Strings = std::vector<std::string>;

/// A wizard for one reaction over the given compounds.
class CWizardOf {
public:
    CWizardOf(std::initializer_list<const char16_t*> compounds, std::vector<double> stoichiometry)
        : definition(MakePackage(compounds)), reaction(AddKinetic(*definition, u"r", u"")) {
        reaction.stoichiometry = std::move(stoichiometry);
        wizard.emplace(reaction, *definition);
    }
    CRateWizard* operator->() { return &*wizard; }
    CRateWizard& operator*() { return *wizard; }

    std::unique_ptr<ReactionPackDefinition> definition;
    ReactionDefinition& reaction;

private:
    std::optional<CRateWizard> wizard;
};

void SetForward(CRateWizard& wizard, const char16_t* constant) {
    wizard.fields.forward.isOn = true;
    wizard.fields.forward.constant = constant;
}

void SetBackward(CRateWizard& wizard, const char16_t* constant) {
    wizard.fields.backward.isOn = true;
    wizard.fields.backward.constant = constant;
}

void SetEnergy(RateDirectionFields& direction, const char16_t* energy) {
    direction.hasEnergy = true;
    direction.energy = energy;
}

struct RateCase {
    const char* name;
    void (*fill)(CRateWizard& wizard);
    const char* rate;
};

// Of the reaction A -> B.
const RateCase rateCases[] = {
    {"Forward", [](CRateWizard& w) { SetForward(w, u"2"); }, "2*A(A)"},
    {"ForwardOfOne", [](CRateWizard& w) { SetForward(w, u"1"); }, "A(A)"},
    {"ForwardNearOne", [](CRateWizard& w) { SetForward(w, u"1.0000001"); }, "A(A)"},
    {"ForwardNotSoNearOne", [](CRateWizard& w) { SetForward(w, u"1.00001"); }, "1.00001*A(A)"},
    {"ForwardBelowOne", [](CRateWizard& w) { SetForward(w, u"0.9999999"); }, "A(A)"},
    {"ForwardOfZero", [](CRateWizard& w) { SetForward(w, u"0"); }, "0*A(A)"},
    {"ForwardOfMinusOne", [](CRateWizard& w) { SetForward(w, u"-1"); }, "-1*A(A)"},
    {"SixDigits", [](CRateWizard& w) { SetForward(w, u"123456789"); }, "1.23457e+08*A(A)"},
    {"SmallConstant", [](CRateWizard& w) { SetForward(w, u"0.00001234567"); }, "1.23457e-05*A(A)"},
    {"ConstantAsArithmetic", [](CRateWizard& w) { SetForward(w, u"1.5e3/60"); }, "25*A(A)"},
    {"NotANumber", [](CRateWizard& w) { SetForward(w, u"EXP(1000)"); }, "inf*A(A)"},
    {"Backward", [](CRateWizard& w) { SetBackward(w, u"3"); }, "-3*A(B)"},
    {"BackwardOfOne", [](CRateWizard& w) { SetBackward(w, u"1"); }, "-A(B)"},
    {"Both",
     [](CRateWizard& w) {
         SetForward(w, u"1");
         SetBackward(w, u"3");
     },
     "(A(A)-3*A(B))"},
    {"BothNegative",
     [](CRateWizard& w) {
         SetForward(w, u"-2");
         SetBackward(w, u"-3");
     },
     "(-2*A(A)--3*A(B))"},
    {"Energy",
     [](CRateWizard& w) {
         SetForward(w, u"2");
         SetEnergy(w.fields.forward, u"5000");
     },
     "2*exp(-5000/(R*T))*A(A)"},
    {"EnergyWithReference",
     [](CRateWizard& w) {
         SetForward(w, u"2");
         SetEnergy(w.fields.forward, u"5000");
         w.fields.referenceTemperature = u"300";
     },
     "2*exp(-5000/R*(1/T-1/300))*A(A)"},
    {"EnergyWithReferenceOfZero",
     [](CRateWizard& w) {
         SetForward(w, u"1");
         SetEnergy(w.fields.forward, u"5000");
         w.fields.referenceTemperature = u"0";
     },
     "exp(-5000/(R*T))*A(A)"},
    {"NegativeEnergy",
     [](CRateWizard& w) {
         SetForward(w, u"2");
         SetEnergy(w.fields.forward, u"-5000");
     },
     "2*exp(--5000/(R*T))*A(A)"},
    {"EnergyOfOneIsWritten",
     [](CRateWizard& w) {
         SetForward(w, u"2");
         SetEnergy(w.fields.forward, u"1");
     },
     "2*exp(-1/(R*T))*A(A)"},
    {"EnergiesOfBoth",
     [](CRateWizard& w) {
         SetForward(w, u"2");
         SetBackward(w, u"1");
         SetEnergy(w.fields.forward, u"5000");
         SetEnergy(w.fields.backward, u"7e4");
         w.fields.referenceTemperature = u"298.15";
     },
     "(2*exp(-5000/R*(1/T-1/298.15))*A(A)-exp(-70000/R*(1/T-1/298.15))*A(B))"},
    {"EnergyOfADirectionThatIsOff",
     [](CRateWizard& w) {
         SetForward(w, u"2");
         SetEnergy(w.fields.backward, u"bad");
         w.fields.referenceTemperature = u"bad";
     },
     "2*A(A)"},
    {"ReferenceWithoutEnergy",
     [](CRateWizard& w) {
         SetForward(w, u"2");
         w.fields.forward.energy = u"bad";
         w.fields.referenceTemperature = u"bad";
     },
     "2*A(A)"},
    {"Molarity",
     [](CRateWizard& w) {
         SetForward(w, u"1");
         w.fields.variable = RateVariable::Molarity;
     },
     "C(A)"},
    {"MoleFraction",
     [](CRateWizard& w) {
         SetBackward(w, u"1");
         w.fields.variable = RateVariable::MoleFraction;
     },
     "-X(B)"},
    {"Inhibition",
     [](CRateWizard& w) {
         SetForward(w, u"1");
         w.EditInhibitionConstant(1, u"0.5");
         w.fields.inhibitionPower = u"2";
     },
     "A(A)/(1.0+0.5*A(B))^2"},
    {"InhibitionOfBothInOtherVariables",
     [](CRateWizard& w) {
         SetForward(w, u"1");
         SetBackward(w, u"2");
         w.fields.variable = RateVariable::Molarity;
         w.EditInhibitionConstant(0, u"-3");
         w.EditInhibitionConstant(1, u"1");
     },
     "(C(A)-2*C(B))/(1.0+-3*C(A)+C(B))"},
    {"InhibitionPowerNearOne",
     [](CRateWizard& w) {
         SetForward(w, u"1");
         w.EditInhibitionConstant(0, u"2");
         w.fields.inhibitionPower = u"1.0000005";
     },
     "A(A)/(1.0+2*A(A))"},
    {"InhibitionPowerOfZero",
     [](CRateWizard& w) {
         SetForward(w, u"1");
         w.EditInhibitionConstant(0, u"2");
         w.fields.inhibitionPower = u"0";
     },
     "A(A)/(1.0+2*A(A))^0"},
    {"InhibitionTakenBack",
     [](CRateWizard& w) {
         SetForward(w, u"1");
         w.EditInhibitionConstant(0, u"2");
         w.EditInhibitionConstant(0, u"2-2");
         w.fields.inhibitionPower = u"bad";
     },
     "A(A)"},
    {"InhibitionPowerWithoutInhibition",
     [](CRateWizard& w) {
         SetForward(w, u"1");
         w.fields.inhibitionPower = u"";
     },
     "A(A)"},
};

class Rates : public testing::TestWithParam<RateCase> {};

TEST_P(Rates, AreWrittenFromTheFields) {
    CWizardOf wizard({u"A", u"B"}, {-1.0, 1.0});
    GetParam().fill(*wizard);
    std::u16string errorText;
    EXPECT_TRUE(wizard->BuildRateExpression(errorText));
    EXPECT_EQ(Utf8FromUtf16(wizard->RateText()), GetParam().rate);
    EXPECT_EQ(errorText, u"");
    EXPECT_EQ(wizard->UpdatePreview(), wizard->RateText());
    CFakeEditorUi ui;
    EXPECT_TRUE(wizard->Accept(ui));
    EXPECT_EQ(Utf8FromUtf16(wizard->RateText()), GetParam().rate);
    EXPECT_EQ(ui.asked, Strings{});
}
INSTANTIATE_TEST_SUITE_P(Table, Rates, testing::ValuesIn(rateCases),
                         [](const auto& row) { return std::string(row.param.name); });

struct StoichiometryCase {
    const char* name;
    std::vector<double> stoichiometry;
    const char* rate;  // with both directions on and both constants 1, in molarities
};

// Of the compounds A1 to A4.
const StoichiometryCase stoichiometryCases[] = {
    {"Squares", {-2.0, 2.0, 0.0, 0.0}, "(C(A1)^2-C(A2)^2)"},
    {"TwoOnEachSide", {-1.0, 1.0, -3.0, 2.5}, "(C(A1)*C(A3)^3-C(A2)*C(A4)^2.5)"},
    {"InTheOrderOfTheCompounds", {1.0, -0.5, -1.0, 0.0}, "(C(A2)^0.5*C(A3)-C(A1))"},
    {"NearOne", {-1.0000005, 0.9999995, 0.0, 0.0}, "(C(A1)-C(A2))"},
    {"NotSoNearOne", {-1.00001, 0.99999, 0.0, 0.0}, "(C(A1)^1.00001-C(A2)^0.99999)"},
    {"SixDigits", {-1.23456789, 1e-7, 0.0, 0.0}, "(C(A1)^1.23457-C(A2)^1e-07)"},
    {"NobodyReacts", {0.0, 1.0, 0.0, 0.0}, "(-C(A2))"},
    {"NobodyTakesPart", {0.0, 0.0, 0.0, 0.0}, "(-)"},
};

class RatePowers : public testing::TestWithParam<StoichiometryCase> {};

TEST_P(RatePowers, AreTheCoefficients) {
    CWizardOf wizard({u"A1", u"A2", u"A3", u"A4"}, GetParam().stoichiometry);
    SetForward(*wizard, u"1");
    SetBackward(*wizard, u"1");
    wizard->fields.variable = RateVariable::Molarity;
    EXPECT_EQ(Utf8FromUtf16(wizard->UpdatePreview()), GetParam().rate);
}
INSTANTIATE_TEST_SUITE_P(Table, RatePowers, testing::ValuesIn(stoichiometryCases),
                         [](const auto& row) { return std::string(row.param.name); });

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

struct ComplaintCase {
    const char* name;
    void (*fill)(CRateWizard& wizard);
    const char* complaint;
    RateWizardField field;
};

void SetAllBad(CRateWizard& wizard) {
    for (RateDirectionFields* direction : {&wizard.fields.forward, &wizard.fields.backward}) {
        direction->isOn = true;
        direction->constant = u"(";
        SetEnergy(*direction, u"water");
    }
    wizard.EditInhibitionConstant(0, u"2");
    wizard.fields.referenceTemperature = u"T";
    wizard.fields.inhibitionPower = u"";
}

// Each mends one field more, in the order in which they are read.
const ComplaintCase complaintCases[] = {
    {"ForwardConstant", [](CRateWizard&) {}, "Number expected for forward reaction rate constant",
     RateWizardField::ForwardConstant},
    {"ForwardEnergy", [](CRateWizard& w) { w.fields.forward.constant = u"1"; },
     "Number expected for forward reaction Arrhenius energy", RateWizardField::ForwardEnergy},
    {"BackwardConstant",
     [](CRateWizard& w) {
         w.fields.forward.constant = u"1";
         w.fields.forward.energy = u"1";
     },
     "Number expected for backward reaction rate constant", RateWizardField::BackwardConstant},
    {"BackwardConstantWithoutForward", [](CRateWizard& w) { w.fields.forward.isOn = false; },
     "Number expected for backward reaction rate constant", RateWizardField::BackwardConstant},
    {"BackwardEnergy",
     [](CRateWizard& w) {
         w.fields.forward.isOn = false;
         w.fields.backward.constant = u"1";
     },
     "Number expected for backward reaction Arrhenius energy", RateWizardField::BackwardEnergy},
    {"NoDirection",
     [](CRateWizard& w) {
         w.fields.forward.isOn = false;
         w.fields.backward.isOn = false;
     },
     "No forward or backward rate selected.", RateWizardField::Forward},
    {"ReferenceTemperature",
     [](CRateWizard& w) {
         w.fields.forward.isOn = false;
         w.fields.backward.constant = u"1";
         w.fields.backward.energy = u"1";
     },
     "Number expected for Arrhenius reference temperature", RateWizardField::ReferenceTemperature},
    {"InhibitionPower",
     [](CRateWizard& w) {
         w.fields.backward.isOn = false;
         w.fields.forward.constant = u"1";
         w.fields.forward.energy = u"1";
         w.fields.referenceTemperature = u"";
     },
     "Number expected for inhibition power", RateWizardField::InhibitionPower},
    {"InhibitionPowerWithoutEnergies",
     [](CRateWizard& w) {
         w.fields.backward.isOn = false;
         w.fields.forward.constant = u"1";
         w.fields.forward.hasEnergy = false;
     },
     "Number expected for inhibition power", RateWizardField::InhibitionPower},
};

class RateComplaints : public testing::TestWithParam<ComplaintCase> {};

TEST_P(RateComplaints, NameTheFirstFieldThatWontDo) {
    CWizardOf wizard({u"A", u"B"}, {-1.0, 1.0});
    SetForward(*wizard, u"5");
    ASSERT_EQ(wizard->UpdatePreview(), u"5*A(A)");
    SetAllBad(*wizard);
    GetParam().fill(*wizard);
    EXPECT_EQ(wizard->UpdatePreview(), u"");
    std::u16string errorText;
    EXPECT_FALSE(wizard->BuildRateExpression(errorText));
    EXPECT_EQ(Utf8FromUtf16(errorText), GetParam().complaint);
    EXPECT_EQ(wizard->FaultyField(), GetParam().field);
    EXPECT_EQ(wizard->RateText(), u"");
    CFakeEditorUi ui;
    EXPECT_FALSE(wizard->Accept(ui));
    EXPECT_EQ(ui.asked, Strings{"message|Error:|" + std::string(GetParam().complaint) + "|16"});
}
INSTANTIATE_TEST_SUITE_P(Table, RateComplaints, testing::ValuesIn(complaintCases),
                         [](const auto& row) { return std::string(row.param.name); });

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
