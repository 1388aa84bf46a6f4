// SPDX-License-Identifier: MIT
// The driver itself, on a dialog of the test's own: what other tests rely on.

#include "Driver.h"

#include <gtest/gtest.h>

#include <commctrl.h>

#include "ControlTable.h"
#include "editor/win/ListView.h"
#include "platform/UserMessages.h"

namespace reka::test {
namespace {

constexpr int templateNumber = 1900;
constexpr char16_t title[] = u"A dialog of the tests";

struct Happened {
    std::u16string text;
    bool isChecked = false;
    int listSelection = -1;
    int comboSelection = -1;
    bool wasDoubleClicked = false;
    std::u16string cell;
};

void FillLists(HWND dialog) {
    for (const wchar_t* text : {L"one", L"two", L"three"}) {
        SendDlgItemMessageW(dialog, 12, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
        SendDlgItemMessageW(dialog, 13, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
    }
    const HWND list = GetDlgItem(dialog, 14);
    ListView_SetExtendedListViewStyle(list, LVS_EX_CHECKBOXES);
    for (int column = 0; column < 2; ++column) {
        wchar_t header[] = L"First";
        LVCOLUMNW description = {};
        description.mask = LVCF_TEXT | LVCF_WIDTH;
        description.cx = 90;
        description.pszText = column == 0 ? header : const_cast<wchar_t*>(L"Second");
        SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&description));
    }
    for (int row = 0; row < 3; ++row) {
        LVITEMW item = {};
        item.mask = LVIF_TEXT;
        item.iItem = row;
        item.pszText = const_cast<wchar_t*>(L"cell");
        SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
}

void Read(HWND dialog, Happened& happened) {
    wchar_t text[200] = {};
    GetDlgItemTextW(dialog, 10, text, 200);
    happened.text = reinterpret_cast<const char16_t*>(text);
    happened.isChecked = IsDlgButtonChecked(dialog, 11) == BST_CHECKED;
    happened.listSelection = static_cast<int>(SendDlgItemMessageW(dialog, 12, LB_GETCURSEL, 0, 0));
    happened.comboSelection = static_cast<int>(SendDlgItemMessageW(dialog, 13, CB_GETCURSEL, 0, 0));
}

INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, DWLP_USER, lParam);
        FillLists(dialog);
        return TRUE;
    }
    auto* const happened = reinterpret_cast<Happened*>(GetWindowLongPtrW(dialog, DWLP_USER));
    if (!happened) return FALSE;
    if (message == WM_NOTIFY) {
        const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
        if (header.code == static_cast<UINT>(NM_DBLCLK)) happened->wasDoubleClicked = true;
        if (header.code == LVN_ENDLABELEDITW) {
            const auto& edited = *reinterpret_cast<const NMLVDISPINFOW*>(lParam);
            if (edited.item.pszText) happened->cell = reinterpret_cast<const char16_t*>(edited.item.pszText);
        }
        return FALSE;
    }
    if (message != WM_COMMAND) return FALSE;
    if (LOWORD(wParam) == IDOK && IsDlgButtonChecked(dialog, 11) == BST_CHECKED) {
        if (MessageBoxW(dialog, L"Really?", L"A question:", MB_YESNO | MB_DEFBUTTON2 | MB_ICONQUESTION) != IDYES) {
            return TRUE;
        }
    }
    if (LOWORD(wParam) == IDOK) Read(dialog, *happened);
    if (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL) EndDialog(dialog, LOWORD(wParam));
    return TRUE;
}

INT_PTR ShowDialog(Happened& happened) {
    return DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(templateNumber), nullptr, Procedure,
                           reinterpret_cast<LPARAM>(&happened));
}

