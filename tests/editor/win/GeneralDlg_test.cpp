// SPDX-License-Identifier: MIT
// The page of the name, the description and the thermo version, as a person sees it.

#include <gtest/gtest.h>

#include "ControlTable.h"
#include "EditorFixture.h"

namespace reka::test {
namespace {

class GeneralPageDialog : public EditorFixture {};

TEST_F(GeneralPageDialog, HasTheControlsOfTheGeneralPage) {
    OnPage(EditPage::General, [](CUser& u, const CDrivenWindow& page) {
        CheckControls(u, page.Get(),
                      {{IDC_GENERAL_GENERAL_GROUP, u"Button", u"General:", BS_GROUPBOX},
                       {anyLabel, u"Static", u"Name:"},
                       {IDC_GENERAL_NAME, u"Edit", u"Mine", ES_AUTOHSCROLL | WS_TABSTOP, ES_READONLY},
                       {anyLabel, u"Static", u"Description:"},
                       {IDC_GENERAL_DESCRIPTION, u"Edit", u"About it", ES_AUTOHSCROLL | WS_TABSTOP, ES_READONLY},
                       {IDC_GENERAL_STANDARD_GROUP, u"Button", u"Standard:", BS_GROUPBOX},
                       {anyLabel, u"Static", u"CAPE-OPEN thermo version:"},
                       {IDC_GENERAL_THERMO_VERSION, u"ComboBox", u"Version 1.0", CBS_DROPDOWNLIST | WS_TABSTOP}});
        EXPECT_EQ(page.ListCount(IDC_GENERAL_THERMO_VERSION), 2);
        EXPECT_EQ(page.ListText(IDC_GENERAL_THERMO_VERSION, 0), u"Version 1.0");
        EXPECT_EQ(page.ListText(IDC_GENERAL_THERMO_VERSION, 1), u"Version 1.1");
    });
}

TEST_F(GeneralPageDialog, FillsTheGeneralPageFromTheDefinition) {
    definition->description.Reset();
    definition->thermoVersion = ThermoVersion::Version11;
    OnPage(EditPage::General, [](CUser&, const CDrivenWindow& page) {
        EXPECT_EQ(page.Text(IDC_GENERAL_DESCRIPTION), u"");
        EXPECT_EQ(page.Text(IDC_GENERAL_THERMO_VERSION), u"Version 1.1");
    });
}

TEST_F(GeneralPageDialog, TakesTheGeneralPageAtOk) {
    EXPECT_TRUE(EditPackage(*definition, [](CUser& u, const CDrivenWindow& shell) {
        const CDrivenWindow page = VisiblePage(u, shell);
        page.Fill(IDC_GENERAL_NAME, u"N\u00E4me & \u4E2D");
        page.Fill(IDC_GENERAL_DESCRIPTION, u"");
        page.ChooseComboItem(IDC_GENERAL_THERMO_VERSION, 1);
        shell.Click(IDOK);
    }));
    EXPECT_EQ(definition->name.View(), u"N\u00E4me & \u4E2D");
    EXPECT_TRUE(definition->description.IsAbsent());
    EXPECT_EQ(definition->thermoVersion, ThermoVersion::Version11);
}

TEST_F(GeneralPageDialog, WidensTheGeneralPage) {
    OnPage(EditPage::General, [](CUser& u, const CDrivenWindow& page) {
        const CDrivenWindow shell(u, GetParent(page.Get()));
        const int controls[] = {IDC_GENERAL_GENERAL_GROUP, IDC_GENERAL_STANDARD_GROUP, IDC_GENERAL_NAME,
                                IDC_GENERAL_DESCRIPTION, IDC_GENERAL_THERMO_VERSION};
        RECT before[5] = {};
        for (int i = 0; i < 5; ++i) before[i] = PlaceOf(page.Item(controls[i]));
        shell.DragCorner(70, 50);
        for (int i = 0; i < 5; ++i) {
            const RECT after = PlaceOf(page.Item(controls[i]));
            EXPECT_EQ(after.left, before[i].left) << controls[i];
            EXPECT_EQ(after.right, before[i].right + 70) << controls[i];
            EXPECT_EQ(after.top, before[i].top) << controls[i];
            EXPECT_EQ(after.bottom, before[i].bottom) << controls[i];
        }
        const RECT group = PlaceOf(page.Item(IDC_GENERAL_GENERAL_GROUP));
        const RECT around = PlaceOf(page.Get());
        EXPECT_EQ(around.right - group.right, group.left - around.left);
        // The list still opens to its full height.
        RECT open = {};
        u.Send(page.Item(IDC_GENERAL_THERMO_VERSION), CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&open));
        EXPECT_GT(open.bottom - open.top, 2 * (before[4].bottom - before[4].top));
    });
}

TEST_F(GeneralPageDialog, TakesTextsOfAnyLength) {
    const std::u16string longText(40000, u'x');
    definition->name = CBstr::Make(longText);
    EXPECT_TRUE(EditPackage(*definition, [&](CUser& u, const CDrivenWindow& shell) {
        const CDrivenWindow page = VisiblePage(u, shell);
        EXPECT_EQ(page.Text(IDC_GENERAL_NAME), longText);
        page.FocusOn(IDC_GENERAL_NAME);
        u.Press(VK_END);
        u.Type(u"yz");
        shell.Click(IDOK);
    }));
    EXPECT_EQ(definition->name.View(), longText + u"yz");
}

}  // namespace
}  // namespace reka::test
