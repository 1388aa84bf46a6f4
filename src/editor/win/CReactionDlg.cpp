// SPDX-License-Identifier: MIT
// What the user changes goes into the reaction at once; what follows from it is shown again by the part that it
// concerns, as the page tells. The page changes its own controls under a silence, so that they don't report that as the
// user's.

#include "editor/win/CReactionDlg.h"

#include <algorithm>
#include <array>

#include "editor/win/DialogLayouts.h"

namespace reka {

namespace {

/// Reported by the page itself; above the numbers of the system.
constexpr int phaseIsSettled = 0x7000;

/// The field of an expression, and the button of its editor.
struct ExpressionControls {
    ReactionExpression expression;
    int field;
    int editButton;
};
constexpr ExpressionControls expressionControls[] = {
    {ReactionExpression::Rate, IDC_REACTIONS_RATE, IDC_REACTIONS_EDIT_RATE},
    {ReactionExpression::EquilibriumConstant, IDC_REACTIONS_EQUILIBRIUM_CONSTANT,
     IDC_REACTIONS_EDIT_EQUILIBRIUM_CONSTANT},
    {ReactionExpression::Heat, IDC_REACTIONS_HEAT, IDC_REACTIONS_EDIT_HEAT},
};

/// Everything that a reaction has to be selected for: all controls but the list and Create.
void EnableControlsOfReaction(HWND page, bool isEnabled) {
    for (HWND control = GetWindow(page, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT)) {
        const int number = GetDlgCtrlID(control);
        if (number != IDC_REACTIONS_LIST && number != IDC_REACTIONS_CREATE) EnableWindow(control, isEnabled);
    }
}

}  // namespace

CReactionDlg::CReactionDlg(CReactionPage& reactionPage) : CDialog(IDD_REACTIONS, reactionsLayout), page(reactionPage) {}

CReactionDlg::~CReactionDlg() {
    DestroyButtonIcons();
}

void CReactionDlg::DestroyButtonIcons() {
    for (HICON* const icon : {&wizardIcon, &editIcon}) {
        if (*icon) DestroyIcon(*icon);
        *icon = nullptr;
    }
}

void CReactionDlg::OnInit() {
    SetButtonIcons();
    tooltips.Add(Window(), Item(IDC_REACTIONS_RATE_WIZARD));
    for (const ExpressionControls& controls : expressionControls) tooltips.Add(Window(), Item(controls.editButton));
    CListView list(Item(IDC_REACTIONS_STOICHIOMETRY));
    list.UseWholeRows();
    int position = 0;
    for (const ListColumn& column : stoichiometryColumns) {
        list.InsertColumn(position++, column.label, Scale(column.width));
    }
    RefillReactionList();
    FillChoices();
    RefreshReactionPage();
}

void CReactionDlg::SetButtonIcons() {
    const HICON newWizardIcon = LoadModuleIcon(IDI_RATE_WIZARD, SM_CXSMICON, SM_CYSMICON);
    const HICON newEditIcon = LoadModuleIcon(IDI_EDIT_EXPRESSION, SM_CXSMICON, SM_CYSMICON);
    const auto set = [this](int control, HICON icon) {
        SendMessageW(Item(control), BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(icon));
    };
    set(IDC_REACTIONS_RATE_WIZARD, newWizardIcon);
    for (const ExpressionControls& controls : expressionControls) set(controls.editButton, newEditIcon);
    DestroyButtonIcons();  // which the buttons show no more
    wizardIcon = newWizardIcon;
    editIcon = newEditIcon;
}

void CReactionDlg::OnScaled(int /*oldDpi*/) {
    SetButtonIcons();
    MakeRoomForUnits();
}

void CReactionDlg::FillChoices() {
    for (const char16_t* const text : phaseTexts) AddChoice(IDC_REACTIONS_PHASE, text);
    for (int basis = 0; basis < equilibriumBasisCount; ++basis) {
        AddChoice(IDC_REACTIONS_BASIS, equilibriumBasisWords[basis], basis);
    }
}

void CReactionDlg::RefillReactionList() {
    if (!Window()) return;
    const CSilence silence(*this);
    FillListBox(IDC_REACTIONS_LIST, page.ReactionIds(), page.Selection());
}

void CReactionDlg::RefreshReactionPage() {
    if (!Window()) return;
    const CSilence silence(*this);
    const ReactionPageContent content = page.Content();
    FillStoichiometry(content);
    SetChecked(IDC_REACTIONS_EQUILIBRIUM, content.isEquilibrium);
    SetChecked(IDC_REACTIONS_HETEROGENEOUS, content.isHeterogeneous);
    for (const ExpressionControls& controls : expressionControls) {
        SetText(controls.field, content.expressions[static_cast<std::size_t>(controls.expression)]);
    }
    SendMessageW(Item(IDC_REACTIONS_PHASE), CB_SETCURSEL, static_cast<WPARAM>(-1), 0);  // any item can be chosen then
    SetText(IDC_REACTIONS_PHASE, content.phase);
    SetReactionControlsEnabled(content.enabled);
    if (content.enabled.reaction) {
        SelectChoice(IDC_REACTIONS_BASIS, static_cast<int>(page.SelectedReaction()->equilibriumBasis));
        UpdateEquilibriumUnit();
    }
    SetText(IDC_REACTIONS_HEADING, content.heading);
}

// A list of the same length changes in place: its rows stay where the user has them, and this may be called while a
// cell is edited.
void CReactionDlg::FillStoichiometry(const ReactionPageContent& content) {
    const HWND control = Item(IDC_REACTIONS_STOICHIOMETRY);
    CListView list(control);
    const CListFilling filling(control);
    const bool isRefilled = list.RowCount() != content.stoichiometry.size();
    if (isRefilled) list.Clear();
    std::size_t index = 0;
    for (const StoichiometryRow& row : content.stoichiometry) {
        const std::array<std::u16string, 2> cells = {row.coefficient, row.compoundId};
        if (isRefilled) {
            list.AddRow(cells);
        } else {
            list.SetText(index, 0, cells[0]);
            list.SetText(index, 1, cells[1]);
        }
        ++index;
    }
}

void CReactionDlg::SetReactionControlsEnabled(const ReactionPageEnabled& enabled) {
    struct Group {
        bool isEnabled;
        std::array<int, 3> controls;
    };
    const Group groups[] = {
        {enabled.rate, {IDC_REACTIONS_RATE, IDC_REACTIONS_RATE_WIZARD, IDC_REACTIONS_EDIT_RATE}},
        {enabled.equilibrium,
         {IDC_REACTIONS_EQUILIBRIUM_CONSTANT, IDC_REACTIONS_EDIT_EQUILIBRIUM_CONSTANT, IDC_REACTIONS_BASIS}}};
    if (enabled.reaction) EnableControlsOfReaction(Window(), true);
    for (const Group& group : groups) {
        for (const int control : group.controls) Enable(control, group.isEnabled);
    }
    if (enabled.reaction) return;
    const HWND focus = GetFocus();
    if (focus && IsChild(Window(), focus)) FocusOn(IDC_REACTIONS_LIST);
    EnableControlsOfReaction(Window(), false);
}

void CReactionDlg::UpdateEquilibriumUnit() {
    const ReactionDefinition* const reaction = page.SelectedReaction();
    if (!reaction) return;
    SetText(IDC_REACTIONS_RATE_UNIT, RateUnit(*reaction));
    SetText(IDC_REACTIONS_EQUILIBRIUM_CONSTANT_UNIT, EquilibriumUnit(*reaction));
    MakeRoomForUnits();
}

void CReactionDlg::MakeRoomForUnits() {
    int widest = 0;
    for (const int unit : {IDC_REACTIONS_RATE_UNIT, IDC_REACTIONS_EQUILIBRIUM_CONSTANT_UNIT}) {
        widest = std::max(widest, TextWidth(unit, Text(unit)));
    }
    MakeRoomForText(IDC_REACTIONS_RATE_UNIT, widest);
}

void CReactionDlg::Take(PageChange change) {
    switch (change) {
        case PageChange::Nothing:
            break;
        case PageChange::Units:
            UpdateEquilibriumUnit();
            break;
        case PageChange::EnabledAndUnits:
            SetReactionControlsEnabled(page.Enabled());
            UpdateEquilibriumUnit();
            break;
        case PageChange::Page:
            RefreshReactionPage();
            break;
        case PageChange::ListAndPage:
            RefillReactionList();
            RefreshReactionPage();
            break;
    }
}

// BN_CLICKED, CBN_SELCHANGE and so on are numbers of their kinds of controls: the same number means another thing for
// another kind.
void CReactionDlg::OnCommand(int control, int notification) {
    switch (control) {
        case IDC_REACTIONS_LIST:
            if (notification == LBN_SELCHANGE) SelectReaction();
            if (notification == LBN_DBLCLK) Take(page.RenameByDoubleClick());
            break;
        case IDC_REACTIONS_RATE:
        case IDC_REACTIONS_EQUILIBRIUM_CONSTANT:
        case IDC_REACTIONS_HEAT:
            if (notification == EN_CHANGE) TakeExpression(control);
            break;
        case IDC_REACTIONS_BASIS:
            if (notification == CBN_SELCHANGE) ChooseBasis();
            break;
        case IDC_REACTIONS_PHASE:
            if (notification == CBN_EDITCHANGE) page.SetPhase(Text(IDC_REACTIONS_PHASE));
            // The second one alone where the item was the chosen one before other text was typed.
            if (notification == CBN_SELCHANGE || notification == CBN_SELENDOK) ChoosePhase();
            if (notification == CBN_CLOSEUP) PostPhaseIsSettled();
            if (notification == phaseIsSettled) TakeSettledPhase();
            break;
        default:
            if (notification == BN_CLICKED) Clicked(control);
            break;
    }
}

void CReactionDlg::Clicked(int control) {
    switch (control) {
        case IDC_REACTIONS_CREATE:
            Take(page.Create());
            break;
        case IDC_REACTIONS_RENAME:
            Take(page.RenameByButton());
            break;
        case IDC_REACTIONS_DELETE:
            Delete();
            break;
        case IDC_REACTIONS_EQUILIBRIUM:
            Take(page.SetIsEquilibrium(IsChecked(control)));
            break;
        case IDC_REACTIONS_HETEROGENEOUS:
            Take(page.SetIsHeterogeneous(IsChecked(control)));
            break;
        case IDC_REACTIONS_RATE_WIZARD:
            if (page.RunRateWizard()) ShowExpression(IDC_REACTIONS_RATE, ReactionExpression::Rate);
            break;
        case IDC_REACTIONS_EDIT_RATE:
        case IDC_REACTIONS_EDIT_EQUILIBRIUM_CONSTANT:
        case IDC_REACTIONS_EDIT_HEAT:
            EditExpression(control);
            break;
        default:  // Enter and Escape mean nothing here
            break;
    }
}

// The keyboard leaves the button, of which a second press would delete another reaction.
void CReactionDlg::Delete() {
    const PageChange change = page.Delete();
    Take(change);
    if (change != PageChange::Nothing) FocusOn(IDC_REACTIONS_LIST);
}

void CReactionDlg::EditExpression(int button) {
    for (const auto& [expression, field, editButton] : expressionControls) {
        if (editButton == button && page.EditExpression(expression)) ShowExpression(field, expression);
    }
}

// The reaction has the text already. What replaced it can be taken back in the field, which reports that.
void CReactionDlg::ShowExpression(int field, ReactionExpression expression) {
    if (!page.SelectedReaction()) return;
    const CSilence silence(*this);
    ReplaceText(field, page.ExpressionText(expression));
}

void CReactionDlg::TakeExpression(int changedField) {
    for (const auto& [expression, field, editButton] : expressionControls) {
        if (field == changedField) page.SetExpression(expression, Text(field));
    }
}

// The reaction that is selected stays as it is shown, with what can be taken back in its fields.
void CReactionDlg::ShowReaction(std::size_t index) {
    if (!Window() || page.Selection() == static_cast<std::int32_t>(index)) return;
    SendMessageW(Item(IDC_REACTIONS_LIST), LB_SETCURSEL, index, 0);
    SelectReaction();
}

HWND CReactionDlg::ControlOf(CheckedPart part) const {
    if (!Window()) return nullptr;
    switch (part) {
        case CheckedPart::Stoichiometry:
            return Item(IDC_REACTIONS_STOICHIOMETRY);
        case CheckedPart::Rate:
            return Item(IDC_REACTIONS_RATE);
        case CheckedPart::EquilibriumConstant:
            return Item(IDC_REACTIONS_EQUILIBRIUM_CONSTANT);
        case CheckedPart::Heat:
            return Item(IDC_REACTIONS_HEAT);
        default:
            return Item(IDC_REACTIONS_PHASE);
    }
}

void CReactionDlg::SelectReaction() {
    page.Select(static_cast<std::int32_t>(SendMessageW(Item(IDC_REACTIONS_LIST), LB_GETCURSEL, 0, 0)));
    CListView list(Item(IDC_REACTIONS_STOICHIOMETRY));
    if (list.SelectedRow() >= 0) list.Select(static_cast<std::size_t>(list.SelectedRow()), false);
    RefreshReactionPage();
}

void CReactionDlg::ChooseBasis() {
    const HWND bases = Item(IDC_REACTIONS_BASIS);
    const LRESULT item = SendMessageW(bases, CB_GETCURSEL, 0, 0);
    if (item < 0) return;
    const LRESULT basis = SendMessageW(bases, CB_GETITEMDATA, static_cast<WPARAM>(item), 0);
    Take(page.SetEquilibriumBasis(static_cast<EquilibriumBasis>(basis)));
}

// The field takes the text of the item only after this was reported.
void CReactionDlg::ChoosePhase() {
    const LRESULT item = SendMessageW(Item(IDC_REACTIONS_PHASE), CB_GETCURSEL, 0, 0);
    if (item >= 0) page.SetPhase(phaseTexts[item]);
}

/// The list completes what was typed when it opens, without a word, and its end is reported before the field is
/// settled.
void CReactionDlg::PostPhaseIsSettled() {
    PostMessageW(Window(), WM_COMMAND, MAKEWPARAM(IDC_REACTIONS_PHASE, phaseIsSettled),
                 reinterpret_cast<LPARAM>(Item(IDC_REACTIONS_PHASE)));
}

void CReactionDlg::TakeSettledPhase() {
    const ReactionDefinition* const reaction = page.SelectedReaction();
    const std::u16string shown = Text(IDC_REACTIONS_PHASE);
    if (reaction && reaction->phase.View() != shown) page.SetPhase(shown);
}

LRESULT CReactionDlg::OnNotify(NMHDR& header) {
    if (header.idFrom != IDC_REACTIONS_STOICHIOMETRY) return 0;
    const CListView list(header.hwndFrom);
    if (IsEditKey(header)) EditSelectedCoefficient();
    switch (header.code) {
        case NM_DBLCLK:
            EditSelectedCoefficient();
            return 0;
        case LVN_BEGINLABELEDITW:
            cell.Begin(header);
            return page.CanEditCoefficient() && list.SelectedRow() >= 0 ? FALSE : TRUE;  // true forbids it
        case LVN_ENDLABELEDITW:
            if (cell.End()) Take(page.EditCoefficient(EditedRow(header), cell.Text(header)));
            return FALSE;  // the cell shows the number by now, or else its old text
        default:
            return 0;
    }
}

void CReactionDlg::EditSelectedCoefficient() {
    if (page.CanEditCoefficient()) CListView(Item(IDC_REACTIONS_STOICHIOMETRY)).EditSelectedRow();
}

}  // namespace reka
