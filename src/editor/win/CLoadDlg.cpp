// SPDX-License-Identifier: MIT
// A list without a field to type in: the user can only choose a template that there is. The dialog to store under a
// name has a field, and differs in what it says of an empty one.

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
    int position = 0;
    for (const std::u16string& name : names.Names()) AddChoice(IDC_LOAD_TEMPLATE_NAME, name.c_str(), position++);
    SelectChoice(IDC_LOAD_TEMPLATE_NAME, names.SuggestedPosition(), 0);
}

void CLoadDlg::OnCommand(int control, int notification) {
    if (control == IDOK && !names.Accept(Text(IDC_LOAD_TEMPLATE_NAME))) return;
    CDialog::OnCommand(control, notification);
}

}  // namespace reka
