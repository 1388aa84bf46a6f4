// SPDX-License-Identifier: MIT
// The rate wizard as a person fills it in.

#include "editor/win/CPowerLawDlg.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include "BoxUi.h"
#include "editor/win/resource.h"
#include "support/AllocationCounter.h"
#include "support/Builders.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

class RateWizardDialog : public testing::Test {
protected:
    using Work = std::function<void(CUser&, const CDrivenWindow&)>;

    bool Open(const Work& work) {
        CUser user([&](CUser& u) {
            const CDrivenWindow dialog = u.WaitFor(u"Reaction rate wizard:");
            work(u, dialog);
            dialog.WaitUntilGone();
        });
        return CPowerLawDlg(reaction, *definition, rate, ui).Run(nullptr);
    }

    static void SwitchOnForward(const CDrivenWindow& dialog, std::u16string_view constant) {
        dialog.Click(IDC_RATE_WIZARD_FORWARD);
        dialog.Fill(IDC_RATE_WIZARD_FORWARD_CONSTANT, constant);
    }
    static std::string Preview(const CDrivenWindow& dialog) {
        return Utf8FromUtf16(dialog.Text(IDC_RATE_WIZARD_PREVIEW));
    }

    std::unique_ptr<ReactionPackDefinition> definition = MakePackage({u"A", u"B", u"n-butane"});
    ReactionDefinition& reaction = AddKinetic(*definition, u"R1", u"");
    std::u16string rate = u"as it was";
    CBoxUi ui;

    RateWizardDialog() { reaction.stoichiometry = {-1.0, 1.0, 0.0}; }
};

TEST_F(RateWizardDialog, OpensWithBlankFields) {
    EXPECT_FALSE(Open([](CUser& u, const CDrivenWindow& dialog) {
        EXPECT_TRUE(dialog.IsChecked(IDC_RATE_WIZARD_ACTIVITY));
        for (const int box : {227, 228, 229, 232}) EXPECT_FALSE(dialog.IsChecked(box));
        EXPECT_EQ(dialog.Text(IDC_RATE_WIZARD_INHIBITION_POWER), u"1.0");
        EXPECT_EQ(Preview(dialog), "");
        EXPECT_EQ(dialog.Text(IDC_RATE_WIZARD_UNIT), u"Unit: mol/s/m3");
        const int list = IDC_RATE_WIZARD_INHIBITION;
        EXPECT_EQ(dialog.ColumnCount(list), 2);
        EXPECT_EQ(dialog.ColumnTitle(list, 0), u"Constant");
        EXPECT_EQ(dialog.ColumnTitle(list, 1), u"Compound");
        RECT client = {};
        GetClientRect(dialog.Item(list), &client);
        EXPECT_EQ(dialog.ColumnWidth(list, 0), client.right / 4 - 1);
        EXPECT_EQ(dialog.ColumnWidth(list, 1), client.right / 4 * 3 - 3);
        const auto text =
            static_cast<int>(u.Send(dialog.Item(list), LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(u"Constant")));
        EXPECT_GT(dialog.ColumnWidth(list, 0), text + 12);
        // The compound with a coefficient of 0 isn't offered.
        ASSERT_EQ(dialog.RowCount(list), 2);
        EXPECT_EQ(dialog.Cell(list, 0, 0), u"0");
        EXPECT_EQ(dialog.Cell(list, 0, 1), u"A");
        EXPECT_EQ(dialog.Cell(list, 1, 0), u"0");
        EXPECT_EQ(dialog.Cell(list, 1, 1), u"B");
        u.Press(VK_ESCAPE);
    }));
    EXPECT_EQ(rate, u"as it was");
}

TEST_F(RateWizardDialog, TellsTheUnitOfAHeterogeneousRate) {
    reaction.rateBasis = RateBasis::Heterogeneous;
    EXPECT_FALSE(Open([](CUser&, const CDrivenWindow& dialog) {
        EXPECT_EQ(dialog.Text(IDC_RATE_WIZARD_UNIT), u"Unit: mol/s/kg-cat");
        dialog.Click(IDCANCEL);
    }));
}

