// SPDX-License-Identifier: MIT
// The dialog that adds compounds of a compound file.

#include "editor/win/CAddCompDlg.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>

#include "BoxUi.h"
#include "editor/win/resource.h"
#include "support/AllocationCounter.h"
#include "support/Builders.h"
#include "support/FakeFiles.h"
#include "support/PcdBytes.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

constexpr int list = IDC_ADD_COMPOUNDS_LIST;
constexpr int filter = IDC_ADD_COMPOUNDS_FILTER;

class AddCompoundsDialog : public testing::Test {
protected:
    using Work = std::function<void(CUser&, const CDrivenWindow&)>;

    AddCompoundsDialog() {
        definition->pcdFile = u"C:\\data\\pure.pcd";
        AddKinetic(*definition, u"R1", u"").stoichiometry = {-1.0};
        PcdBytes bytes;
        AddPcdRecord(bytes, "WATER", "H2O", 18.015F, "7732185");
        AddPcdRecord(bytes, "METHANE", "CH4", 16.043F, "74828");
        AddPcdRecord(bytes, "ETHANOL", "C2H6O", 46.069F, "64175");
        AddPcdRecord(bytes, "DIMETHYL ETHER", "C2H6O", 46.07F, "115106");
        AddPcdRecord(bytes, "HYDROGEN", "H2", 2.016F, "1333740");
        files.entries[definition->pcdFile].bytes = bytes;
        PcdBytes other;
        AddPcdRecord(other, "ARGON", "Ar", 39.948F, "7440371");
        files.entries[u"C:\\data\\other.pcd"].bytes = other;
    }

    bool Open(const Work& work) {
        CUser user([&](CUser& u) {
            const CDrivenWindow dialog = u.WaitFor(u"Add compounds:");
            work(u, dialog);
            dialog.WaitUntilGone();
        });
        return CAddCompDlg(*definition, ui).Run(nullptr);
    }

    /// The cells of a column, one after the other.
    static std::string Column(const CDrivenWindow& dialog, int column) {
        std::string cells;
        for (int row = 0; row < dialog.RowCount(list); ++row) {
            cells += (row > 0 ? "|" : "") + Utf8FromUtf16(dialog.Cell(list, row, column));
        }
        return cells;
    }
    std::string Names() const {
        std::string names;
        for (const auto& compound : definition->compounds) names += Utf8FromUtf16(compound->name.View()) + "|";
        return names;
    }

    CFakeFiles files;
    std::unique_ptr<ReactionPackDefinition> definition = MakePackage({u"Argon"});
    CBoxUi ui;
};

TEST_F(AddCompoundsDialog, ListsTheCompoundsOfTheFile) {
    EXPECT_FALSE(Open([](CUser& u, const CDrivenWindow& dialog) {
        EXPECT_TRUE(dialog.HasFocus(filter));
        EXPECT_EQ(dialog.Text(filter), u"");
        EXPECT_EQ(dialog.Text(IDC_ADD_COMPOUNDS_FILE), u"C:\\data\\pure.pcd");
        EXPECT_EQ(Column(dialog, 0), "WATER|METHANE|ETHANOL|DIMETHYL ETHER|HYDROGEN");
        EXPECT_EQ(Column(dialog, 1), "H2O|CH4|C2H6O|C2H6O|H2");
        EXPECT_EQ(Column(dialog, 2), "18.015|16.043|46.069|46.07|2.016");
        EXPECT_EQ(Column(dialog, 3), "7732-18-5|74-82-8|64-17-5|115-10-6|1333-74-0");
        const std::u16string titles[] = {u"Name", u"Formula", u"Mol Weight", u"CAS"};
        RECT client = {};
        GetClientRect(dialog.Item(list), &client);
        const int widths[] = {2 * client.right / 7, 2 * client.right / 7, client.right / 7, 2 * client.right / 7};
        for (int column = 0; column < 4; ++column) {
            EXPECT_EQ(dialog.ColumnTitle(list, column), titles[column]);
            EXPECT_EQ(dialog.ColumnWidth(list, column), widths[column]);
        }
        EXPECT_EQ(dialog.SelectedRows(list), std::vector<int>());
        EXPECT_NE(u.Send(dialog.Get(), WM_GETICON, ICON_BIG), 0);
        EXPECT_NE(u.Send(dialog.Get(), WM_GETICON, ICON_SMALL), 0);
        dialog.Click(IDCANCEL);
    }));
    EXPECT_EQ(definition->compounds.size(), 1U);
}

