// SPDX-License-Identifier: MIT
// The compounds page of the edit shell.

#pragma once

#include <cstddef>

#include "editor/CompoundPage.h"
#include "editor/win/CDialog.h"
#include "editor/win/ListView.h"
#include "editor/win/resource.h"

namespace reka {

class CReactionDlg;

/// Both parameters outlive it.
class CCompoundDlg final : public CDialog {
public:
    CCompoundDlg(CCompoundPage& compoundPage, CReactionDlg& reactionDialog);

    /// Shows the list afresh; no row is selected then. Does nothing where the system has refused the page.
    void RefillCompoundList();

    /// Pixels that the list is too narrow for its columns and a bar that scrolls it; 0 for none.
    int LackingWidth() const;

    /// Where compounds come from; null where the system has refused the page.
    HWND AddButton() const { return Window() ? Item(IDC_COMPOUNDS_ADD) : nullptr; }

protected:
    void OnInit() override;
    void OnCommand(int control, int notification) override;
    LRESULT OnNotify(NMHDR& header) override;

private:
    void Take(const CompoundPageChange& change);
    void Rename();
    void UpdateButtons();
    void TakeName(const NMHDR& header);

    CCompoundPage& page;
    CReactionDlg& reactions;
    CCellEditing cell;
};

}  // namespace reka
