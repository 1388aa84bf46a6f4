// SPDX-License-Identifier: MIT
// The dialog of the compound file: filter, order, choice of the file, and what is added.

#include "editor/AddCompounds.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/Builders.h"
#include "support/FakeEditorUi.h"
#include "support/FakeFiles.h"
#include "support/PcdBytes.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

using Strings = std::vector<std::string>;
using Rows = std::vector<std::size_t>;

const std::u16string path = u"D:/compounds.pcd";

class AddCompounds : public testing::Test {
protected:
    AddCompounds() {
        AddPcdRecord(bytes, "Water", "H2O", 18.015F, "7732-18-5");
        AddPcdRecord(bytes, "methane", "CH4", 16.043F, "74-82-8");
        AddPcdRecord(bytes, "Ethanol", "C2H6O", 46.069F, "64-17-5");
        AddPcdRecord(bytes, "argon", "Ar", 39.948F, "");
        files.entries[path] = {bytes, 1};
        definition->pcdFile = path;
        EXPECT_EQ(dialog.LoadFile(), u"");
    }

    /// The first column, an asterisk behind what is selected.
    Strings Shown() const {
        Strings shown;
        for (std::size_t i = 0; i < dialog.Rows().size(); ++i) {
            shown.push_back(Utf8FromUtf16(dialog.RowTexts(i)[0]) + (dialog.Rows()[i].isSelected ? "*" : ""));
        }
        return shown;
    }
    Strings Filter(const char16_t* text) {
        dialog.SetFilter(text);
        return Shown();
    }
    Strings Compounds() const {
        Strings names;
        for (const auto& compound : definition->compounds) names.push_back(Utf8FromUtf16(compound->name.View()));
        return names;
    }

    CFakeFiles files;
    PcdBytes bytes;
    std::unique_ptr<ReactionPackDefinition> definition = MakePackage({u"A"});
    CFakeEditorUi ui;
    CAddCompounds dialog{*definition, ui};
};

TEST_F(AddCompounds, ListsTheFileInItsOrder) {
    EXPECT_EQ(Shown(), (Strings{"Water", "methane", "Ethanol", "argon"}));
    EXPECT_EQ(dialog.FilePath(), path);
    const std::array<std::u16string, 4> water = {u"Water", u"H2O", u"18.015", u"7732-18-5"};
    EXPECT_EQ(dialog.RowTexts(0), water);
    EXPECT_EQ(dialog.RowTexts(3)[3], u"");
    EXPECT_EQ(dialog.RowTexts(4), (std::array<std::u16string, 4>{}));
}

TEST_F(AddCompounds, HasFourColumnsForEachWidth) {
    const Strings labels = {"Name", "Formula", "Mol Weight", "CAS"};
    for (std::size_t i = 0; i < labels.size(); ++i) EXPECT_EQ(Utf8FromUtf16(fileCompoundColumns[i].label), labels[i]);
    EXPECT_EQ(FitFileCompoundColumns(700), (std::array<int, 4>{200, 200, 100, 200}));
    EXPECT_EQ(FitFileCompoundColumns(13), (std::array<int, 4>{3, 3, 1, 3}));  // 26/7, 13/7
    EXPECT_EQ(FitFileCompoundColumns(0), (std::array<int, 4>{0, 0, 0, 0}));
}

