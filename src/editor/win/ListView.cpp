// SPDX-License-Identifier: MIT
// All by messages: the control belongs to its dialog, and an object of this class is only a name for it. A text that is
// read may be cut without a word, so the room for it grows until it isn't filled.

#include "editor/win/ListView.h"

#include <iterator>

#include "editor/win/DialogScale.h"
#include "editor/win/WindowText.h"

namespace reka {

namespace {

/// The system takes texts that it doesn't change as changeable ones.
wchar_t* Lend(const char16_t* text) {
    return reinterpret_cast<wchar_t*>(const_cast<char16_t*>(text));
}

std::vector<std::size_t> RowsInState(const CListView& list, bool (CListView::*isInState)(std::size_t) const) {
    std::vector<std::size_t> rows;
    const std::size_t count = list.RowCount();
    for (std::size_t row = 0; row < count; ++row) {
        if ((list.*isInState)(row)) rows.push_back(row);
    }
    return rows;
}

}  // namespace

void CListView::InsertColumn(int position, const char16_t* label, int width) {
    LVCOLUMNW column = {};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
    column.pszText = Lend(label);
    column.cx = width;
    column.iSubItem = position;
    SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(position), reinterpret_cast<LPARAM>(&column));
}

int CListView::ClientWidth() const {
    RECT client = {};
    GetClientRect(list, &client);
    return client.right;
}

int CListView::WidthBesideBar(int barWidth) const {
    const bool hasBar = (GetWindowLongW(list, GWL_STYLE) & WS_VSCROLL) != 0;
    return hasBar ? ClientWidth() : ClientWidth() - barWidth;
}

void CListView::AddRow(std::span<const std::u16string> cells) {
    LVITEMW item = {};
    item.iItem = static_cast<int>(RowCount());
    const auto row = static_cast<int>(SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
    if (row < 0) return;
    for (std::size_t column = 0; column < cells.size(); ++column) {
        SetText(static_cast<std::size_t>(row), static_cast<int>(column), cells[column]);
    }
}

std::u16string CListView::Text(std::size_t row, int column) const {
    std::u16string text(128, u'\0');
    for (;;) {
        LVITEMW item = {};
        item.iSubItem = column;
        item.pszText = reinterpret_cast<wchar_t*>(text.data());
        item.cchTextMax = static_cast<int>(text.size());
        const auto length =
            static_cast<std::size_t>(SendMessageW(list, LVM_GETITEMTEXTW, row, reinterpret_cast<LPARAM>(&item)));
        if (length + 1 < text.size()) {
            text.resize(length);
            return text;
        }
        text.resize(2 * text.size());  // it may have been cut
    }
}

void CListView::SetText(std::size_t row, int column, const std::u16string& text) {
    LVITEMW item = {};
    item.iSubItem = column;
    item.pszText = Lend(text.c_str());
    SendMessageW(list, LVM_SETITEMTEXTW, row, reinterpret_cast<LPARAM>(&item));
}

bool CListView::IsSelected(std::size_t row) const {
    return (SendMessageW(list, LVM_GETITEMSTATE, row, LVIS_SELECTED) & LVIS_SELECTED) != 0;
}

std::vector<std::size_t> CListView::SelectedRows() const {
    return RowsInState(*this, &CListView::IsSelected);
}

void CListView::Select(std::size_t row, bool isSelected) {
    LVITEMW item = {};
    item.stateMask = LVIS_SELECTED;
    item.state = isSelected ? LVIS_SELECTED : 0;
    SendMessageW(list, LVM_SETITEMSTATE, row, reinterpret_cast<LPARAM>(&item));
}

void CListView::FocusRow(std::size_t row) {
    LVITEMW item = {};
    item.stateMask = LVIS_FOCUSED;
    item.state = LVIS_FOCUSED;
    SendMessageW(list, LVM_SETITEMSTATE, row, reinterpret_cast<LPARAM>(&item));
    SendMessageW(list, LVM_ENSUREVISIBLE, row, FALSE);
}

bool CListView::IsTicked(std::size_t row) const {
    return (SendMessageW(list, LVM_GETITEMSTATE, row, LVIS_STATEIMAGEMASK) & LVIS_STATEIMAGEMASK) ==
           INDEXTOSTATEIMAGEMASK(2);
}

std::vector<std::size_t> CListView::TickedRows() const {
    return RowsInState(*this, &CListView::IsTicked);
}

void CListView::TickAll(bool isTicked) {
    LVITEMW item = {};
    item.stateMask = LVIS_STATEIMAGEMASK;
    item.state = INDEXTOSTATEIMAGEMASK(isTicked ? 2 : 1);
    SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item));
}

void CListView::EditSelectedRow() {
    const int row = SelectedRow();
    if (row < 0) return;
    SetFocus(list);
    SendMessageW(list, LVM_EDITLABELW, static_cast<WPARAM>(row), 0);
}

void CCellEditing::Begin(const NMHDR& header) {
    hasEnded = false;
    field = CListView(header.hwndFrom).CellField();
    if (field) LiftLengthLimit(field);
}

// Some systems report a copy that they have cut to 260 characters, while the field is still there, whether the list
// tells of it or not; others report all of it, and the field may be gone.
std::u16string CCellEditing::Text(const NMHDR& header) const {
    const wchar_t* const reported = reinterpret_cast<const NMLVDISPINFOW&>(header).item.pszText;
    if (!reported) return {};
    std::u16string text(reinterpret_cast<const char16_t*>(reported));
    if (!field || !IsWindow(field)) return text;
    std::u16string typed = WindowText(field);
    return typed.size() > text.size() ? typed : text;
}

bool IsEditKey(const NMHDR& header) {
    return header.code == LVN_KEYDOWN && reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey == VK_F2;
}

std::size_t EditedRow(const NMHDR& header) {
    return static_cast<std::size_t>(reinterpret_cast<const NMLVDISPINFOW&>(header).item.iItem);
}

void CFittedColumns::Begin(HWND fittedList, std::size_t count) {
    list = fittedList;
    columns.resize(count);
    int number = 0;
    for (Column& column : columns) column.width = CListView(list).ColumnWidth(number++);
}

void CFittedColumns::FollowScale(int oldDpi, int newDpi) {
    int number = 0;
    for (Column& column : columns) {
        const int present = CListView(list).ColumnWidth(number++);
        if (present != ScaleBetween(column.width, oldDpi, newDpi)) column.isUsers = true;
        column.width = present;
    }
}

void CFittedColumns::Fit(std::span<const ColumnWish> wishes, int room) {
    if (wishes.size() != columns.size()) return;  // memory has run out as they were measured
    CListView view(list);
    std::vector<ColumnWish> fitted(wishes.begin(), wishes.end());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const int present = view.ColumnWidth(static_cast<int>(i));
        if (present != columns[i].width) columns[i].isUsers = true;
        if (columns[i].isUsers) fitted[i] = {present, present};
    }
    const std::vector<int> widths = ShareRoom(fitted, room);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const auto number = static_cast<int>(i);
        if (!columns[i].isUsers) view.SetColumnWidth(number, widths[i]);
        columns[i].width = view.ColumnWidth(number);
    }
}

}  // namespace reka
