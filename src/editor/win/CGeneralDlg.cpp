// SPDX-License-Identifier: MIT
// The page is filled once and read on demand. It reports nothing: what the user types counts when the shell checks the
// definition.

#include "editor/win/CGeneralDlg.h"

#include "editor/win/DialogLayouts.h"

namespace reka {

CGeneralDlg::CGeneralDlg(const GeneralPageFields& filling) : CDialog(IDD_GENERAL, generalLayout), initial(filling) {}

void CGeneralDlg::OnInit() {
    SetText(IDC_GENERAL_NAME, initial.name);
    SetText(IDC_GENERAL_DESCRIPTION, initial.description);
    for (const char16_t* const text : thermoVersionTexts) AddChoice(IDC_GENERAL_THERMO_VERSION, text);
    SendMessageW(Item(IDC_GENERAL_THERMO_VERSION), CB_SETCURSEL, static_cast<WPARAM>(initial.versionIndex), 0);
}

GeneralPageFields CGeneralDlg::Fields() const {
    const LRESULT version = SendMessageW(Item(IDC_GENERAL_THERMO_VERSION), CB_GETCURSEL, 0, 0);
    return {Text(IDC_GENERAL_NAME), Text(IDC_GENERAL_DESCRIPTION), static_cast<std::int32_t>(version)};
}

// Enter and Escape in a field come as OK and Cancel, and mean nothing here.
void CGeneralDlg::OnCommand(int /*control*/, int /*notification*/) {}

}  // namespace reka
