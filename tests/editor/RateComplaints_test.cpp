// SPDX-License-Identifier: MIT
// What the wizard complains of where its fields won't do, in the order in which they are read, and which field is
// named.

#include <gtest/gtest.h>

#include "editor/WizardOfReaction.h"
#include "support/FakeEditorUi.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

using Strings = std::vector<std::string>;

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

}  // namespace
}  // namespace reka::test
