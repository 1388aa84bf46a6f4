// SPDX-License-Identifier: MIT
// The rate that the wizard writes from its fields, text by text.

#include <gtest/gtest.h>

#include "editor/WizardOfReaction.h"
#include "support/FakeEditorUi.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

using Strings = std::vector<std::string>;

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

}  // namespace
}  // namespace reka::test
