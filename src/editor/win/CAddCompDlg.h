// SPDX-License-Identifier: MIT
// Adds compounds of a compound file. Its list holds no rows of its own: a file may have tens of thousands of compounds,
// and all rows are made afresh at each key that is typed into the filter.

#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include <windows.h>

#include <commctrl.h>

#include "editor/AddCompounds.h"
#include "editor/win/CDialog.h"
#include "editor/win/ListView.h"

namespace reka {

class CAddCompDlg : public CDialog {
public:
    /// Both outlive the dialog.
    CAddCompDlg(ReactionPackDefinition& definition, IEditorUi& asked);

    /// True for OK: the selected compounds are part of the definition, whose `pcdFile` may have changed in any case.
    bool Run(HWND owner) { return RunModal(owner) == IDOK; }

private:
    void OnInit() override;
    void OnCommand(int control, int notification) override;
    LRESULT OnNotify(NMHDR& header) override;

    std::u16string LoadFile();
    void Tell(const std::u16string& errorText);
    void RefillList();
    void Sort(int column);
    void Accept();
    void ShowCell(NMLVDISPINFOW& request) const;
    void OnLaidOut() override;
    void OnScaled(int oldDpi) override;
    void BeginColumns();
    void FitColumns();
    void ShowWithLayout();
    std::vector<std::size_t> SelectedRows() const;

    CAddCompounds compounds;
    IUserMessages& messages;
    // In pixels of `openingDpi`; in another scale they go by these, so that no rounding adds up.
    std::array<int, fileCompoundColumnCount> openingWidths = {};
    int leftOver = 0;  // of the list's width, which the opening widths don't fill to the last pixel
    int openingDpi = referenceDpi;
    CFittedColumns columns;
};

}  // namespace reka
