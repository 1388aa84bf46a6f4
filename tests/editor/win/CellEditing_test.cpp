// SPDX-License-Identifier: MIT
// What was typed in a cell, from lists that report and forget it in different ways: cut to 260 characters or whole,
// with the field still there or gone.

#include <gtest/gtest.h>

#include <string>

#include "Driver.h"
#include "editor/win/ListView.h"

namespace reka::test {
namespace {

/// A list that has a cell's field, and knows of it or not.
class CFakeList {
public:
    CFakeList() {
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Procedure));
    }
    ~CFakeList() { DestroyWindow(window); }
    CFakeList(const CFakeList&) = delete;
    CFakeList& operator=(const CFakeList&) = delete;

    NMHDR Beginning() const { return {window, 1, static_cast<UINT>(LVN_BEGINLABELEDITW)}; }
    static NMLVDISPINFOW End(HWND list, const wchar_t* text) {
        NMLVDISPINFOW report = {};
        report.hdr = {list, 1, static_cast<UINT>(LVN_ENDLABELEDITW)};
        report.item.pszText = const_cast<wchar_t*>(text);
        return report;
    }

    const HWND window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    const HWND field = CreateWindowExW(0, L"EDIT", L"", WS_CHILD, 0, 0, 9, 9, window, nullptr, nullptr, nullptr);
    bool knowsField = true;

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        const auto* const list = reinterpret_cast<const CFakeList*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (message == LVM_GETEDITCONTROL) return reinterpret_cast<LRESULT>(list->knowsField ? list->field : nullptr);
        return DefWindowProcW(window, message, wParam, lParam);
    }
};

struct CellCase {
    const char* name;
    bool isReportCut;
    bool knowsField;
    bool isFieldGone;
};
const CellCase cellCases[] = {
    {"CutByAListThatKnowsTheField", true, true, false},
    {"CutByAListThatHasForgottenTheField", true, false, false},
    {"WholeWithTheFieldThere", false, true, false},
    {"WholeWithTheFieldGone", false, false, true},
};
class EditedCells : public testing::TestWithParam<CellCase> {};

TEST_P(EditedCells, KeepWhatWasTyped) {
    const std::wstring typed = std::wstring(300, L'n') + L'\u03B1';
    CFakeList list;
    CCellEditing editing;
    NMHDR beginning = list.Beginning();
    editing.Begin(beginning);
    EXPECT_GT(SendMessageW(list.field, EM_GETLIMITTEXT, 0, 0), 1000000);
    SetWindowTextW(list.field, typed.c_str());
    list.knowsField = GetParam().knowsField;
    if (GetParam().isFieldGone) DestroyWindow(list.field);
    const std::wstring reported = GetParam().isReportCut ? typed.substr(0, 259) : typed;
    const NMLVDISPINFOW end = CFakeList::End(list.window, reported.c_str());
    EXPECT_EQ(editing.Text(end.hdr), reinterpret_cast<const char16_t*>(typed.c_str()));
}
INSTANTIATE_TEST_SUITE_P(Table, EditedCells, testing::ValuesIn(cellCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(CellEditing, HasNoTextWhereItWasCancelled) {
    CFakeList list;
    CCellEditing editing;
    editing.Begin(list.Beginning());
    SetWindowTextW(list.field, L"typed");
    const NMLVDISPINFOW end = CFakeList::End(list.window, nullptr);
    EXPECT_EQ(editing.Text(end.hdr), u"");
}

TEST(CellEditing, EndsOnce) {
    CFakeList list;
    CCellEditing editing;
    editing.Begin(list.Beginning());
    EXPECT_TRUE(editing.End());
    EXPECT_FALSE(editing.End());
    editing.Begin(list.Beginning());
    EXPECT_TRUE(editing.End());
}

}  // namespace
}  // namespace reka::test