TEST_F(AddCompoundsDialog, FiltersAtEachKey) {
    EXPECT_TRUE(Open([](CUser& u, const CDrivenWindow& dialog) {
        u.Type(u"h");
        EXPECT_EQ(Column(dialog, 0), "WATER|METHANE|ETHANOL|DIMETHYL ETHER|HYDROGEN");
        EXPECT_EQ(dialog.SelectedRows(list), std::vector<int>());
        u.Type(u"2");
        EXPECT_EQ(Column(dialog, 0), "WATER|HYDROGEN");
        EXPECT_EQ(dialog.SelectedRows(list), std::vector<int>{1});
        u.Type(u"o");
        EXPECT_EQ(Column(dialog, 0), "WATER");
        EXPECT_EQ(dialog.SelectedRows(list), std::vector<int>{0});
        EXPECT_TRUE(dialog.HasFocus(filter));
        dialog.TakePicture("AddCompoundsFiltered");
        u.Press(VK_RETURN);  // in the filter
    }));
    EXPECT_EQ(Names(), "Argon|WATER|");
    EXPECT_EQ(definition->compounds[1]->databaseIndex, 0);
    EXPECT_EQ(definition->reactions[0]->stoichiometry, (std::vector<double>{-1.0, 0.0}));
}

TEST_F(AddCompoundsDialog, ShowsAllAgainWithoutAFilter) {
    EXPECT_FALSE(Open([](CUser& u, const CDrivenWindow& dialog) {
        u.Type(u"7732-");
        EXPECT_EQ(Column(dialog, 0), "WATER");
        dialog.Fill(filter, u"xyz");
        EXPECT_EQ(dialog.RowCount(list), 0);
        dialog.Click(IDOK);  // nothing is selected
        EXPECT_FALSE(dialog.IsGone());
        EXPECT_EQ(u.CountDialogs(), 1);
        dialog.Fill(filter, u"");
        EXPECT_EQ(dialog.RowCount(list), 5);
        EXPECT_EQ(dialog.SelectedRows(list), std::vector<int>());
        u.Press(VK_RETURN);
        EXPECT_FALSE(dialog.IsGone());
        u.Press(VK_ESCAPE);
    }));
    EXPECT_EQ(definition->compounds.size(), 1U);
}

