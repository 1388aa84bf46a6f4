// SPDX-License-Identifier: MIT
// The two dialogs of compounds out of a material template: the choice of the source, and that of the compounds.

#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include <limits>

#include "BoxUi.h"
#include "editor/win/CCompoundsFromMaterialDlg.h"
#include "editor/win/CSelectCompoundMatTemplateDlg.h"
#include "editor/win/resource.h"
#include "support/AllocationCounter.h"
#include "support/Builders.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

using Work = std::function<void(CUser&, const CDrivenWindow&)>;

class CompoundSourceDialog : public testing::Test {
protected:
    bool Open(const Work& work) {
        CUser user([&](CUser& u) {
            const CDrivenWindow dialog = u.WaitFor(u"Compound source:");
            work(u, dialog);
            dialog.WaitUntilGone();
        });
        return CSelectCompoundMatTemplateDlg(names, selected).Run(nullptr);
    }

    std::vector<std::u16string> names = {u"Zeta", u"Alpha \u00E9", u"Mid"};
    std::int32_t selected = 7;
};

TEST_F(CompoundSourceDialog, OffersTheTemplatesInTheirOrder) {
    EXPECT_FALSE(Open([this](CUser& u, const CDrivenWindow& dialog) {
        EXPECT_TRUE(dialog.IsChecked(IDC_COMPOUND_SOURCE_DATABASE));
        EXPECT_FALSE(dialog.IsEnabled(IDC_COMPOUND_SOURCE_LIST));
        ASSERT_EQ(dialog.ListCount(IDC_COMPOUND_SOURCE_LIST), 3);
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(dialog.ListText(IDC_COMPOUND_SOURCE_LIST, i), names[static_cast<std::size_t>(i)]);
        }
        EXPECT_EQ(dialog.ListSelection(IDC_COMPOUND_SOURCE_LIST), 0);
        u.Press(VK_ESCAPE);
    }));
    EXPECT_EQ(selected, 7);
}

TEST_F(CompoundSourceDialog, GivesTheDatabase) {
    EXPECT_TRUE(Open([](CUser& u, const CDrivenWindow&) { u.Press(VK_RETURN); }));
    EXPECT_EQ(selected, -1);
}

