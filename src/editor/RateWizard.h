// SPDX-License-Identifier: MIT
// The rate wizard: from a few numbers to the text of a power-law rate, with Arrhenius terms, a backward reaction and an
// inhibition. It only writes: an existing rate is never read.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/UserMessages.h"
#include "records/Definition.h"

namespace reka {

/// The name as an expression writes it: as it stands if it has only letters A to Z and a to z, digits and underscores,
/// otherwise in double quotes.
std::u16string QuoteCompoundName(std::u16string_view name);

/// The number of a field, which takes 2047 characters; more of `text` isn't read. False, with `value` as it was, for
/// anything that is no number.
bool ParseFieldNumber(std::u16string_view text, double& value);

/// What the rate is a power law in.
enum class RateVariable { Activity, Molarity, MoleFraction };

/// The controls of one direction of the reaction.
struct RateDirectionFields {
    bool isOn = false;        // the box "Forward reaction:" or "Backward reaction:"
    std::u16string constant;  // "Rate constant:"
    bool hasEnergy = false;   // the box "Arrhenius energy:"
    std::u16string energy;    // the field beside it, J/mol

    /// The rate constant with its label, and the box of the energy.
    bool IsConstantEnabled() const { return isOn; }
    bool IsEnergyEnabled() const { return isOn && hasEnergy; }
};

/// The controls of the wizard, at first as it opens. A field of a number takes any arithmetic.
struct RateWizardFields {
    RateVariable variable = RateVariable::Activity;
    RateDirectionFields forward;
    RateDirectionFields backward;
    std::u16string referenceTemperature;  // K; may be empty
    std::u16string inhibitionPower = u"1.0";
};

/// What a text that won't do, or a lack of one, is told of.
enum class RateWizardField : std::int32_t {
    Forward,  // the box "Forward reaction:"
    ForwardConstant,
    ForwardEnergy,
    BackwardConstant,
    BackwardEnergy,
    ReferenceTemperature,
    InhibitionPower
};

/// The columns of the inhibition list, the constant first, for a list of that width in pixels.
struct InhibitionColumnWidths {
    int constant;
    int compound;
};
InhibitionColumnWidths FitInhibitionColumns(int listWidth);

/// The wizard for one reaction. A window keeps `fields` as its controls are, and calls `UpdatePreview` when one of them
/// has changed.
class CRateWizard {
public:
    /// Takes in what `rateReaction` of `definition` reads now; the reaction isn't looked at later.
    CRateWizard(const ReactionDefinition& rateReaction, const ReactionPackDefinition& definition);

    const char16_t* UnitText() const { return unitText; }

    /// The compounds that take part, in the order of the definition: the rows of the inhibition list, whose constants
    /// read "0" at first.
    const std::vector<std::u16string>& CompoundNames() const { return compoundNames; }

    /// Takes the text that was typed for the constant of a row. True: the list keeps the text, and the preview is
    /// updated. False for an empty text and for anything that is no number: the list shows its old text again.
    bool EditInhibitionConstant(std::size_t row, std::u16string_view text);

    /// Writes `rateText` from `fields`. False: `errorText` tells the first field that won't do, and `rateText` is
    /// empty.
    bool BuildRateExpression(std::u16string& errorText);

    /// The text of the preview: the rate, or nothing as long as it can't be written.
    const std::u16string& UpdatePreview();

    /// OK. True: the dialog ends, with the rate in `RateText`. False: the user has been told why not.
    bool Accept(IUserMessages& ui);

    /// The field that the last failure of `BuildRateExpression` or `Accept` tells.
    RateWizardField FaultyField() const { return faultyField; }

    const std::u16string& RateText() const { return rateText; }

    RateWizardFields fields;

private:
    struct Inputs;

    bool ReadInputs(Inputs& inputs, std::u16string& errorText);
    bool ReadNumber(RateWizardField field, std::u16string_view text, double& number, std::u16string& errorText);
    /// Always false, with the complaint about the field.
    bool Refuse(RateWizardField field, std::u16string& errorText);
    bool IsInhibited() const;
    void WriteDirection(bool isForward, const Inputs& inputs);
    void WriteArrheniusTerm(double energy, double referenceTemperature);
    void WriteInhibition(double power);
    void WriteFactor(double number);
    void WriteVariable(std::u16string_view name);

    std::u16string rateText;
    RateWizardField faultyField = RateWizardField::Forward;
    // One element for each compound that takes part.
    std::vector<std::u16string> compoundNames;
    std::vector<double> stoichiometricCoefficients;
    std::vector<double> inhibitionConstants;
    const char16_t* unitText;
};

}  // namespace reka
