// SPDX-License-Identifier: MIT
// Adding compounds from a material template of the simulator, from the button of the page to the definition.

#include <gtest/gtest.h>

#include "EditorFixture.h"
#include "support/FakeMaterialTemplates.h"
#include "support/PcdBytes.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

constexpr const char16_t* sourceTitle = u"Compound source:";
constexpr const char16_t* materialTitle = u"Compounds from material template:";
constexpr const char16_t* fileTitle = u"Add compounds:";
constexpr int list = IDC_MATERIAL_COMPOUNDS_LIST;

class MaterialImportJourney : public EditorFixture {
protected:
    MaterialImportJourney() {
        definition->simulationContext = CComRef<IDispatch>(simulator.Context());
        definition->thermoVersion = ThermoVersion::Version11;
        definition->pcdFile = u"U:/mine.pcd";
        PcdBytes bytes;
        AddPcdRecord(bytes, "steam", "H2O", 18.0F, "7732-18-5");
        Put(definition->pcdFile, bytes, 1);
    }
    ~MaterialImportJourney() override {
        definition->simulationContext.Reset();
        EXPECT_EQ(simulator.Held(), 0);
    }

    /// Presses Add on the page of compounds, does the work, and gives the names that the page shows then.
    std::string Add(const Work& work) {
        std::string names;
        OnPage(EditPage::Compounds, [&](CUser& u, const CDrivenWindow& page) {
            page.Click(IDC_COMPOUNDS_ADD);
            work(u, page);
            u.Settle();
            EXPECT_EQ(u.CountDialogs(), 1);
            for (int row = 0; row < page.RowCount(IDC_COMPOUNDS_LIST); ++row) {
                names += (row > 0 ? "|" : "") + Utf8FromUtf16(page.Cell(IDC_COMPOUNDS_LIST, row, 0));
            }
        });
        return names;
    }
    static void ChooseTemplate(CUser& u, int position) {
        const CDrivenWindow source = u.WaitFor(sourceTitle);
        source.Click(IDC_COMPOUND_SOURCE_TEMPLATE);
        source.ClickListItem(IDC_COMPOUND_SOURCE_LIST, position);
        source.Click(IDOK);
        source.WaitUntilGone();
    }
    /// The file dialog opens at once.
    static void ExpectFileDialog(CUser& u) {
        const CDrivenWindow file = u.WaitFor(fileTitle);
        EXPECT_EQ(file.RowCount(IDC_ADD_COMPOUNDS_LIST), 1);
        file.Click(IDCANCEL);
        file.WaitUntilGone();
    }

    FakeTemplateSimulator simulator;
};

TEST_F(MaterialImportJourney, AddsTheTickedCompoundsOfTheChosenTemplate) {
    EXPECT_EQ(Add([&](CUser& u, const CDrivenWindow& page) {
                  ChooseTemplate(u, 1);
                  const CDrivenWindow compounds = u.WaitFor(materialTitle);
                  EXPECT_EQ(GetWindow(compounds.Get(), GW_OWNER), GetParent(page.Get()));
                  ASSERT_EQ(compounds.RowCount(list), 3);
                  EXPECT_EQ(compounds.Cell(list, 0, 0), u"Water");
                  EXPECT_EQ(compounds.Cell(list, 2, 0), u"Fe");  // which has no name but its identifier
                  EXPECT_EQ(compounds.Cell(list, 2, 2), u"N/A");
                  compounds.ClickTick(list, 1);
                  compounds.Click(IDOK);
                  compounds.WaitUntilGone();
              }),
              "First|Second|Sodium ion");
    EXPECT_EQ(simulator.log.calls[1], "CreateMaterialTemplate('Salts')");
    ASSERT_EQ(definition->compounds.size(), 3U);
    EXPECT_EQ(definition->compounds[2]->charge, 1.0);
    EXPECT_EQ(definition->reactions[0]->stoichiometry, (std::vector<double>{-2.0, 1.0, 0.0}));
}

TEST_F(MaterialImportJourney, AddsNothingWithAnUnknownWeightAmongTheTicked) {
    definition->thermoVersion = ThermoVersion::Version10;
    EXPECT_EQ(Add([](CUser& u, const CDrivenWindow&) {
                  ChooseTemplate(u, 0);
                  const CDrivenWindow compounds = u.WaitFor(materialTitle);
                  EXPECT_EQ(compounds.Cell(list, 0, 0), u"oxidane");
                  EXPECT_EQ(compounds.Cell(list, 2, 2), u"N/A");
                  compounds.ClickTick(list, 0);
                  compounds.ClickTick(list, 2);
                  compounds.Click(IDOK);
                  u.Answer({u"Error:", u"Cannot add compound Fe: molar weight is unknown", errorBox}, IDOK);
                  compounds.Click(IDCANCEL);
                  compounds.WaitUntilGone();
              }),
              "First|Second");
    EXPECT_EQ(definition->compounds.size(), 2U);
}

/// A charge that isn't a number is no error.
TEST_F(MaterialImportJourney, TakesAnOddChargeForNone) {
    simulator.SetConstant("charge of Na+", Text(u"one"));
    EXPECT_EQ(Add([](CUser& u, const CDrivenWindow&) {
                  ChooseTemplate(u, 0);
                  const CDrivenWindow compounds = u.WaitFor(materialTitle);
                  compounds.ClickTick(list, 1);
                  compounds.Click(IDOK);
                  compounds.WaitUntilGone();
              }),
              "First|Second|Sodium ion");
    EXPECT_EQ(definition->compounds[2]->charge, 0.0);
}