TEST_F(AddCompoundsDialog, AddsSeveralInTheOrderOfTheirRows) {
    EXPECT_TRUE(Open([](CUser&, const CDrivenWindow& dialog) {
        dialog.ClickCell(list, 3);
        dialog.ClickCell(list, 0, 2, 1, {VK_CONTROL});
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(Names(), "Argon|WATER|DIMETHYL ETHER|");
}

TEST_F(AddCompoundsDialog, AddsByADoubleClick) {
    EXPECT_TRUE(Open([](CUser&, const CDrivenWindow& dialog) { dialog.ClickCell(list, 2, 1, 2); }));
    EXPECT_EQ(Names(), "Argon|ETHANOL|");
}

TEST_F(AddCompoundsDialog, AddsTheSameCompoundTwice) {
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(Open([](CUser&, const CDrivenWindow& dialog) { dialog.ClickCell(list, 0, 0, 2); }));
    }
    EXPECT_EQ(Names(), "Argon|WATER|WATER|");
}

/// Each column but the first sorts by what its left neighbour shows.
TEST_F(AddCompoundsDialog, SortsByAClickOnAHeader) {
    EXPECT_FALSE(Open([](CUser& u, const CDrivenWindow& dialog) {
        dialog.ClickHeader(list, 0);
        EXPECT_EQ(Column(dialog, 0), "DIMETHYL ETHER|ETHANOL|HYDROGEN|METHANE|WATER");
        dialog.ClickHeader(list, 0);
        EXPECT_EQ(Column(dialog, 0), "WATER|METHANE|HYDROGEN|ETHANOL|DIMETHYL ETHER");
        dialog.ClickHeader(list, 1);  // by its formulas hydrogen would come behind methane
        EXPECT_EQ(Column(dialog, 0), "DIMETHYL ETHER|ETHANOL|HYDROGEN|METHANE|WATER");
        dialog.ClickHeader(list, 2);
        EXPECT_EQ(Column(dialog, 1), "C2H6O|C2H6O|CH4|H2|H2O");
        dialog.ClickHeader(list, 3);
        EXPECT_EQ(Column(dialog, 2), "2.016|16.043|18.015|46.069|46.07");
        dialog.ClickHeader(list, 3);
        EXPECT_EQ(Column(dialog, 2), "46.07|46.069|18.015|16.043|2.016");
        u.Press(VK_ESCAPE);
    }));
}

TEST_F(AddCompoundsDialog, KeepsTheSelectionWithItsCompoundsAsItSorts) {
    EXPECT_TRUE(Open([](CUser&, const CDrivenWindow& dialog) {
        dialog.ClickCell(list, 0);
        dialog.ClickCell(list, 1, 0, 1, {VK_CONTROL});
        dialog.ClickHeader(list, 0);
        EXPECT_EQ(dialog.SelectedRows(list), (std::vector<int>{3, 4}));  // METHANE and WATER
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(Names(), "Argon|METHANE|WATER|");
}

TEST_F(AddCompoundsDialog, IsWorkedByTheKeyboardAlone) {
    EXPECT_TRUE(Open([](CUser& u, const CDrivenWindow& dialog) {
        u.Press(VK_TAB, {VK_SHIFT});
        EXPECT_TRUE(dialog.HasFocus(list));
        u.Press(VK_DOWN);
        u.Press(VK_DOWN, {VK_SHIFT});
        EXPECT_EQ(dialog.SelectedRows(list), (std::vector<int>{1, 2}));
        u.Type(u"hy");  // the first row of that beginning
        EXPECT_EQ(dialog.SelectedRows(list), (std::vector<int>{4}));
        u.Press(VK_RETURN);
    }));
    EXPECT_EQ(Names(), "Argon|HYDROGEN|");
}

TEST_F(AddCompoundsDialog, TakesAnotherFileForGood) {
    ui.text = u"C:\\data\\other.pcd";
    EXPECT_FALSE(Open([](CUser& u, const CDrivenWindow& dialog) {
        u.Type(u"water");
        dialog.Click(IDC_ADD_COMPOUNDS_BROWSE);
        EXPECT_EQ(dialog.Text(filter), u"");
        EXPECT_EQ(dialog.Text(IDC_ADD_COMPOUNDS_FILE), u"C:\\data\\other.pcd");
        EXPECT_EQ(Column(dialog, 0), "ARGON");
        dialog.Click(IDCANCEL);
    }));
    EXPECT_EQ(definition->pcdFile, u"C:\\data\\other.pcd");
    EXPECT_EQ(definition->compounds.size(), 1U);
    ASSERT_EQ(ui.asked.size(), 1U);
    EXPECT_EQ(ui.asked[0],
              "file|Select PCD File:|C:\\data\\pure.pcd|PCD|Pure Compound Data files (*.PCD)|*.pcd|All files (*.*)|*.*|"
              "2047");
}

TEST_F(AddCompoundsDialog, KeepsTheFileWhereNoneIsChosen) {
    ui.fileAnswer = OpenFileAnswer::Cancelled;
    EXPECT_FALSE(Open([](CUser& u, const CDrivenWindow& dialog) {
        u.Press('B', {VK_MENU});
        EXPECT_EQ(dialog.RowCount(list), 5);
        EXPECT_EQ(dialog.Text(IDC_ADD_COMPOUNDS_FILE), u"C:\\data\\pure.pcd");
        u.Press(VK_ESCAPE);
    }));
    EXPECT_EQ(ui.asked.size(), 1U);
}

TEST_F(AddCompoundsDialog, TellsAFileChoiceWithoutMemory) {
    ui.fileAnswer = OpenFileAnswer::NoMemory;
    EXPECT_FALSE(Open([](CUser& u, const CDrivenWindow& dialog) {
        dialog.Click(IDC_ADD_COMPOUNDS_BROWSE);
        u.Answer({u"Error:", u"out of memory", messagestyle::ok}, IDOK);
        EXPECT_EQ(dialog.RowCount(list), 5);
        u.Press(VK_ESCAPE);
    }));
}

TEST_F(AddCompoundsDialog, OpensOnAFileThatCannotBeRead) {
    definition->pcdFile = u"C:\\data\\gone.pcd";
    ui.text = u"C:\\data\\pure.pcd";
    CompoundList none;
    std::u16string errorText;
    ASSERT_FALSE(LoadPcdFile(definition->pcdFile, none, errorText));
    CUser user([&](CUser& u) {
        u.Answer(ErrorBox(errorText), IDOK);
        const CDrivenWindow dialog = u.WaitFor(u"Add compounds:");
        EXPECT_EQ(dialog.RowCount(list), 0);
        EXPECT_EQ(dialog.Text(IDC_ADD_COMPOUNDS_FILE), u"C:\\data\\gone.pcd");
        EXPECT_TRUE(dialog.HasFocus(filter));
        dialog.Click(IDC_ADD_COMPOUNDS_BROWSE);  // on to another one
        EXPECT_EQ(dialog.RowCount(list), 5);
        u.Type(u"argon");
        u.Press(VK_ESCAPE);
        dialog.WaitUntilGone();
    });
    EXPECT_FALSE(CAddCompDlg(*definition, ui).Run(nullptr));
}

TEST_F(AddCompoundsDialog, StandsInItsPlaceWhileItTellsAFailure) {
    definition->pcdFile = u"C:\\data\\gone.pcd";
    CompoundList none;
    std::u16string errorText;
    ASSERT_FALSE(LoadPcdFile(definition->pcdFile, none, errorText));
    CUser user([&](CUser& u) {
        u.WaitUntil("the box", [] { return FindWindowW(L"#32770", L"Error:") != nullptr; });
        const HWND window = FindWindowW(L"#32770", L"Add compounds:");
        EXPECT_TRUE(IsWindowVisible(window));
        const RECT before = PlaceOf(window);
        EXPECT_NEAR(MiddleOf(before).x, GetSystemMetrics(SM_CXSCREEN) / 2, 2);
        u.Answer(ErrorBox(errorText), IDOK);
        const CDrivenWindow dialog = u.WaitFor(u"Add compounds:");
        const RECT after = PlaceOf(dialog.Get());
        EXPECT_TRUE(EqualRect(&before, &after));
        u.Press(VK_ESCAPE);
        dialog.WaitUntilGone();
    });
    EXPECT_FALSE(CAddCompDlg(*definition, ui).Run(nullptr));
}

TEST_F(AddCompoundsDialog, TellsThatTheNextFileCannotBeRead) {
    ui.text = u"C:\\data\\gone.pcd";
    CompoundList none;
    std::u16string errorText;
    ASSERT_FALSE(LoadPcdFile(*ui.text, none, errorText));
    EXPECT_FALSE(Open([&](CUser& u, const CDrivenWindow& dialog) {
        u.Type(u"water");
        dialog.Click(IDC_ADD_COMPOUNDS_BROWSE);
        u.WaitUntil("the box", [] { return FindWindowW(L"#32770", L"Error:") != nullptr; });
        EXPECT_EQ(dialog.RowCount(list), 0);  // beneath it
        u.Answer(ErrorBox(errorText), IDOK);
        EXPECT_EQ(dialog.RowCount(list), 0);
        EXPECT_EQ(dialog.Text(filter), u"");
        EXPECT_EQ(dialog.Text(IDC_ADD_COMPOUNDS_FILE), u"C:\\data\\gone.pcd");
        dialog.Click(IDOK);  // nothing to add
        EXPECT_FALSE(dialog.IsGone());
        dialog.Click(IDCANCEL);
    }));
    EXPECT_EQ(definition->pcdFile, u"C:\\data\\gone.pcd");
}

TEST_F(AddCompoundsDialog, LeavesTheColumnsToTheUser) {
    EXPECT_FALSE(Open([&](CUser& u, const CDrivenWindow& dialog) {
        const int formula = dialog.ColumnWidth(list, 1);
        u.Send(dialog.Item(list), LVM_SETCOLUMNWIDTH, 0, 77);
        dialog.DragCorner(60, 40);
        EXPECT_EQ(dialog.ColumnWidth(list, 0), 77);
        EXPECT_EQ(dialog.ColumnWidth(list, 1), formula);
        ui.text = u"C:\\data\\other.pcd";
        dialog.Click(IDC_ADD_COMPOUNDS_BROWSE);
        EXPECT_EQ(dialog.ColumnWidth(list, 0), 77);
        u.Press(VK_ESCAPE);
    }));
}

/// A file of many compounds has a bar to scroll it, beside which the columns have their places.
TEST_F(AddCompoundsDialog, FitsTheColumnsBesideTheScrollBar) {
    PcdBytes bytes;
    for (int i = 0; i < 100; ++i) AddPcdRecord(bytes, "C" + std::to_string(i), "H2", 2.0F, "");
    files.entries[definition->pcdFile].bytes = bytes;
    EXPECT_FALSE(Open([](CUser& u, const CDrivenWindow& dialog) {
        const auto style = GetWindowLongW(dialog.Item(list), GWL_STYLE);
        EXPECT_TRUE(style & WS_VSCROLL);
        EXPECT_FALSE(style & WS_HSCROLL);
        RECT client = {};
        GetClientRect(dialog.Item(list), &client);
        EXPECT_EQ(dialog.ColumnWidth(list, 0), 2 * client.right / 7);
        EXPECT_EQ(dialog.ColumnWidth(list, 2), client.right / 7);
        u.Press(VK_ESCAPE);
    }));
}

TEST_F(AddCompoundsDialog, GoesOnAfterAWantOfMemory) {
    EXPECT_TRUE(Open([](CUser& u, const CDrivenWindow& dialog) {
        u.Type(u"water");
        dialog.ClickCell(list, 0);
        u.OnTestThread([] { FailAllocation(1); });
        u.Press(VK_RETURN);
        u.Answer({u"Error:", u"out of memory", MB_OK | MB_ICONERROR}, IDOK);
        EXPECT_FALSE(dialog.IsGone());
        EXPECT_EQ(Column(dialog, 0), "WATER");
        u.Press(VK_RETURN);
    }));
    EXPECT_EQ(Names(), "Argon|WATER|");
}

/// 50,000 compounds: how long each step takes is told, and asserted by nobody.
TEST_F(AddCompoundsDialog, WorksOnALargeFile) {
    constexpr int count = 50000;
    PcdBytes bytes;
    bytes.reserve(1024 * (count + 1));
    for (int i = 0; i < count; ++i) {
        const int mixed = i * 7919 % count;
        AddPcdRecord(bytes, "COMPOUND " + std::to_string(mixed), "C" + std::to_string(mixed % 40 + 1) + "H4",
                     static_cast<float>(mixed) / 7.0F, std::to_string(1000000 + i));
    }
    files.entries[definition->pcdFile].bytes = bytes;
    using Clock = std::chrono::steady_clock;
    auto before = Clock::now();
    const auto tell = [&](const char* step) {
        const auto time = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - before);
        RecordProperty(step, static_cast<int>(time.count()));
        std::printf("%s: %d ms\n", step, static_cast<int>(time.count()));
        before = Clock::now();
    };
    EXPECT_TRUE(Open([&](CUser& u, const CDrivenWindow& dialog) {
        tell("Open");
        EXPECT_EQ(dialog.RowCount(list), count);
        EXPECT_EQ(dialog.Cell(list, count - 1, 0), u"COMPOUND 42081");
        before = Clock::now();
        u.Type(u"4");
        tell("FilterByOneCharacter");
        u.Type(u"2081");
        tell("FilterByFourMore");
        EXPECT_EQ(dialog.RowCount(list), 1);
        dialog.Fill(filter, u"");
        before = Clock::now();
        dialog.ClickHeader(list, 0);
        tell("Sort");
        EXPECT_EQ(dialog.Cell(list, 0, 0), u"COMPOUND 0");
        EXPECT_EQ(dialog.Cell(list, count - 1, 0), u"COMPOUND 9999");
        dialog.ClickCell(list, 0);
        before = Clock::now();
        u.Press(VK_END, {VK_SHIFT});
        tell("SelectAll");
        EXPECT_EQ(u.Send(dialog.Item(list), LVM_GETSELECTEDCOUNT), count);
        dialog.ClickCell(list, 1, 0, 1, {VK_CONTROL});
        before = Clock::now();
        dialog.ClickHeader(list, 2);
        tell("SortWithAllButOneSelected");
        EXPECT_EQ(u.Send(dialog.Item(list), LVM_GETSELECTEDCOUNT), count - 1);
        dialog.ClickCell(list, 7);
        before = Clock::now();
        dialog.Click(IDOK);
        dialog.WaitUntilGone();
        tell("Accept");
    }));
    EXPECT_EQ(definition->compounds.size(), 2U);
}

}  // namespace
}  // namespace reka::test