TEST(Driver, TypesClicksAndChooses) {
    Happened happened;
    CUser user([](CUser& u) {
        const CDrivenWindow dialog = u.WaitFor(title);
        CheckControls(u, dialog.Get(),
                      {{anyLabel, u"Static", u"&Name:"},
                       {10, u"Edit", u"", ES_AUTOHSCROLL | WS_TABSTOP},
                       {11, u"Button", u"&Box", BS_AUTOCHECKBOX},
                       {anyLabel, u"Static", u"Lines:", 0, WS_VISIBLE, true, false},
                       {12, u"ListBox", nullptr},
                       {anyLabel, u"Static", u"Choices:", 0, WS_VISIBLE, true, false},
                       {13, u"ComboBox", nullptr, CBS_DROPDOWNLIST},
                       {anyLabel, u"Static", u"Rows:", 0, WS_VISIBLE, true, false},
                       {14, u"SysListView32", nullptr, LVS_REPORT | LVS_EDITLABELS},
                       {IDOK, u"Button", u"OK", BS_DEFPUSHBUTTON},
                       {IDCANCEL, u"Button", u"Cancel"}});
        CheckLayout(u, dialog.Get());
        dialog.Fill(10, u"left");
        dialog.Fill(10, u"a text with \u00E9, \u4E2D and &");
        EXPECT_EQ(dialog.Text(10), u"a text with \u00E9, \u4E2D and &");
        dialog.ClickListItem(12, 1);
        EXPECT_EQ(dialog.ListSelection(12), 1);
        EXPECT_EQ(dialog.ListText(12, 1), u"two");
        dialog.ChooseComboItem(13, 2);
        EXPECT_EQ(dialog.ListText(13, 2), u"three");
        EXPECT_EQ(dialog.ListCount(13), 3);
        dialog.TakePicture("driver");
        dialog.Click(IDOK);
    });
    EXPECT_EQ(ShowDialog(happened), IDOK);
    user.Finish();
    EXPECT_EQ(happened.text, u"a text with \u00E9, \u4E2D and &");
    EXPECT_EQ(happened.listSelection, 1);
    EXPECT_EQ(happened.comboSelection, 2);
    EXPECT_FALSE(happened.isChecked);
}

TEST(Driver, WorksAListView) {
    Happened happened;
    CUser user([&](CUser& u) {
        const CDrivenWindow dialog = u.WaitFor(title);
        EXPECT_EQ(dialog.RowCount(14), 3);
        EXPECT_EQ(dialog.ColumnCount(14), 2);
        EXPECT_EQ(dialog.ColumnTitle(14, 1), u"Second");
        EXPECT_EQ(dialog.ColumnWidth(14, 1), 90);
        dialog.ClickCell(14, 1);
        EXPECT_EQ(dialog.SelectedRows(14), (std::vector<int>{1}));
        dialog.ClickCell(14, 2, 0, 1, {VK_CONTROL});
        EXPECT_EQ(dialog.SelectedRows(14), (std::vector<int>{1, 2}));
        dialog.ClickTick(14, 2);
        EXPECT_TRUE(dialog.IsTicked(14, 2));
        EXPECT_FALSE(dialog.IsTicked(14, 1));
        dialog.ClickCell(14, 0, 0, 2);
        EXPECT_TRUE(happened.wasDoubleClicked);
        const auto list = dialog.Item(14);
        u.Send(list, LVM_EDITLABELW, 0);
        dialog.TypeIntoCell(14, u"typed");
        EXPECT_EQ(happened.cell, u"typed");
        EXPECT_FALSE(dialog.IsGone());  // the key ended the cell's field, not the dialog
        u.Press(VK_ESCAPE);
    });
    EXPECT_EQ(ShowDialog(happened), IDCANCEL);
}

TEST(Driver, AnswersQuestions) {
    Happened happened;
    const std::uint32_t style = messagestyle::yesNo | messagestyle::iconQuestion | 0x100;
    CUser user([&](CUser& u) {
        const CDrivenWindow dialog = u.WaitFor(title);
        u.Press('B', {VK_MENU});
        EXPECT_TRUE(dialog.IsChecked(11));
        u.Press(VK_RETURN);
        u.Answer({u"A question:", u"Really?", style}, IDNO);
        EXPECT_FALSE(dialog.IsGone());
        u.Press(VK_RETURN);
        u.Answer({u"A question:", u"Really?", style}, IDYES);
        dialog.WaitUntilGone();
    });
    EXPECT_EQ(ShowDialog(happened), IDOK);
    EXPECT_TRUE(happened.isChecked);
}

TEST(ListFilling, DrawsNoOtherWindowWithoutAList) {
    const HWND window = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                                        nullptr, nullptr, nullptr);
    ASSERT_NE(window, nullptr);
    UpdateWindow(window);
    ValidateRect(window, nullptr);
    { const CListFilling filling(nullptr); }
    EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE));
    InvalidateRect(window, nullptr, FALSE);
    EXPECT_TRUE(GetUpdateRect(window, nullptr, FALSE));
    DestroyWindow(window);
}

TEST(Driver, DragsTheFrame) {
    Happened happened;
    CUser user([](CUser& u) {
        const CDrivenWindow dialog = u.WaitFor(title);
        const RECT before = PlaceOf(dialog.Get());
        dialog.DragCorner(60, 40);
        const RECT after = PlaceOf(dialog.Get());
        EXPECT_EQ(after.right - before.right, 60);
        EXPECT_EQ(after.bottom - before.bottom, 40);
        bool wasThere = false;
        u.OnTestThread([&] { wasThere = true; });
        EXPECT_TRUE(wasThere);
        u.Press(VK_ESCAPE);
    });
    EXPECT_EQ(ShowDialog(happened), IDCANCEL);
}

}  // namespace
}  // namespace reka::test