/// A simulator may let messages in while it is asked, and the shell is enabled then.
TEST_F(MaterialImportJourney, EndsNoShellDuringACallOfTheSimulator) {
    int calls = 0;
    OnPage(EditPage::Compounds, [&](CUser& u, const CDrivenWindow& page) {
        const HWND shell = GetParent(page.Get());
        u.OnTestThread([&] {
            simulator.log.onCall = [shell, &calls](const std::string&) {
                ++calls;
                PressMeanwhile(shell, {IDOK, IDCANCEL});
            };
        });
        page.Click(IDC_COMPOUNDS_ADD);
        ChooseTemplate(u, 1);
        const CDrivenWindow compounds = u.WaitFor(materialTitle);
        EXPECT_EQ(GetWindow(compounds.Get(), GW_OWNER), shell);
        EXPECT_TRUE(IsWindowVisible(shell));
        compounds.ClickTick(list, 1);
        compounds.Click(IDOK);
        compounds.WaitUntilGone();
        u.OnTestThread([&] { simulator.log.onCall = nullptr; });
        EXPECT_EQ(u.CountDialogs(), 1);
        EXPECT_EQ(page.RowCount(IDC_COMPOUNDS_LIST), 3);
    });
    EXPECT_GT(calls, 2);
}

TEST_F(MaterialImportJourney, EndsWithTheWindowThatItBelongsTo) {
    const HWND owner = CreateWindowExW(0, L"STATIC", L"Simulator", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 100,
                                       nullptr, nullptr, nullptr, nullptr);
    simulator.log.onCall = [owner](const std::string&) { DestroyWindow(owner); };
    CUser user([](CUser& u) {
        const CDrivenWindow page = OpenPage(u, u.WaitFor(u"Edit:"), EditPage::Compounds);
        page.Click(IDC_COMPOUNDS_ADD);
        page.WaitUntilGone();
        EXPECT_EQ(u.CountDialogs(), 0);  // it asks for no template above what is gone
    });
    EXPECT_FALSE(CEditorWindows(owner).EditPackage(*definition));
    user.Finish();
    simulator.log.onCall = nullptr;
    EXPECT_EQ(definition->compounds.size(), 2U);
}

TEST_F(MaterialImportJourney, GoesOnToTheFileForTheDatabase) {
    EXPECT_EQ(Add([](CUser& u, const CDrivenWindow&) {
                  const CDrivenWindow source = u.WaitFor(sourceTitle);
                  source.Click(IDOK);
                  source.WaitUntilGone();
                  ExpectFileDialog(u);
              }),
              "First|Second");
}

TEST_F(MaterialImportJourney, EndsWithCancelOfTheSource) {
    EXPECT_EQ(Add([](CUser& u, const CDrivenWindow&) {
                  const CDrivenWindow source = u.WaitFor(sourceTitle);
                  u.Press(VK_ESCAPE);
                  source.WaitUntilGone();
              }),
              "First|Second");
}

TEST_F(MaterialImportJourney, AsksForNoSourceWithoutASimulator) {
    definition->simulationContext.Reset();
    EXPECT_EQ(Add([](CUser& u, const CDrivenWindow&) { ExpectFileDialog(u); }), "First|Second");
}

TEST_F(MaterialImportJourney, AsksForNoSourceWithoutTemplates) {
    simulator.context.templateNames = Strings({});
    EXPECT_EQ(Add([](CUser& u, const CDrivenWindow&) { ExpectFileDialog(u); }), "First|Second");
}

struct ImportFailure {
    const char* name;
    void (*prepare)(FakeTemplateSimulator& simulator);
    ThermoVersion version;
    const char16_t* text;
    std::uint32_t style;
};
const ImportFailure importFailures[] = {
    {"NoTemplate", [](FakeTemplateSimulator& s) { s.context.made = nullptr; }, ThermoVersion::Version11,
     u"Failed to create selected material template", errorBox},
    {"NoTemplateInterface", [](FakeTemplateSimulator& s) { s.materialTemplate.offersTemplate = false; },
     ThermoVersion::Version11,
     u"Failed to obtain ICapeThermoMaterialTemplate interface from selected material template", errorBox},
    {"NoMaterial", [](FakeTemplateSimulator& s) { s.materialTemplate.material = nullptr; }, ThermoVersion::Version11,
     u"Failed to create material object from selected material template", messagestyle::ok},
    {"NoCompoundInterface", [](FakeTemplateSimulator& s) { s.material.offersCompounds = false; },
     ThermoVersion::Version11, u"Failed to get ICapeThermoCompounds interface from material object", errorBox},
    {"NoCompoundList", [](FakeTemplateSimulator& s) { s.material.listResult = E_FAIL; }, ThermoVersion::Version11,
     u"Failed to get list of compound IDs from material object", errorBox},
    {"FewerNames", [](FakeTemplateSimulator& s) { s.material.names = Strings({u"Water"}); }, ThermoVersion::Version11,
     u"Number of compound names does not match number of compounds in GetCompoundList from material object", errorBox},
    {"NoCompounds", [](FakeTemplateSimulator& s) { s.material.componentIds = Strings({}); }, ThermoVersion::Version10,
     u"There are no compound definitions for the selected material template", errorBox},
};
class MaterialImportFailures : public MaterialImportJourney, public testing::WithParamInterface<ImportFailure> {};
TEST_P(MaterialImportFailures, AreToldAndEndTheAction) {
    const ImportFailure& row = GetParam();
    row.prepare(simulator);
    definition->thermoVersion = row.version;
    EXPECT_EQ(Add([&row](CUser& u, const CDrivenWindow&) {
                  ChooseTemplate(u, 0);
                  u.Answer({u"Error:", row.text, row.style}, IDOK);
              }),
              "First|Second");
}
INSTANTIATE_TEST_SUITE_P(Table, MaterialImportFailures, testing::ValuesIn(importFailures),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace reka::test
