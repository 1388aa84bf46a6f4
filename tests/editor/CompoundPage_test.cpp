// SPDX-License-Identifier: MIT
// The compounds page: what it shows of the definition, and what its controls write into it.

#include "editor/CompoundPage.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>

#include "editor/AddCompounds.h"
#include "editor/DefinitionCompounds.h"
#include "editor/ReactionPage.h"
#include "support/Builders.h"
#include "support/FakeEditorUi.h"
#include "support/FakeFiles.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

using Strings = std::vector<std::string>;

class CompoundPage : public testing::Test {
protected:
    CompoundPage() {
        definition->pcdFile = u"D:/mine.pcd";
        AddKinetic(*definition, u"r1", u"C(Ethanol)").stoichiometry = {-1.0, 2.0};
    }

    Strings Cells(std::size_t row) const {
        Strings cells;
        const std::vector<CompoundRow> rows = page.Rows();
        for (const std::u16string& cell : rows[row]) cells.push_back(Utf8FromUtf16(cell));
        return cells;
    }
    Strings Names() const {
        Strings names;
        for (const auto& compound : definition->compounds) names.push_back(Utf8FromUtf16(compound->name.View()));
        return names;
    }
    static bool AddOne(ReactionPackDefinition& target) {
        auto compound = std::make_unique<CompoundDefinition>();
        compound->name = CBstr::Make(u"Water");
        AddCompoundToDefinition(target, std::move(compound));
        return true;
    }

    CFakeFiles files;
    std::unique_ptr<ReactionPackDefinition> definition = MakePackage({u"Ethanol", u"Ether"});
    CFakeEditorUi ui;
    CCompoundPage page{*definition, ui};
};

const CompoundPageChange nothing = {false, false};
const CompoundPageChange reactionPageAlone = {false, true};
/// With the keyboard in that row then.
constexpr CompoundPageChange Both(std::int32_t row) {
    return {true, true, row};
}

TEST_F(CompoundPage, HasSixColumns) {
    const Strings labels = {"Name", "ID", "Formula", "MW", "CAS", "charge"};
    const std::vector<int> widths = {120, 120, 120, 80, 120, 120};
    ASSERT_EQ(std::size(compoundColumns), labels.size());
    for (std::size_t i = 0; i < labels.size(); ++i) {
        EXPECT_EQ(Utf8FromUtf16(compoundColumns[i].label), labels[i]);
        EXPECT_EQ(compoundColumns[i].width, widths[i]);
    }
}

TEST_F(CompoundPage, ShowsWhatTheRecordsHold) {
    CompoundDefinition& first = *definition->compounds[0];
    first.id = CBstr::Make(u"C2H5OH");
    first.formula = CBstr::Make(u"C2H6O");
    first.molecularWeight = 46.06844;
    first.casNumber = CBstr::Make(u"64-17-5");
    first.charge = -1.0;
    CompoundDefinition& second = *definition->compounds[1];
    second.name.Reset();
    second.id.Reset();
    second.molecularWeight = 1e-7;
    EXPECT_EQ(page.Rows().size(), 2U);
    EXPECT_EQ(Cells(0), (Strings{"Ethanol", "C2H5OH", "C2H6O", "46.0684", "64-17-5", "-1"}));
    EXPECT_EQ(Cells(1), (Strings{"", "", "", "1e-07", "", "0"}));
}

TEST_F(CompoundPage, OpensWithoutASelection) {
    EXPECT_EQ(page.Selection(), -1);
    EXPECT_FALSE(page.IsDeleteEnabled());
    EXPECT_FALSE(page.CanRename());
    page.Select(1);
    EXPECT_EQ(page.Selection(), 1);
    EXPECT_TRUE(page.IsDeleteEnabled());
    EXPECT_TRUE(page.CanRename());
    for (const std::int32_t index : {2, -2, std::numeric_limits<std::int32_t>::min()}) {
        page.Select(index);
        EXPECT_EQ(page.Selection(), -1) << index;
        EXPECT_FALSE(page.IsDeleteEnabled()) << index;
    }
}

TEST_F(CompoundPage, DeletesAfterAQuestion) {
    definition->compounds[0]->id = CBstr::Make(u"C2H5OH");
    page.Select(0);
    ui.messageAnswer = MessageAnswer::Yes;
    EXPECT_EQ(page.Delete(), Both(0));
    // yes or no 4, question 32; Yes is the default
    EXPECT_EQ(ui.asked, Strings{"message|Delete compound:|Are you sure you want to delete compound C2H5OH?|36"});
    EXPECT_EQ(Names(), Strings{"Ether"});
    EXPECT_EQ(definition->reactions[0]->stoichiometry, std::vector<double>{2.0});
    EXPECT_EQ(definition->reactions[0]->rateEquation, u"C(Ethanol)");
    EXPECT_EQ(page.Selection(), -1);
}

TEST_F(CompoundPage, GoesOnFromTheNeighbourOfADeletedRow) {
    AddOne(*definition);
    ui.messageAnswer = MessageAnswer::Yes;
    const std::pair<std::int32_t, std::int32_t> rows[] = {{1, 1}, {1, 0}, {0, 0}};  // deleted, and gone on from
    for (const auto& [deleted, next] : rows) {
        page.Select(deleted);
        EXPECT_EQ(page.Delete(), Both(next));
    }
    EXPECT_EQ(Names(), Strings{});
}

