// SPDX-License-Identifier: MIT
// Every change goes into the definition at once, and the answer tells the window which of the pages show something else
// now: one coefficient for each compound is part of the reactions page.

#include "editor/CompoundPage.h"

#include <algorithm>
#include <iterator>

#include "editor/CompoundsOfMaterial.h"
#include "editor/DefinitionCompounds.h"
#include "platform/Files.h"
#include "platform/SameText.h"

namespace reka {

CCompoundPage::CCompoundPage(ReactionPackDefinition& edited, IEditorUi& asked) : definition(edited), ui(asked) {}

std::vector<CompoundRow> CCompoundPage::Rows() const {
    std::vector<CompoundRow> rows;
    rows.reserve(definition.compounds.size());
    for (const auto& compound : definition.compounds) {
        CompoundRow& row = rows.emplace_back();
        std::transform(std::begin(compoundColumns), std::end(compoundColumns), row.begin(),
                       [&](const CompoundColumn& column) { return FieldText(*compound, column.field); });
    }
    return rows;
}

std::int32_t CCompoundPage::Selection() const {
    // a negative one is beyond any list
    return static_cast<std::size_t>(selection) < definition.compounds.size() ? selection : -1;
}

CompoundPageChange CCompoundPage::Add() {
    const std::size_t countBefore = definition.compounds.size();
    const auto firstAdded = [&] {
        return definition.compounds.size() > countBefore ? static_cast<std::int32_t>(countBefore) : -1;
    };
    switch (ImportFromMaterialTemplate(definition, ui)) {
        case MaterialImport::Cancelled:
            return {};
        case MaterialImport::Ended:
            return {false, true};
        case MaterialImport::Added:
            selection = -1;
            return {true, true, firstAdded()};
        case MaterialImport::UseFile:
            break;
    }
    if (!Files().Exists(definition.pcdFile)) SetDefaultPcdFile(definition);
    const bool isAdded = ui.AddCompoundsOfFile(definition);
    if (isAdded) selection = -1;
    return {isAdded, true, firstAdded()};
}

CompoundPageChange CCompoundPage::Delete() {
    const std::int32_t index = Selection();
    if (index < 0) return {};
    const std::u16string id(definition.compounds[static_cast<std::size_t>(index)]->id.View());
    if (ui.ShowMessage(u"Are you sure you want to delete compound " + id + u"?", u"Delete compound:",
                       messagestyle::yesNo | messagestyle::iconQuestion) != MessageAnswer::Yes) {
        return {};
    }
    RemoveCompoundFromDefinition(definition, static_cast<std::size_t>(index));
    selection = -1;
    // What came behind the deleted one has its place, or else the last one.
    const auto last = static_cast<std::int32_t>(definition.compounds.size()) - 1;
    return {true, true, std::max(std::min(index, last), 0)};
}

bool CCompoundPage::TakeName(std::size_t row, std::u16string_view text) {
    if (row >= definition.compounds.size() || text.empty()) return false;
    for (std::size_t i = 0; i < definition.compounds.size(); ++i) {
        if (i != row && SameText(definition.compounds[i]->name.View(), text)) {
            ui.ShowError(u"The compound name must be unique");
            return false;
        }
    }
    definition.compounds[row]->name = CBstr::Make(text);
    return true;
}

}  // namespace reka
