// SPDX-License-Identifier: MIT
// The dialog that adds compounds of a compound file: which of them it lists, in which order, and what it adds.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "compounds/LoadPcdFile.h"
#include "editor/CompoundField.h"
#include "editor/EditorUi.h"
#include "records/Definition.h"

namespace reka {

/// Below 0 if `left` comes before `right` by `key`, above 0 if it comes behind it, otherwise 0, as for a key that isn't
/// one. A key is the number of a column of the compounds page, from 1 on; with a minus sign it sorts the other way
/// round.
int CompareCompounds(const CompoundDefinition& left, const CompoundDefinition& right, std::int32_t key);

struct FileCompoundColumn {
    const char16_t* label;
    CompoundField field;
};
constexpr FileCompoundColumn fileCompoundColumns[] = {{u"Name", compoundfield::id},
                                                      {u"Formula", compoundfield::formula},
                                                      {u"Mol Weight", compoundfield::molecularWeight},
                                                      {u"CAS", compoundfield::casNumber}};
constexpr std::size_t fileCompoundColumnCount = std::size(fileCompoundColumns);

/// The widths of the columns for a list whose client area has that width, in pixels.
std::array<int, fileCompoundColumnCount> FitFileCompoundColumns(int clientWidth);

/// One row of the list, which stands for a compound of the file.
struct FileCompoundRow {
    std::size_t record;  // the index of the compound in the file
    bool isSelected;     // as the filter has it
    bool operator==(const FileCompoundRow&) const = default;
};

/// The dialog for one definition under edit, which outlives it, as `asked` does. May throw std::bad_alloc.
class CAddCompounds {
public:
    CAddCompounds(ReactionPackDefinition& edited, IEditorUi& asked);

    /// The path in the field of the file.
    const std::u16string& FilePath() const { return definition.pcdFile; }

    /// Reads the file: the filter becomes empty, and the rows are those of its compounds. The reason of a failure, or
    /// nothing; the list is to be shown empty then before the user is told by `ShowError`.
    std::u16string LoadFile();

    /// The text of the filter has changed. The rows are then those of the compounds that pass it, in the order of the
    /// file.
    void SetFilter(std::u16string_view text);
    /// A click on the header of a column, counted from 0, sorts the rows: by the first click upwards, by the next one
    /// downwards. What is selected is for the list to keep; the compound of a row tells.
    void SortByColumn(std::size_t column);

    const std::vector<FileCompoundRow>& Rows() const { return rows; }
    /// The texts of a row, one for each column.
    std::array<std::u16string, fileCompoundColumnCount> RowTexts(std::size_t row) const;
    /// The text of the most characters of each column in the whole file, whatever passes the filter. One of fewer but
    /// wider characters may take more room, which measuring each text of a large file isn't worth.
    const std::array<std::u16string, fileCompoundColumnCount>& LongestTexts() const { return longestTexts; }
    /// The first row from `start` on whose name begins with that text, in letters of any case, going on at the first
    /// row after the last; -1 if there is none.
    std::int32_t FindRow(std::size_t start, std::u16string_view beginning) const;

    /// The button that chooses another file. True: one was chosen, which the definition names from now on whatever
    /// comes; it is to be loaded.
    bool Browse();

    /// OK, and the double click on a row, with the rows that are selected in their order. True: the dialog ends, and
    /// their compounds are part of the definition. False: it stays open. Without memory nothing was added.
    bool Accept(const std::vector<std::size_t>& selectedRows);

private:
    void FindLongestTexts();

    ReactionPackDefinition& definition;
    IEditorUi& ui;
    CompoundList records;  // a compound that was added leaves a gap
    std::vector<FileCompoundRow> rows;
    std::array<std::u16string, fileCompoundColumnCount> longestTexts;
    std::array<std::int32_t, fileCompoundColumnCount> directions = {-1, -1, -1, -1};
};

}  // namespace reka
