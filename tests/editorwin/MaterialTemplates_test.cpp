// The button Add of the compounds page where the simulator offers material templates.

#include <gtest/gtest.h>

#include "EditorFixture.h"
#include "support/FakeMaterialTemplates.h"
#include "support/PcdBytes.h"

namespace reka::test {
namespace {

class MaterialTemplates : public EditorFixture {
protected:
    MaterialTemplates() {
        definition->simulationContext = CComRef<IDispatch>(simulator.Context());
        definition->thermoVersion = ThermoVersion::Version11;
        definition->pcdFile = u"U:/mine.pcd";
        PcdBytes bytes;
        AddPcdRecord(bytes, "steam", "H2O", 18.0F, "7732-18-5");
        Put(definition->pcdFile, bytes, 1);
    }
    ~MaterialTemplates() override {
        definition->simulationContext.Reset();
        EXPECT_EQ(simulator.Held(), 0);
    }

    /// The dialog of the source, which Add opens.
    static CDrivenWindow OpenSource(CUser& u, const CDrivenWindow& page) {
        page.Click(IDC_COMPOUNDS_ADD);
        return WaitForDialogOf(u, page);
    }
    /// These dialogs have no title that is settled: the one that lies above the shell.
    static CDrivenWindow WaitForDialogOf(CUser& u, const CDrivenWindow& page) {
        const HWND shell = GetParent(page.Get());
        HWND above = nullptr;
        u.WaitUntil("a dialog above the shell", [&] {
            above = GetForegroundWindow();
            return above != shell && GetWindow(above, GW_OWNER) == shell && IsWindowEnabled(above);
        });
        u.Settle();
        return {u, above};
    }
    static void ChooseTemplate(const CDrivenWindow& source, int index) {
        source.Click(IDC_COMPOUND_SOURCE_TEMPLATE);
        source.ClickListItem(IDC_COMPOUND_SOURCE_LIST, index);
        source.Click(IDOK);
        source.WaitUntilGone();
    }

    FakeTemplateSimulator simulator;
};

TEST_F(MaterialTemplates, GiveTheirCompounds) {
    OnPage(EditPage::Compounds, [this](CUser& u, const CDrivenWindow& page) {
        const CDrivenWindow source = OpenSource(u, page);
        EXPECT_EQ(source.ListText(IDC_COMPOUND_SOURCE_LIST, 1), u"Salts");
        ChooseTemplate(source, 1);
        EXPECT_EQ(simulator.log.calls[1], "CreateMaterialTemplate('Salts')");
        const CDrivenWindow offered = WaitForDialogOf(u, page);
        ASSERT_EQ(offered.RowCount(IDC_MATERIAL_COMPOUNDS_LIST), 3);
        offered.ClickTick(IDC_MATERIAL_COMPOUNDS_LIST, 2);  // of which nothing is known
        offered.ClickTick(IDC_MATERIAL_COMPOUNDS_LIST, 0);
        offered.Click(IDOK);
        u.Answer({u"Error:", u"Cannot add compound Fe: molar weight is unknown", errorBox}, IDOK);
        EXPECT_EQ(definition->compounds.size(), 2U);
        offered.ClickTick(IDC_MATERIAL_COMPOUNDS_LIST, 2);
        offered.ClickTick(IDC_MATERIAL_COMPOUNDS_LIST, 1);
        offered.Click(IDOK);
        offered.WaitUntilGone();
        ASSERT_EQ(page.RowCount(IDC_COMPOUNDS_LIST), 4);
        EXPECT_EQ(page.Cell(IDC_COMPOUNDS_LIST, 2, 0), u"Water");
        EXPECT_EQ(page.Cell(IDC_COMPOUNDS_LIST, 2, 1), u"H2O");
        EXPECT_EQ(page.Cell(IDC_COMPOUNDS_LIST, 3, 5), u"1");  // the ion's charge
        EXPECT_EQ(u.CountDialogs(), 1);                        // the file isn't offered then
        EXPECT_EQ(definition->reactions[0]->stoichiometry, (std::vector<double>{-2.0, 1.0, 0.0, 0.0}));
    });
}

TEST_F(MaterialTemplates, LeaveTheChoiceOfTheFile) {
    OnPage(EditPage::Compounds, [](CUser& u, const CDrivenWindow& page) {
        OpenSource(u, page).Click(IDOK);  // "From database"
        const CDrivenWindow add = u.WaitFor(u"Add compounds:");
        add.ClickCell(IDC_ADD_COMPOUNDS_LIST, 0, 0, 2);
        add.WaitUntilGone();
        EXPECT_EQ(page.RowCount(IDC_COMPOUNDS_LIST), 3);
    });
}

TEST_F(MaterialTemplates, EndTheAddingWhenTheyAreCancelled) {
    OnPage(EditPage::Compounds, [](CUser& u, const CDrivenWindow& page) {
        const CDrivenWindow source = OpenSource(u, page);
        u.Press(VK_ESCAPE);
        source.WaitUntilGone();
        u.Settle();
        EXPECT_EQ(u.CountDialogs(), 1);
        ChooseTemplate(OpenSource(u, page), 0);
        const CDrivenWindow offered = WaitForDialogOf(u, page);
        offered.Click(IDCANCEL);
        offered.WaitUntilGone();
        u.Settle();
        EXPECT_EQ(u.CountDialogs(), 1);
        EXPECT_EQ(page.RowCount(IDC_COMPOUNDS_LIST), 2);
    });
}

TEST_F(MaterialTemplates, TellWhatTheSimulatorFailsAt) {
    OnPage(EditPage::Compounds, [this](CUser& u, const CDrivenWindow& page) {
        simulator.material.offersCompounds = false;
        ChooseTemplate(OpenSource(u, page), 0);
        u.Answer({u"Error:", u"Failed to get ICapeThermoCompounds interface from material object", errorBox}, IDOK);
        simulator.materialTemplate.material = nullptr;
        ChooseTemplate(OpenSource(u, page), 0);
        u.Answer({u"Error:", u"Failed to create material object from selected material template", messagestyle::ok},
                 IDOK);
        EXPECT_EQ(page.RowCount(IDC_COMPOUNDS_LIST), 2);
    });
}

TEST_F(MaterialTemplates, AreNotOfferedWhereThereAreNone) {
    simulator.context.templateNames = CVariant();
    OnPage(EditPage::Compounds, [](CUser& u, const CDrivenWindow& page) {
        page.Click(IDC_COMPOUNDS_ADD);
        const CDrivenWindow add = u.WaitFor(u"Add compounds:");
        add.Click(IDCANCEL);
        add.WaitUntilGone();
    });
}

}  // namespace
}  // namespace reka::test