struct FilterCase {
    const char* name;
    const char16_t* filter;
    Strings shown;
};
const FilterCase filterCases[] = {
    {"WholeFormula", u"h2o", {"Water*"}},
    {"PartOfFields", u"h", {"Water", "methane", "Ethanol"}},  // Water by its formula
    {"WholeName", u"ETHANOL", {"Ethanol*"}},
    {"PartOfAName", u"tHan", {"methane", "Ethanol"}},
    {"WholeCasNumber", u"74-82-8", {"methane*"}},
    {"PartOfCasNumbers", u"-17-", {"Ethanol"}},
    {"NothingFits", u"xenon", {}},
    {"Nothing", u"", {"Water", "methane", "Ethanol", "argon"}},
    {"TheFirstFieldDecides", u"ar", {"argon"}},  // all of the formula, but found in the name
    {"Blank", u" ", {}},
    {"LongerThanAnyField", u"waterwaterwaterwaterwaterwaterwaterwaterwaterwaterwaterwater", {}},
};
class AddCompoundsFilter : public AddCompounds, public testing::WithParamInterface<FilterCase> {};
TEST_P(AddCompoundsFilter, ShowsAndSelects) {
    EXPECT_EQ(Filter(GetParam().filter), GetParam().shown);
}
INSTANTIATE_TEST_SUITE_P(Table, AddCompoundsFilter, testing::ValuesIn(filterCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(AddCompounds, IsSortedByTheKeysOfTheOtherList) {
    bytes.clear();
    AddPcdRecord(bytes, "B", "H2O", 20.0F, "64-17-5");
    AddPcdRecord(bytes, "a", "O2", 40.0F, "50-00-0");
    AddPcdRecord(bytes, "C", "CH4", 30.0F, "74-82-8");
    AddPcdRecord(bytes, "d", "Ar", 10.0F, "67-56-1");
    files.entries[path] = {bytes, 1};
    EXPECT_EQ(dialog.LoadFile(), u"");
    // Each order is another one than those of the keys beside it; the identifier of a file's compound is its name.
    const Strings byName = {"a", "B", "C", "d"};
    const Strings byFormula = {"d", "C", "B", "a"};
    const Strings byWeight = {"d", "B", "C", "a"};  // by CAS number: a, B, d, C
    const auto reversed = [](Strings list) { return Strings(list.rbegin(), list.rend()); };
    dialog.SortByColumn(3);  // "CAS" sorts by molecular weight
    EXPECT_EQ(Shown(), byWeight);
    dialog.SortByColumn(3);
    EXPECT_EQ(Shown(), reversed(byWeight));
    dialog.SortByColumn(0);
    EXPECT_EQ(Shown(), byName);
    dialog.SortByColumn(3);  // each column has its own direction
    EXPECT_EQ(Shown(), byWeight);
    dialog.SortByColumn(1);  // "Formula" sorts by identifier
    EXPECT_EQ(Shown(), byName);
    dialog.SortByColumn(2);  // "Mol Weight" sorts by formula
    EXPECT_EQ(Shown(), byFormula);
    dialog.SortByColumn(2);
    EXPECT_EQ(Shown(), reversed(byFormula));
    dialog.SortByColumn(4);  // no such column
    EXPECT_EQ(Shown(), reversed(byFormula));
}

TEST_F(AddCompounds, StandsInTheOrderOfTheFileAgainAfterAFilter) {
    dialog.SortByColumn(0);
    EXPECT_EQ(Filter(u""), (Strings{"Water", "methane", "Ethanol", "argon"}));
}

TEST_F(AddCompounds, FindsARowByTheBeginningOfItsName) {
    EXPECT_EQ(dialog.FindRow(0, u"m"), 1);
    EXPECT_EQ(dialog.FindRow(0, u"METH"), 1);
    EXPECT_EQ(dialog.FindRow(2, u"meth"), 1);  // on at the first row
    EXPECT_EQ(dialog.FindRow(99, u"e"), 2);
    EXPECT_EQ(dialog.FindRow(0, u"ethane"), -1);
    EXPECT_EQ(dialog.FindRow(0, u"argon and more"), -1);
    EXPECT_EQ(dialog.FindRow(3, u""), 3);
    EXPECT_TRUE(dialog.Accept({1}));
    EXPECT_EQ(dialog.FindRow(0, u"meth"), -1);  // it is gone
    Filter(u"nothing has this");
    EXPECT_EQ(dialog.FindRow(0, u"a"), -1);
}

TEST_F(AddCompounds, AddsTheSelectedRowsInTheirOrder) {
    AddKinetic(*definition, u"r1", u"").stoichiometry = {-1.0};
    dialog.SortByColumn(0);  // argon, Ethanol, methane, Water
    EXPECT_TRUE(dialog.Accept({0, 3}));
    EXPECT_EQ(Compounds(), (Strings{"A", "argon", "Water"}));
    EXPECT_EQ(definition->reactions[0]->stoichiometry, (std::vector<double>{-1.0, 0.0, 0.0}));
    EXPECT_EQ(definition->compounds[2]->databaseIndex, 0);
    EXPECT_EQ(definition->compounds[2]->casNumber.View(), u"7732-18-5");
    EXPECT_TRUE(ui.asked.empty());
}

TEST_F(AddCompounds, StaysOpenWithNothingSelected) {
    EXPECT_FALSE(dialog.Accept({}));
    EXPECT_EQ(Compounds(), Strings{"A"});
    EXPECT_TRUE(ui.asked.empty());
}

TEST_F(AddCompounds, AddsACompoundOnceForEachDialog) {
    EXPECT_TRUE(dialog.Accept({0, 0, 99}));
    EXPECT_EQ(Compounds(), (Strings{"A", "Water"}));
    CAddCompounds next(*definition, ui);
    EXPECT_EQ(next.LoadFile(), u"");
    EXPECT_TRUE(next.Accept({0}));
    EXPECT_EQ(Compounds(), (Strings{"A", "Water", "Water"}));
}

TEST_F(AddCompounds, ShowsWhatIsLeftAfterAnAddition) {
    EXPECT_TRUE(dialog.Accept({1}));
    dialog.SortByColumn(0);
    EXPECT_EQ(dialog.RowTexts(0)[0], u"");  // the gap
    EXPECT_EQ(Filter(u""), (Strings{"Water", "Ethanol", "argon"}));
}

TEST_F(AddCompounds, ListsNothingOfAFileThatCanNotBeRead) {
    dialog.SetFilter(u"water");
    files.entries.erase(path);
    EXPECT_EQ(Utf8FromUtf16(dialog.LoadFile()), "failed to open D:/compounds.pcd for reading");
    EXPECT_TRUE(dialog.Rows().empty());
    EXPECT_EQ(Filter(u""), Strings());
    EXPECT_FALSE(dialog.Accept({}));
}

TEST_F(AddCompounds, ListsAllOfTheNextFileWhateverTheFilterWas) {
    dialog.SetFilter(u"water");
    EXPECT_EQ(dialog.LoadFile(), u"");
    EXPECT_EQ(dialog.Rows().size(), 4U);
}

const std::string fileQuestion = "|PCD|Pure Compound Data files (*.PCD)|*.pcd|All files (*.*)|*.*|2047";

TEST_F(AddCompounds, BrowsesFromTheFileInUse) {
    ui.text = u"E:/other.pcd";
    EXPECT_TRUE(dialog.Browse());
    EXPECT_EQ(ui.asked, Strings{"file|Select PCD File:|D:/compounds.pcd" + fileQuestion});
    EXPECT_EQ(definition->pcdFile, u"E:/other.pcd");  // at once, and for good
}

TEST_F(AddCompounds, BrowsesFromNowhereIfTheFileIsGone) {
    files.entries.erase(path);
    ui.fileAnswer = OpenFileAnswer::Cancelled;
    ui.text = u"E:/other.pcd";
    EXPECT_FALSE(dialog.Browse());
    EXPECT_EQ(ui.asked, Strings{"file|Select PCD File:|" + fileQuestion});
    EXPECT_EQ(definition->pcdFile, path);
}

TEST_F(AddCompounds, BrowsesFromNowhereIfThePathIsTooLong) {
    definition->pcdFile = std::u16string(2048, u'p');
    files.entries[definition->pcdFile] = {bytes, 1};
    ui.fileAnswer = OpenFileAnswer::Cancelled;
    EXPECT_FALSE(dialog.Browse());
    EXPECT_EQ(ui.asked, Strings{"file|Select PCD File:|" + fileQuestion});
}

TEST_F(AddCompounds, BrowsesFromTheLongestPathThatFits) {
    ui.fileAnswer = OpenFileAnswer::Cancelled;
    for (const std::size_t length : {2046U, 2047U}) {
        definition->pcdFile = std::u16string(length, u'p');
        files.entries[definition->pcdFile] = {bytes, 1};
        ui.asked.clear();
        EXPECT_FALSE(dialog.Browse());
        EXPECT_EQ(ui.asked, Strings{"file|Select PCD File:|" + std::string(length, 'p') + fileQuestion});
    }
}

TEST_F(AddCompounds, TellsThatAFileCanNotBeAskedFor) {
    ui.fileAnswer = OpenFileAnswer::NoMemory;
    EXPECT_FALSE(dialog.Browse());
    ASSERT_EQ(ui.asked.size(), 2U);
    EXPECT_EQ(ui.asked[1], "message|Error:|out of memory|0");
    EXPECT_EQ(definition->pcdFile, path);
}

CompoundDefinition Compound(const char16_t* name, double weight) {
    CompoundDefinition compound;
    if (name) compound.name = CBstr::Make(name);
    compound.molecularWeight = weight;
    return compound;
}

TEST(CompareCompounds, FollowsTheKey) {
    CompoundDefinition first;
    first.name = CBstr::Make(u"a");
    first.id = CBstr::Make(u"6");
    first.formula = CBstr::Make(u"B");
    first.molecularWeight = 5.0;
    first.casNumber = CBstr::Make(u"c");
    first.charge = 4.0;
    CompoundDefinition second;
    second.name = CBstr::Make(u"B");
    second.id = CBstr::Make(u"5");
    second.formula = CBstr::Make(u"ba");
    second.molecularWeight = -6.0;
    second.casNumber = CBstr::Make(u"D");
    second.charge = 40.0;
    const int signs[] = {-1, 1, -1, 1, -1, -1};  // of key 1, 2, ...
    for (std::int32_t key = 1; key <= 6; ++key) {
        EXPECT_GT(CompareCompounds(first, second, key) * signs[key - 1], 0) << key;
        EXPECT_LT(CompareCompounds(first, second, -key) * signs[key - 1], 0) << key;
        EXPECT_LT(CompareCompounds(second, first, key) * signs[key - 1], 0) << key;
        EXPECT_EQ(CompareCompounds(first, first, key), 0) << key;
    }
    for (const std::int32_t key : {0, 7, -7, std::numeric_limits<std::int32_t>::min()}) {
        EXPECT_EQ(CompareCompounds(first, second, key), 0) << key;
    }
}

TEST(CompareCompounds, TakesSmallLettersForLargeOnesAndAbsentForEmpty) {
    EXPECT_EQ(CompareCompounds(Compound(u"eThAnOl", 0), Compound(u"EtHaNoL", 0), 1), 0);
    EXPECT_EQ(CompareCompounds(Compound(nullptr, 0), Compound(u"", 0), 1), 0);
    EXPECT_LT(CompareCompounds(Compound(nullptr, 0), Compound(u"a", 0), 1), 0);
    EXPECT_LT(CompareCompounds(Compound(u"_", 0), Compound(u"Z", 0), 1), 0);  // '_' comes before 'z'
    EXPECT_LT(CompareCompounds(Compound(u"but", 0), Compound(u"Butane", 0), 1), 0);
    EXPECT_NE(CompareCompounds(Compound(u"\u00E9", 0), Compound(u"\u00C9", 0), 1), 0);
}

TEST(CompareCompounds, PutsNotANumberLast) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_GT(CompareCompounds(Compound(u"", nan), Compound(u"", infinity), 4), 0);
    EXPECT_LT(CompareCompounds(Compound(u"", -infinity), Compound(u"", nan), 4), 0);
    EXPECT_EQ(CompareCompounds(Compound(u"", nan), Compound(u"", nan), 4), 0);
    EXPECT_EQ(CompareCompounds(Compound(u"", 0.0), Compound(u"", -0.0), 4), 0);
}

/// A file of 50,000 compounds, whose names differ in their last characters alone. Work that grows faster than the file
/// runs into the time that the test runner gives a test.
TEST_F(AddCompounds, TakesLargeFiles) {
    constexpr std::size_t count = 50000;
    constexpr std::size_t step = 7919;  // has no factor in common with `count`
    bytes.clear();
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t number = i * step % count;
        AddPcdRecord(bytes, "2-methylcyclopentanol-" + std::to_string(100000 + number), "C6H12O",
                     static_cast<float>(number), std::to_string(100000 + number));
    }
    files.entries[path] = {std::move(bytes), 1};
    EXPECT_EQ(dialog.LoadFile(), u"");
    ASSERT_EQ(dialog.Rows().size(), count);
    dialog.SetFilter(u"nol-12345");
    EXPECT_EQ(dialog.Rows().size(), 10U);  // 123450 to 123459
    dialog.SetFilter(u"");
    for (std::size_t column = 0; column < 4; ++column) dialog.SortByColumn(column);
    EXPECT_EQ(dialog.RowTexts(0)[2], u"0");  // by molecular weight
    EXPECT_EQ(dialog.RowTexts(count - 1)[2], u"49999");
    Rows all(count);
    for (std::size_t i = 0; i < count; ++i) all[i] = i;
    AddKinetic(*definition, u"r1", u"").stoichiometry = {1.0};
    EXPECT_TRUE(dialog.Accept(all));
    EXPECT_EQ(definition->compounds.size(), count + 1);
    EXPECT_EQ(definition->reactions[0]->stoichiometry.size(), count + 1);
}

TEST_F(AddCompounds, KnowsTheLongestTextOfEachColumn) {
    const auto longest = [this] {
        Strings texts;
        for (const std::u16string& text : dialog.LongestTexts()) texts.push_back(Utf8FromUtf16(text));
        return texts;
    };
    EXPECT_EQ(longest(), (Strings{"methane", "Formula", "Mol Weight", "7732-18-5"}));
    dialog.SetFilter(u"argon");
    EXPECT_EQ(longest()[0], "methane");
    AddPcdRecord(bytes, "2,2,4-trimethylpentane", "C12H24O3", 1.23456e-30F, "540-84-1");
    files.entries[path] = {bytes, 1};
    dialog.LoadFile();
    EXPECT_EQ(longest(), (Strings{"2,2,4-trimethylpentane", "C12H24O3", "1.23456e-30", "7732-18-5"}));
    files.entries.clear();
    dialog.LoadFile();
    EXPECT_EQ(longest(), (Strings{"Name", "Formula", "Mol Weight", "CAS"}));
}

}  // namespace
}  // namespace reka::test
