// SPDX-License-Identifier: MIT
// The reactions page of the edit shell.

#pragma once

#include <cstddef>
#include <string>

#include "editor/ReactionPage.h"
#include "editor/win/CDialog.h"
#include "editor/win/ListView.h"
#include "editor/win/Tooltips.h"
#include "manager/ValidateDefinition.h"

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
    /// Selects that reaction.
    void ShowReaction(std::size_t index);
    /// The control in which a part of the reaction is corrected; null where the system has refused the page.
    HWND ControlOf(CheckedPart part) const;

protected:
    void OnInit() override;
    void OnCommand(int control, int notification) override;
    LRESULT OnNotify(NMHDR& header) override;
    void OnScaled(int oldDpi) override;

private:
    void SetButtonIcons();
    void DestroyButtonIcons();
    void FillChoices();
    void FillStoichiometry(const ReactionPageContent& content);
    void SetReactionControlsEnabled(const ReactionPageEnabled& enabled);
    void UpdateEquilibriumUnit();
    void MakeRoomForUnits();
    void Take(PageChange change);

    void Clicked(int control);
    void Delete();
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
    CTooltips tooltips;
};

}  // namespace reka
