// SPDX-License-Identifier: MIT
// The rows are the compounds of the material in its order, so the number of a row that is ticked is that of its
// compound.

#include "editor/win/CCompoundsFromMaterialDlg.h"

#include <algorithm>

#include "editor/win/DialogLayouts.h"

namespace reka {

namespace {

constexpr int headerMargin = 24;  // pixels on both sides of a header's text together

/// The key by which all rows are chosen was pressed.
bool IsKeyOfAll(const NMHDR& header) {
    if (header.code != LVN_KEYDOWN || reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey != 'A') return false;
    return GetKeyState(VK_CONTROL) < 0 && GetKeyState(VK_MENU) >= 0;
}

}  // namespace

CCompoundsFromMaterialDlg::CCompoundsFromMaterialDlg(const MaterialCompounds& offered,
                                                     ReactionPackDefinition& definition, IUserMessages& asked)
    : CDialog(IDD_MATERIAL_COMPOUNDS, materialCompoundsLayout), compounds(offered, definition), ui(asked) {}

void CCompoundsFromMaterialDlg::OnInit() {
    SetIcon(IDI_COMPONENT);
    KeepPresentSizeAsSmallest();
    const HWND control = Item(IDC_MATERIAL_COMPOUNDS_LIST);
    CListView list(control);
    list.UseTicks();
    list.UseWholeRows();
    int position = 0;
    for (const char16_t* const label : materialCompoundColumns) list.InsertColumn(position++, label, 0);
    const CListFilling filling(control);
    for (const MaterialCompoundRow& row : compounds.Rows()) list.AddRow(row);
    MeasureColumns();
    columns.Begin(control, wishes.size());
    if (list.RowCount() > 0) list.FocusRow(0);
}

/// Each column wants to be as wide as the widest of its cells and its header; the header is seen in any case. What the
/// system fits to a header alone may be too narrow for it, and is too wide for the last one. The columns keep their
/// widths, of which one may be the user's.
void CCompoundsFromMaterialDlg::MeasureColumns() {
    CListView list(Item(IDC_MATERIAL_COMPOUNDS_LIST));
    wishes.clear();
    for (const char16_t* const label : materialCompoundColumns) {
        const auto column = static_cast<int>(wishes.size());
        const int header = list.TextWidth(label) + Scale(headerMargin);
        const int present = list.ColumnWidth(column);
        list.SetColumnWidth(column, LVSCW_AUTOSIZE);
        const int fitted = list.ColumnWidth(column);
        list.SetColumnWidth(column, present);
        wishes.push_back({std::max(fitted, header), header});
    }
}

void CCompoundsFromMaterialDlg::OnScaled(int oldDpi) {
    columns.FollowScale(oldDpi, Dpi());
    MeasureColumns();
}

void CCompoundsFromMaterialDlg::OnLaidOut() {
    columns.Fit(wishes, CListView(Item(IDC_MATERIAL_COMPOUNDS_LIST)).ClientWidth());
}

void CCompoundsFromMaterialDlg::OnCommand(int control, int notification) {
    if (control == IDOK && !compounds.Accept(CListView(Item(IDC_MATERIAL_COMPOUNDS_LIST)).TickedRows(), ui)) return;
    CDialog::OnCommand(control, notification);
}

LRESULT CCompoundsFromMaterialDlg::OnNotify(NMHDR& header) {
    if (header.idFrom == IDC_MATERIAL_COMPOUNDS_LIST && IsKeyOfAll(header)) TickAllOrNone();
    return 0;
}

/// None if all are ticked already.
void CCompoundsFromMaterialDlg::TickAllOrNone() {
    CListView list(Item(IDC_MATERIAL_COMPOUNDS_LIST));
    list.TickAll(list.TickedRows().size() < list.RowCount());
}

}  // namespace reka
