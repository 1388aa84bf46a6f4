// See CLoadDlg.h.

#include "editor/win/CLoadDlg.h"

#include "editor/win/resource.h"

namespace reka {

CLoadDlg::CLoadDlg(ITemplateSource& templateSource, std::u16string& templateName, IUserMessages& ui)
    : CDialog(IDD_LOAD_TEMPLATE),
      templates(templateSource),
      answer(templateName),
      names(TemplateNamePurpose::Load, templateName, ui) {}

bool CLoadDlg::Run(HWND owner) {
    if (RunModal(owner) != IDOK) return false;
    answer = names.TemplateName();
    return true;
}

// The list sorts the names: each item tells its position in the order of the templates.
void CLoadDlg::OnInit() {
    names.Fill(templates);
    const HWND list = Item(IDC_LOAD_TEMPLATE_NAME);
    std::int32_t position = 0;
    for (const std::u16string& name : names.Names()) {
        const LRESULT item = SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
        SendMessageW(list, CB_SETITEMDATA, static_cast<WPARAM>(item), position++);
    }
    SendMessageW(list, CB_SETCURSEL, SuggestedItem(), 0);
}

WPARAM CLoadDlg::SuggestedItem() const {
    const HWND list = Item(IDC_LOAD_TEMPLATE_NAME);
    for (std::size_t item = 0; item < names.Names().size(); ++item) {
        if (SendMessageW(list, CB_GETITEMDATA, item, 0) == names.SuggestedPosition()) return item;
    }
    return 0;
}

void CLoadDlg::OnCommand(int control, int notification) {
    if (control == IDOK && !names.Accept(Text(IDC_LOAD_TEMPLATE_NAME))) return;
    CDialog::OnCommand(control, notification);
}

}  // namespace reka
