// SPDX-License-Identifier: MIT
// The reactions page of the edit shell.

#pragma once

#include <string>

#include "editor/ReactionPage.h"
#include "editor/win/CDialog.h"
#include "editor/win/ListView.h"

namespace reka {

/// The parameter outlives it. To refill and to refresh does nothing where the system has refused the page.
class CReactionDlg final : public CDialog {
public:
    explicit CReactionDlg(CReactionPage& reactionPage);
    ~CReactionDlg() override;

    /// Shows the list of reactions afresh, with the selection of the page.
    void RefillReactionList();
    /// Shows all but the list afresh.
    void RefreshReactionPage();

protected:
    void OnInit() override;
    void OnCommand(int control, int notification) override;
    LRESULT OnNotify(NMHDR& header) override;

private:
    void SetButtonIcons();
    void FillChoices();
    void FillStoichiometry(const ReactionPageContent& content);
    void SetReactionControlsEnabled(const ReactionPageEnabled& enabled);
    void UpdateEquilibriumUnit();
    void MakeRoomForUnits();
    void Take(PageChange change);

    void Clicked(int control);
    void SelectReaction();
    void ChooseBasis();
    void ChoosePhase();
    void PostPhaseIsSettled();
    void TakeSettledPhase();
    void EditSelectedCoefficient();
    void TakeExpression(int changedField);
    void EditExpression(int button);
    void ShowExpression(int field, ReactionExpression expression);

    CReactionPage& page;
    HICON wizardIcon = nullptr;
    HICON editIcon = nullptr;
    CCellEditing cell;
};

}  // namespace reka