TEST_F(CompoundPage, DeletesNothingOnAnyOtherAnswer) {
    page.Select(0);
    for (const MessageAnswer answer : {MessageAnswer::No, MessageAnswer::None, MessageAnswer::Cancel}) {
        ui.messageAnswer = answer;
        EXPECT_EQ(page.Delete(), nothing);
    }
    EXPECT_EQ(Names(), (Strings{"Ethanol", "Ether"}));
    EXPECT_EQ(page.Selection(), 0);
}

TEST_F(CompoundPage, DeletesNothingWithoutASelection) {
    EXPECT_EQ(page.Delete(), nothing);
    EXPECT_TRUE(ui.asked.empty());
}

TEST_F(CompoundPage, TakesANewName) {
    EXPECT_TRUE(page.TakeName(0, u"Alcohol"));
    EXPECT_EQ(Names(), (Strings{"Alcohol", "Ether"}));
    EXPECT_EQ(definition->compounds[0]->id.View(), u"Ethanol");
    EXPECT_EQ(definition->reactions[0]->rateEquation, u"C(Ethanol)");
    EXPECT_TRUE(page.TakeName(0, u"ALCOHOL"));  // its own name in other letters
    EXPECT_TRUE(page.TakeName(0, u"ALCOHOL"));  // and unchanged
    EXPECT_EQ(Names(), (Strings{"ALCOHOL", "Ether"}));
    EXPECT_TRUE(ui.asked.empty());
}

TEST_F(CompoundPage, RefusesTheNameOfAnotherCompound) {
    for (const char16_t* name : {u"Ether", u"eTHER"}) EXPECT_FALSE(page.TakeName(0, name));
    EXPECT_EQ(ui.asked, Strings(2, "message|Error:|The compound name must be unique|16"));
    EXPECT_EQ(Names(), (Strings{"Ethanol", "Ether"}));
}

TEST_F(CompoundPage, KeepsTheNameWithoutAText) {
    EXPECT_FALSE(page.TakeName(0, u""));
    EXPECT_FALSE(page.TakeName(2, u"Water"));  // no such row
    EXPECT_EQ(Names(), (Strings{"Ethanol", "Ether"}));
    EXPECT_TRUE(ui.asked.empty());
}

TEST_F(CompoundPage, MayTakeTheIdentifierOfAnotherCompoundAsAName) {
    definition->compounds[1]->id = CBstr::Make(u"Alcohol");
    EXPECT_TRUE(page.TakeName(0, u"Alcohol"));
}

TEST_F(CompoundPage, AddsFromTheFileOfTheDefinition) {
    files.entries[u"D:/mine.pcd"] = {{}, 1};
    ui.inCompoundsOfFile = AddOne;
    page.Select(1);
    EXPECT_EQ(page.Add(), Both(2));
    EXPECT_EQ(ui.asked, Strings{"compounds of file|D:/mine.pcd"});
    EXPECT_EQ(Names(), (Strings{"Ethanol", "Ether", "Water"}));
    EXPECT_EQ(definition->reactions[0]->stoichiometry, (std::vector<double>{-1.0, 2.0, 0.0}));
    EXPECT_EQ(page.Selection(), -1);
}

TEST_F(CompoundPage, AddsFromTheDefaultFileIfItsOwnIsGone) {
    const std::u16string defaultFile = ReactionPackDefinition(nullptr).pcdFile;
    page.Select(1);
    EXPECT_EQ(page.Add(), reactionPageAlone);  // the user cancels: the page is shown again all the same
    EXPECT_EQ(ui.asked, Strings{"compounds of file|" + Utf8FromUtf16(defaultFile)});
    EXPECT_EQ(definition->pcdFile, defaultFile);
    EXPECT_EQ(Names(), (Strings{"Ethanol", "Ether"}));
    EXPECT_EQ(page.Selection(), 1);
}

TEST_F(CompoundPage, ShowsANewCompoundAmongTheReactantsOfEachReaction) {
    files.entries[u"D:/mine.pcd"] = {{}, 1};
    AddEquilibrium(*definition, u"r2", u"").stoichiometry = {1.0, -1.0};
    CReactionPage reactionPage(*definition, ui);
    ui.inCompoundsOfFile = AddOne;
    EXPECT_EQ(page.Add(), Both(2));
    for (const std::int32_t reaction : {0, 1}) {
        reactionPage.Select(reaction);
        const std::vector<StoichiometryRow> rows = reactionPage.Content().stoichiometry;
        ASSERT_EQ(rows.size(), 3U);
        EXPECT_EQ(rows[2].coefficient, u"0");
    }
}

TEST_F(CompoundPage, OpensOnNoCompoundsIfTheDefaultFileIsGoneToo) {
    ui.inCompoundsOfFile = [&](ReactionPackDefinition& edited) {
        CAddCompounds dialog(edited, ui);
        const std::u16string defaultFile = ReactionPackDefinition(nullptr).pcdFile;
        EXPECT_EQ(dialog.FilePath(), defaultFile);
        EXPECT_EQ(dialog.LoadFile(), u"failed to open " + defaultFile + u" for reading");
        EXPECT_TRUE(dialog.Rows().empty());
        return false;
    };
    EXPECT_EQ(page.Add(), reactionPageAlone);
    EXPECT_EQ(ui.asked.size(), 1U);
}

}  // namespace
}  // namespace reka::test
