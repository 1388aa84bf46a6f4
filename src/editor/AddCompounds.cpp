// SPDX-License-Identifier: MIT
// A compound file may hold tens of thousands of compounds, and the rows are made afresh at each key that is typed into
// the filter: rows are indices, and the texts of a row are made when it is shown.

#include "editor/AddCompounds.h"

#include <algorithm>
#include <utility>

#include "editor/CompoundPage.h"
#include "editor/DefinitionCompounds.h"
#include "platform/Files.h"
#include "platform/HostArithmetic.h"

namespace reka {

namespace {

constexpr std::int32_t sortKeyCount = std::size(compoundColumns);

constexpr FileFilter fileFilters[] = {{u"Pure Compound Data files (*.PCD)", u"*.pcd"}, {u"All files (*.*)", u"*.*"}};
constexpr OpenFileRequest fileRequest = {u"Select PCD File:", fileFilters, u"PCD", 2047};

/// Whether `text` holds `filter`, which is in lower case.
bool Holds(std::u16string_view text, std::u16string_view filter) {
    return std::search(text.begin(), text.end(), filter.begin(), filter.end(), [](char16_t character, char16_t wanted) {
               return LowerCase(character) == wanted;
           }) != text.end();
}

}  // namespace

int CompareCompounds(const CompoundDefinition& left, const CompoundDefinition& right, std::int32_t key) {
    if (key == 0 || key < -sortKeyCount || key > sortKeyCount) return 0;
    const int order = CompareByField(left, right, compoundColumns[(key < 0 ? -key : key) - 1].field);
    return key < 0 ? -order : order;
}

std::array<int, fileCompoundColumnCount> FitFileCompoundColumns(int clientWidth) {
    const int wide = 2 * clientWidth / 7;
    return {wide, wide, clientWidth / 7, wide};
}

CAddCompounds::CAddCompounds(ReactionPackDefinition& edited, IEditorUi& asked) : definition(edited), ui(asked) {}

std::u16string CAddCompounds::LoadFile() {
    rows.clear();
    std::u16string errorText;
    LoadPcdFile(definition.pcdFile, records, errorText);
    SetFilter({});
    FindLongestTexts();
    return errorText;
}

void CAddCompounds::FindLongestTexts() {
    for (std::size_t column = 0; column < fileCompoundColumnCount; ++column) {
        std::u16string& longest = longestTexts[column];
        longest = fileCompoundColumns[column].label;
        const CompoundField& field = fileCompoundColumns[column].field;
        for (const auto& record : records) {
            if (field.text && ((*record).*field.text).View().size() <= longest.size()) continue;
            std::u16string text = FieldText(*record, field);
            if (text.size() > longest.size()) longest = std::move(text);
        }
    }
}

void CAddCompounds::SetFilter(std::u16string_view text) {
    std::u16string filter(text);
    std::transform(filter.begin(), filter.end(), filter.begin(), LowerCase);
    rows.clear();
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (!records[i]) continue;
        if (filter.empty()) {
            rows.push_back({i, false});
            continue;
        }
        for (const CBstr* field : {&records[i]->id, &records[i]->formula, &records[i]->casNumber}) {
            if (!Holds(field->View(), filter)) continue;
            rows.push_back({i, field->View().size() == filter.size()});
            break;  // the other fields don't count
        }
    }
}

void CAddCompounds::SortByColumn(std::size_t column) {
    if (column >= directions.size()) return;
    directions[column] = -directions[column];
    // The keys are those of the compounds page, which has one column more at its start: each column but the first sorts
    // by what its left neighbour shows here. Users know it so.
    const std::int32_t key = (static_cast<std::int32_t>(column) + 1) * directions[column];
    const COwnArithmetic arithmetic;
    std::stable_sort(rows.begin(), rows.end(), [this, key](const FileCompoundRow& left, const FileCompoundRow& right) {
        const CompoundDefinition* const first = records[left.record].get();
        const CompoundDefinition* const second = records[right.record].get();
        if (!first || !second) return !first && second;  // gaps come first
        return CompareCompounds(*first, *second, key) < 0;
    });
}

std::array<std::u16string, fileCompoundColumnCount> CAddCompounds::RowTexts(std::size_t row) const {
    if (row >= rows.size() || !records[rows[row].record]) return {};
    const CompoundDefinition& compound = *records[rows[row].record];
    std::array<std::u16string, fileCompoundColumnCount> texts;
    std::transform(std::begin(fileCompoundColumns), std::end(fileCompoundColumns), texts.begin(),
                   [&](const FileCompoundColumn& column) { return FieldText(compound, column.field); });
    return texts;
}

std::int32_t CAddCompounds::FindRow(std::size_t start, std::u16string_view beginning) const {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::size_t row = (start + i) % rows.size();
        const CompoundDefinition* const compound = records[rows[row].record].get();
        const std::u16string_view name = compound ? compound->id.View() : std::u16string_view();
        if (name.size() < beginning.size()) continue;
        if (std::equal(beginning.begin(), beginning.end(), name.begin(),
                       [](char16_t wanted, char16_t character) { return LowerCase(wanted) == LowerCase(character); })) {
            return static_cast<std::int32_t>(row);
        }
    }
    return -1;
}

bool CAddCompounds::Browse() {
    std::u16string path;
    const bool isPreset = definition.pcdFile.size() <= fileRequest.longestPath && Files().Exists(definition.pcdFile);
    if (isPreset) path = definition.pcdFile;
    switch (ui.AskForFile(fileRequest, path)) {
        case OpenFileAnswer::Chosen:
            definition.pcdFile = std::move(path);
            return true;
        case OpenFileAnswer::NoMemory:
            ui.ShowMessage(u"out of memory", u"Error:", messagestyle::ok);
            return false;
        default:
            return false;
    }
}

bool CAddCompounds::Accept(const std::vector<std::size_t>& selectedRows) {
    if (selectedRows.empty()) return false;
    MakeRoomForCompounds(definition, selectedRows.size());  // nothing fails from here on
    for (const std::size_t row : selectedRows) {
        if (row >= rows.size()) continue;
        auto& record = records[rows[row].record];
        if (record) AddCompoundToDefinition(definition, std::move(record));
    }
    return true;
}

}  // namespace reka
