// SPDX-License-Identifier: MIT
// Works on the caller's own string: opening takes no memory for a copy, and what is typed goes into the string at OK
// alone.

#include "editor/win/CInputDlg.h"

#include <utility>

#include "editor/win/resource.h"

namespace reka {

CInputDlg::CInputDlg(std::u16string windowTitle, CBstr& text)
    : CDialog(IDD_INPUT), title(std::move(windowTitle)), inputText(text) {}

void CInputDlg::OnInit() {
    SetWindowTextW(Window(), SystemText(title));
    SetText(IDC_INPUT_LABEL, title);
    SetWindowTextW(Item(IDC_INPUT_TEXT), inputText.Get());  // a copy might find no memory
    FocusOn(IDC_INPUT_TEXT);
    SendMessageW(Item(IDC_INPUT_TEXT), EM_SETSEL, 0, -1);
}

void CInputDlg::OnCommand(int control, int notification) {
    if (control == IDOK) {
        const std::u16string text = Text(IDC_INPUT_TEXT);
        inputText = text.empty() ? CBstr() : CBstr::Make(text);
    }
    CDialog::OnCommand(control, notification);
}

}  // namespace reka
