// See CSelectCompoundMatTemplateDlg.h.

#include "editor/win/CSelectCompoundMatTemplateDlg.h"

#include <algorithm>

#include "editor/win/resource.h"

namespace reka {

CSelectCompoundMatTemplateDlg::CSelectCompoundMatTemplateDlg(const std::vector<std::u16string>& names,
                                                             std::int32_t& selected)
    : CDialog(IDD_COMPOUND_SOURCE), templateNames(names), selectedTemplate(selected) {}

void CSelectCompoundMatTemplateDlg::OnInit() {
    const HWND list = Item(IDC_COMPOUND_SOURCE_LIST);
    for (const std::u16string& name : templateNames) {
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(WideText(name)));
    }
    SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(choice.selectedListIndex), 0);
    FitScrollWidth();
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

/// A name may be wider than the list.
void CSelectCompoundMatTemplateDlg::FitScrollWidth() {
    const HWND list = Item(IDC_COMPOUND_SOURCE_LIST);
    const HDC device = GetDC(list);
    if (!device) return;
    const HGDIOBJ before = SelectObject(device, reinterpret_cast<HFONT>(SendMessageW(list, WM_GETFONT, 0, 0)));
    LONG widest = 0;
    for (const std::u16string& name : templateNames) {
        SIZE size = {};
        GetTextExtentPoint32W(device, WideText(name), static_cast<int>(name.size()), &size);
        widest = std::max(widest, size.cx);
    }
    SelectObject(device, before);
    ReleaseDC(list, device);
    SendMessageW(list, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(widest + Scale(6)), 0);
}

}  // namespace reka
