// SPDX-License-Identifier: MIT
// The compounds page as a person sees it.

#include <gtest/gtest.h>

#include <utility>

#include "ControlTable.h"
#include "EditorFixture.h"
#include "editor/DefinitionCompounds.h"
#include "support/AllocationCounter.h"
#include "support/PcdBytes.h"

namespace reka::test {
namespace {

constexpr const char16_t* addTitle = u"Add compounds:";

class CompoundsPage : public EditorFixture {
protected:
    CompoundsPage() {
        definition->compounds[0]->formula = CBstr::Make(u"CH2");
        definition->compounds[0]->casNumber = CBstr::Make(u"1-2-3");
        definition->compounds[1]->charge = -1.0;
        definition->compounds[1]->id = CBstr::Make(u"second id");
        definition->pcdFile = u"U:/mine.pcd";
    }
    void PutPcdFile(const std::u16string& path, const char* name) {
        PcdBytes bytes;
        AddPcdRecord(bytes, name, "H2O", 18.0F, "7732-18-5");
        Put(path, bytes, 1);
    }
    static std::u16string Row(const CDrivenWindow& page, int row) {
        std::u16string text;
        for (int column = 0; column < 6; ++column) text += page.Cell(IDC_COMPOUNDS_LIST, row, column) + u"|";
        return text;
    }
    std::u16string NameOf(std::size_t index) const { return std::u16string(definition->compounds[index]->name.View()); }
};

/// The box takes the focus from the cell, whose editing ends but once.
TEST_F(CompoundsPage, ShowsTheNameThatThereIsAfterAWantOfMemory) {
    OnPage(EditPage::Compounds, [this](CUser& u, const CDrivenWindow& page) {
        for (const std::size_t n : {1U, 2U, 3U}) {
            const std::u16string before = NameOf(0);
            page.ClickCell(IDC_COMPOUNDS_LIST, 0);
            u.Press(VK_F2);
            u.WaitUntil("a cell's field", [&] { return page.IsEditing(IDC_COMPOUNDS_LIST); });
            u.Type(u"A name that is longer than a string holds by itself " + std::u16string(n, u'x'));
            u.OnTestThread([n] { FailAllocation(n); });
            u.Press(VK_RETURN);
            u.Answer({u"Error:", u"out of memory", MB_OK | MB_ICONERROR}, IDOK);
            EXPECT_EQ(page.Cell(IDC_COMPOUNDS_LIST, 0, 0), NameOf(0));
            EXPECT_TRUE(n > 1 || NameOf(0) == before);
        }
        page.ClickCell(IDC_COMPOUNDS_LIST, 0);
        u.Press(VK_F2);
        page.TypeIntoCell(IDC_COMPOUNDS_LIST, u"Next");
        EXPECT_EQ(NameOf(0), u"Next");
    });
}

TEST_F(CompoundsPage, HasItsControls) {
    OnPage(EditPage::Compounds, [](CUser& u, const CDrivenWindow& page) {
        CheckControls(
            u, page.Get(),
            {{anyLabel, u"Static", u"Compounds:", 0, WS_VISIBLE, true, false},
             {IDC_COMPOUNDS_LIST, u"SysListView32", nullptr,
              LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_EDITLABELS | LVS_NOSORTHEADER | WS_TABSTOP},
             {IDC_COMPOUNDS_ADD, u"Button", u"&Add", WS_TABSTOP},
             {IDC_COMPOUNDS_DELETE, u"Button", u"&Delete", WS_TABSTOP, 0, false},
             {IDC_COMPOUNDS_RENAME, u"Button", u"&Rename", WS_TABSTOP}});
        const std::pair<const char16_t*, int> columns[] = {{u"Name", 120}, {u"ID", 120},  {u"Formula", 120},
                                                           {u"MW", 80},    {u"CAS", 120}, {u"charge", 120}};
        ASSERT_EQ(page.ColumnCount(IDC_COMPOUNDS_LIST), 6);
        int needed = GetSystemMetrics(SM_CXVSCROLL);
        for (int column = 0; column < 6; ++column) {
            EXPECT_EQ(page.ColumnTitle(IDC_COMPOUNDS_LIST, column), columns[column].first);
            EXPECT_EQ(page.ColumnWidth(IDC_COMPOUNDS_LIST, column), ScalePixels(columns[column].second, ScreenDpi()));
            needed += page.ColumnWidth(IDC_COMPOUNDS_LIST, column);
        }
        RECT client = {};
        GetClientRect(page.Item(IDC_COMPOUNDS_LIST), &client);
        EXPECT_LE(needed, client.right);  // all are in sight, also beside a bar that scrolls
    });
}

TEST_F(CompoundsPage, ListsTheCompounds) {
    OnPage(EditPage::Compounds, [](CUser&, const CDrivenWindow& page) {
        ASSERT_EQ(page.RowCount(IDC_COMPOUNDS_LIST), 2);
        EXPECT_EQ(Row(page, 0), u"First|First|CH2|14|1-2-3|0|");
        EXPECT_EQ(Row(page, 1), u"Second|second id||28||-1|");
        EXPECT_EQ(page.SelectedRows(IDC_COMPOUNDS_LIST), std::vector<int>{});
    });
}

TEST_F(CompoundsPage, EnablesDeleteForASelectedRow) {
    OnPage(EditPage::Compounds, [](CUser& u, const CDrivenWindow& page) {
        EXPECT_FALSE(page.IsEnabled(IDC_COMPOUNDS_DELETE));
        page.ClickCell(IDC_COMPOUNDS_LIST, 1, 2);
        EXPECT_EQ(page.SelectedRows(IDC_COMPOUNDS_LIST), std::vector<int>{1});
        EXPECT_TRUE(page.IsEnabled(IDC_COMPOUNDS_DELETE));
        page.ClickCell(IDC_COMPOUNDS_LIST, 0, 0, 1, {VK_CONTROL});
        EXPECT_EQ(page.SelectedRows(IDC_COMPOUNDS_LIST), std::vector<int>{0});  // never two
        const RECT list = PlaceOf(page.Item(IDC_COMPOUNDS_LIST));
        u.ClickAt({list.left + 20, list.bottom - 60});  // below the rows
        EXPECT_EQ(page.SelectedRows(IDC_COMPOUNDS_LIST), std::vector<int>{});
        EXPECT_FALSE(page.IsEnabled(IDC_COMPOUNDS_DELETE));
    });
}

TEST_F(CompoundsPage, CanNotBeSortedByItsHeaders) {
    OnPage(EditPage::Compounds, [](CUser&, const CDrivenWindow& page) {
        page.ClickHeader(IDC_COMPOUNDS_LIST, 3);
        page.ClickHeader(IDC_COMPOUNDS_LIST, 3);
        EXPECT_EQ(page.Cell(IDC_COMPOUNDS_LIST, 0, 0), u"First");
    });
}

TEST_F(CompoundsPage, DeletesTheSelectedCompound) {
    OnPage(EditPage::Compounds, [this](CUser& u, const CDrivenWindow& page) {
        const ExpectedBox question = {u"Delete compound:", u"Are you sure you want to delete compound First?",
                                      messagestyle::yesNo | messagestyle::iconQuestion};
        page.ClickCell(IDC_COMPOUNDS_LIST, 0);
        page.Click(IDC_COMPOUNDS_DELETE);
        u.Answer(question, IDNO);
        EXPECT_EQ(page.RowCount(IDC_COMPOUNDS_LIST), 2);
        EXPECT_EQ(page.SelectedRows(IDC_COMPOUNDS_LIST), std::vector<int>{0});
        page.Click(IDC_COMPOUNDS_DELETE);
        u.Answer(question, IDYES);
        EXPECT_EQ(page.RowCount(IDC_COMPOUNDS_LIST), 1);
        EXPECT_EQ(Row(page, 0), u"Second|second id||28||-1|");
        EXPECT_FALSE(page.IsEnabled(IDC_COMPOUNDS_DELETE));
        EXPECT_TRUE(page.HasFocus(IDC_COMPOUNDS_LIST));
        EXPECT_EQ(definition->reactions[0]->stoichiometry, std::vector<double>{1.0});
        const CDrivenWindow shell(u, GetParent(page.Get()));
        const CDrivenWindow reactions = OpenPage(u, shell, EditPage::Reactions);
        ASSERT_EQ(reactions.RowCount(IDC_REACTIONS_STOICHIOMETRY), 1);
        EXPECT_EQ(reactions.Cell(IDC_REACTIONS_STOICHIOMETRY, 0, 0), u"1");
        EXPECT_EQ(reactions.Cell(IDC_REACTIONS_STOICHIOMETRY, 0, 1), u"second id");
        OpenPage(u, shell, EditPage::Compounds);
        page.ClickCell(IDC_COMPOUNDS_LIST, 0);
        u.Press('D', {VK_MENU});
        u.Answer({question.title, u"Are you sure you want to delete compound second id?", question.style}, IDYES);
        EXPECT_EQ(page.RowCount(IDC_COMPOUNDS_LIST), 0);
        EXPECT_TRUE(definition->reactions[0]->stoichiometry.empty());
    });
}

int FocusedRow(CUser& u, const CDrivenWindow& page) {
    const auto anyRow = static_cast<WPARAM>(-1);
    return static_cast<int>(u.Send(page.Item(IDC_COMPOUNDS_LIST), LVM_GETNEXTITEM, anyRow, LVNI_FOCUSED));
}

TEST_F(CompoundsPage, GoesOnFromTheNeighbourOfADeletedRow) {
    definition = MakePackage({u"A", u"B", u"C"});
    OnPage(EditPage::Compounds, [this](CUser& u, const CDrivenWindow& page) {
        const auto deleteRow = [&](const std::u16string& id) {
            u.Press('D', {VK_MENU});
            u.Answer({u"Delete compound:", u"Are you sure you want to delete compound " + id + u"?",
                      messagestyle::yesNo | messagestyle::iconQuestion},
                     IDYES);
            EXPECT_TRUE(page.HasFocus(IDC_COMPOUNDS_LIST));
            EXPECT_EQ(page.SelectedRows(IDC_COMPOUNDS_LIST), std::vector<int>{});
        };
        page.ClickCell(IDC_COMPOUNDS_LIST, 1);
        deleteRow(u"B");
        EXPECT_EQ(FocusedRow(u, page), 1);
        u.Press(VK_SPACE);  // selects the row
        deleteRow(u"C");
        EXPECT_EQ(FocusedRow(u, page), 0);
        u.Press(VK_SPACE);
        deleteRow(u"A");
        EXPECT_EQ(page.RowCount(IDC_COMPOUNDS_LIST), 0);
    });
}

TEST_F(CompoundsPage, GoesOnFromTheFirstRowAdded) {
    while (definition->compounds.size() < 40) {
        AddCompoundToDefinition(*definition, std::make_unique<CompoundDefinition>());
    }
    PutPcdFile(u"U:/mine.pcd", "water");
    OnPage(EditPage::Compounds, [](CUser& u, const CDrivenWindow& page) {
        page.Click(IDC_COMPOUNDS_ADD);
        const CDrivenWindow add = u.WaitFor(addTitle);
        add.ClickCell(IDC_ADD_COMPOUNDS_LIST, 0);
        add.Click(IDOK);
        add.WaitUntilGone();
        EXPECT_TRUE(page.HasFocus(IDC_COMPOUNDS_LIST));
        EXPECT_EQ(FocusedRow(u, page), 40);
        const HWND list = page.Item(IDC_COMPOUNDS_LIST);
        EXPECT_LE(u.Send(list, LVM_GETTOPINDEX) + u.Send(list, LVM_GETCOUNTPERPAGE), 41);
        EXPECT_GT(u.Send(list, LVM_GETTOPINDEX) + u.Send(list, LVM_GETCOUNTPERPAGE), 40);
        page.TakePicture("105-added");
        EXPECT_EQ(page.SelectedRows(IDC_COMPOUNDS_LIST), std::vector<int>{});
    });
}

TEST_F(CompoundsPage, RenamesInPlace) {
    OnPage(EditPage::Compounds, [this](CUser&, const CDrivenWindow& page) {
        page.Click(IDC_COMPOUNDS_RENAME);  // without a selection
        EXPECT_FALSE(page.IsEditing(IDC_COMPOUNDS_LIST));
        page.ClickCell(IDC_COMPOUNDS_LIST, 1);
        page.Click(IDC_COMPOUNDS_RENAME);
        page.TypeIntoCell(IDC_COMPOUNDS_LIST, u"Renamed");
        EXPECT_EQ(NameOf(1), u"Renamed");
        EXPECT_EQ(Row(page, 1), u"Renamed|second id||28||-1|");
        EXPECT_TRUE(page.HasFocus(IDC_COMPOUNDS_LIST));
        EXPECT_EQ(definition->reactions[0]->rateEquation, u"2*T");
    });
}

TEST_F(CompoundsPage, RenamesByTheKeyboard) {
    OnPage(EditPage::Compounds, [this](CUser& u, const CDrivenWindow& page) {
        u.Press(VK_TAB);  // from the tabs
        EXPECT_TRUE(page.HasFocus(IDC_COMPOUNDS_LIST));
        u.Press(VK_DOWN);
        u.Press(VK_HOME);
        u.Press(VK_SPACE);
        EXPECT_EQ(page.SelectedRows(IDC_COMPOUNDS_LIST), std::vector<int>{0});
        u.Press(VK_F2);
        page.TypeIntoCell(IDC_COMPOUNDS_LIST, u"By F2");
        EXPECT_EQ(NameOf(0), u"By F2");
        u.Press('R', {VK_MENU});
        page.TypeIntoCell(IDC_COMPOUNDS_LIST, u"By letter");
        EXPECT_EQ(NameOf(0), u"By letter");
    });
}

TEST_F(CompoundsPage, RenamesByASecondClick) {
    OnPage(EditPage::Compounds, [this](CUser&, const CDrivenWindow& page) {
        page.ClickCell(IDC_COMPOUNDS_LIST, 0);
        page.ClickCell(IDC_COMPOUNDS_LIST, 0);
        page.TypeIntoCell(IDC_COMPOUNDS_LIST, u"Clicked twice");
        EXPECT_EQ(NameOf(0), u"Clicked twice");
    });
}

TEST_F(CompoundsPage, KeepsTheNameOfACancelledOrEmptyRename) {
    OnPage(EditPage::Compounds, [this](CUser& u, const CDrivenWindow& page) {
        page.ClickCell(IDC_COMPOUNDS_LIST, 0);
        u.Press(VK_F2);
        page.TypeIntoCell(IDC_COMPOUNDS_LIST, u"given up", VK_ESCAPE);
        EXPECT_EQ(page.Cell(IDC_COMPOUNDS_LIST, 0, 0), u"First");
        u.Press(VK_F2);
        page.TypeIntoCell(IDC_COMPOUNDS_LIST, u"");
        EXPECT_EQ(page.Cell(IDC_COMPOUNDS_LIST, 0, 0), u"First");
        EXPECT_EQ(NameOf(0), u"First");
    });
}

TEST_F(CompoundsPage, RefusesTheNameOfAnotherCompound) {
    const ExpectedBox refusal = {u"Error:", u"The compound name must be unique", errorBox};
    OnPage(EditPage::Compounds, [&](CUser& u, const CDrivenWindow& page) {
        page.ClickCell(IDC_COMPOUNDS_LIST, 0);
        u.Press(VK_F2);
        page.TypeIntoCell(IDC_COMPOUNDS_LIST, u"sECOND");
        u.Answer(refusal, IDOK);
        EXPECT_FALSE(page.IsEditing(IDC_COMPOUNDS_LIST));
        EXPECT_EQ(u.CountDialogs(), 1);  // told once
        EXPECT_EQ(page.Cell(IDC_COMPOUNDS_LIST, 0, 0), u"First");
        EXPECT_EQ(NameOf(0), u"First");
        u.Press(VK_F2);
        page.TypeIntoCell(IDC_COMPOUNDS_LIST, u"FIRST");  // its own name in other letters will do
        EXPECT_EQ(NameOf(0), u"FIRST");
    });
}

TEST_F(CompoundsPage, TakesTheNameWhenTheUserGoesElsewhere) {
    EXPECT_FALSE(EditPackage(*definition, [this](CUser& u, const CDrivenWindow& shell) {
        const CDrivenWindow page = OpenPage(u, shell, EditPage::Compounds);
        page.ClickCell(IDC_COMPOUNDS_LIST, 0);
        u.Press(VK_F2);
        u.WaitUntil("the field of the name", [&] { return page.IsEditing(IDC_COMPOUNDS_LIST); });
        u.Type(u"Left");
        shell.Click(IDCANCEL);
        shell.WaitUntilGone();
        EXPECT_EQ(NameOf(0), u"Left");
    }));
}

TEST_F(CompoundsPage, KeepsTheNameWhenTheDialogIsClosedMeanwhile) {
    for (const char16_t* const name : {u"Left", u"sECOND"}) {
        EXPECT_FALSE(EditPackage(*definition, [&](CUser& u, const CDrivenWindow& shell) {
            const CDrivenWindow page = OpenPage(u, shell, EditPage::Compounds);
            page.ClickCell(IDC_COMPOUNDS_LIST, 0);
            u.Press(VK_F2);
            u.WaitUntil("the field of the name", [&] { return page.IsEditing(IDC_COMPOUNDS_LIST); });
            u.Type(name);
            EXPECT_TRUE(page.IsEditing(IDC_COMPOUNDS_LIST));
            u.Press(VK_F4, {VK_MENU});
            shell.WaitUntilGone();
            EXPECT_EQ(u.CountDialogs(), 0);
        }));
        EXPECT_EQ(NameOf(0), u"First");
    }
}

TEST_F(CompoundsPage, TakesLongNames) {
    const std::u16string longName(3000, u'n');
    OnPage(EditPage::Compounds, [&](CUser& u, const CDrivenWindow& page) {
        page.ClickCell(IDC_COMPOUNDS_LIST, 0);
        u.Press(VK_F2);
        page.TypeIntoCell(IDC_COMPOUNDS_LIST, longName);
        EXPECT_EQ(NameOf(0), longName);
    });
}

// Add

TEST_F(CompoundsPage, AddsCompoundsOfTheFile) {
    PutPcdFile(u"U:/mine.pcd", "water");
    OnPage(EditPage::Compounds, [this](CUser& u, const CDrivenWindow& page) {
        page.Click(IDC_COMPOUNDS_ADD);
        const CDrivenWindow add = u.WaitFor(addTitle);
        EXPECT_EQ(GetWindow(add.Get(), GW_OWNER), GetParent(page.Get()));
        add.ClickCell(IDC_ADD_COMPOUNDS_LIST, 0);
        add.Click(IDOK);
        add.WaitUntilGone();
        ASSERT_EQ(page.RowCount(IDC_COMPOUNDS_LIST), 3);
        EXPECT_EQ(page.Cell(IDC_COMPOUNDS_LIST, 2, 1), u"water");
        EXPECT_EQ(definition->reactions[0]->stoichiometry, (std::vector<double>{-2.0, 1.0, 0.0}));
        const CDrivenWindow reactions = OpenPage(u, {u, GetParent(page.Get())}, EditPage::Reactions);
        EXPECT_EQ(reactions.RowCount(IDC_REACTIONS_STOICHIOMETRY), 3);
        EXPECT_EQ(reactions.Cell(IDC_REACTIONS_STOICHIOMETRY, 2, 0), u"0");
    });
}

TEST_F(CompoundsPage, AddsNothingAfterCancel) {
    PutPcdFile(u"U:/mine.pcd", "water");
    OnPage(EditPage::Compounds, [](CUser& u, const CDrivenWindow& page) {
        page.Click(IDC_COMPOUNDS_ADD);
        const CDrivenWindow add = u.WaitFor(addTitle);
        add.ClickCell(IDC_ADD_COMPOUNDS_LIST, 0);
        u.Press(VK_ESCAPE);
        add.WaitUntilGone();
        EXPECT_EQ(page.RowCount(IDC_COMPOUNDS_LIST), 2);
    });
}

TEST_F(CompoundsPage, RefreshesTheReactionsAfterCancelToo) {
    PutPcdFile(u"U:/mine.pcd", "water");
    EXPECT_FALSE(EditPackage(*definition, [](CUser& u, const CDrivenWindow& shell) {
        const std::u16string stale = u"stale";
        u.Send(shell.Item(IDC_REACTIONS_HEADING), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(stale.c_str()));
        OpenPage(u, shell, EditPage::Compounds).Click(IDC_COMPOUNDS_ADD);
        const CDrivenWindow add = u.WaitFor(addTitle);
        add.Click(IDCANCEL);
        add.WaitUntilGone();
        EXPECT_EQ(OpenPage(u, shell, EditPage::Reactions).Text(IDC_REACTIONS_HEADING), u"R1");
        shell.Click(IDCANCEL);
    }));
}

TEST_F(CompoundsPage, FallsBackOnTheDefaultFile) {
    const std::u16string defaultFile = ComponentFolder() + u"data" + Slash() + u"Korvex1.pcd";
    PutPcdFile(defaultFile, "steam");
    OnPage(EditPage::Compounds, [&](CUser& u, const CDrivenWindow& page) {
        page.Click(IDC_COMPOUNDS_ADD);
        const CDrivenWindow add = u.WaitFor(addTitle);
        EXPECT_EQ(add.Text(IDC_ADD_COMPOUNDS_FILE), defaultFile);
        EXPECT_EQ(add.RowCount(IDC_ADD_COMPOUNDS_LIST), 1);
        add.Click(IDCANCEL);
        add.WaitUntilGone();
        EXPECT_EQ(definition->pcdFile, defaultFile);
    });
}

TEST_F(CompoundsPage, TellsThatThereIsNoFileAtAll) {
    const std::u16string defaultFile = ComponentFolder() + u"data" + Slash() + u"Korvex1.pcd";
    OnPage(EditPage::Compounds, [&](CUser& u, const CDrivenWindow& page) {
        page.Click(IDC_COMPOUNDS_ADD);
        u.Answer({u"Error:", u"failed to open " + defaultFile + u" for reading", errorBox}, IDOK);
        const CDrivenWindow add = u.WaitFor(addTitle);
        EXPECT_EQ(add.RowCount(IDC_ADD_COMPOUNDS_LIST), 0);
        add.Click(IDCANCEL);
        add.WaitUntilGone();
        EXPECT_EQ(page.RowCount(IDC_COMPOUNDS_LIST), 2);
    });
}

}  // namespace
}  // namespace reka::test
