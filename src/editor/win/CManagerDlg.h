// SPDX-License-Identifier: MIT
// The dialog in which a user keeps the templates.

#pragma once

#include "editor/TemplateManager.h"
#include "editor/win/CDialog.h"

namespace reka {

/// The parameter outlives it.
class CManagerDlg final : public CDialog {
public:
    explicit CManagerDlg(CTemplateManager& templateManager);

    /// Returns when the user has closed the dialog; false if it can't be shown.
    bool Run(HWND owner) { return RunModal(owner) != notShown; }

protected:
    void OnInit() override;
    void OnCommand(int control, int notification) override;

private:
    void ShowList();
    void SelectTemplate();
    void Edit();
    void GoOnInList();
    void UpdateButtons();

    CTemplateManager& manager;
};

}  // namespace reka
