// SPDX-License-Identifier: MIT
// A list view in report mode, as the dialogs use it.

#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <windows.h>

#include <commctrl.h>

#include "editor/ColumnWidths.h"

namespace reka {

/// Lends the operations; the control is its dialog's. Rows and columns are counted from 0.
class CListView {
public:
    explicit CListView(HWND listView) : list(listView) {}

    /// Selects and shows whole rows instead of their first cells.
    void UseWholeRows() { AddExtendedStyle(LVS_EX_FULLROWSELECT); }
    /// A box to tick in front of each row.
    void UseTicks() { AddExtendedStyle(LVS_EX_CHECKBOXES); }

    /// The columns from `position` on move to the right.
    void InsertColumn(int position, const char16_t* label, int width);
    int ClientWidth() const;
    /// The width of the list beside a bar that scrolls it downwards, whether it has one or not.
    int WidthBesideBar(int barWidth) const;
    int ColumnWidth(int column) const {
        return static_cast<int>(SendMessageW(list, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), 0));
    }
    void SetColumnWidth(int column, int width) {
        SendMessageW(list, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column), width);
    }
    /// In pixels, without margins.
    int TextWidth(const char16_t* text) const {
        return static_cast<int>(SendMessageW(list, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(text)));
    }

    void Clear() { SendMessageW(list, LVM_DELETEALLITEMS, 0, 0); }
    std::size_t RowCount() const { return static_cast<std::size_t>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0)); }
    /// Appends a row of these cells.
    void AddRow(std::span<const std::u16string> cells);
    std::u16string Text(std::size_t row, int column) const;
    void SetText(std::size_t row, int column, const std::u16string& text);

    /// -1 for none.
    int SelectedRow() const { return static_cast<int>(SendMessageW(list, LVM_GETNEXTITEM, WPARAM(-1), LVNI_SELECTED)); }
    std::vector<std::size_t> SelectedRows() const;
    bool IsSelected(std::size_t row) const;
    /// Changes the selection of that row alone.
    void Select(std::size_t row, bool isSelected);
    /// The row gets the focus inside the list, and is scrolled to.
    void FocusRow(std::size_t row);
    bool IsTicked(std::size_t row) const;
    std::vector<std::size_t> TickedRows() const;
    /// Ticks all rows, or none.
    void TickAll(bool isTicked);

    /// Gives the list the keyboard's focus and starts the editing of the selected row's first cell; without a selected
    /// row nothing happens.
    void EditSelectedRow();
    /// The field in which a cell is edited; null while none is.
    HWND CellField() const { return reinterpret_cast<HWND>(SendMessageW(list, LVM_GETEDITCONTROL, 0, 0)); }

private:
    void AddExtendedStyle(DWORD style) {
        SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, style, static_cast<LPARAM>(style));
    }

    HWND list;
};

/// The key on which a list starts to edit its selected row was pressed.
bool IsEditKey(const NMHDR& header);

/// The row of a report that editing has begun or ended.
std::size_t EditedRow(const NMHDR& header);

/// The editing of one cell, which ends once: a box that tells of what was typed takes the focus from the field of the
/// cell, and the list then reports the end of the editing again.
class CCellEditing {
public:
    /// The list has reported its beginning. The field takes any length then.
    void Begin(const NMHDR& header);
    /// The list has reported its end. True for the first time.
    bool End() { return !std::exchange(hasEnded, true); }
    /// What was typed in the cell, of any length, for the report that its editing has ended; nothing for one that was
    /// cancelled.
    std::u16string Text(const NMHDR& header) const;

private:
    HWND field = nullptr;
    bool hasEnded = false;
};

/// The columns of a list that follow its size, but for those that the user has sized.
class CFittedColumns {
public:
    /// The columns have their widths by the program.
    void Begin(HWND fittedList, std::size_t count);
    /// The columns have the widths of another scale by now, as `CDialogScale` gives them. Those that the user has sized
    /// remain the user's.
    void FollowScale(int oldDpi, int newDpi);
    /// Gives the columns, which wish this, so much room. One that the user has sized keeps its width.
    void Fit(std::span<const ColumnWish> wishes, int room);

private:
    struct Column {
        int width = 0;  // as it was fitted last
        bool isUsers = false;
    };
    HWND list = nullptr;
    std::vector<Column> columns;
};

/// While it lives the list doesn't draw itself.
class CListFilling {
public:
    explicit CListFilling(HWND filledList) : list(filledList) { SendMessageW(list, WM_SETREDRAW, FALSE, 0); }
    ~CListFilling() {
        SendMessageW(list, WM_SETREDRAW, TRUE, 0);
        if (list) InvalidateRect(list, nullptr, TRUE);  // without one, all windows there are would be drawn again
    }
    CListFilling(const CListFilling&) = delete;
    CListFilling& operator=(const CListFilling&) = delete;

private:
    HWND list;
};

}  // namespace reka
