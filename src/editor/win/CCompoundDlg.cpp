// SPDX-License-Identifier: MIT
// Names are edited in the list itself. A compound that comes, goes or changes its name changes what the reactions page
// shows, so that page is told after each.

#include "editor/win/CCompoundDlg.h"

#include <algorithm>
#include <iterator>

#include "editor/win/CReactionDlg.h"
#include "editor/win/DialogLayouts.h"
#include "editor/win/WindowDpi.h"

namespace reka {

CCompoundDlg::CCompoundDlg(CCompoundPage& compoundPage, CReactionDlg& reactionDialog)
    : CDialog(IDD_COMPOUNDS, compoundsLayout), page(compoundPage), reactions(reactionDialog) {}

void CCompoundDlg::OnInit() {
    CListView list(Item(IDC_COMPOUNDS_LIST));
    list.UseWholeRows();
    int position = 0;
    for (const CompoundColumn& column : compoundColumns)
        list.InsertColumn(position++, column.label, Scale(column.width));
    RefillCompoundList();
}

void CCompoundDlg::RefillCompoundList() {
    if (!Window()) return;
    const HWND control = Item(IDC_COMPOUNDS_LIST);
    {
        const CSilence silence(*this);
        const CListFilling filling(control);
        CListView list(control);
        list.Clear();
        page.Select(-1);
        for (const CompoundRow& row : page.Rows()) list.AddRow(row);
    }
    UpdateButtons();
}

int CCompoundDlg::LackingWidth() const {
    if (!Window()) return 0;
    const CListView list(Item(IDC_COMPOUNDS_LIST));
    int needed = 0;
    for (int column = 0; column < static_cast<int>(std::size(compoundColumns)); ++column) {
        needed += list.ColumnWidth(column);
    }
    return std::max(needed - list.WidthBesideBar(SystemMetric(SM_CXVSCROLL, Dpi())), 0);
}

void CCompoundDlg::UpdateButtons() {
    Enable(IDC_COMPOUNDS_DELETE, page.IsDeleteEnabled());
}

void CCompoundDlg::OnCommand(int control, int notification) {
    if (notification != BN_CLICKED) return;
    switch (control) {
        case IDC_COMPOUNDS_ADD:
            Take(page.Add());
            break;
        case IDC_COMPOUNDS_DELETE:
            Take(page.Delete());
            break;
        case IDC_COMPOUNDS_RENAME:
            Rename();
            break;
        default:  // Enter and Escape mean nothing here
            break;
    }
}

void CCompoundDlg::Take(const CompoundPageChange& change) {
    if (change.list) RefillCompoundList();
    if (change.reactionPage) reactions.RefreshReactionPage();
    if (change.row < 0) return;
    CListView(Item(IDC_COMPOUNDS_LIST)).FocusRow(static_cast<std::size_t>(change.row));
    FocusOn(IDC_COMPOUNDS_LIST);
}

void CCompoundDlg::Rename() {
    if (page.CanRename()) CListView(Item(IDC_COMPOUNDS_LIST)).EditSelectedRow();
}

LRESULT CCompoundDlg::OnNotify(NMHDR& header) {
    if (header.idFrom != IDC_COMPOUNDS_LIST) return 0;
    CListView list(header.hwndFrom);
    if (IsEditKey(header)) Rename();
    switch (header.code) {
        case LVN_ITEMCHANGED:
            page.Select(list.SelectedRow());
            UpdateButtons();
            return 0;
        case LVN_BEGINLABELEDITW:
            cell.Begin(header);
            return page.CanRename() ? FALSE : TRUE;  // true forbids it
        case LVN_ENDLABELEDITW:
            TakeName(header);
            return FALSE;  // the cell shows the name by now: some lists would cut it
        default:
            return 0;
    }
}

void CCompoundDlg::TakeName(const NMHDR& header) {
    if (!cell.End()) return;
    const std::u16string name = cell.Text(header);
    if (!page.TakeName(EditedRow(header), name)) return;
    CListView(header.hwndFrom).SetText(EditedRow(header), 0, name);  // shown also if what follows fails
    reactions.RefreshReactionPage();
}

}  // namespace reka
