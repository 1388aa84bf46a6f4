// The reactions page as a person sees it.

#include <gtest/gtest.h>

#include <utility>

#include "ControlTable.h"
#include "EditorFixture.h"

namespace reka::test {
namespace {

constexpr const char16_t* idTitle = u"Enter reaction ID:";
constexpr const char16_t* formulaTitle = u"Edit formula:";
const ExpectedBox idIsTaken = {u"Error:", u"The reaction ID must be unique", errorBox};

/// The page of a package with two reactions, "R1" kinetic and "R2" at equilibrium.
class ReactionsPage : public EditorFixture {
protected:
    ReactionsPage() {
        definition->compounds[1]->id = CBstr::Make(u"second id");
        definition->reactions[0]->heatEquation = u"-1000";
        ReactionDefinition& second = AddEquilibrium(*definition, u"R2", u"EXP(5)");
        second.stoichiometry = {1.0, 1.0};
        second.phase = CBstr::Make(u"Plasma");
        second.rateBasis = RateBasis::Heterogeneous;
        second.equilibriumBasis = EquilibriumBasis::Fugacity;
        second.rateEquation = u"left from before";
    }
    void OnReactions(const Work& work) { OnPage(EditPage::Reactions, work); }
    ReactionDefinition& Reaction(std::size_t index) { return *definition->reactions[index]; }
    std::u16string IdOf(std::size_t index) { return std::u16string(Reaction(index).id.View()); }
    static Names Listed(const CDrivenWindow& page) {
        Names ids;
        for (int i = 0; i < page.ListCount(IDC_REACTIONS_LIST); ++i)
            ids.push_back(page.ListText(IDC_REACTIONS_LIST, i));
        return ids;
    }
    static CDrivenWindow ShellOf(CUser& u, const CDrivenWindow& page) { return {u, GetParent(page.Get())}; }
};

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
             {IDC_REACTIONS_STOICHIOMETRY, u"SysListView32", nullptr, LVS_REPORT | LVS_EDITLABELS | WS_TABSTOP},
             {IDC_REACTIONS_EQUILIBRIUM, u"Button", u"Equilibrium Reaction", BS_AUTOCHECKBOX | WS_TABSTOP},
             {IDC_REACTIONS_HETEROGENEOUS, u"Button", u"Heterogeneous", BS_AUTOCHECKBOX | WS_TABSTOP},
             {IDC_REACTIONS_RATE_LABEL, u"Static", u"Rate:"},
             {IDC_REACTIONS_RATE, u"Edit", u"2*T", ES_AUTOHSCROLL | WS_TABSTOP, ES_READONLY},
             {IDC_REACTIONS_RATE_WIZARD, u"Button", u"", BS_ICON | WS_TABSTOP},
             {IDC_REACTIONS_EDIT_RATE, u"Button", u"", BS_ICON | WS_TABSTOP},
             {IDC_REACTIONS_RATE_UNIT, u"Static", u"mol/s/m³", SS_NOPREFIX},
             {IDC_REACTIONS_EQUILIBRIUM_CONSTANT_LABEL, u"Static", u"Equilibrium constant:"},
             {IDC_REACTIONS_EQUILIBRIUM_CONSTANT, u"Edit", u"", ES_AUTOHSCROLL | WS_TABSTOP, ES_READONLY, false},
             {IDC_REACTIONS_EDIT_EQUILIBRIUM_CONSTANT, u"Button", u"", BS_ICON | WS_TABSTOP, 0, false},
             {IDC_REACTIONS_EQUILIBRIUM_CONSTANT_UNIT, u"Static", u"m³/mol", SS_NOPREFIX},
             {IDC_REACTIONS_BASIS_LABEL, u"Static", u"Equilibrium basis:"},
             {IDC_REACTIONS_BASIS, u"ComboBox", u"Molarity", CBS_DROPDOWNLIST | CBS_SORT | WS_TABSTOP, 0, false},
             {IDC_REACTIONS_HEAT_LABEL, u"Static", u"Heat of reaction:"},
             {IDC_REACTIONS_HEAT, u"Edit", u"-1000", ES_AUTOHSCROLL | WS_TABSTOP, ES_READONLY},
             {IDC_REACTIONS_EDIT_HEAT, u"Button", u"", BS_ICON | WS_TABSTOP},
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

// Coefficients

TEST_F(ReactionsPage, EditsACoefficientByADoubleClick) {
    OnReactions([this](CUser&, const CDrivenWindow& page) {
        page.ClickCell(IDC_REACTIONS_STOICHIOMETRY, 1, 1, 2);  // on the name of the compound
        page.TypeIntoCell(IDC_REACTIONS_STOICHIOMETRY, u"1.50");
        EXPECT_EQ(Reaction(0).stoichiometry, (std::vector<double>{-2.0, 1.5}));
        EXPECT_EQ(page.Cell(IDC_REACTIONS_STOICHIOMETRY, 1, 0), u"1.5");
        EXPECT_EQ(page.Text(IDC_REACTIONS_EQUILIBRIUM_CONSTANT_UNIT), u"m^1.5/mol^0.5");
    });
}

TEST_F(ReactionsPage, EditsCoefficientsByTheKeyboard) {
    OnReactions([this](CUser& u, const CDrivenWindow& page) {
        page.ClickCell(IDC_REACTIONS_STOICHIOMETRY, 0);
        u.Press(VK_F2);
        page.TypeIntoCell(IDC_REACTIONS_STOICHIOMETRY, u"-3/2");
        u.Press(VK_DOWN);  // goes on from the row that was edited
        u.Press(VK_F2);
        page.TypeIntoCell(IDC_REACTIONS_STOICHIOMETRY, u"2*PI");
        EXPECT_EQ(Reaction(0).stoichiometry, (std::vector<double>{-1.5, 2 * 3.141592653589793}));
        EXPECT_EQ(page.Cell(IDC_REACTIONS_STOICHIOMETRY, 0, 0), u"-1.5");
        EXPECT_EQ(page.Cell(IDC_REACTIONS_STOICHIOMETRY, 1, 0), u"6.28319");
    });
}

TEST_F(ReactionsPage, EditsACoefficientByASecondClick) {
    OnReactions([this](CUser&, const CDrivenWindow& page) {
        page.ClickCell(IDC_REACTIONS_STOICHIOMETRY, 0);
        page.ClickCell(IDC_REACTIONS_STOICHIOMETRY, 0);
        page.TypeIntoCell(IDC_REACTIONS_STOICHIOMETRY, u"-4");
        EXPECT_EQ(Reaction(0).stoichiometry[0], -4.0);
    });
}

TEST_F(ReactionsPage, KeepsACoefficientAtAFaultyText) {
    OnReactions([this](CUser& u, const CDrivenWindow& page) {
        page.ClickCell(IDC_REACTIONS_STOICHIOMETRY, 0);
        const std::pair<const char16_t*, WORD> edits[] = {
            {u"(", VK_RETURN}, {u"", VK_RETURN}, {u"T", VK_RETURN}, {u"7", VK_ESCAPE}};
        for (const auto& [text, key] : edits) {
            u.Press(VK_F2);
            page.TypeIntoCell(IDC_REACTIONS_STOICHIOMETRY, text, key);
            EXPECT_EQ(u.CountDialogs(), 1);  // without a word
            EXPECT_EQ(page.Cell(IDC_REACTIONS_STOICHIOMETRY, 0, 0), u"-2");
            EXPECT_EQ(Reaction(0).stoichiometry[0], -2.0);
        }
    });
}

TEST_F(ReactionsPage, StartsNoEditingWithoutASelectedRow) {
    OnReactions([](CUser& u, const CDrivenWindow& page) {
        const RECT list = PlaceOf(page.Item(IDC_REACTIONS_STOICHIOMETRY));
        u.ClickAt({list.left + 30, list.bottom - 20}, 2);  // below the rows
        EXPECT_FALSE(page.IsEditing(IDC_REACTIONS_STOICHIOMETRY));
        u.Press(VK_F2);
        EXPECT_FALSE(page.IsEditing(IDC_REACTIONS_STOICHIOMETRY));
    });
}

TEST_F(ReactionsPage, SelectsNoRowForAnotherReaction) {
    OnReactions([](CUser&, const CDrivenWindow& page) {
        page.ClickCell(IDC_REACTIONS_STOICHIOMETRY, 1);
        page.ClickListItem(IDC_REACTIONS_LIST, 1);
        EXPECT_EQ(page.SelectedRows(IDC_REACTIONS_STOICHIOMETRY), std::vector<int>{});
    });
}

TEST_F(ReactionsPage, TakesACoefficientWhenTheUserGoesElsewhere) {
    EXPECT_FALSE(EditPackage(*definition, [this](CUser& u, const CDrivenWindow& shell) {
        const CDrivenWindow page = OpenPage(u, shell, EditPage::Reactions);
        page.ClickCell(IDC_REACTIONS_STOICHIOMETRY, 0, 0, 2);
        u.WaitUntil("the field of the coefficient", [&] { return page.IsEditing(IDC_REACTIONS_STOICHIOMETRY); });
        u.Type(u"-9");
        shell.Click(IDCANCEL);
        shell.WaitUntilGone();
        EXPECT_EQ(Reaction(0).stoichiometry[0], -9.0);
    }));
}

// Reactions

TEST_F(ReactionsPage, CreatesAReaction) {
    OnReactions([this](CUser& u, const CDrivenWindow& page) {
        page.Click(IDC_REACTIONS_CREATE);
        const CDrivenWindow input = u.WaitFor(idTitle);
        EXPECT_EQ(GetWindow(input.Get(), GW_OWNER), GetParent(page.Get()));
        EXPECT_EQ(input.Text(IDC_INPUT_TEXT), u"");
        u.Type(u"R3");
        u.Press(VK_RETURN);
        input.WaitUntilGone();
        EXPECT_EQ(Listed(page), (Names{u"R1", u"R2", u"R3"}));
        EXPECT_EQ(page.ListSelection(IDC_REACTIONS_LIST), 2);
        EXPECT_EQ(page.Text(IDC_REACTIONS_HEADING), u"R3");
        EXPECT_EQ(page.Cell(IDC_REACTIONS_STOICHIOMETRY, 1, 0), u"0");
        EXPECT_EQ(page.Text(IDC_REACTIONS_RATE), u"");
        EXPECT_EQ(page.Text(IDC_REACTIONS_PHASE), u"");
        ASSERT_EQ(definition->reactions.size(), 3U);
        EXPECT_EQ(Reaction(2).type, ReactionType::Kinetic);
    });
}

TEST_F(ReactionsPage, CreatesNoReactionOfATakenOrEmptyName) {
    OnReactions([this](CUser& u, const CDrivenWindow& page) {
        page.Click(IDC_REACTIONS_CREATE);
        u.WaitFor(idTitle);
        u.Type(u"r2");
        u.Press(VK_RETURN);
        u.Answer(idIsTaken, IDOK);
        for (const WORD key : {WORD{VK_RETURN}, WORD{VK_ESCAPE}}) {
            u.Press('C', {VK_MENU});
            const CDrivenWindow input = u.WaitFor(idTitle);
            u.Press(key);
            input.WaitUntilGone();
            EXPECT_EQ(u.CountDialogs(), 1);
        }
        EXPECT_EQ(definition->reactions.size(), 2U);
        EXPECT_EQ(page.ListSelection(IDC_REACTIONS_LIST), 0);
    });
}

TEST_F(ReactionsPage, RenamesByTheButton) {
    OnReactions([this](CUser& u, const CDrivenWindow& page) {
        const auto rename = [&](const char16_t* text) {
            page.Click(IDC_REACTIONS_RENAME);
            const CDrivenWindow input = u.WaitFor(idTitle);
            EXPECT_EQ(input.Text(IDC_INPUT_TEXT), IdOf(1));
            input.Fill(IDC_INPUT_TEXT, text);
            input.Click(IDOK);
            input.WaitUntilGone();
        };
        page.ClickListItem(IDC_REACTIONS_LIST, 1);
        rename(u"r2");  // the same in another letter
        rename(u"");
        EXPECT_EQ(IdOf(1), u"R2");
        rename(u"r1");
        u.Answer(idIsTaken, IDOK);
        EXPECT_EQ(IdOf(1), u"R2");
        rename(u"Renamed");
        EXPECT_EQ(IdOf(1), u"Renamed");
        EXPECT_EQ(Listed(page), (Names{u"R1", u"Renamed"}));
        EXPECT_EQ(page.ListSelection(IDC_REACTIONS_LIST), 1);
        EXPECT_EQ(page.Text(IDC_REACTIONS_HEADING), u"Renamed");
    });
}

TEST_F(ReactionsPage, RenamesByADoubleClick) {
    OnReactions([this](CUser& u, const CDrivenWindow& page) {
        const auto rename = [&](const char16_t* text) {
            page.ClickListItem(IDC_REACTIONS_LIST, 1, 2);
            const CDrivenWindow input = u.WaitFor(idTitle);
            input.Fill(IDC_INPUT_TEXT, text);
            input.Click(IDOK);
            input.WaitUntilGone();
        };
        rename(u"r2");  // the same in another letter
        EXPECT_EQ(IdOf(1), u"r2");
        rename(u"R1");
        u.Answer(idIsTaken, IDOK);
        EXPECT_EQ(IdOf(1), u"r2");
        rename(u"");
        EXPECT_TRUE(Reaction(1).id.IsAbsent());
        EXPECT_EQ(Listed(page), (Names{u"R1", u""}));
    });
}

TEST_F(ReactionsPage, DeletesTheSelectedReaction) {
    const auto question = [](const std::u16string& id) {
        return ExpectedBox{u"Delete reaction:", u"Are you sure you want to permanently delete reaction " + id + u"?",
                           deleteBox};
    };
    OnReactions([&](CUser& u, const CDrivenWindow& page) {
        page.ClickListItem(IDC_REACTIONS_LIST, 1);
        page.Click(IDC_REACTIONS_DELETE);
        u.Answer(question(u"R2"), IDNO);
        EXPECT_EQ(definition->reactions.size(), 2U);
        u.Press('D', {VK_MENU});
        u.Answer(question(u"R2"), IDYES);
        EXPECT_EQ(Listed(page), Names{u"R1"});
        EXPECT_EQ(page.ListSelection(IDC_REACTIONS_LIST), 0);
        EXPECT_EQ(page.Text(IDC_REACTIONS_HEADING), u"R1");
        page.Click(IDC_REACTIONS_DELETE);
        u.Answer(question(u"R1"), IDYES);
        EXPECT_TRUE(definition->reactions.empty());
        EXPECT_EQ(page.Text(IDC_REACTIONS_HEADING), u"<no reaction selected>");
        EXPECT_EQ(page.Text(IDC_REACTIONS_RATE), u"");
        EXPECT_EQ(page.Text(IDC_REACTIONS_PHASE), u"");
        EXPECT_FALSE(page.IsEnabled(IDC_REACTIONS_DELETE));
        EXPECT_TRUE(page.HasFocus(IDC_REACTIONS_LIST));  // the button that had the keyboard can't keep it
        u.Press('C', {VK_MENU});
        u.WaitFor(idTitle);
        u.Type(u"Again");
        u.Press(VK_RETURN);
        EXPECT_EQ(Listed(page), Names{u"Again"});
        EXPECT_TRUE(page.IsEnabled(IDC_REACTIONS_DELETE));
        EXPECT_TRUE(page.IsEnabled(IDC_REACTIONS_RATE));
    });
}

// Expressions

struct ExpressionButton {
    int reaction;
    int button;
    int field;
    const char16_t* item;
    const char16_t* unit;
    std::u16string ReactionDefinition::*expression;
};
const ExpressionButton expressionButtons[] = {
    {0, IDC_REACTIONS_EDIT_RATE, IDC_REACTIONS_RATE, u"Rate of reaction \"R1\"", u"mol/s/m³",
     &ReactionDefinition::rateEquation},
    {1, IDC_REACTIONS_EDIT_EQUILIBRIUM_CONSTANT, IDC_REACTIONS_EQUILIBRIUM_CONSTANT,
     u"Equilibrium constant reaction \"R2\"", u"Pa²", &ReactionDefinition::equilibriumConstantEquation},
    {1, IDC_REACTIONS_EDIT_HEAT, IDC_REACTIONS_HEAT, u"Heat of reaction \"R2\"", u"J/mol",
     &ReactionDefinition::heatEquation},
};

TEST_F(ReactionsPage, OpensTheEditorOfEachExpression) {
    OnReactions([this](CUser& u, const CDrivenWindow& page) {
        for (const ExpressionButton& row : expressionButtons) {
            const std::u16string& expression = Reaction(static_cast<std::size_t>(row.reaction)).*row.expression;
            page.ClickListItem(IDC_REACTIONS_LIST, row.reaction);
            const std::u16string before = expression;
            for (const int end : {IDCANCEL, IDOK}) {
                page.Click(row.button);
                const CDrivenWindow editor = u.WaitFor(formulaTitle);
                EXPECT_EQ(editor.Text(IDC_EXPRESSION_ITEM), row.item);
                EXPECT_EQ(editor.Text(IDC_EXPRESSION_UNIT), row.unit);
                EXPECT_EQ(editor.Text(IDC_EXPRESSION_TEXT), before);
                editor.Fill(IDC_EXPRESSION_TEXT, u"5*T+(");  // faulty or not
                editor.Click(end);
                editor.WaitUntilGone();
                EXPECT_EQ(expression, end == IDOK ? u"5*T+(" : before);
                EXPECT_EQ(page.Text(row.field), expression);
            }
        }
    });
}

TEST_F(ReactionsPage, TakesTheRateOfTheWizard) {
    OnReactions([this](CUser& u, const CDrivenWindow& page) {
        page.Click(IDC_REACTIONS_RATE_WIZARD);
        const CDrivenWindow wizard = u.WaitFor(u"Reaction rate wizard:");
        wizard.Click(IDC_RATE_WIZARD_FORWARD);
        wizard.Fill(IDC_RATE_WIZARD_FORWARD_CONSTANT, u"3");
        wizard.Click(IDOK);
        wizard.WaitUntilGone();
        EXPECT_EQ(Reaction(0).rateEquation, u"3*A(First)^2");
        EXPECT_EQ(page.Text(IDC_REACTIONS_RATE), u"3*A(First)^2");
        page.Click(IDC_REACTIONS_RATE_WIZARD);
        u.WaitFor(u"Reaction rate wizard:").Click(IDCANCEL);
        EXPECT_EQ(Reaction(0).rateEquation, u"3*A(First)^2");
    });
}

TEST_F(ReactionsPage, WorksByTheKeyboardAlone) {
    OnReactions([this](CUser& u, const CDrivenWindow& page) {
        u.Press(VK_TAB);  // from the tabs
        EXPECT_TRUE(page.HasFocus(IDC_REACTIONS_LIST));
        const int order[] = {IDC_REACTIONS_CREATE,        IDC_REACTIONS_RENAME,      IDC_REACTIONS_DELETE,
                             IDC_REACTIONS_STOICHIOMETRY, IDC_REACTIONS_EQUILIBRIUM, IDC_REACTIONS_HETEROGENEOUS,
                             IDC_REACTIONS_RATE,          IDC_REACTIONS_RATE_WIZARD, IDC_REACTIONS_EDIT_RATE,
                             IDC_REACTIONS_HEAT,          IDC_REACTIONS_EDIT_HEAT,   IDC_REACTIONS_PHASE};
        for (const int control : order) {
            u.Press(VK_TAB);
            EXPECT_TRUE(page.HasFocus(control)) << control;
            if (control == IDC_REACTIONS_HETEROGENEOUS) u.Press(VK_SPACE);
        }
        EXPECT_EQ(Reaction(0).rateBasis, RateBasis::Heterogeneous);
        u.Type(u"Gas");
        EXPECT_EQ(Reaction(0).phase.View(), u"Gas");
        u.Press(VK_TAB);
        EXPECT_TRUE(ShellOf(u, page).HasFocus(IDC_EDIT_HELP));
    });
}

}  // namespace
}  // namespace reka::test
