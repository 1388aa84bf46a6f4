// SPDX-License-Identifier: MIT
// The reactions page as a person sees it: its controls and its fields.

#include <gtest/gtest.h>

#include "ControlTable.h"
#include "Icons.h"
#include "ReactionsPage.h"

namespace reka::test {
namespace {

TEST_F(ReactionsPage, HasItsControls) {
    OnReactions([](CUser& u, const CDrivenWindow& page) {
        CheckControls(
            u, page.Get(),
            {{IDC_REACTIONS_LIST_LABEL, u"Static", u"Reaction:"},
             {IDC_REACTIONS_LIST, u"ListBox", nullptr, LBS_NOTIFY | WS_TABSTOP, LBS_SORT},
             {IDC_REACTIONS_CREATE, u"Button", u"&Create", WS_TABSTOP},
             {IDC_REACTIONS_RENAME, u"Button", u"&Rename", WS_TABSTOP},
             {IDC_REACTIONS_DELETE, u"Button", u"&Delete", WS_TABSTOP},
             {IDC_REACTIONS_PROPERTIES_GROUP, u"Button", u"Reaction properties:", BS_GROUPBOX},
             {IDC_REACTIONS_HEADING, u"Static", u"R1", SS_NOPREFIX},
             {anyLabel, u"Static", u"Stoichiometry:", 0, WS_VISIBLE, true, false},
             {IDC_REACTIONS_STOICHIOMETRY, u"SysListView32", nullptr,
              LVS_REPORT | LVS_SHOWSELALWAYS | LVS_EDITLABELS | WS_TABSTOP},
             {IDC_REACTIONS_EQUILIBRIUM, u"Button", u"Equilibrium Reaction", BS_AUTOCHECKBOX | WS_TABSTOP},
             {IDC_REACTIONS_HETEROGENEOUS, u"Button", u"Heterogeneous", BS_AUTOCHECKBOX | WS_TABSTOP},
             {IDC_REACTIONS_RATE_LABEL, u"Static", u"Rate:"},
             {IDC_REACTIONS_RATE, u"Edit", u"2*T", ES_AUTOHSCROLL | WS_TABSTOP, ES_READONLY},
             {IDC_REACTIONS_RATE_WIZARD, u"Button", u"Reaction rate wizard", BS_ICON | WS_TABSTOP},
             {IDC_REACTIONS_EDIT_RATE, u"Button", u"Edit rate", BS_ICON | WS_TABSTOP},
             {IDC_REACTIONS_RATE_UNIT, u"Static", u"mol/s/m³", SS_NOPREFIX},
             {IDC_REACTIONS_EQUILIBRIUM_CONSTANT_LABEL, u"Static", u"Equilibrium constant:"},
             {IDC_REACTIONS_EQUILIBRIUM_CONSTANT, u"Edit", u"", ES_AUTOHSCROLL | WS_TABSTOP, ES_READONLY, false},
             {IDC_REACTIONS_EDIT_EQUILIBRIUM_CONSTANT, u"Button", u"Edit equilibrium constant", BS_ICON | WS_TABSTOP, 0,
              false},
             {IDC_REACTIONS_EQUILIBRIUM_CONSTANT_UNIT, u"Static", u"m³/mol", SS_NOPREFIX},
             {IDC_REACTIONS_BASIS_LABEL, u"Static", u"Equilibrium basis:"},
             {IDC_REACTIONS_BASIS, u"ComboBox", u"Molarity", CBS_DROPDOWNLIST | CBS_SORT | WS_TABSTOP, 0, false},
             {IDC_REACTIONS_HEAT_LABEL, u"Static", u"Heat of reaction:"},
             {IDC_REACTIONS_HEAT, u"Edit", u"-1000", ES_AUTOHSCROLL | WS_TABSTOP, ES_READONLY},
             {IDC_REACTIONS_EDIT_HEAT, u"Button", u"Edit heat of reaction", BS_ICON | WS_TABSTOP},
             {IDC_REACTIONS_HEAT_UNIT, u"Static", u"J / mol"},
             {IDC_REACTIONS_PHASE_LABEL, u"Static", u"Phase:"},
             {IDC_REACTIONS_PHASE, u"ComboBox", u"Liquid", CBS_DROPDOWN | WS_TABSTOP, CBS_SORT}});
        ASSERT_EQ(page.ColumnCount(IDC_REACTIONS_STOICHIOMETRY), 2);
        EXPECT_EQ(page.ColumnTitle(IDC_REACTIONS_STOICHIOMETRY, 0), u"Stoichiometry");
        EXPECT_EQ(page.ColumnWidth(IDC_REACTIONS_STOICHIOMETRY, 0), ScalePixels(80, ScreenDpi()));
        EXPECT_EQ(page.ColumnTitle(IDC_REACTIONS_STOICHIOMETRY, 1), u"Compound");
        EXPECT_EQ(page.ColumnWidth(IDC_REACTIONS_STOICHIOMETRY, 1), ScalePixels(180, ScreenDpi()));
        for (const int button : {IDC_REACTIONS_RATE_WIZARD, IDC_REACTIONS_EDIT_RATE,
                                 IDC_REACTIONS_EDIT_EQUILIBRIUM_CONSTANT, IDC_REACTIONS_EDIT_HEAT}) {
            EXPECT_NE(u.Send(page.Item(button), BM_GETIMAGE, IMAGE_ICON), 0) << button;
        }
        EXPECT_NE(u.Send(page.Item(IDC_REACTIONS_RATE_WIZARD), BM_GETIMAGE, IMAGE_ICON),
                  u.Send(page.Item(IDC_REACTIONS_EDIT_RATE), BM_GETIMAGE, IMAGE_ICON));
    });
}

TEST_F(ReactionsPage, OffersPhasesAndBases) {
    OnReactions([](CUser&, const CDrivenWindow& page) {
        const Names phases = {u"Liquid", u"Vapor", u"Solid"};
        const Names bases = {u"Activity",     u"Concentration", u"Fugacity",
                             u"MassFraction", u"Molarity",      u"MoleFraction"};  // sorted
        ASSERT_EQ(page.ListCount(IDC_REACTIONS_PHASE), 3);
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(page.ListText(IDC_REACTIONS_PHASE, i), phases[static_cast<std::size_t>(i)]);
        ASSERT_EQ(page.ListCount(IDC_REACTIONS_BASIS), 6);
        for (int i = 0; i < 6; ++i)
            EXPECT_EQ(page.ListText(IDC_REACTIONS_BASIS, i), bases[static_cast<std::size_t>(i)]);
    });
}

TEST_F(ReactionsPage, ShowsTheSelectedReaction) {
    OnReactions([](CUser&, const CDrivenWindow& page) {
        EXPECT_EQ(Listed(page), (Names{u"R1", u"R2"}));
        EXPECT_EQ(page.ListSelection(IDC_REACTIONS_LIST), 0);
        EXPECT_FALSE(page.IsChecked(IDC_REACTIONS_EQUILIBRIUM));
        EXPECT_FALSE(page.IsChecked(IDC_REACTIONS_HETEROGENEOUS));
        page.ClickListItem(IDC_REACTIONS_LIST, 1);
        EXPECT_EQ(page.Text(IDC_REACTIONS_HEADING), u"R2");
        EXPECT_TRUE(page.IsChecked(IDC_REACTIONS_EQUILIBRIUM));
        EXPECT_TRUE(page.IsChecked(IDC_REACTIONS_HETEROGENEOUS));
        ASSERT_EQ(page.RowCount(IDC_REACTIONS_STOICHIOMETRY), 2);
        EXPECT_EQ(page.Cell(IDC_REACTIONS_STOICHIOMETRY, 0, 0), u"1");
        EXPECT_EQ(page.Cell(IDC_REACTIONS_STOICHIOMETRY, 0, 1), u"First");
        EXPECT_EQ(page.Cell(IDC_REACTIONS_STOICHIOMETRY, 1, 1), u"second id");
        EXPECT_EQ(page.Text(IDC_REACTIONS_RATE), u"left from before");
        EXPECT_EQ(page.Text(IDC_REACTIONS_EQUILIBRIUM_CONSTANT), u"EXP(5)");
        EXPECT_EQ(page.Text(IDC_REACTIONS_HEAT), u"");
        EXPECT_EQ(page.Text(IDC_REACTIONS_PHASE), u"Plasma");
        EXPECT_EQ(page.Text(IDC_REACTIONS_BASIS), u"Fugacity");
        EXPECT_EQ(page.Text(IDC_REACTIONS_RATE_UNIT), u"mol/s/kg cat");
        EXPECT_EQ(page.Text(IDC_REACTIONS_EQUILIBRIUM_CONSTANT_UNIT), u"Pa²");
        for (const int control : {IDC_REACTIONS_RATE, IDC_REACTIONS_RATE_WIZARD, IDC_REACTIONS_EDIT_RATE}) {
            EXPECT_FALSE(page.IsEnabled(control)) << control;
        }
        for (const int control : {IDC_REACTIONS_EQUILIBRIUM_CONSTANT, IDC_REACTIONS_EDIT_EQUILIBRIUM_CONSTANT,
                                  IDC_REACTIONS_BASIS, IDC_REACTIONS_HEAT, IDC_REACTIONS_PHASE}) {
            EXPECT_TRUE(page.IsEnabled(control)) << control;
        }
    });
}

TEST_F(ReactionsPage, OffersTheListAndCreateAloneWithoutReactions) {
    definition->reactions.clear();
    OnReactions([](CUser& u, const CDrivenWindow& page) {
        EXPECT_EQ(page.Text(IDC_REACTIONS_HEADING), u"<no reaction selected>");
        for (HWND child = GetWindow(page.Get(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            const int control = GetDlgCtrlID(child);
            EXPECT_EQ(IsWindowEnabled(child) != FALSE, control == IDC_REACTIONS_LIST || control == IDC_REACTIONS_CREATE)
                << control;
        }
        EXPECT_EQ(page.RowCount(IDC_REACTIONS_STOICHIOMETRY), 0);
        ShellOf(u, page).TakePicture("106-empty");
        page.ClickListItem(IDC_REACTIONS_LIST, 0, 2);  // beside any item
        EXPECT_EQ(u.CountDialogs(), 1);
    });
}

// Fields

TEST_F(ReactionsPage, WritesItsFieldsAtOnce) {
    OnReactions([this](CUser& u, const CDrivenWindow& page) {
        page.Fill(IDC_REACTIONS_RATE, u"3*");
        EXPECT_EQ(Reaction(0).rateEquation, u"3*");  // faulty or not
        u.Type(u"T");
        EXPECT_EQ(Reaction(0).rateEquation, u"3*T");
        page.Fill(IDC_REACTIONS_HEAT, u"");
        EXPECT_EQ(Reaction(0).heatEquation, u"");
        page.ClickListItem(IDC_REACTIONS_LIST, 1);
        EXPECT_EQ(Reaction(1).rateEquation, u"left from before");
        page.Fill(IDC_REACTIONS_EQUILIBRIUM_CONSTANT, u"(");
        EXPECT_EQ(Reaction(1).equilibriumConstantEquation, u"(");
        EXPECT_EQ(Reaction(0).equilibriumConstantEquation, u"");
    });
}

TEST_F(ReactionsPage, TakesTypedAndChosenPhases) {
    OnReactions([this](CUser&, const CDrivenWindow& page) {
        page.Fill(IDC_REACTIONS_PHASE, u"Supercritical");
        EXPECT_EQ(Reaction(0).phase.View(), u"Supercritical");
        page.ChooseComboItem(IDC_REACTIONS_PHASE, 1);
        EXPECT_EQ(Reaction(0).phase.View(), u"Vapor");
        EXPECT_EQ(page.Text(IDC_REACTIONS_PHASE), u"Vapor");
        page.Fill(IDC_REACTIONS_PHASE, u"");
        EXPECT_TRUE(Reaction(0).phase.IsAbsent());
    });
}

TEST_F(ReactionsPage, TakesTheSamePhaseForAnotherReaction) {
    OnReactions([this](CUser& u, const CDrivenWindow& page) {
        page.ChooseComboItem(IDC_REACTIONS_PHASE, 1);
        EXPECT_EQ(Reaction(0).phase.View(), u"Vapor");
        page.ClickListItem(IDC_REACTIONS_LIST, 1);
        EXPECT_EQ(page.Text(IDC_REACTIONS_PHASE), u"Plasma");
        page.ChooseComboItem(IDC_REACTIONS_PHASE, 1);
        EXPECT_EQ(Reaction(1).phase.View(), u"Vapor");
        page.Fill(IDC_REACTIONS_PHASE, u"Gas");
        u.Press(VK_F4);  // opens the list
        u.Press(VK_HOME);
        u.Press(VK_DOWN);
        u.Press(VK_RETURN);
        EXPECT_EQ(Reaction(1).phase.View(), page.Text(IDC_REACTIONS_PHASE));
        EXPECT_EQ(u.CountDialogs(), 1);
    });
}

TEST_F(ReactionsPage, TicksEquilibrium) {
    OnReactions([this](CUser&, const CDrivenWindow& page) {
        page.Click(IDC_REACTIONS_EQUILIBRIUM);
        EXPECT_EQ(Reaction(0).type, ReactionType::Equilibrium);
        EXPECT_EQ(Reaction(0).rateEquation, u"2*T");
        EXPECT_EQ(page.Text(IDC_REACTIONS_RATE), u"2*T");
        for (const int control : {IDC_REACTIONS_RATE, IDC_REACTIONS_RATE_WIZARD, IDC_REACTIONS_EDIT_RATE}) {
            EXPECT_FALSE(page.IsEnabled(control)) << control;
        }
        for (const int control : {IDC_REACTIONS_EQUILIBRIUM_CONSTANT, IDC_REACTIONS_EDIT_EQUILIBRIUM_CONSTANT,
                                  IDC_REACTIONS_BASIS, IDC_REACTIONS_HEAT, IDC_REACTIONS_EDIT_HEAT}) {
            EXPECT_TRUE(page.IsEnabled(control)) << control;
        }
        page.Click(IDC_REACTIONS_EQUILIBRIUM);
        EXPECT_EQ(Reaction(0).type, ReactionType::Kinetic);
        EXPECT_TRUE(page.IsEnabled(IDC_REACTIONS_RATE));
        EXPECT_FALSE(page.IsEnabled(IDC_REACTIONS_BASIS));
    });
}

TEST_F(ReactionsPage, TicksHeterogeneous) {
    OnReactions([this](CUser&, const CDrivenWindow& page) {
        page.Click(IDC_REACTIONS_HETEROGENEOUS);
        EXPECT_EQ(Reaction(0).rateBasis, RateBasis::Heterogeneous);
        EXPECT_EQ(page.Text(IDC_REACTIONS_RATE_UNIT), u"mol/s/kg cat");
        page.Click(IDC_REACTIONS_HETEROGENEOUS);
        EXPECT_EQ(Reaction(0).rateBasis, RateBasis::Homogeneous);
        EXPECT_EQ(page.Text(IDC_REACTIONS_RATE_UNIT), u"mol/s/m³");
    });
}

TEST_F(ReactionsPage, ShowsTheUnitOfTheChosenBasis) {
    struct Expected {
        EquilibriumBasis basis;
        const char16_t* unit;
    };
    const Expected sorted[] = {{EquilibriumBasis::Activity, u""},         {EquilibriumBasis::Concentration, u"kg²/m^6"},
                               {EquilibriumBasis::Fugacity, u"Pa²"},      {EquilibriumBasis::MassFraction, u""},
                               {EquilibriumBasis::Molarity, u"mol²/m^6"}, {EquilibriumBasis::MoleFraction, u""}};
    OnReactions([&](CUser&, const CDrivenWindow& page) {
        page.ClickListItem(IDC_REACTIONS_LIST, 1);
        for (int item = 0; item < 6; ++item) {
            page.ChooseComboItem(IDC_REACTIONS_BASIS, item);
            EXPECT_EQ(Reaction(1).equilibriumBasis, sorted[item].basis) << item;
            EXPECT_EQ(page.Text(IDC_REACTIONS_EQUILIBRIUM_CONSTANT_UNIT), sorted[item].unit) << item;
        }
        EXPECT_EQ(Reaction(0).equilibriumBasis, EquilibriumBasis::Molarity);
    });
}

TEST_F(ReactionsPage, ShowsNoBasisForANumberThatIsNone) {
    Reaction(0).equilibriumBasis = static_cast<EquilibriumBasis>(9);
    OnReactions([this](CUser&, const CDrivenWindow& page) {
        page.ClickListItem(IDC_REACTIONS_LIST, 1);
        EXPECT_EQ(page.Text(IDC_REACTIONS_BASIS), u"Fugacity");
        page.ClickListItem(IDC_REACTIONS_LIST, 0);
        EXPECT_EQ(page.ListSelection(IDC_REACTIONS_BASIS), -1);
        EXPECT_EQ(page.Text(IDC_REACTIONS_BASIS), u"");
        EXPECT_EQ(Reaction(0).equilibriumBasis, static_cast<EquilibriumBasis>(9));
    });
}

/// To open the list completes what was typed.
TEST_F(ReactionsPage, RecordsThePhaseThatTheFieldShowsAfterItsListWasOpen) {
    OnReactions([this](CUser& u, const CDrivenWindow& page) {
        for (const WORD key : {WORD{VK_UP}, WORD{VK_F4}}) {
            page.Fill(IDC_REACTIONS_PHASE, u"So");
            EXPECT_EQ(Reaction(0).phase.View(), u"So");
            u.Press(VK_DOWN, {VK_MENU});
            if (key == VK_UP) u.Press(VK_UP, {VK_MENU});
            if (key == VK_F4) u.Press(VK_F4);
            EXPECT_EQ(u.Send(page.Item(IDC_REACTIONS_PHASE), CB_GETDROPPEDSTATE), 0);
            EXPECT_EQ(Reaction(0).phase.View(), page.Text(IDC_REACTIONS_PHASE));
        }
        u.Press(VK_DOWN, {VK_MENU});
        u.Press(VK_ESCAPE);
        EXPECT_EQ(Reaction(0).phase.View(), page.Text(IDC_REACTIONS_PHASE));
    });
}

TEST_F(ReactionsPage, ShowsWhatItsSmallButtonsDo) {
    OnReactions([](CUser& u, const CDrivenWindow& page) {
        const std::pair<int, int> icons[] = {{IDC_REACTIONS_RATE_WIZARD, IDI_RATE_WIZARD},
                                             {IDC_REACTIONS_EDIT_RATE, IDI_EDIT_EXPRESSION},
                                             {IDC_REACTIONS_EDIT_EQUILIBRIUM_CONSTANT, IDI_EDIT_EXPRESSION},
                                             {IDC_REACTIONS_EDIT_HEAT, IDI_EDIT_EXPRESSION}};
        for (const auto& [button, icon] : icons) {
            ExpectIcon(u.Send(page.Item(button), BM_GETIMAGE, IMAGE_ICON), icon, SM_CXSMICON);
        }
    });
}

TEST_F(ReactionsPage, MakesRoomForLongUnits) {
    Reaction(1).stoichiometry = {-0.123456, 2.654321};
    Reaction(1).equilibriumBasis = EquilibriumBasis::Concentration;
    OnReactions([](CUser& u, const CDrivenWindow& page) {
        const auto width = [&](int control) {
            const RECT place = PlaceOf(page.Item(control));
            return place.right - place.left;
        };
        ShellOf(u, page).DragCorner(200, 0);
        const LONG usual = width(IDC_REACTIONS_RATE_UNIT);
        page.ClickListItem(IDC_REACTIONS_LIST, 1);
        page.TakePicture("106-long-unit");
        EXPECT_GT(width(IDC_REACTIONS_EQUILIBRIUM_CONSTANT_UNIT), usual);
        EXPECT_EQ(PlaceOf(page.Item(IDC_REACTIONS_EQUILIBRIUM_CONSTANT_UNIT)).right,
                  PlaceOf(page.Item(IDC_REACTIONS_HEADING)).right);
        page.ClickListItem(IDC_REACTIONS_LIST, 0);
        EXPECT_EQ(width(IDC_REACTIONS_RATE_UNIT), usual);
    });
}

/// The heading, beside which the list is the next control.
TEST_F(ReactionsPage, TakesNoKeyFromAName) {
    Reaction(0).id = CBstr::Make(u"A&B && X");
    definition->compounds[0]->id = CBstr::Make(u"n&y");
    OnReactions([](CUser& u, const CDrivenWindow& page) {
        EXPECT_EQ(page.Text(IDC_REACTIONS_HEADING), u"A&B && X");
        EXPECT_EQ(page.Cell(IDC_REACTIONS_STOICHIOMETRY, 0, 1), u"n&y");
        page.FocusOn(IDC_REACTIONS_LIST);
        for (const WORD letter : {WORD{'B'}, WORD{'Y'}}) {
            u.Press(letter, {VK_MENU});
            EXPECT_TRUE(page.HasFocus(IDC_REACTIONS_LIST)) << letter;
        }
        page.TakePicture("106-ampersand");
    });
}

}  // namespace
}  // namespace reka::test
