// SPDX-License-Identifier: MIT
// A list with a field to type in: the name may be a new one, or that of a template, of which the shell then asks
// whether it is to be replaced.

#include "editor/win/CStoreDlg.h"

#include "editor/win/resource.h"

namespace reka {

CStoreDlg::CStoreDlg(ITemplateSource& templateSource, std::u16string& templateName, IUserMessages& ui)
    : CDialog(IDD_STORE_TEMPLATE),
      templates(templateSource),
      answer(templateName),
      names(TemplateNamePurpose::Store, templateName, ui) {}

bool CStoreDlg::Run(HWND owner) {
    if (RunModal(owner) != IDOK) return false;
    answer = names.TemplateName();
    return true;
}

void CStoreDlg::OnInit() {
    names.Fill(templates);
    for (const std::u16string& name : names.Names()) AddChoice(IDC_STORE_TEMPLATE_NAME, name.c_str());
    SetText(IDC_STORE_TEMPLATE_NAME, names.TemplateName());
}

void CStoreDlg::OnCommand(int control, int notification) {
    if (control == IDOK && !names.Accept(Text(IDC_STORE_TEMPLATE_NAME))) return;
    CDialog::OnCommand(control, notification);
}

}  // namespace reka
