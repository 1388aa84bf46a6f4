// SPDX-License-Identifier: MIT
// The list is filled afresh after each change and has no selection then; which buttons can be used follows from the
// selection.

#include "editor/win/CManagerDlg.h"

#include "editor/win/DialogLayouts.h"

namespace reka {

CManagerDlg::CManagerDlg(CTemplateManager& templateManager)
    : CDialog(IDD_MANAGER, managerLayout), manager(templateManager) {}

void CManagerDlg::OnInit() {
    ShowList();
    SetIcon(IDI_COMPONENT);
    KeepPresentSizeAsSmallest();
}

void CManagerDlg::ShowList() {
    FillListBox(IDC_MANAGER_LIST, manager.Names(), manager.Selection());
    UpdateButtons();
}

void CManagerDlg::UpdateButtons() {
    Enable(IDC_MANAGER_EDIT, manager.IsEditEnabled());
    Enable(IDC_MANAGER_DELETE, manager.IsDeleteEnabled());
}

void CManagerDlg::SelectTemplate() {
    manager.Select(static_cast<std::int32_t>(SendMessageW(Item(IDC_MANAGER_LIST), LB_GETCURSEL, 0, 0)));
    UpdateButtons();
}

void CManagerDlg::Edit() {
    if (manager.Edit()) GoOnInList();
}

// Not from the next button that can be used, which is Close.
void CManagerDlg::GoOnInList() {
    ShowList();
    SendMessageW(Item(IDC_MANAGER_LIST), LB_SETCARETINDEX, static_cast<WPARAM>(manager.Caret()), FALSE);
    FocusOn(IDC_MANAGER_LIST);
}

void CManagerDlg::OnCommand(int control, int notification) {
    switch (control) {
        case IDC_MANAGER_LIST:
            if (notification == LBN_SELCHANGE) SelectTemplate();
            if (notification == LBN_DBLCLK && IsSelectedItemClicked(control)) Edit();
            break;
        case IDC_MANAGER_CREATE:
            if (manager.Create()) GoOnInList();
            break;
        case IDC_MANAGER_EDIT:
            Edit();
            break;
        case IDC_MANAGER_DELETE:
            if (manager.Delete()) GoOnInList();
            break;
        default:
            CDialog::OnCommand(control, notification);
            break;
    }
}

}  // namespace reka
