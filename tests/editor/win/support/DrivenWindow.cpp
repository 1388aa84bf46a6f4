// SPDX-License-Identifier: MIT
// The controls of a dialog under test.

#include "Driver.h"

#include <gtest/gtest.h>

#include <commctrl.h>

namespace reka::test {

namespace {

/// How a combo box and a list box spell the same questions.
struct ListMessages {
    UINT count;
    UINT selection;
    UINT textLength;
    UINT text;
};
constexpr ListMessages listBoxMessages = {LB_GETCOUNT, LB_GETCURSEL, LB_GETTEXTLEN, LB_GETTEXT};
constexpr ListMessages comboBoxMessages = {CB_GETCOUNT, CB_GETCURSEL, CB_GETLBTEXTLEN, CB_GETLBTEXT};

const ListMessages& MessagesOf(HWND list) {
    wchar_t name[20] = {};
    GetClassNameW(list, name, 20);
    return lstrcmpiW(name, L"ComboBox") == 0 ? comboBoxMessages : listBoxMessages;
}

struct Search {
    int control;
    HWND found;
};

BOOL CALLBACK FindControl(HWND window, LPARAM data) {
    auto& search = *reinterpret_cast<Search*>(data);
    // Pages may share a number: the one that is shown counts.
    if (GetDlgCtrlID(window) != search.control) return TRUE;
    if (!search.found || IsWindowVisible(window)) search.found = window;
    return !IsWindowVisible(search.found);
}

POINT OnScreen(HWND window, POINT place) {
    ClientToScreen(window, &place);
    return place;
}

}  // namespace

HWND CDrivenWindow::Item(int control) const {
    HWND item = GetDlgItem(window, control);
    if (item) return item;
    Search search = {control, nullptr};
    EnumChildWindows(window, FindControl, reinterpret_cast<LPARAM>(&search));
    if (!search.found) user.GiveUp("there is no control " + std::to_string(control));
    return search.found;
}

bool CDrivenWindow::HasFocus(int control) const {
    const HWND focus = user.Focus();
    const HWND item = Item(control);
    return focus == item || IsChild(item, focus);
}

void CDrivenWindow::WaitUntilGone() const {
    user.WaitUntil("the end of the dialog", [this] { return !IsWindow(window) || !IsWindowVisible(window); });
}

void CDrivenWindow::Click(int control, int count) const {
    user.ClickAt(MiddleOf(PlaceOf(Item(control))), count);
}

void CDrivenWindow::FocusOn(int control) const {
    Click(control);
    if (!HasFocus(control)) user.GiveUp("control " + std::to_string(control) + " doesn't take the keyboard");
}

void CDrivenWindow::Fill(int control, std::u16string_view text) const {
    FocusOn(control);
    user.Send(user.Focus(), EM_SETSEL, 0, -1);
    if (text.empty()) {
        user.Press(VK_DELETE);
    } else {
        user.Type(text);
    }
}

std::u16string CDrivenWindow::ListText(int control, int item) const {
    const HWND list = Item(control);
    const ListMessages& messages = MessagesOf(list);
    const LRESULT length = user.Send(list, messages.textLength, static_cast<WPARAM>(item));
    if (length < 0) user.GiveUp("there is no item " + std::to_string(item));
    std::u16string text(static_cast<std::size_t>(length) + 1, u'\0');
    user.Send(list, messages.text, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

int CDrivenWindow::ListCount(int control) const {
    return static_cast<int>(user.Send(Item(control), MessagesOf(Item(control)).count));
}

int CDrivenWindow::ListSelection(int control) const {
    return static_cast<int>(user.Send(Item(control), MessagesOf(Item(control)).selection));
}

void CDrivenWindow::ClickListItem(int control, int item, int count) const {
    const HWND list = Item(control);
    RECT place = {};
    user.Send(list, LB_GETITEMRECT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&place));
    user.ClickAt(OnScreen(list, {place.left + 10, (place.top + place.bottom) / 2}), count);
}

void CDrivenWindow::ChooseComboItem(int control, int item) const {
    const HWND list = Item(control);
    user.Send(window, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(list), TRUE);
    for (int tries = ListCount(control) + 1; tries > 0 && ListSelection(control) != item; --tries) {
        user.Press(ListSelection(control) < item ? VK_DOWN : VK_UP);
    }
    if (ListSelection(control) != item) user.GiveUp("item " + std::to_string(item) + " can't be chosen");
}

int CDrivenWindow::RowCount(int control) const {
    return static_cast<int>(user.Send(Item(control), LVM_GETITEMCOUNT));
}

std::u16string CDrivenWindow::Cell(int control, int row, int column) const {
    wchar_t text[1000] = {};
    LVITEMW item = {};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = 1000;
    user.Send(Item(control), LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    // A list whose rows are made when they are shown may answer with a buffer of its own.
    return reinterpret_cast<const char16_t*>(item.pszText ? item.pszText : text);
}

int CDrivenWindow::ColumnCount(int control) const {
    const auto header = reinterpret_cast<HWND>(user.Send(Item(control), LVM_GETHEADER));
    return static_cast<int>(user.Send(header, HDM_GETITEMCOUNT));
}

std::u16string CDrivenWindow::ColumnTitle(int control, int column) const {
    wchar_t text[200] = {};
    LVCOLUMNW description = {};
    description.mask = LVCF_TEXT;
    description.pszText = text;
    description.cchTextMax = 200;
    user.Send(Item(control), LVM_GETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&description));
    return reinterpret_cast<const char16_t*>(text);
}

int CDrivenWindow::ColumnWidth(int control, int column) const {
    return static_cast<int>(user.Send(Item(control), LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column)));
}

std::vector<int> CDrivenWindow::SelectedRows(int control) const {
    std::vector<int> rows;
    const auto next = [&](int row) {
        return static_cast<int>(user.Send(Item(control), LVM_GETNEXTITEM, static_cast<WPARAM>(row), LVNI_SELECTED));
    };
    for (int row = next(-1); row >= 0; row = next(row)) rows.push_back(row);
    return rows;
}

bool CDrivenWindow::IsTicked(int control, int row) const {
    const LRESULT state = user.Send(Item(control), LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_STATEIMAGEMASK);
    return state >> 12 == 2;
}

RECT CDrivenWindow::CellPlace(int control, int row, int column) const {
    const HWND list = Item(control);
    user.Send(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
    RECT place = {LVIR_LABEL, column, 0, 0};
    const UINT message = column == 0 ? LVM_GETITEMRECT : LVM_GETSUBITEMRECT;
    if (!user.Send(list, message, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place))) {
        user.GiveUp("there is no row " + std::to_string(row));
    }
    return place;
}

void CDrivenWindow::ClickCell(int control, int row, int column, int count, std::initializer_list<WORD> held) const {
    const RECT place = CellPlace(control, row, column);
    user.ClickAt(OnScreen(Item(control), {place.left + 8, (place.top + place.bottom) / 2}), count, held);
}

void CDrivenWindow::ClickTick(int control, int row) const {
    const RECT place = CellPlace(control, row, 0);
    const LONG half = (place.bottom - place.top) / 2;
    user.ClickAt(OnScreen(Item(control), {place.left - half, place.top + half}));
}

void CDrivenWindow::ClickHeader(int control, int column) const {
    const auto header = reinterpret_cast<HWND>(user.Send(Item(control), LVM_GETHEADER));
    RECT place = {};
    user.Send(header, HDM_GETITEMRECT, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&place));
    user.ClickAt(OnScreen(header, MiddleOf(place)));
}

bool CDrivenWindow::IsEditing(int control) const {
    const auto field = reinterpret_cast<HWND>(user.Send(Item(control), LVM_GETEDITCONTROL));
    return field && IsWindowVisible(field);
}

void CDrivenWindow::TypeIntoCell(int control, std::u16string_view text, WORD endKey) const {
    user.WaitUntil("the field of a cell", [&] { return IsEditing(control); });
    const auto field = reinterpret_cast<HWND>(user.Send(Item(control), LVM_GETEDITCONTROL));
    user.Send(field, EM_SETSEL, 0, -1);
    if (text.empty()) {
        user.Press(VK_DELETE);
    } else {
        user.Type(text);
    }
    user.Press(endKey);
}

void CDrivenWindow::DragCorner(int right, int down) const {
    const RECT place = PlaceOf(window);
    const POINT from = {place.right - 2, place.bottom - 2};
    user.Drag(from, {from.x + right, from.y + down});
}

void CDrivenWindow::TakePicture(const std::string& name) const {
    user.Settle();
    EXPECT_TRUE(SavePicture(name, PlaceOf(window)));
}

}  // namespace reka::test