TEST_F(RateWizardDialog, WritesAForwardRateKeyByKey) {
    EXPECT_TRUE(Open([](CUser& u, const CDrivenWindow& dialog) {
        dialog.Click(IDC_RATE_WIZARD_FORWARD);
        EXPECT_EQ(Preview(dialog), "");  // a field without a number
        dialog.FocusOn(IDC_RATE_WIZARD_FORWARD_CONSTANT);
        u.Type(u"1");
        EXPECT_EQ(Preview(dialog), "A(A)");
        u.Type(u"2");
        EXPECT_EQ(Preview(dialog), "12*A(A)");
        u.Press(VK_BACK);
        u.Type(u"23456789");
        EXPECT_EQ(Preview(dialog), "1.23457e+08*A(A)");
        dialog.Fill(IDC_RATE_WIZARD_FORWARD_CONSTANT, u"1.0000001");
        EXPECT_EQ(Preview(dialog), "A(A)");
        dialog.Fill(IDC_RATE_WIZARD_FORWARD_CONSTANT, u"2");
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(rate, u"2*A(A)");
}

TEST_F(RateWizardDialog, WritesBothDirections) {
    EXPECT_TRUE(Open([](CUser& u, const CDrivenWindow& dialog) {
        SwitchOnForward(dialog, u"1");
        dialog.Click(IDC_RATE_WIZARD_BACKWARD);
        dialog.Fill(IDC_RATE_WIZARD_BACKWARD_CONSTANT, u"3");
        EXPECT_EQ(Preview(dialog), "(A(A)-3*A(B))");
        u.Press(VK_RETURN);
    }));
    EXPECT_EQ(rate, u"(A(A)-3*A(B))");
}

TEST_F(RateWizardDialog, WritesArrheniusTerms) {
    EXPECT_TRUE(Open([](CUser&, const CDrivenWindow& dialog) {
        SwitchOnForward(dialog, u"2");
        dialog.Fill(IDC_RATE_WIZARD_REFERENCE_TEMPERATURE, u"(");  // not read as yet
        EXPECT_EQ(Preview(dialog), "2*A(A)");
        dialog.Fill(IDC_RATE_WIZARD_REFERENCE_TEMPERATURE, u"");
        dialog.Click(IDC_RATE_WIZARD_HAS_FORWARD_ENERGY);
        EXPECT_EQ(Preview(dialog), "");
        dialog.Fill(IDC_RATE_WIZARD_FORWARD_ENERGY, u"5000");
        EXPECT_EQ(Preview(dialog), "2*exp(-5000/(R*T))*A(A)");
        dialog.Fill(IDC_RATE_WIZARD_REFERENCE_TEMPERATURE, u"100*3");
        EXPECT_EQ(Preview(dialog), "2*exp(-5000/R*(1/T-1/300))*A(A)");
        dialog.TakePicture("RateWizardFilledIn");
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(rate, u"2*exp(-5000/R*(1/T-1/300))*A(A)");
}

TEST_F(RateWizardDialog, FollowsTheRadioButtons) {
    reaction.stoichiometry = {-2.0, 0.0, 1.0};
    EXPECT_TRUE(Open([](CUser& u, const CDrivenWindow& dialog) {
        SwitchOnForward(dialog, u"1");
        dialog.Click(IDC_RATE_WIZARD_MOLARITY);
        EXPECT_EQ(Preview(dialog), "C(A)^2");
        u.Press(VK_RIGHT);  // to the next button of the group
        EXPECT_TRUE(dialog.IsChecked(IDC_RATE_WIZARD_MOLE_FRACTION));
        EXPECT_EQ(Preview(dialog), "X(A)^2");
        dialog.Click(IDC_RATE_WIZARD_BACKWARD);
        dialog.Fill(IDC_RATE_WIZARD_BACKWARD_CONSTANT, u"1");
        EXPECT_EQ(Preview(dialog), "(X(A)^2-X(\"n-butane\"))");
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(rate, u"(X(A)^2-X(\"n-butane\"))");
}

TEST_F(RateWizardDialog, TakesInhibitionConstantsInTheirCells) {
    EXPECT_TRUE(Open([](CUser& u, const CDrivenWindow& dialog) {
        const int list = IDC_RATE_WIZARD_INHIBITION;
        SwitchOnForward(dialog, u"1");
        dialog.ClickCell(list, 1, 1);
        u.Press(VK_F2);
        dialog.TypeIntoCell(list, u"1/2");
        EXPECT_EQ(dialog.Cell(list, 1, 0), u"1/2");  // as typed
        EXPECT_EQ(Preview(dialog), "A(A)/(1.0+0.5*A(B))");
        dialog.Fill(IDC_RATE_WIZARD_INHIBITION_POWER, u"2");
        EXPECT_EQ(Preview(dialog), "A(A)/(1.0+0.5*A(B))^2");

        for (const char16_t* const text : {u"", u"(", u"T"}) {  // the old text comes back without a word
            dialog.ClickCell(list, 1, 1);
            u.Press(VK_F2);
            dialog.TypeIntoCell(list, text);
            EXPECT_EQ(dialog.Cell(list, 1, 0), u"1/2");
        }
        dialog.ClickCell(list, 1, 1);
        u.Press(VK_F2);
        dialog.TypeIntoCell(list, u"7", VK_ESCAPE);
        EXPECT_EQ(dialog.Cell(list, 1, 0), u"1/2");
        EXPECT_FALSE(dialog.IsGone());

        dialog.ClickCell(list, 0, 0, 2);
        dialog.TypeIntoCell(list, u"1");
        EXPECT_EQ(Preview(dialog), "A(A)/(1.0+A(A)+0.5*A(B))^2");
        dialog.ClickCell(list, 0);
        u.Press(VK_F2);
        u.WaitUntil("a cell's field", [&] { return dialog.IsEditing(list); });
        u.Type(u"0");
        dialog.Click(IDOK);  // takes what is still being typed
    }));
    EXPECT_EQ(rate, u"A(A)/(1.0+0.5*A(B))^2");
}

TEST_F(RateWizardDialog, EditsConstantsByTheKeyboardAlone) {
    EXPECT_FALSE(Open([](CUser& u, const CDrivenWindow& dialog) {
        const int list = IDC_RATE_WIZARD_INHIBITION;
        SwitchOnForward(dialog, u"1");
        EXPECT_EQ(dialog.SelectedRows(list), std::vector<int>{0});
        for (int i = 0; i < 10 && !dialog.HasFocus(list); ++i) u.Press(VK_TAB);
        ASSERT_TRUE(dialog.HasFocus(list));
        u.Press(VK_F2);
        dialog.TypeIntoCell(list, u"3");
        EXPECT_EQ(Preview(dialog), "A(A)/(1.0+3*A(A))");
        u.Press(VK_RETURN);  // again at the row, rather than for the wizard
        EXPECT_FALSE(dialog.IsGone());
        dialog.TypeIntoCell(list, u"4");
        EXPECT_EQ(Preview(dialog), "A(A)/(1.0+4*A(A))");
        u.Press(VK_DOWN);
        u.Press(VK_RETURN);
        dialog.TypeIntoCell(list, u"5");
        EXPECT_EQ(Preview(dialog), "A(A)/(1.0+4*A(A)+5*A(B))");
        dialog.TakePicture("RateWizardByKeys");
        u.Press(VK_ESCAPE);
    }));
}

TEST_F(RateWizardDialog, TakesEnterInAnEmptyListForNothing) {
    reaction.stoichiometry = {0.0, 0.0, 0.0};
    EXPECT_FALSE(Open([](CUser& u, const CDrivenWindow& dialog) {
        SwitchOnForward(dialog, u"1");
        dialog.FocusOn(IDC_RATE_WIZARD_INHIBITION);
        u.Press(VK_RETURN);
        u.Settle();
        EXPECT_FALSE(dialog.IsGone());
        u.Press(VK_ESCAPE);
    }));
}

TEST_F(RateWizardDialog, EnablesWhatIsRead) {
    EXPECT_FALSE(Open([](CUser& u, const CDrivenWindow& dialog) {
        const auto enabled = [&] {
            std::string letters;
            for (const int control : {230, 235, 228, 231, 233, 236, 232, 234}) {
                letters += dialog.IsEnabled(control) ? '1' : '0';
            }
            return letters;
        };
        EXPECT_EQ(enabled(), "00000000");
        dialog.Click(227);
        EXPECT_EQ(enabled(), "11100000");
        dialog.Click(228);
        EXPECT_EQ(enabled(), "11110000");
        dialog.Click(229);
        dialog.Click(232);
        EXPECT_EQ(enabled(), "11111111");
        dialog.Click(227);
        EXPECT_TRUE(dialog.IsChecked(228));
        EXPECT_EQ(enabled(), "00001111");
        dialog.Click(229);
        EXPECT_EQ(enabled(), "00000000");
        u.Press(VK_ESCAPE);
    }));
}

struct ComplaintCase {
    const char* name;
    std::vector<int> boxes;
    std::vector<std::pair<int, const char16_t*>> fields;
    bool hasInhibition;
    const char16_t* complaint;
    int control;
};
const ComplaintCase complaintCases[] = {
    {"NothingSelected", {}, {}, false, u"No forward or backward rate selected.", IDC_RATE_WIZARD_FORWARD},
    {"ForwardConstant",
     {227},
     {{230, u"2*"}},
     false,
     u"Number expected for forward reaction rate constant",
     IDC_RATE_WIZARD_FORWARD_CONSTANT},
    {"ForwardEnergy",
     {227, 228},
     {{230, u"2"}},
     false,
     u"Number expected for forward reaction Arrhenius energy",
     IDC_RATE_WIZARD_FORWARD_ENERGY},
    {"BackwardConstant",
     {229},
     {{233, u"T"}},
     false,
     u"Number expected for backward reaction rate constant",
     IDC_RATE_WIZARD_BACKWARD_CONSTANT},
    {"BackwardEnergy",
     {229, 232},
     {{233, u"2"}, {234, u"x"}},
     false,
     u"Number expected for backward reaction Arrhenius energy",
     IDC_RATE_WIZARD_BACKWARD_ENERGY},
    {"ReferenceTemperature",
     {227, 228},
     {{230, u"2"}, {231, u"1"}, {244, u"warm"}},
     false,
     u"Number expected for Arrhenius reference temperature",
     IDC_RATE_WIZARD_REFERENCE_TEMPERATURE},
    {"InhibitionPower",
     {227},
     {{230, u"2"}, {248, u""}},
     true,
     u"Number expected for inhibition power",
     IDC_RATE_WIZARD_INHIBITION_POWER},
};
class RateWizardComplaints : public RateWizardDialog, public testing::WithParamInterface<ComplaintCase> {};
TEST_P(RateWizardComplaints, ComeWithOkAlone) {
    const ComplaintCase& row = GetParam();
    EXPECT_FALSE(Open([&](CUser& u, const CDrivenWindow& dialog) {
        for (const int box : row.boxes) dialog.Click(box);
        for (const auto& [field, text] : row.fields) dialog.Fill(field, text);
        if (row.hasInhibition) {
            dialog.ClickCell(IDC_RATE_WIZARD_INHIBITION, 0);
            u.Press(VK_F2);
            dialog.TypeIntoCell(IDC_RATE_WIZARD_INHIBITION, u"1");
        }
        EXPECT_EQ(u.CountDialogs(), 1);  // no message as yet
        EXPECT_EQ(Preview(dialog), "");
        dialog.Click(IDOK);
        u.Answer(ErrorBox(row.complaint), IDOK);
        EXPECT_FALSE(dialog.IsGone());
        EXPECT_TRUE(dialog.HasFocus(row.control));
        dialog.Click(IDCANCEL);
    }));
    EXPECT_EQ(rate, u"as it was");
}
INSTANTIATE_TEST_SUITE_P(Table, RateWizardComplaints, testing::ValuesIn(complaintCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(RateWizardDialog, FollowsTheBackwardEnergy) {
    EXPECT_TRUE(Open([](CUser& u, const CDrivenWindow& dialog) {
        dialog.Click(IDC_RATE_WIZARD_BACKWARD);
        dialog.Fill(IDC_RATE_WIZARD_BACKWARD_CONSTANT, u"3");
        dialog.Click(IDC_RATE_WIZARD_HAS_BACKWARD_ENERGY);
        EXPECT_EQ(Preview(dialog), "");
        dialog.FocusOn(IDC_RATE_WIZARD_BACKWARD_ENERGY);
        u.Type(u"6");
        EXPECT_EQ(Preview(dialog), "-3*exp(-6/(R*T))*A(B)");
        u.Type(u"0");
        EXPECT_EQ(Preview(dialog), "-3*exp(-60/(R*T))*A(B)");
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(rate, u"-3*exp(-60/(R*T))*A(B)");
}

TEST_F(RateWizardDialog, TakesACellAtAClickElsewhere) {
    EXPECT_TRUE(Open([](CUser& u, const CDrivenWindow& dialog) {
        const int list = IDC_RATE_WIZARD_INHIBITION;
        SwitchOnForward(dialog, u"1");
        dialog.ClickCell(list, 1);
        u.Press(VK_F2);
        u.WaitUntil("a cell's field", [&] { return dialog.IsEditing(list); });
        u.Type(u"5");
        dialog.FocusOn(IDC_RATE_WIZARD_INHIBITION_POWER);
        EXPECT_FALSE(dialog.IsEditing(list));
        EXPECT_EQ(dialog.Cell(list, 1, 0), u"5");
        EXPECT_EQ(Preview(dialog), "A(A)/(1.0+5*A(B))");
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(rate, u"A(A)/(1.0+5*A(B))");
}

TEST_F(RateWizardDialog, ReadsAllOfALongCell) {
    EXPECT_FALSE(Open([](CUser& u, const CDrivenWindow& dialog) {
        const int list = IDC_RATE_WIZARD_INHIBITION;
        SwitchOnForward(dialog, u"1");
        dialog.ClickCell(list, 1);
        u.Press(VK_F2);
        u.WaitUntil("a cell's field", [&] { return dialog.IsEditing(list); });
        const auto field = reinterpret_cast<HWND>(u.Send(dialog.Item(list), LVM_GETEDITCONTROL));
        const std::u16string text = u"1" + std::u16string(2044, u' ') + u"+23";
        u.Send(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
        u.Press(VK_RETURN);
        EXPECT_EQ(Preview(dialog), "A(A)/(1.0+24*A(B))");
        dialog.Click(IDCANCEL);
    }));
}

/// The box takes the focus from the cell, whose editing ends but once.
TEST_F(RateWizardDialog, LeavesACellAsItWasWithoutMemory) {
    EXPECT_TRUE(Open([](CUser& u, const CDrivenWindow& dialog) {
        const int list = IDC_RATE_WIZARD_INHIBITION;
        SwitchOnForward(dialog, u"1");
        dialog.ClickCell(list, 1);
        u.Press(VK_F2);
        u.WaitUntil("a cell's field", [&] { return dialog.IsEditing(list); });
        u.Type(u"0.5+1.25");
        u.OnTestThread([] { FailAllocation(1); });
        u.Press(VK_RETURN);
        u.Answer({u"Error:", u"out of memory", MB_OK | MB_ICONERROR}, IDOK);
        EXPECT_EQ(dialog.Cell(list, 1, 0), u"0");
        EXPECT_EQ(Preview(dialog), "A(A)");
        dialog.ClickCell(list, 1);
        u.Press(VK_F2);
        dialog.TypeIntoCell(list, u"2");
        EXPECT_EQ(Preview(dialog), "A(A)/(1.0+2*A(B))");
        dialog.ClickCell(list, 1);
        u.Press(VK_F2);
        dialog.TypeIntoCell(list, u"0");
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(rate, u"A(A)");
}

TEST_F(RateWizardDialog, GoesOnAfterAWantOfMemory) {
    EXPECT_TRUE(Open([](CUser& u, const CDrivenWindow& dialog) {
        SwitchOnForward(dialog, u"2");
        u.OnTestThread([] { FailAllocation(1); });
        u.Type(u"3");
        u.Answer({u"Error:", u"out of memory", MB_OK | MB_ICONERROR}, IDOK);
        u.Type(u"4");
        EXPECT_EQ(Preview(dialog), "234*A(A)");
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(rate, u"234*A(A)");
}

}  // namespace
}  // namespace reka::test
