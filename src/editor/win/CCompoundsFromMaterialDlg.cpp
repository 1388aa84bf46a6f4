// See CCompoundsFromMaterialDlg.h.

#include "editor/win/CCompoundsFromMaterialDlg.h"

#include <algorithm>

#include "editor/win/ListView.h"
#include "editor/win/resource.h"

namespace reka {

CCompoundsFromMaterialDlg::CCompoundsFromMaterialDlg(const MaterialCompounds& offered,
                                                     ReactionPackDefinition& definition, IEditorUi& asked)
    : CDialog(IDD_MATERIAL_COMPOUNDS), compounds(offered, definition), ui(asked) {}

void CCompoundsFromMaterialDlg::OnInit() {
    const HWND control = Item(IDC_MATERIAL_COMPOUNDS_LIST);
    CListView list(control);
    list.UseTicks();
    list.UseWholeRows();
    int position = 0;
    for (const char16_t* const label : materialCompoundColumns) list.InsertColumn(position++, label, 0);
    const CListFilling filling(control);
    for (const MaterialCompoundRow& row : compounds.Rows()) list.AddRow(row);
    FitColumns();
    if (list.RowCount() > 0) list.FocusRow(0);
}

/// Each column is as wide as the widest of its cells and its header.
void CCompoundsFromMaterialDlg::FitColumns() {
    const HWND list = Item(IDC_MATERIAL_COMPOUNDS_LIST);
    for (WPARAM column = 0; column < std::size(materialCompoundColumns); ++column) {
        SendMessageW(list, LVM_SETCOLUMNWIDTH, column, LVSCW_AUTOSIZE);
        const LRESULT content = SendMessageW(list, LVM_GETCOLUMNWIDTH, column, 0);
        SendMessageW(list, LVM_SETCOLUMNWIDTH, column, LVSCW_AUTOSIZE_USEHEADER);
        const LRESULT header = SendMessageW(list, LVM_GETCOLUMNWIDTH, column, 0);
        SendMessageW(list, LVM_SETCOLUMNWIDTH, column, std::max(content, header));
    }
}

void CCompoundsFromMaterialDlg::OnCommand(int control, int notification) {
    if (control == IDOK && !compounds.Accept(CListView(Item(IDC_MATERIAL_COMPOUNDS_LIST)).TickedRows(), ui)) return;
    CDialog::OnCommand(control, notification);
}

}  // namespace reka
