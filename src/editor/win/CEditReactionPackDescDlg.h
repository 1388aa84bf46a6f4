// SPDX-License-Identifier: MIT
// The edit shell: the dialog in which one definition is edited, with its three pages.

#pragma once

#include "editor/EditShell.h"
#include "editor/win/CCompoundDlg.h"
#include "editor/win/CDialog.h"
#include "editor/win/CGeneralDlg.h"
#include "editor/win/CReactionDlg.h"

namespace reka {

/// Works on the private copy of its opener, which takes it over after OK and throws it away otherwise. Both parameters
/// outlive it.
class CEditReactionPackDescDlg final : public CDialog {
public:
    CEditReactionPackDescDlg(CEditShell& editShell, const ReactionPackDefinition& edited);

    /// True for OK: the definition has passed its check.
    bool Run(HWND owner);

protected:
    void OnInit() override;
    void OnCommand(int control, int notification) override;
    LRESULT OnNotify(NMHDR& header) override;
    bool OnKey(WPARAM key) override;
    void OnLaidOut() override;
    void OnClose() override { End(IDCANCEL); }

private:
    void AddTabs();
    void CreatePage(CDialog& page);
    std::int32_t SelectedTab() const;
    void ShowPage(EditPage page);
    void GoToPageBeside(std::int32_t steps);
    void ShowSelectedPage();
    bool IsFocusInPage() const;
    bool IsKeyOfPage() const;
    void Accept();
    void GoToComplaint();
    void Load();

    CEditShell& shell;
    const GeneralPageFields initialFields;
    CGeneralDlg general;
    CReactionDlg reactions;
    CCompoundDlg compounds;
    CDialog* const pages[3];  // in the order of the tabs
};

}  // namespace reka
