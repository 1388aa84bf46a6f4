// SPDX-License-Identifier: MIT
// The list keeps its selection while the database is chosen, so a user who looks at both buttons finds the template
// again.

#include "editor/win/CSelectCompoundMatTemplateDlg.h"

#include "editor/win/resource.h"

namespace reka {

CSelectCompoundMatTemplateDlg::CSelectCompoundMatTemplateDlg(const std::vector<std::u16string>& names,
                                                             std::int32_t& selected)
    : CDialog(IDD_COMPOUND_SOURCE), templateNames(names), selectedTemplate(selected) {}

void CSelectCompoundMatTemplateDlg::OnInit() {
    FillListBox(IDC_COMPOUND_SOURCE_LIST, templateNames, choice.selectedListIndex);
    TakeSelection();
    SetChecked(IDC_COMPOUND_SOURCE_DATABASE, choice.isFromDatabase);
    SetChecked(IDC_COMPOUND_SOURCE_TEMPLATE, !choice.isFromDatabase);
    Enable(IDC_COMPOUND_SOURCE_LIST, choice.IsListEnabled());
}

void CSelectCompoundMatTemplateDlg::OnCommand(int control, int notification) {
    switch (control) {
        case IDC_COMPOUND_SOURCE_DATABASE:
        case IDC_COMPOUND_SOURCE_TEMPLATE:
            TakeSource(IsChecked(IDC_COMPOUND_SOURCE_DATABASE));
            break;
        case IDC_COMPOUND_SOURCE_LIST:
            if (notification == LBN_SELCHANGE) TakeSelection();
            if (notification == LBN_DBLCLK) Accept();
            break;
        case IDOK:
            Accept();
            break;
        default:
            CDialog::OnCommand(control, notification);
    }
}

void CSelectCompoundMatTemplateDlg::Accept() {
    TakeSelection();
    if (!choice.Accept()) return;
    selectedTemplate = choice.selectedTemplate;
    End(IDOK);
}

void CSelectCompoundMatTemplateDlg::TakeSource(bool isFromDatabase) {
    choice.isFromDatabase = isFromDatabase;
    Enable(IDC_COMPOUND_SOURCE_LIST, choice.IsListEnabled());
}

void CSelectCompoundMatTemplateDlg::TakeSelection() {
    const LRESULT selection = SendMessageW(Item(IDC_COMPOUND_SOURCE_LIST), LB_GETCURSEL, 0, 0);
    choice.selectedListIndex = static_cast<std::int32_t>(selection);  // -1 for none
}

}  // namespace reka
