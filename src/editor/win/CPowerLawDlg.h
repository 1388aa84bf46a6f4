// SPDX-License-Identifier: MIT
// The rate wizard.

#pragma once

#include <string>

#include "editor/RateWizard.h"
#include "editor/win/CDialog.h"
#include "editor/win/ListView.h"

namespace reka {

class CPowerLawDlg : public CDialog {
public:
    /// `rateText` and `asked` outlive the dialog.
    CPowerLawDlg(const ReactionDefinition& reaction, const ReactionPackDefinition& definition,
                 std::u16string& writtenRate, IUserMessages& asked);

    /// True for OK, with the text of the rate. Otherwise that text is as it was.
    bool Run(HWND owner) { return RunModal(owner) == IDOK; }

private:
    void OnInit() override;
    void OnCommand(int control, int notification) override;
    LRESULT OnNotify(NMHDR& header) override;

    void FillInhibitionList();
    bool IsEnterOfList() const;
    void Accept();
    void ReadFields();
    void EnableFields();
    void FieldsChanged();
    void ShowPreview(const std::u16string& text);

    CRateWizard wizard;
    std::u16string& rateText;
    IUserMessages& ui;
    CCellEditing cell;
};

}  // namespace reka
