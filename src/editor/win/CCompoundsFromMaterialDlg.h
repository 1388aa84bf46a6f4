// SPDX-License-Identifier: MIT
// Offers the compounds of a material, each with a box to tick.

#pragma once

#include <vector>

#include "editor/CompoundsOfMaterial.h"
#include "editor/win/CDialog.h"
#include "editor/win/ListView.h"

namespace reka {

class CCompoundsFromMaterialDlg : public CDialog {
public:
    /// All outlive the dialog.
    CCompoundsFromMaterialDlg(const MaterialCompounds& offered, ReactionPackDefinition& definition,
                              IUserMessages& asked);

    /// True for OK: the ticked compounds are part of the definition.
    bool Run(HWND owner) { return RunModal(owner) == IDOK; }

private:
    void OnInit() override;
    void OnCommand(int control, int notification) override;
    LRESULT OnNotify(NMHDR& header) override;
    void OnLaidOut() override;
    void OnScaled(int oldDpi) override;
    void MeasureColumns();
    void TickAllOrNone();

    CCompoundsOfMaterial compounds;
    IUserMessages& ui;
    std::vector<ColumnWish> wishes;
    CFittedColumns columns;
};

}  // namespace reka