TEST_F(CompoundSourceDialog, GivesTheSelectedTemplate) {
    EXPECT_TRUE(Open([](CUser& u, const CDrivenWindow& dialog) {
        dialog.ClickListItem(IDC_COMPOUND_SOURCE_LIST, 2);  // not enabled as yet
        EXPECT_EQ(dialog.ListSelection(IDC_COMPOUND_SOURCE_LIST), 0);
        dialog.Click(IDC_COMPOUND_SOURCE_TEMPLATE);
        EXPECT_TRUE(dialog.IsEnabled(IDC_COMPOUND_SOURCE_LIST));
        dialog.ClickListItem(IDC_COMPOUND_SOURCE_LIST, 2);
        u.Press(VK_UP);
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(selected, 1);
}

TEST_F(CompoundSourceDialog, GivesATemplateByADoubleClick) {
    EXPECT_TRUE(Open([](CUser&, const CDrivenWindow& dialog) {
        dialog.Click(IDC_COMPOUND_SOURCE_TEMPLATE);
        dialog.ClickListItem(IDC_COMPOUND_SOURCE_LIST, 2, 2);
    }));
    EXPECT_EQ(selected, 2);
}

TEST_F(CompoundSourceDialog, GivesTheFirstTemplateAtFirst) {
    EXPECT_TRUE(Open([](CUser& u, const CDrivenWindow& dialog) {
        u.Press(VK_DOWN);  // by the keyboard
        EXPECT_TRUE(dialog.IsChecked(IDC_COMPOUND_SOURCE_TEMPLATE));
        u.Press(VK_RETURN);
    }));
    EXPECT_EQ(selected, 0);
}

TEST_F(CompoundSourceDialog, DisablesTheListAgain) {
    EXPECT_TRUE(Open([](CUser&, const CDrivenWindow& dialog) {
        dialog.Click(IDC_COMPOUND_SOURCE_TEMPLATE);
        dialog.ClickListItem(IDC_COMPOUND_SOURCE_LIST, 1);
        dialog.Click(IDC_COMPOUND_SOURCE_DATABASE);
        EXPECT_FALSE(dialog.IsEnabled(IDC_COMPOUND_SOURCE_LIST));
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(selected, -1);
}

TEST_F(CompoundSourceDialog, StaysOpenWithoutASelection) {
    EXPECT_FALSE(Open([](CUser& u, const CDrivenWindow& dialog) {
        dialog.Click(IDC_COMPOUND_SOURCE_TEMPLATE);
        u.Send(dialog.Item(IDC_COMPOUND_SOURCE_LIST), LB_SETCURSEL, static_cast<WPARAM>(-1));
        dialog.Click(IDOK);
        EXPECT_FALSE(dialog.IsGone());
        EXPECT_EQ(u.CountDialogs(), 1);  // and says nothing
        dialog.Click(IDCANCEL);
    }));
    EXPECT_EQ(selected, 7);
}

class MaterialDialog : public testing::Test {
protected:
    MaterialDialog() {
        Offer(u"Water", u"H2O", 18.01528, u"7732-18-5", 0.0);
        Offer(u"Sodium ion", u"Na", 22.98977, u"", 1.0);
        Offer(u"Mystery", u"", std::numeric_limits<double>::quiet_NaN(), u"", 0.0);
        Offer(u"Lowest", u"", std::numeric_limits<double>::lowest(), u"", 0.0);
        Offer(u"Chloride", u"Cl", 35.453, u"16887-00-6", std::numeric_limits<double>::quiet_NaN());
        AddKinetic(*definition, u"R1", u"");
    }
    void Offer(const char16_t* name, const char16_t* formula, double weight, const char16_t* cas, double charge) {
        compounds.names.push_back(name);
        compounds.ids.push_back(std::u16string(u"id of ") + name);
        compounds.formulas.push_back(formula);
        compounds.molecularWeights.push_back(weight);
        compounds.casNumbers.push_back(cas);
        compounds.charges.push_back(charge);
    }
    bool Open(const Work& work) {
        CUser user([&](CUser& u) {
            const CDrivenWindow dialog = u.WaitFor(u"Compounds from material template:");
            work(u, dialog);
            dialog.WaitUntilGone();
        });
        return CCompoundsFromMaterialDlg(compounds, *definition, ui).Run(nullptr);
    }

    MaterialCompounds compounds;
    std::unique_ptr<ReactionPackDefinition> definition = MakePackage({u"Water"});
    CBoxUi ui;
};

TEST_F(MaterialDialog, ListsTheCompoundsUnticked) {
    EXPECT_FALSE(Open([](CUser& u, const CDrivenWindow& dialog) {
        const int list = IDC_MATERIAL_COMPOUNDS_LIST;
        ASSERT_EQ(dialog.ColumnCount(list), 4);
        const std::u16string titles[] = {u"Name", u"Formula", u"Mol Weight", u"CAS"};
        for (int column = 0; column < 4; ++column) {
            EXPECT_EQ(dialog.ColumnTitle(list, column), titles[column]);
            const auto text = static_cast<int>(
                u.Send(dialog.Item(list), LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(titles[column].c_str())));
            EXPECT_GT(dialog.ColumnWidth(list, column), text + 12);
        }
        ASSERT_EQ(dialog.RowCount(list), 5);
        const std::u16string cells[] = {u"Sodium ion", u"Na", u"22.9898", u""};
        for (int column = 0; column < 4; ++column) EXPECT_EQ(dialog.Cell(list, 1, column), cells[column]);
        EXPECT_EQ(dialog.Cell(list, 2, 2), u"N/A");
        EXPECT_EQ(dialog.Cell(list, 3, 2), u"N/A");
        EXPECT_EQ(dialog.Cell(list, 4, 3), u"16887-00-6");
        for (int row = 0; row < 5; ++row) EXPECT_FALSE(dialog.IsTicked(list, row));
        dialog.ClickTick(list, 0);
        dialog.ClickTick(list, 4);
        dialog.TakePicture("MaterialCompoundsTicked");
        u.Press(VK_ESCAPE);
    }));
    EXPECT_EQ(definition->compounds.size(), 1U);
}

TEST_F(MaterialDialog, FitsItsColumnsToTheirContents) {
    const std::u16string name = u"2,2,4-trimethyl-1,3-pentanediol monoisobutyrate";
    const std::u16string casNumber = u"25265-77-4 and 77-68-9";
    Offer(name.c_str(), u"C12H24O3", 216.32, casNumber.c_str(), 0.0);
    EXPECT_FALSE(Open([&](CUser& u, const CDrivenWindow& dialog) {
        const int list = IDC_MATERIAL_COMPOUNDS_LIST;
        const auto textWidth = [&](const std::u16string& text) {
            return static_cast<int>(
                u.Send(dialog.Item(list), LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(text.c_str())));
        };
        EXPECT_GT(textWidth(name), textWidth(u"Name") + 100);
        EXPECT_GT(dialog.ColumnWidth(list, 0), textWidth(name) + 16);  // with its box to tick
        EXPECT_LT(dialog.ColumnWidth(list, 0), textWidth(name) + 100);
        EXPECT_GT(dialog.ColumnWidth(list, 3), textWidth(casNumber));
        EXPECT_LT(dialog.ColumnWidth(list, 3), textWidth(casNumber) + 60);
        u.Press(VK_ESCAPE);
    }));
}

TEST_F(MaterialDialog, AddsTheTickedOnes) {
    EXPECT_TRUE(Open([](CUser& u, const CDrivenWindow& dialog) {
        const int list = IDC_MATERIAL_COMPOUNDS_LIST;
        dialog.ClickTick(list, 4);
        dialog.ClickTick(list, 1);
        dialog.ClickTick(list, 0);
        dialog.ClickTick(list, 0);
        EXPECT_FALSE(dialog.IsTicked(list, 0));
        dialog.ClickCell(list, 0);
        u.Press(VK_SPACE);  // by the keyboard
        EXPECT_TRUE(dialog.IsTicked(list, 0));
        dialog.Click(IDOK);
    }));
    ASSERT_EQ(definition->compounds.size(), 4U);
    const CompoundDefinition& ion = *definition->compounds[2];
    EXPECT_EQ(definition->compounds[1]->name.View(), u"Water");  // a second one
    EXPECT_EQ(ion.name.View(), u"Sodium ion");
    EXPECT_EQ(ion.id.View(), u"id of Sodium ion");
    EXPECT_EQ(ion.formula.View(), u"Na");
    EXPECT_TRUE(ion.casNumber.IsAbsent());
    EXPECT_EQ(ion.molecularWeight, 22.98977);
    EXPECT_EQ(ion.charge, 1.0);
    EXPECT_EQ(definition->compounds[3]->charge, 0.0);  // none was given
    EXPECT_EQ(definition->reactions[0]->stoichiometry, (std::vector<double>(4, 0.0)));
}

TEST_F(MaterialDialog, TicksAllOrNoneByAKey) {
    EXPECT_FALSE(Open([](CUser& u, const CDrivenWindow& dialog) {
        const int list = IDC_MATERIAL_COMPOUNDS_LIST;
        const auto ticks = [&] {
            std::string letters;
            for (int row = 0; row < 5; ++row) letters += dialog.IsTicked(list, row) ? '1' : '0';
            return letters;
        };
        EXPECT_TRUE(dialog.HasFocus(list));
        u.Press('A');  // the first letter of a name, if anything
        EXPECT_EQ(ticks(), "00000");
        u.Press('A', {VK_CONTROL});
        EXPECT_EQ(ticks(), "11111");
        dialog.TakePicture("MaterialCompoundsAll");
        u.Press('A', {VK_CONTROL});
        EXPECT_EQ(ticks(), "00000");
        dialog.ClickTick(list, 3);
        u.Press('A', {VK_CONTROL});
        EXPECT_EQ(ticks(), "11111");
        dialog.ClickTick(list, 3);
        EXPECT_EQ(ticks(), "11101");
        u.Press(VK_ESCAPE);
    }));
}

TEST_F(MaterialDialog, AddsNothingWithAnUnknownWeight) {
    EXPECT_TRUE(Open([this](CUser& u, const CDrivenWindow& dialog) {
        const int list = IDC_MATERIAL_COMPOUNDS_LIST;
        dialog.ClickTick(list, 0);
        dialog.ClickTick(list, 2);
        dialog.Click(IDOK);
        u.Answer(ErrorBox(u"Cannot add compound Mystery: molar weight is unknown"), IDOK);
        EXPECT_FALSE(dialog.IsGone());
        EXPECT_EQ(definition->compounds.size(), 1U);
        EXPECT_TRUE(dialog.IsTicked(list, 0));
        dialog.ClickTick(list, 2);
        dialog.ClickTick(list, 3);
        dialog.Click(IDOK);
        u.Answer(ErrorBox(u"Cannot add compound Lowest: molar weight is unknown"), IDOK);
        dialog.ClickTick(list, 3);
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(definition->compounds.size(), 2U);
}

TEST_F(MaterialDialog, EndsWithNothingTicked) {
    EXPECT_TRUE(Open([](CUser& u, const CDrivenWindow&) { u.Press(VK_RETURN); }));
    EXPECT_EQ(definition->compounds.size(), 1U);
}

TEST_F(MaterialDialog, EndsWithoutCompounds) {
    compounds = {};
    EXPECT_TRUE(Open([](CUser&, const CDrivenWindow& dialog) { dialog.Click(IDOK); }));
    EXPECT_EQ(definition->compounds.size(), 1U);
}

TEST_F(MaterialDialog, GoesOnAfterAWantOfMemory) {
    EXPECT_TRUE(Open([this](CUser& u, const CDrivenWindow& dialog) {
        dialog.ClickTick(IDC_MATERIAL_COMPOUNDS_LIST, 0);
        u.OnTestThread([] { FailAllocation(1); });
        dialog.Click(IDOK);
        u.Answer({u"Error:", u"out of memory", MB_OK | MB_ICONERROR}, IDOK);
        EXPECT_EQ(definition->compounds.size(), 1U);
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(definition->compounds.size(), 2U);
}

}  // namespace
}  // namespace reka::test
