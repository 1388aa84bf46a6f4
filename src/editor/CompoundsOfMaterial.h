// SPDX-License-Identifier: MIT
// Adding compounds from a material template of the simulator: the choice of the template, and that of its compounds.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "compounds/MaterialCompounds.h"
#include "editor/EditorUi.h"
#include "records/Definition.h"

namespace reka {

/// What became of an import.
enum class MaterialImport {
    UseFile,    // nothing yet: the compounds come from the compound file
    Cancelled,  // the user has given up adding
    Ended,      // nothing was added; the user has been told why if there is a reason
    Added,      // the user has ended the list of compounds with OK
};

/// Lets the user choose a material template, if the simulator of `definition` offers any, and compounds out of it.
MaterialImport ImportFromMaterialTemplate(ReactionPackDefinition& definition, IEditorUi& ui);

/// The dialog that chooses the source, at first as it opens.
class CCompoundSourceChoice {
public:
    bool isFromDatabase = true;          // else "From material template:"
    std::int32_t selectedListIndex = 0;  // of the list of templates; -1 for none

    bool IsListEnabled() const { return !isFromDatabase; }

    /// OK. True: the dialog ends, with the result in `selectedTemplate`. False: it stays open.
    bool Accept();

    std::int32_t selectedTemplate = -1;  // -1 for the database
};

constexpr const char16_t* materialCompoundColumns[] = {u"Name", u"Formula", u"Mol Weight", u"CAS"};
using MaterialCompoundRow = std::array<std::u16string, std::size(materialCompoundColumns)>;

/// The list of a material's compounds, each with a box to tick, at first none. Compounds that the definition has
/// already are offered like all others. May throw std::bad_alloc; the definition is as it was then.
class CCompoundsOfMaterial {
public:
    /// Both outlive this.
    CCompoundsOfMaterial(const MaterialCompounds& offered, ReactionPackDefinition& edited);

    /// One row for each compound, in the order of the material.
    std::vector<MaterialCompoundRow> Rows() const;

    /// OK, with the rows that are ticked in their order. True: the dialog ends, and their compounds are part of the
    /// definition. False: the user has been told of the first that has no molecular weight, and nothing was added.
    bool Accept(const std::vector<std::size_t>& tickedRows, IUserMessages& ui);

private:
    const MaterialCompounds& compounds;
    ReactionPackDefinition& definition;
};

}  // namespace reka
