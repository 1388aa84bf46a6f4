// SPDX-License-Identifier: MIT
// The edit shell as a person sees it.

#include <gtest/gtest.h>

#include "ControlTable.h"
#include "EditorFixture.h"
#include "Icons.h"
#include "expression/parse/ParseExpression.h"

namespace reka::test {
namespace {

class EditShellDialog : public EditorFixture {};

TEST_F(EditShellDialog, HasItsControls) {
    EXPECT_FALSE(EditPackage(*definition, [](CUser& u, const CDrivenWindow& shell) {
        // The three pages lie above the controls of the shell, the last one made on top.
        CheckControls(u, shell.Get(),
                      {{0, u"#32770", nullptr, WS_CHILD | DS_CONTROL, 0, true, false},
                       {0, u"#32770", nullptr, WS_CHILD | DS_CONTROL, 0, true, false},
                       {0, u"#32770", nullptr, WS_CHILD | DS_CONTROL, 0, true, true},
                       {IDC_EDIT_HELP, u"Button", u"&Help", WS_TABSTOP},
                       {IDC_EDIT_LOAD, u"Button", u"&Load", WS_TABSTOP},
                       {IDC_EDIT_STORE, u"Button", u"&Store", WS_TABSTOP},
                       {IDOK, u"Button", u"OK", BS_DEFPUSHBUTTON | WS_TABSTOP},
                       {IDCANCEL, u"Button", u"Cancel", WS_TABSTOP},
                       {IDC_EDIT_TABS, u"SysTabControl32", nullptr, WS_TABSTOP | WS_CLIPSIBLINGS}});
        const std::u16string labels[] = {u"General", u"Compounds", u"Reactions"};
        const HWND tabs = shell.Item(IDC_EDIT_TABS);
        ASSERT_EQ(u.Send(tabs, TCM_GETITEMCOUNT), 3);
        for (int tab = 0; tab < 3; ++tab) {
            wchar_t text[50] = {};
            TCITEMW item = {};
            item.mask = TCIF_TEXT;
            item.pszText = text;
            item.cchTextMax = 50;
            u.Send(tabs, TCM_GETITEMW, static_cast<WPARAM>(tab), reinterpret_cast<LPARAM>(&item));
            EXPECT_EQ(std::u16string(reinterpret_cast<const char16_t*>(item.pszText)), labels[tab]);
        }
        EXPECT_EQ(u.Send(tabs, TCM_GETCURSEL), 0);
        ExpectIcon(u.Send(shell.Get(), WM_GETICON, ICON_BIG), IDI_COMPONENT, SM_CXICON);
        ExpectIcon(u.Send(shell.Get(), WM_GETICON, ICON_SMALL), IDI_COMPONENT, SM_CXSMICON);
        EXPECT_TRUE(VisiblePage(u, shell).HasFocus(IDC_GENERAL_NAME));
        shell.Click(IDCANCEL);
    }));
}

TEST_F(EditShellDialog, GivesTheTabsTheKeyboardOfAHiddenPage) {
    EXPECT_FALSE(EditPackage(*definition, [](CUser& u, const CDrivenWindow& shell) {
        VisiblePage(u, shell).FocusOn(IDC_GENERAL_DESCRIPTION);
        const HWND tabs = shell.Item(IDC_EDIT_TABS);
        u.Send(tabs, TCM_SETCURSEL, static_cast<WPARAM>(EditPage::Reactions));
        u.OnTestThread([&] {  // some systems give the tabs no focus at a click
            NMHDR change = {tabs, IDC_EDIT_TABS, static_cast<UINT>(TCN_SELCHANGE)};
            SendMessageW(shell.Get(), WM_NOTIFY, IDC_EDIT_TABS, reinterpret_cast<LPARAM>(&change));
        });
        EXPECT_TRUE(shell.HasFocus(IDC_EDIT_TABS));
        u.Press(VK_TAB);
        EXPECT_TRUE(VisiblePage(u, shell).HasFocus(IDC_REACTIONS_LIST));
        shell.Click(IDCANCEL);
    }));
}

TEST_F(EditShellDialog, IsLaidOutAtEverySize) {
    EXPECT_FALSE(EditPackage(*definition, [](CUser& u, const CDrivenWindow& shell) {
        const char* const names[] = {"103-general", "103-compounds", "103-reactions"};
        for (const int growth : {0, 160}) {
            if (growth != 0) shell.DragCorner(growth, growth / 2);
            for (std::int32_t page = 0; page < 3; ++page) {
                OpenPage(u, shell, static_cast<EditPage>(page));
                CheckLayout(u, shell.Get());
                shell.TakePicture(std::string(names[page]) + (growth == 0 ? "" : "-large"));
            }
        }
        shell.Click(IDCANCEL);
    }));
}

TEST_F(EditShellDialog, CanNotBeMadeSmaller) {
    EXPECT_FALSE(EditPackage(*definition, [](CUser& u, const CDrivenWindow& shell) {
        const auto size = [&] {
            const RECT place = PlaceOf(shell.Get());
            return std::pair(place.right - place.left, place.bottom - place.top);
        };
        const auto first = size();
        shell.DragCorner(-80, -60);
        EXPECT_EQ(size(), first);
        shell.DragCorner(50, 30);
        EXPECT_EQ(size(), std::pair(first.first + 50, first.second + 30));
        shell.DragCorner(-200, -200);
        EXPECT_EQ(size(), first);
        u.OnTestThread([&] { ShowWindow(shell.Get(), SW_MAXIMIZE); });
        CheckLayout(u, shell.Get());
        u.OnTestThread([&] { ShowWindow(shell.Get(), SW_RESTORE); });
        EXPECT_EQ(size(), first);
        shell.Click(IDCANCEL);
    }));
}

TEST_F(EditShellDialog, HasNoStoreForATemplateAtAnySize) {
    const auto templates = MakeManagerTemplates();
    EXPECT_FALSE(EditTemplate(*definition, *templates, [](CUser& u, const CDrivenWindow& shell) {
        EXPECT_FALSE(shell.IsVisible(IDC_EDIT_STORE));
        CheckLayout(u, shell.Get());
        shell.TakePicture("103-template");
        shell.DragCorner(100, 60);
        EXPECT_FALSE(shell.IsVisible(IDC_EDIT_STORE));
        CheckLayout(u, shell.Get());
        shell.Click(IDCANCEL);
    }));
}

TEST_F(EditShellDialog, KeepsWhatWasEnteredInAPage) {
    EXPECT_TRUE(EditPackage(*definition, [](CUser& u, const CDrivenWindow& shell) {
        VisiblePage(u, shell).Fill(IDC_GENERAL_NAME, u"Typed");
        const CDrivenWindow reactions = OpenPage(u, shell, EditPage::Reactions);
        EXPECT_EQ(reactions.Text(IDC_REACTIONS_HEADING), u"R1");
        reactions.Fill(IDC_REACTIONS_RATE, u"5*T");
        EXPECT_EQ(OpenPage(u, shell, EditPage::General).Text(IDC_GENERAL_NAME), u"Typed");
        EXPECT_EQ(OpenPage(u, shell, EditPage::Compounds).RowCount(IDC_COMPOUNDS_LIST), 2);
        EXPECT_EQ(OpenPage(u, shell, EditPage::Reactions).Text(IDC_REACTIONS_RATE), u"5*T");
        shell.Click(IDOK);
    }));
    EXPECT_EQ(definition->name.View(), u"Typed");
    EXPECT_EQ(definition->reactions[0]->rateEquation, u"5*T");
}

TEST_F(EditShellDialog, ChangesItsPageByTheKeyboard) {
    EXPECT_FALSE(EditPackage(*definition, [](CUser& u, const CDrivenWindow& shell) {
        u.Press(VK_TAB, {VK_SHIFT});  // from the first field of the page
        EXPECT_TRUE(shell.HasFocus(IDC_EDIT_TABS));
        u.Press(VK_RIGHT);
        EXPECT_EQ(u.Send(shell.Item(IDC_EDIT_TABS), TCM_GETCURSEL), 1);
        EXPECT_EQ(VisiblePage(u, shell).RowCount(IDC_COMPOUNDS_LIST), 2);
        u.Press(VK_TAB);
        EXPECT_TRUE(VisiblePage(u, shell).HasFocus(IDC_COMPOUNDS_LIST));
        u.Press(VK_TAB, {VK_SHIFT});
        EXPECT_TRUE(shell.HasFocus(IDC_EDIT_TABS));
        u.Press(VK_TAB, {VK_SHIFT});
        EXPECT_TRUE(shell.HasFocus(IDCANCEL));
        u.Press(VK_RETURN);
    }));
}

TEST_F(EditShellDialog, ChangesItsPageByKeysFromAnywhere) {
    EXPECT_FALSE(EditPackage(*definition, [](CUser& u, const CDrivenWindow& shell) {
        struct {
            WORD key;
            std::initializer_list<WORD> held;
            int control;  // of the page, that has the keyboard then
            int tab;
        } steps[] = {
            {VK_TAB, {VK_CONTROL}, IDC_COMPOUNDS_LIST, 1},   {VK_TAB, {VK_CONTROL}, IDC_REACTIONS_LIST, 2},
            {VK_TAB, {VK_CONTROL}, IDC_GENERAL_NAME, 0},     {VK_TAB, {VK_CONTROL, VK_SHIFT}, IDC_REACTIONS_LIST, 2},
            {VK_PRIOR, {VK_CONTROL}, IDC_COMPOUNDS_LIST, 1}, {VK_NEXT, {VK_CONTROL}, IDC_REACTIONS_LIST, 2}};
        const auto tab = [&] { return u.Send(shell.Item(IDC_EDIT_TABS), TCM_GETCURSEL); };
        for (const auto& step : steps) {
            u.Press(step.key, step.held);
            EXPECT_EQ(tab(), step.tab);
            EXPECT_TRUE(VisiblePage(u, shell).HasFocus(step.control)) << step.control;
        }
        shell.TakePicture("103-keys");
        u.Send(shell.Get(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(shell.Item(IDC_EDIT_HELP)), TRUE);
        u.Press(VK_TAB, {VK_CONTROL});
        EXPECT_EQ(tab(), 0);
        EXPECT_TRUE(shell.HasFocus(IDC_EDIT_HELP));
        u.Press(VK_TAB);  // alone it is what it always is
        EXPECT_TRUE(shell.HasFocus(IDC_EDIT_LOAD));
        EXPECT_EQ(tab(), 0);
        shell.Click(IDCANCEL);
    }));
}

TEST_F(EditShellDialog, TakesACellWhenAKeyChangesThePage) {
    EXPECT_FALSE(EditPackage(*definition, [this](CUser& u, const CDrivenWindow& shell) {
        const CDrivenWindow page = OpenPage(u, shell, EditPage::Reactions);
        page.ClickCell(IDC_REACTIONS_STOICHIOMETRY, 0, 0, 2);
        u.WaitUntil("the field of the coefficient", [&] { return page.IsEditing(IDC_REACTIONS_STOICHIOMETRY); });
        u.Type(u"-9");
        u.Press(VK_TAB, {VK_CONTROL});
        EXPECT_TRUE(VisiblePage(u, shell).HasFocus(IDC_GENERAL_NAME));
        EXPECT_EQ(definition->reactions[0]->stoichiometry[0], -9.0);
        shell.Click(IDCANCEL);
    }));
}

TEST_F(EditShellDialog, LeavesKeysInADialogAboveItAlone) {
    EXPECT_FALSE(EditPackage(*definition, [](CUser& u, const CDrivenWindow& shell) {
        const CDrivenWindow page = OpenPage(u, shell, EditPage::Reactions);
        page.Click(IDC_REACTIONS_CREATE);
        const CDrivenWindow input = u.WaitFor(u"Enter reaction ID:");
        u.Press(VK_NEXT, {VK_CONTROL});
        u.Press(VK_TAB, {VK_CONTROL});
        EXPECT_EQ(u.Send(shell.Item(IDC_EDIT_TABS), TCM_GETCURSEL), 2);
        input.Click(IDCANCEL);
        input.WaitUntilGone();
        shell.Click(IDCANCEL);
    }));
}

// OK, Cancel and the frame

TEST_F(EditShellDialog, TellsWhyACheckFailsAndChecksAgain) {
    EXPECT_TRUE(EditPackage(*definition, [](CUser& u, const CDrivenWindow& shell) {
        VisiblePage(u, shell).Fill(IDC_GENERAL_NAME, u"");
        for (int round = 0; round < 2; ++round) {
            shell.Click(IDOK);
            u.Answer({u"Error:", u"Reaction package name cannot be empty", errorBox}, IDOK);
            EXPECT_FALSE(shell.IsGone());
        }
        VisiblePage(u, shell).Fill(IDC_GENERAL_NAME, u"Again");
        shell.Click(IDOK);
    }));
    EXPECT_EQ(definition->name.View(), u"Again");
}

struct LeadCase {
    const char* name;
    void (*spoil)(ReactionPackDefinition& definition);
    const char16_t* complaint;
    EditPage page;
    int control;
};
const LeadCase leadCases[] = {
    {"Name", [](ReactionPackDefinition& definition) { definition.name.Reset(); },
     u"Reaction package name cannot be empty", EditPage::General, IDC_GENERAL_NAME},
    {"Compounds",
     [](ReactionPackDefinition& definition) {
         definition.compounds.pop_back();
         for (const auto& reaction : definition.reactions) reaction->stoichiometry.pop_back();
     },
     u"At least two compounds must be present", EditPage::Compounds, IDC_COMPOUNDS_ADD},
    {"Phase", [](ReactionPackDefinition& definition) { definition.reactions[1]->phase.Reset(); },
     u"No phase defined for reaction R2", EditPage::Reactions, IDC_REACTIONS_PHASE},
    {"Stoichiometry",
     [](ReactionPackDefinition& definition) {
         definition.reactions[1]->stoichiometry = {0.0, 0.0};
     },
     u"No reactants or products for reaction R2", EditPage::Reactions, IDC_REACTIONS_STOICHIOMETRY},
    {"Rate", [](ReactionPackDefinition& definition) { definition.reactions[1]->rateEquation = u"?"; },
     u"error parsing rate expression for kinetic reaction R2:\r\n", EditPage::Reactions, IDC_REACTIONS_RATE},
    {"EquilibriumConstant",
     [](ReactionPackDefinition& definition) {
         definition.reactions[1]->type = ReactionType::Equilibrium;
         definition.reactions[1]->equilibriumConstantEquation = u"?";
     },
     u"error parsing equilibrium constant expression for equilibrium reaction R2:\r\n", EditPage::Reactions,
     IDC_REACTIONS_EQUILIBRIUM_CONSTANT},
    {"Heat", [](ReactionPackDefinition& definition) { definition.reactions[1]->heatEquation = u"?"; },
     u"error parsing heat of reaction expression for reaction R2:\r\n", EditPage::Reactions, IDC_REACTIONS_HEAT},
};
void PrintTo(const LeadCase& row, std::ostream* stream) {
    *stream << row.name;
}
class EditShellLeads : public EditShellDialog, public testing::WithParamInterface<LeadCase> {};

TEST_P(EditShellLeads, ToWhatTheCheckSpeaksOf) {
    AddKinetic(*definition, u"R2", u"T").stoichiometry = {-2.0, 1.0};
    const LeadCase& row = GetParam();
    row.spoil(*definition);
    std::u16string complaint = row.complaint;
    if (complaint.back() == u'\n') {  // with what the parser says
        std::u16string parserText;
        EXPECT_EQ(ParseExpression(*definition, u"?", parserText, nullptr), nullptr);
        complaint += parserText;
    }
    EXPECT_FALSE(EditPackage(*definition, [&](CUser& u, const CDrivenWindow& shell) {
        const std::pair<int, const char16_t*> buttons[] = {{IDOK, u"Error:"}, {IDC_EDIT_STORE, u"Cannot store:"}};
        for (const auto& [button, title] : buttons) {
            OpenPage(u, shell, row.page == EditPage::General ? EditPage::Reactions : EditPage::General);
            shell.Click(button);
            u.Answer({title, complaint, errorBox}, IDOK);
            EXPECT_EQ(u.Send(shell.Item(IDC_EDIT_TABS), TCM_GETCURSEL), static_cast<LRESULT>(row.page));
            const CDrivenWindow page = VisiblePage(u, shell);
            EXPECT_TRUE(page.HasFocus(row.control));
            if (row.page == EditPage::Reactions) {
                EXPECT_EQ(page.ListSelection(IDC_REACTIONS_LIST), 1);
                EXPECT_EQ(page.Text(IDC_REACTIONS_HEADING), u"R2");
            }
            CheckLayout(u, shell.Get());
        }
        shell.TakePicture(std::string("103-leads-") + row.name);
        shell.Click(IDCANCEL);
    }));
}
INSTANTIATE_TEST_SUITE_P(Table, EditShellLeads, testing::ValuesIn(leadCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(EditShellDialog, ShowsWhatTheCheckAsks) {
    definition->compounds[0]->formula = CBstr::Make(u"no formula");
    definition->compounds[1]->formula = CBstr::Make(u"C2H4");
    EXPECT_TRUE(EditPackage(*definition, [](CUser& u, const CDrivenWindow& shell) {
        shell.Click(IDOK);
        u.Answer({u"Warning:",
                  u"Parse error in structure formula no formula for compound First; unable to perform element balance "
                  u"check.",
                  messagestyle::ok | messagestyle::iconExclamation},
                 IDOK);
    }));
}

TEST_F(EditShellDialog, TakesEnterAndEscapeInAPageForNothing) {
    EXPECT_FALSE(EditPackage(*definition, [](CUser& u, const CDrivenWindow& shell) {
        for (const int field : {IDC_GENERAL_NAME, IDC_GENERAL_DESCRIPTION, IDC_GENERAL_THERMO_VERSION}) {
            const CDrivenWindow page = VisiblePage(u, shell);
            u.Send(page.Get(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(page.Item(field)), TRUE);
            EXPECT_TRUE(page.HasFocus(field));
            u.Press(VK_RETURN);
            u.Press(VK_ESCAPE);
            EXPECT_EQ(u.CountDialogs(), 1) << field;
        }
        const CDrivenWindow reactions = OpenPage(u, shell, EditPage::Reactions);
        for (const int field : {IDC_REACTIONS_LIST, IDC_REACTIONS_RATE, IDC_REACTIONS_HEAT, IDC_REACTIONS_PHASE}) {
            reactions.FocusOn(field);
            u.Press(VK_ESCAPE);  // a list that the click has opened takes the first one
            u.Press(VK_RETURN);
            u.Press(VK_ESCAPE);
            EXPECT_EQ(u.CountDialogs(), 1) << field;
        }
        EXPECT_EQ(reactions.Text(IDC_REACTIONS_RATE), u"2*T");
        u.Send(shell.Get(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(shell.Item(IDC_EDIT_HELP)), TRUE);
        u.Press(VK_ESCAPE);
    }));
}

/// As a program presses a button for its user, or a click does that activates the window.
TEST_F(EditShellDialog, TakesAButtonWithTheFocusStillInAPage) {
    EXPECT_TRUE(EditPackage(*definition, [](CUser& u, const CDrivenWindow& shell) {
        VisiblePage(u, shell).Fill(IDC_GENERAL_NAME, u"Typed");
        u.Send(shell.Get(), WM_COMMAND, IDOK, reinterpret_cast<LPARAM>(shell.Item(IDOK)));
    }));
    EXPECT_EQ(definition->name.View(), u"Typed");
}

TEST_F(EditShellDialog, IsCancelledByTheFrameFromAnyField) {
    EXPECT_FALSE(EditPackage(*definition, [](CUser& u, const CDrivenWindow& shell) {
        VisiblePage(u, shell).Fill(IDC_GENERAL_NAME, u"Typed");
        u.Press(VK_F4, {VK_MENU});
        shell.WaitUntilGone();
    }));
    EXPECT_EQ(definition->name.View(), u"Mine");
}

/// A button of a page that has the number of one of the shell.
TEST_F(EditShellDialog, LetsAKeyReachTheButtonOfAPage) {
    EXPECT_FALSE(EditPackage(*definition, [](CUser& u, const CDrivenWindow& shell) {
        const CDrivenWindow reactions = OpenPage(u, shell, EditPage::Reactions);
        ASSERT_EQ(IDC_REACTIONS_EDIT_HEAT, IDC_EDIT_LOAD);
        u.Send(reactions.Get(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(reactions.Item(IDC_REACTIONS_EDIT_HEAT)), TRUE);
        for (const WORD key : {WORD{VK_SPACE}, WORD{VK_RETURN}}) {
            u.Press(key);
            const CDrivenWindow editor = u.WaitFor(u"Edit formula:");
            EXPECT_EQ(editor.Text(IDC_EXPRESSION_ITEM), u"Heat of reaction \"R1\"");
            editor.Click(IDCANCEL);
            editor.WaitUntilGone();
        }
        shell.Click(IDCANCEL);
    }));
}

// Load

TEST_F(EditShellDialog, LoadsATemplateIntoThePages) {
    auto other = MakePackage({u"A", u"B", u"Cc"});
    other->name = CBstr::Make(u"MINE");  // the package's name in other letters is suggested
    other->description = CBstr::Make(u"Its words");
    other->thermoVersion = ThermoVersion::Version11;
    AddKinetic(*other, u"T1", u"T").stoichiometry = {-1.0, 1.0, 0.0};
    AddKinetic(*other, u"T2", u"2*T").stoichiometry = {0.0, -1.0, 1.0};
    const auto first = MakeValid(u"A first one");
    PutDefinitions({first.get(), other.get()});
    EXPECT_TRUE(EditPackage(*definition, [](CUser& u, const CDrivenWindow& shell) {
        u.Press('L', {VK_MENU});
        const CDrivenWindow names = u.WaitFor(u"Load from reaction package template:");
        EXPECT_EQ(names.Text(IDC_LOAD_TEMPLATE_NAME), u"MINE");
        names.Click(IDOK);
        names.WaitUntilGone();
        const CDrivenWindow general = VisiblePage(u, shell);
        EXPECT_EQ(general.Text(IDC_GENERAL_NAME), u"Mine");
        EXPECT_EQ(general.Text(IDC_GENERAL_DESCRIPTION), u"About it");
        EXPECT_EQ(general.Text(IDC_GENERAL_THERMO_VERSION), u"Version 1.0");  // still that of before
        EXPECT_EQ(OpenPage(u, shell, EditPage::Compounds).RowCount(IDC_COMPOUNDS_LIST), 3);
        const CDrivenWindow reactions = OpenPage(u, shell, EditPage::Reactions);
        EXPECT_EQ(reactions.ListCount(IDC_REACTIONS_LIST), 2);
        EXPECT_EQ(reactions.ListSelection(IDC_REACTIONS_LIST), 0);
        EXPECT_EQ(reactions.Text(IDC_REACTIONS_HEADING), u"T1");
        EXPECT_EQ(reactions.RowCount(IDC_REACTIONS_STOICHIOMETRY), 3);
        // The check needs compounds with molecular weights, but not these.
        shell.Click(IDOK);
    }));
    EXPECT_EQ(definition->name.View(), u"Mine");
    EXPECT_EQ(definition->description.View(), u"About it");
    EXPECT_EQ(definition->thermoVersion, ThermoVersion::Version10);
    EXPECT_EQ(definition->reactions.size(), 2U);
    EXPECT_FALSE(IsFileWritten());
}

TEST_F(EditShellDialog, LoadsNothingAfterCancel) {
    const auto other = MakeValid(u"Template");
    other->reactions.clear();
    PutDefinitions({other.get()});
    EXPECT_FALSE(EditPackage(*definition, [](CUser& u, const CDrivenWindow& shell) {
        shell.Click(IDC_EDIT_LOAD);
        u.WaitFor(u"Load from reaction package template:").Click(IDCANCEL);
        EXPECT_EQ(OpenPage(u, shell, EditPage::Reactions).ListCount(IDC_REACTIONS_LIST), 1);
        shell.Click(IDCANCEL);
    }));
}

// Store

TEST_F(EditShellDialog, StoresANewTemplate) {
    EXPECT_FALSE(EditPackage(*definition, [](CUser& u, const CDrivenWindow& shell) {
        shell.Click(IDC_EDIT_STORE);
        const CDrivenWindow names = u.WaitFor(u"Store reaction package template:");
        EXPECT_EQ(names.Text(IDC_STORE_TEMPLATE_NAME), u"Mine");
        names.Fill(IDC_STORE_TEMPLATE_NAME, u"Fresh");
        u.Press(VK_RETURN);
        names.WaitUntilGone();
        EXPECT_EQ(VisiblePage(u, shell).Text(IDC_GENERAL_NAME), u"Mine");
        shell.Click(IDCANCEL);
    }));
    EXPECT_EQ(NamesInFile(), Names{u"Fresh"});
}

TEST_F(EditShellDialog, StoresOnlyWhatPassesTheCheck) {
    definition->compounds.pop_back();
    for (const auto& reaction : definition->reactions) reaction->stoichiometry.pop_back();
    EXPECT_FALSE(EditPackage(*definition, [](CUser& u, const CDrivenWindow& shell) {
        shell.Click(IDC_EDIT_STORE);
        u.Answer({u"Cannot store:", u"At least two compounds must be present", errorBox}, IDOK);
        EXPECT_EQ(u.CountDialogs(), 1);
        shell.Click(IDCANCEL);
    }));
    EXPECT_FALSE(IsFileWritten());
}

TEST_F(EditShellDialog, AsksBeforeItOverwritesATemplate) {
    const ExpectedBox question = {u"Store template:",
                                  u"A reaction package template with the name MINE already exists. Overwrite?",
                                  messagestyle::okCancel};
    for (const int answer : {IDCANCEL, IDOK}) {
        const auto stored = MakeValid(u"Mine");
        stored->description = CBstr::Make(u"Stored before");
        PutDefinitions({stored.get()});
        EXPECT_FALSE(EditPackage(*definition, [&](CUser& u, const CDrivenWindow& shell) {
            shell.Click(IDC_EDIT_STORE);
            const CDrivenWindow names = u.WaitFor(u"Store reaction package template:");
            names.Fill(IDC_STORE_TEMPLATE_NAME, u"MINE");
            names.Click(IDOK);
            u.Answer(question, answer);
            shell.Click(IDCANCEL);
        }));
        EXPECT_TRUE(IsFileWritten());
        EXPECT_EQ(FromFile(u"mine")->description.View(), answer == IDOK ? u"About it" : u"Stored before");
    }
}

// General page

}  // namespace
}  // namespace reka::test
