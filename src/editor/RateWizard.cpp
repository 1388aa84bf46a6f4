// SPDX-License-Identifier: MIT
// The text of a rate: "(" forward "-" backward ")" "/(1.0" inhibition ")^" power, of which each part may be missing. It
// is written afresh from the fields each time; a number has the six digits that users see everywhere.

#include "editor/RateWizard.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "expression/parse/EvaluateScalarInput.h"
#include "platform/HostArithmetic.h"
#include "text/NumberText.h"

namespace reka {

namespace {

constexpr std::size_t fieldLength = 2047;  // characters of a field that are read

// A factor or a power this close to 1 isn't written.
bool IsNearOne(double number) {
    return std::fabs(number - 1.0) <= 1e-6;
}

bool IsWordCharacter(char16_t character) {
    return (character >= u'A' && character <= u'Z') || (character >= u'a' && character <= u'z') ||
           (character >= u'0' && character <= u'9') || character == u'_';
}

char16_t LetterOf(RateVariable variable) {
    switch (variable) {
        case RateVariable::MoleFraction:
            return u'X';
        case RateVariable::Molarity:
            return u'C';
        default:
            return u'A';
    }
}

struct DirectionInputs {
    double constant = 0.0;
    double energy = 0.0;
};

/// What is told of each field, by RateWizardField.
constexpr const char16_t* complaints[] = {
    u"No forward or backward rate selected.",
    u"Number expected for forward reaction rate constant",
    u"Number expected for forward reaction Arrhenius energy",
    u"Number expected for backward reaction rate constant",
    u"Number expected for backward reaction Arrhenius energy",
    u"Number expected for Arrhenius reference temperature",
    u"Number expected for inhibition power",
};

}  // namespace

std::u16string QuoteCompoundName(std::u16string_view name) {
    if (std::all_of(name.begin(), name.end(), IsWordCharacter)) return std::u16string(name);
    return u"\"" + std::u16string(name) + u"\"";
}

bool ParseFieldNumber(std::u16string_view text, double& value) {
    std::u16string reason;  // the field is named instead
    return EvaluateScalarInput(text.substr(0, fieldLength), value, reason);
}

InhibitionColumnWidths FitInhibitionColumns(int listWidth) {
    const int quarter = listWidth / 4;
    return {quarter - 1, quarter * 3 - 3};
}

struct CRateWizard::Inputs {
    DirectionInputs forward;
    DirectionInputs backward;
    double referenceTemperature = 0.0;  // 0: none
    double inhibitionPower = 0.0;
};

CRateWizard::CRateWizard(const ReactionDefinition& rateReaction, const ReactionPackDefinition& definition)
    : unitText(rateReaction.rateBasis == RateBasis::Heterogeneous ? u"Unit: mol/s/kg-cat" : u"Unit: mol/s/m3") {
    for (std::size_t i = 0; i < definition.compounds.size(); ++i) {
        const double coefficient = rateReaction.CoefficientOf(i);
        if (coefficient == 0.0) continue;
        compoundNames.emplace_back(definition.compounds[i]->name.View());
        stoichiometricCoefficients.push_back(coefficient);
        inhibitionConstants.push_back(0.0);
    }
}

bool CRateWizard::EditInhibitionConstant(std::size_t row, std::u16string_view text) {
    if (row >= inhibitionConstants.size() || text.empty()) return false;
    std::u16string reason;  // the cell keeps its old text instead
    double constant = 0.0;
    if (!EvaluateScalarInput(text, constant, reason)) return false;
    std::u16string earlierRate = rateText;
    const double earlierConstant = std::exchange(inhibitionConstants[row], constant);
    try {
        UpdatePreview();
    } catch (...) {
        inhibitionConstants[row] = earlierConstant;
        rateText.swap(earlierRate);
        throw;
    }
    return true;
}

const std::u16string& CRateWizard::UpdatePreview() {
    std::u16string errorText;  // told at OK
    BuildRateExpression(errorText);
    return rateText;
}

bool CRateWizard::Accept(IUserMessages& ui) {
    std::u16string errorText;
    if (BuildRateExpression(errorText)) return true;
    ui.ShowError(errorText);
    return false;
}

bool CRateWizard::BuildRateExpression(std::u16string& errorText) {
    rateText.clear();
    const COwnArithmetic arithmetic;
    Inputs inputs;
    if (!ReadInputs(inputs, errorText)) return false;
    const bool hasBoth = fields.forward.isOn && fields.backward.isOn;
    if (hasBoth) rateText += u"(";
    if (fields.forward.isOn) WriteDirection(true, inputs);
    if (fields.backward.isOn) WriteDirection(false, inputs);
    if (hasBoth) rateText += u")";
    if (IsInhibited()) WriteInhibition(inputs.inhibitionPower);
    return true;
}

bool CRateWizard::IsInhibited() const {
    return std::any_of(inhibitionConstants.begin(), inhibitionConstants.end(),
                       [](double constant) { return constant != 0.0; });
}

// The fields in the order in which their complaints come. What isn't needed isn't read, so a bad text there does no
// harm.
bool CRateWizard::ReadInputs(Inputs& inputs, std::u16string& errorText) {
    struct DirectionRow {
        RateDirectionFields RateWizardFields::*fields;
        DirectionInputs Inputs::*inputs;
        RateWizardField constant;
        RateWizardField energy;
    };
    static constexpr DirectionRow directions[] = {
        {&RateWizardFields::forward, &Inputs::forward, RateWizardField::ForwardConstant,
         RateWizardField::ForwardEnergy},
        {&RateWizardFields::backward, &Inputs::backward, RateWizardField::BackwardConstant,
         RateWizardField::BackwardEnergy},
    };
    const auto& [variable, forward, backward, referenceTemperature, inhibitionPower] = fields;
    for (const auto& [direction, numbers, constant, energy] : directions) {
        const RateDirectionFields& typed = fields.*direction;
        DirectionInputs& read = inputs.*numbers;
        if (typed.isOn && !ReadNumber(constant, typed.constant, read.constant, errorText)) return false;
        if (typed.IsEnergyEnabled() && !ReadNumber(energy, typed.energy, read.energy, errorText)) return false;
    }
    if (!forward.isOn && !backward.isOn) return Refuse(RateWizardField::Forward, errorText);
    if ((forward.IsEnergyEnabled() || backward.IsEnergyEnabled()) && !referenceTemperature.empty() &&
        !ReadNumber(RateWizardField::ReferenceTemperature, referenceTemperature, inputs.referenceTemperature,
                    errorText)) {
        return false;
    }
    return !IsInhibited() ||
           ReadNumber(RateWizardField::InhibitionPower, inhibitionPower, inputs.inhibitionPower, errorText);
}

bool CRateWizard::ReadNumber(RateWizardField field, std::u16string_view text, double& number,
                             std::u16string& errorText) {
    return ParseFieldNumber(text, number) || Refuse(field, errorText);
}

bool CRateWizard::Refuse(RateWizardField field, std::u16string& errorText) {
    faultyField = field;
    errorText = complaints[static_cast<std::size_t>(field)];
    return false;
}

// The number in front of a product.
void CRateWizard::WriteFactor(double number) {
    if (!IsNearOne(number)) rateText += FormatGeneral(number) + u"*";
}

void CRateWizard::WriteVariable(std::u16string_view name) {
    rateText += LetterOf(fields.variable);
    rateText += u"(" + QuoteCompoundName(name) + u")";
}

// Rate constant, Arrhenius term and the powers of what reacts in this direction: the negative coefficients forward, the
// positive ones backward. With none of them the text ends in its "*", which the check of the definition reports.
void CRateWizard::WriteDirection(bool isForward, const Inputs& inputs) {
    const RateDirectionFields& direction = isForward ? fields.forward : fields.backward;
    const auto& [constant, energy] = isForward ? inputs.forward : inputs.backward;
    if (!isForward) rateText += u"-";
    WriteFactor(constant);
    if (direction.hasEnergy) WriteArrheniusTerm(energy, inputs.referenceTemperature);
    bool isFirst = true;
    for (std::size_t i = 0; i < compoundNames.size(); ++i) {
        const double amount = isForward ? -stoichiometricCoefficients[i] : stoichiometricCoefficients[i];
        if (!(amount > 0.0)) continue;
        if (!isFirst) rateText += u"*";
        isFirst = false;
        WriteVariable(compoundNames[i]);
        if (!IsNearOne(amount)) rateText += u"^" + FormatGeneral(amount);
    }
}

void CRateWizard::WriteArrheniusTerm(double energy, double referenceTemperature) {
    rateText += u"exp(-" + FormatGeneral(energy);
    if (referenceTemperature != 0.0) {
        rateText += u"/R*(1/T-1/" + FormatGeneral(referenceTemperature) + u")";
    } else {
        rateText += u"/(R*T)";
    }
    rateText += u")*";
}

void CRateWizard::WriteInhibition(double power) {
    rateText += u"/(1.0";
    for (std::size_t i = 0; i < compoundNames.size(); ++i) {
        if (inhibitionConstants[i] == 0.0) continue;
        rateText += u"+";
        WriteFactor(inhibitionConstants[i]);
        WriteVariable(compoundNames[i]);
    }
    rateText += u")";
    if (!IsNearOne(power)) rateText += u"^" + FormatGeneral(power);
}

}  // namespace reka
