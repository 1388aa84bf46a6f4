// SPDX-License-Identifier: MIT
// The fields of the wizard are read as a whole at each change, since the preview depends on all of them. The controls
// of the two directions are the same five, so a row of a table stands for each direction.

#include "editor/win/CPowerLawDlg.h"

#include <array>

#include "editor/win/resource.h"

namespace reka {

namespace {

struct DirectionControls {
    RateDirectionFields RateWizardFields::*fields;
    int isOn;
    int constant;
    int constantLabel;
    int hasEnergy;
    int energy;
};
constexpr DirectionControls directionControls[] = {
    {&RateWizardFields::forward, IDC_RATE_WIZARD_FORWARD, IDC_RATE_WIZARD_FORWARD_CONSTANT,
     IDC_RATE_WIZARD_FORWARD_CONSTANT_LABEL, IDC_RATE_WIZARD_HAS_FORWARD_ENERGY, IDC_RATE_WIZARD_FORWARD_ENERGY},
    {&RateWizardFields::backward, IDC_RATE_WIZARD_BACKWARD, IDC_RATE_WIZARD_BACKWARD_CONSTANT,
     IDC_RATE_WIZARD_BACKWARD_CONSTANT_LABEL, IDC_RATE_WIZARD_HAS_BACKWARD_ENERGY, IDC_RATE_WIZARD_BACKWARD_ENERGY},
};

struct VariableButton {
    int button;
    RateVariable variable;
};
constexpr VariableButton variableButtons[] = {{IDC_RATE_WIZARD_ACTIVITY, RateVariable::Activity},
                                              {IDC_RATE_WIZARD_MOLARITY, RateVariable::Molarity},
                                              {IDC_RATE_WIZARD_MOLE_FRACTION, RateVariable::MoleFraction}};

/// By RateWizardField.
constexpr int faultyControls[] = {IDC_RATE_WIZARD_FORWARD,         IDC_RATE_WIZARD_FORWARD_CONSTANT,
                                  IDC_RATE_WIZARD_FORWARD_ENERGY,  IDC_RATE_WIZARD_BACKWARD_CONSTANT,
                                  IDC_RATE_WIZARD_BACKWARD_ENERGY, IDC_RATE_WIZARD_REFERENCE_TEMPERATURE,
                                  IDC_RATE_WIZARD_INHIBITION_POWER};

}  // namespace

CPowerLawDlg::CPowerLawDlg(const ReactionDefinition& reaction, const ReactionPackDefinition& definition,
                           std::u16string& writtenRate, IUserMessages& asked)
    : CDialog(IDD_RATE_WIZARD), wizard(reaction, definition), rateText(writtenRate), ui(asked) {}

void CPowerLawDlg::OnInit() {
    EnableFields();
    SetText(IDC_RATE_WIZARD_UNIT, wizard.UnitText());
    FillInhibitionList();
    SetText(IDC_RATE_WIZARD_INHIBITION_POWER, wizard.fields.inhibitionPower);
    CheckRadioButton(Window(), IDC_RATE_WIZARD_ACTIVITY, IDC_RATE_WIZARD_MOLE_FRACTION, IDC_RATE_WIZARD_ACTIVITY);
    ShowPreview(wizard.UpdatePreview());
}

void CPowerLawDlg::FillInhibitionList() {
    CListView list(Item(IDC_RATE_WIZARD_INHIBITION));
    list.UseWholeRows();
    const InhibitionColumnWidths widths = FitInhibitionColumns(list.ClientWidth());
    list.InsertColumn(0, u"Constant", widths.constant);
    list.InsertColumn(1, u"Compound", widths.compound);
    for (const std::u16string& name : wizard.CompoundNames()) {
        list.AddRow(std::array<std::u16string, 2>{u"0", name});
    }
    if (list.RowCount() == 0) return;
    list.Select(0, true);
    list.FocusRow(0);
}

void CPowerLawDlg::OnCommand(int control, int notification) {
    switch (control) {
        case IDC_RATE_WIZARD_FORWARD:
        case IDC_RATE_WIZARD_HAS_FORWARD_ENERGY:
        case IDC_RATE_WIZARD_BACKWARD:
        case IDC_RATE_WIZARD_HAS_BACKWARD_ENERGY:
        case IDC_RATE_WIZARD_ACTIVITY:
        case IDC_RATE_WIZARD_MOLARITY:
        case IDC_RATE_WIZARD_MOLE_FRACTION:
            if (notification == BN_CLICKED) FieldsChanged();
            break;
        case IDC_RATE_WIZARD_FORWARD_CONSTANT:
        case IDC_RATE_WIZARD_FORWARD_ENERGY:
        case IDC_RATE_WIZARD_BACKWARD_CONSTANT:
        case IDC_RATE_WIZARD_BACKWARD_ENERGY:
        case IDC_RATE_WIZARD_REFERENCE_TEMPERATURE:
        case IDC_RATE_WIZARD_INHIBITION_POWER:
            if (notification == EN_CHANGE) FieldsChanged();
            break;
        case IDOK:
            if (IsEnterOfList()) {
                CListView(Item(IDC_RATE_WIZARD_INHIBITION)).EditSelectedRow();
            } else {
                Accept();
            }
            break;
        default:
            CDialog::OnCommand(control, notification);
    }
}

// Who presses Enter at a row, once more than the cell's editing takes, doesn't mean the wizard. The focus alone
// wouldn't tell: after a click that activates the window it may still be in the list.
bool CPowerLawDlg::IsEnterOfList() const {
    return GetKeyState(VK_RETURN) < 0 && GetFocus() == Item(IDC_RATE_WIZARD_INHIBITION);
}

void CPowerLawDlg::Accept() {
    ReadFields();
    if (!wizard.Accept(ui)) {
        FocusOn(faultyControls[static_cast<std::size_t>(wizard.FaultyField())]);
        return;
    }
    rateText = wizard.RateText();
    End(IDOK);
}

LRESULT CPowerLawDlg::OnNotify(NMHDR& header) {
    if (header.idFrom != IDC_RATE_WIZARD_INHIBITION) return 0;
    CListView list(header.hwndFrom);
    switch (header.code) {
        case static_cast<UINT>(LVN_BEGINLABELEDITW):
            cell.Begin(header);
            return FALSE;  // go on
        case static_cast<UINT>(LVN_ENDLABELEDITW): {
            if (!cell.End()) return FALSE;
            const std::u16string typed = cell.Text(header);
            if (!wizard.EditInhibitionConstant(EditedRow(header), typed)) return FALSE;
            list.SetText(EditedRow(header), 0, typed);
            ShowPreview(wizard.RateText());
            return FALSE;  // the cell shows it by now: some lists would cut it
        }
        case static_cast<UINT>(LVN_KEYDOWN):
            if (IsEditKey(header)) list.EditSelectedRow();
            return 0;
        case static_cast<UINT>(NM_DBLCLK):
            list.EditSelectedRow();
            return 0;
        default:
            return 0;
    }
}

void CPowerLawDlg::ReadFields() {
    RateWizardFields& fields = wizard.fields;
    fields.variable = RateVariable::Activity;  // as long as none of the buttons is checked, too
    for (const auto& [button, variable] : variableButtons) {
        if (IsChecked(button)) fields.variable = variable;
    }
    for (const DirectionControls& controls : directionControls) {
        fields.*controls.fields = {IsChecked(controls.isOn), Text(controls.constant), IsChecked(controls.hasEnergy),
                                   Text(controls.energy)};
    }
    fields.referenceTemperature = Text(IDC_RATE_WIZARD_REFERENCE_TEMPERATURE);
    fields.inhibitionPower = Text(IDC_RATE_WIZARD_INHIBITION_POWER);
}

void CPowerLawDlg::EnableFields() {
    for (const DirectionControls& controls : directionControls) {
        const RateDirectionFields& direction = wizard.fields.*controls.fields;
        for (const int control : {controls.constant, controls.constantLabel, controls.hasEnergy}) {
            Enable(control, direction.IsConstantEnabled());
        }
        Enable(controls.energy, direction.IsEnergyEnabled());
    }
}

void CPowerLawDlg::FieldsChanged() {
    ReadFields();
    EnableFields();
    ShowPreview(wizard.UpdatePreview());
}

void CPowerLawDlg::ShowPreview(const std::u16string& text) {
    SetText(IDC_RATE_WIZARD_PREVIEW, text);
}

}  // namespace reka
