// SPDX-License-Identifier: MIT
// What a person does on the reactions page beside filling its fields.

#include <gtest/gtest.h>

#include <utility>

#include "FormulaFixture.h"
#include "ReactionsPage.h"
#include "support/AllocationCounter.h"

namespace reka::test {
namespace {

constexpr const char16_t* idTitle = u"Enter reaction ID:";
constexpr const char16_t* formulaTitle = u"Edit formula:";
const ExpectedBox idIsTaken = {u"Error:", u"The reaction ID must be unique", errorBox};

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

/// The box takes the focus from the cell, whose editing ends but once.
TEST_F(ReactionsPage, LeavesACoefficientAsItWasWithoutMemory) {
    OnReactions([this](CUser& u, const CDrivenWindow& page) {
        page.ClickCell(IDC_REACTIONS_STOICHIOMETRY, 0);
        u.Press(VK_F2);
        u.WaitUntil("a cell's field", [&] { return page.IsEditing(IDC_REACTIONS_STOICHIOMETRY); });
        u.Type(u"-1.25-1.5");
        u.OnTestThread([] { FailAllocation(1); });
        u.Press(VK_RETURN);
        u.Answer({u"Error:", u"out of memory", MB_OK | MB_ICONERROR}, IDOK);
        EXPECT_EQ(Reaction(0).stoichiometry[0], -2.0);
        EXPECT_EQ(page.Cell(IDC_REACTIONS_STOICHIOMETRY, 0, 0), u"-2");
        page.ClickCell(IDC_REACTIONS_STOICHIOMETRY, 0);
        u.Press(VK_F2);
        page.TypeIntoCell(IDC_REACTIONS_STOICHIOMETRY, u"-4");
        EXPECT_EQ(Reaction(0).stoichiometry[0], -4.0);
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

TEST_F(ReactionsPage, KeepsACoefficientWhenTheDialogIsClosedMeanwhile) {
    EXPECT_FALSE(EditPackage(*definition, [](CUser& u, const CDrivenWindow& shell) {
        const CDrivenWindow page = OpenPage(u, shell, EditPage::Reactions);
        page.ClickCell(IDC_REACTIONS_STOICHIOMETRY, 0, 0, 2);
        u.WaitUntil("the field of the coefficient", [&] { return page.IsEditing(IDC_REACTIONS_STOICHIOMETRY); });
        u.Type(u"-9");
        u.Press(VK_F4, {VK_MENU});
        shell.WaitUntilGone();
    }));
    EXPECT_EQ(Reaction(0).stoichiometry[0], -2.0);
}

TEST_F(ReactionsPage, TakesACoefficientForItsReactionWhenTheUserGoesToAnother) {
    OnReactions([this](CUser& u, const CDrivenWindow& page) {
        page.ClickCell(IDC_REACTIONS_STOICHIOMETRY, 0, 0, 2);
        u.WaitUntil("the field of the coefficient", [&] { return page.IsEditing(IDC_REACTIONS_STOICHIOMETRY); });
        u.Type(u"-9");
        page.ClickListItem(IDC_REACTIONS_LIST, 1);
        EXPECT_FALSE(page.IsEditing(IDC_REACTIONS_STOICHIOMETRY));
        EXPECT_EQ(Reaction(0).stoichiometry, (std::vector<double>{-9.0, 1.0}));
        EXPECT_EQ(Reaction(1).stoichiometry, (std::vector<double>{1.0, 1.0}));
        EXPECT_EQ(page.Cell(IDC_REACTIONS_STOICHIOMETRY, 0, 0), u"1");
    });
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
        EXPECT_TRUE(page.HasFocus(IDC_REACTIONS_LIST));
        u.Press(VK_SPACE);  // deletes no second one
        EXPECT_EQ(u.CountDialogs(), 1);
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

TEST_F(ReactionsPage, TakesTheRateOfTheWizardBack) {
    const std::u16string typed = u"1234567*EXP(-80000/(R*T))*C(First)^2";
    OnReactions([&](CUser& u, const CDrivenWindow& page) {
        page.Fill(IDC_REACTIONS_RATE, typed);
        page.Click(IDC_REACTIONS_RATE_WIZARD);
        const CDrivenWindow wizard = u.WaitFor(u"Reaction rate wizard:");
        wizard.Click(IDC_RATE_WIZARD_FORWARD);
        wizard.Fill(IDC_RATE_WIZARD_FORWARD_CONSTANT, u"3");
        wizard.Click(IDOK);
        wizard.WaitUntilGone();
        EXPECT_EQ(Reaction(0).rateEquation, u"3*A(First)^2");
        page.FocusOn(IDC_REACTIONS_RATE);
        u.Press('Z', {VK_CONTROL});
        EXPECT_EQ(page.Text(IDC_REACTIONS_RATE), typed);
        EXPECT_EQ(Reaction(0).rateEquation, typed);
        page.TakePicture("TakenBack");
    });
}

TEST_F(ReactionsPage, TakesTheTextOfTheExpressionEditorBack) {
    OnReactions([this](CUser& u, const CDrivenWindow& page) {
        for (const ExpressionButton& row : expressionButtons) {
            const std::u16string& expression = Reaction(static_cast<std::size_t>(row.reaction)).*row.expression;
            page.ClickListItem(IDC_REACTIONS_LIST, row.reaction);
            // Deleting, which a field may join to what is deleted next.
            page.Fill(row.field, u"12*T");
            u.Press(VK_HOME);
            u.Press(VK_DELETE);
            page.Click(row.button);
            const CDrivenWindow editor = u.WaitFor(formulaTitle);
            editor.Fill(IDC_EXPRESSION_TEXT, u"5*T+(");
            editor.Click(IDOK);
            editor.WaitUntilGone();
            EXPECT_EQ(expression, u"5*T+(");
            EXPECT_EQ(page.Text(row.field), u"5*T+(");
            page.FocusOn(row.field);
            u.Press('Z', {VK_CONTROL});
            EXPECT_EQ(page.Text(row.field), u"2*T");
            EXPECT_EQ(expression, u"2*T");
        }
    });
}

TEST_F(ReactionsPage, ShowsAllLinesOfAnExpression) {
    const std::u16string lines = u"1\r\n+2";
    Reaction(0).heatEquation = lines;
    OnReactions([&](CUser& u, const CDrivenWindow& page) {
        const std::u16string shown = page.Text(IDC_REACTIONS_HEAT);
        page.Fill(IDC_REACTIONS_HEAT, u"0");
        u.OnTestThread([&] { PutOnClipboard(lines); });
        page.Click(IDC_REACTIONS_EDIT_HEAT);
        const CDrivenWindow editor = u.WaitFor(formulaTitle);
        editor.FocusOn(IDC_EXPRESSION_TEXT);
        u.Press('A', {VK_CONTROL});
        u.Press('V', {VK_CONTROL});
        editor.Click(IDOK);
        editor.WaitUntilGone();
        EXPECT_EQ(Reaction(0).heatEquation, lines);
        EXPECT_EQ(page.Text(IDC_REACTIONS_HEAT), shown);  // as a text that is there from the beginning
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
