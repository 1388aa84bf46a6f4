// SPDX-License-Identifier: MIT
// The compounds page of the editor: what it shows of the definition, and what its buttons and the editing of a name
// write into it.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "editor/CompoundField.h"
#include "editor/EditorUi.h"
#include "records/Definition.h"

namespace reka {

struct CompoundColumn {
    const char16_t* label;
    int width;  // pixels
    CompoundField field;
};
constexpr CompoundColumn compoundColumns[] = {
    {u"Name", 120, compoundfield::name},       {u"ID", 120, compoundfield::id},
    {u"Formula", 120, compoundfield::formula}, {u"MW", 80, compoundfield::molecularWeight},
    {u"CAS", 120, compoundfield::casNumber},   {u"charge", 120, compoundfield::charge},
};
using CompoundRow = std::array<std::u16string, std::size(compoundColumns)>;

/// What an event has changed, to be shown again, the list of compounds first.
struct CompoundPageChange {
    bool list = false;          // the list of compounds, which then has no selection
    bool reactionPage = false;  // the page of the selected reaction
    std::int32_t row = -1;      // of the list, where the keyboard goes on; -1 where it stays as it is
    bool operator==(const CompoundPageChange&) const = default;
};

/// The page of one definition under edit, which outlives it, as `asked` does. May throw std::bad_alloc; the definition
/// then has the same number of coefficients in each reaction as it has compounds.
class CCompoundPage {
public:
    CCompoundPage(ReactionPackDefinition& edited, IEditorUi& asked);

    /// The list, one row for each compound in its order. An absent text is an empty cell.
    std::vector<CompoundRow> Rows() const;

    /// The index of the selected row; -1 for none, as after each filling of the list.
    std::int32_t Selection() const;
    /// Any index that isn't one of a compound selects none.
    void Select(std::int32_t index) { selection = index; }
    /// Delete can be used for a selected row alone; Add and Rename always can.
    bool IsDeleteEnabled() const { return Selection() >= 0; }

    CompoundPageChange Add();
    CompoundPageChange Delete();

    /// Whether Rename starts the editing of the selected row's name.
    bool CanRename() const { return Selection() >= 0; }
    /// Takes the text that was typed for the name of a row; an editing that was cancelled gives none. True: the list
    /// takes the text, and the page of the reaction is to be shown again. False: the list keeps its old text.
    bool TakeName(std::size_t row, std::u16string_view text);

private:
    ReactionPackDefinition& definition;
    IEditorUi& ui;
    std::int32_t selection = -1;
};

}  // namespace reka
