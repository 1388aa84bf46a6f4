// SPDX-License-Identifier: MIT
// The general page of the edit shell.

#pragma once

#include "editor/GeneralPage.h"
#include "editor/win/CDialog.h"
#include "editor/win/resource.h"

namespace reka {

/// Shows `filling` as it opens. Nothing is written back while the user types: the shell reads the fields.
class CGeneralDlg final : public CDialog {
public:
    explicit CGeneralDlg(const GeneralPageFields& filling);

    /// What the page shows now.
    GeneralPageFields Fields() const;

    /// Where the editing begins; null where the system has refused the page.
    HWND NameField() const { return Window() ? Item(IDC_GENERAL_NAME) : nullptr; }

protected:
    void OnInit() override;
    void OnCommand(int control, int notification) override;

private:
    const GeneralPageFields& initial;
};

}  // namespace reka
