// SPDX-License-Identifier: MIT
// The simulator's own objects are asked here while a dialog of ours is open, so anything may happen meanwhile: what is
// needed of them is held by counts of our own until the user has chosen, and every call runs under the host's settings.

#include "editor/CompoundsOfMaterial.h"

#include <memory>
#include <utility>

#include "editor/DefinitionCompounds.h"
#include "platform/Holders.h"
#include "text/NumberText.h"

namespace reka {

namespace {

std::unique_ptr<CompoundDefinition> MakeCompound(const MaterialCompounds& compounds, std::size_t row) {
    auto compound = std::make_unique<CompoundDefinition>();
    compound->name = BstrFromString(compounds.names[row]);
    compound->id = BstrFromString(compounds.ids[row]);
    compound->casNumber = BstrFromString(compounds.casNumbers[row]);
    compound->formula = BstrFromString(compounds.formulas[row]);
    compound->molecularWeight = compounds.molecularWeights[row];
    compound->charge = IsMissingNumber(compounds.charges[row]) ? 0.0 : compounds.charges[row];
    return compound;
}

/// A count of its own: the definition may lose the object meanwhile.
CAskedInterface<IDispatch> Share(const CComRef<IDispatch>& object, const COwnArithmetic& arithmetic) {
    if (object) arithmetic.Outside([&] { object->AddRef(); });
    return {object.Get(), arithmetic};
}

void ShowFailure(IUserMessages& ui, const MaterialFailure& failure) {
    if (failure.text.empty()) return;
    ui.ShowMessage(failure.text, u"Error:",
                   failure.hasIcon ? messagestyle::ok | messagestyle::iconError : messagestyle::ok);
}

}  // namespace

MaterialImport ImportFromMaterialTemplate(ReactionPackDefinition& definition, IEditorUi& ui) {
    const COwnArithmetic& arithmetic = ui.Arithmetic();
    const CAskedInterface<IDispatch> context = Share(definition.simulationContext, arithmetic);
    const std::vector<std::u16string> names = ListMaterialTemplates(context.Get(), arithmetic);
    if (names.empty()) return MaterialImport::UseFile;
    std::int32_t selectedTemplate = -1;
    if (!ui.AskForCompoundSource(names, selectedTemplate)) return MaterialImport::Cancelled;
    const auto selected = static_cast<std::size_t>(selectedTemplate);  // a negative one is beyond any list
    if (selected >= names.size()) return MaterialImport::UseFile;

    MaterialFailure failure;
    // Held until the user has chosen: the simulator may take a material that is given back as the end of the matter.
    const auto material = MakeTemplateMaterial(context.Get(), names[selected], failure, arithmetic);
    if (!material) {
        ShowFailure(ui, failure);
        return MaterialImport::Ended;
    }
    MaterialCompounds compounds;
    std::u16string errorText;
    const bool isRead = ReadMaterialCompounds(*material, definition.thermoVersion, compounds, errorText, arithmetic);
    if (isRead && compounds.names.empty()) {
        errorText = u"There are no compound definitions for the selected material template";
    }
    if (!errorText.empty()) {
        ui.ShowError(errorText);
        return MaterialImport::Ended;
    }
    return ui.AddCompoundsOfMaterial(compounds, definition) ? MaterialImport::Added : MaterialImport::Ended;
}

bool CCompoundSourceChoice::Accept() {
    if (!isFromDatabase && selectedListIndex < 0) return false;
    selectedTemplate = isFromDatabase ? -1 : selectedListIndex;
    return true;
}

CCompoundsOfMaterial::CCompoundsOfMaterial(const MaterialCompounds& offered, ReactionPackDefinition& edited)
    : compounds(offered), definition(edited) {}

std::vector<MaterialCompoundRow> CCompoundsOfMaterial::Rows() const {
    std::vector<MaterialCompoundRow> rows;
    for (std::size_t i = 0; i < compounds.names.size(); ++i) {
        const double weight = compounds.molecularWeights[i];
        rows.push_back({compounds.names[i], compounds.formulas[i],
                        IsMissingNumber(weight) ? u"N/A" : FormatGeneral(weight), compounds.casNumbers[i]});
    }
    return rows;
}

bool CCompoundsOfMaterial::Accept(const std::vector<std::size_t>& tickedRows, IUserMessages& ui) {
    for (const std::size_t row : tickedRows) {
        if (row >= compounds.names.size() || !IsMissingNumber(compounds.molecularWeights[row])) continue;
        ui.ShowError(u"Cannot add compound " + compounds.names[row] + u": molar weight is unknown");
        return false;
    }
    std::vector<std::unique_ptr<CompoundDefinition>> ticked;
    for (const std::size_t row : tickedRows) {
        if (row < compounds.names.size()) ticked.push_back(MakeCompound(compounds, row));
    }
    MakeRoomForCompounds(definition, ticked.size());  // nothing fails from here on
    for (auto& compound : ticked) AddCompoundToDefinition(definition, std::move(compound));
    return true;
}

}  // namespace reka
