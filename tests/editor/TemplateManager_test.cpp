// SPDX-License-Identifier: MIT
// The dialog of the templates: what its list shows, and what its buttons do with the list and its file.

#include "editor/TemplateManager.h"

#include <gtest/gtest.h>

#include <limits>

#include "editor/TemplateFixture.h"

namespace reka::test {
namespace {

const char* const notInRowA =
    "message|Error:|The template \"A\" does not stand in its row any more: close this window first, and open it "
    "again.|16";

class TemplateManager : public TemplateFixture {
protected:
    /// The dialog as the manager opens it, on templates of these names.
    CTemplateManager& Open(const Names& names) {
        PutTemplates(names);
        source.Store().LoadTemplates();
        dialog = std::make_unique<CTemplateManager>(source, ui);
        files.operations.clear();
        return *dialog;
    }
    Names Templates() { return NamesOf(source.Store()); }

    /// The user ends the shell with OK after giving the template a name.
    void WillName(const char16_t* name) {
        ui.inTemplate = [name](ReactionPackDefinition& definition, ITemplateSource&) {
            definition.name = CBstr::Make(name);
            return true;
        };
    }
    void WillAnswer(MessageAnswer answer) { ui.messageAnswer = answer; }

    CManagerTemplates source;
    std::unique_ptr<CTemplateManager> dialog;
};

TEST_F(TemplateManager, ListsTheNamesInTheirOrder) {
    EXPECT_EQ(Open({u"B", u"", u"A"}).Names(), (Names{u"B", u"", u"A"}));
}

TEST_F(TemplateManager, HasButtonsForASelectionAlone) {
    Open({u"B", u"A"});
    EXPECT_EQ(dialog->Selection(), -1);
    EXPECT_FALSE(dialog->IsEditEnabled());
    EXPECT_FALSE(dialog->IsDeleteEnabled());
    dialog->Select(1);
    EXPECT_EQ(dialog->Selection(), 1);
    EXPECT_TRUE(dialog->IsEditEnabled());
    EXPECT_TRUE(dialog->IsDeleteEnabled());
    for (const std::int32_t index : {2, -1, std::numeric_limits<std::int32_t>::min()}) {
        dialog->Select(index);
        EXPECT_EQ(dialog->Selection(), -1);
        EXPECT_FALSE(dialog->IsEditEnabled());
        EXPECT_FALSE(dialog->Edit());
        EXPECT_FALSE(dialog->Delete());
    }
    EXPECT_EQ(ui.asked, Lines{});
    EXPECT_EQ(files.operations, Lines{});
}

/// Nobody works on what can't be stored.
TEST_F(TemplateManager, OpensNoShellWhereTheFileCouldNotBeRead) {
    Open({u"A", u"B"});
    const auto mine = files.entries[userFile].bytes;
    WillName(u"new");
    for (const bool isNew : {true, false}) {
        dialog->Select(1);
        ui.asked.clear();
        files.operations.clear();
        files.failAt = 7;
        EXPECT_FALSE(isNew ? dialog->Create() : dialog->Edit());
        files.failAt = 0;
        ASSERT_EQ(files.operations.at(6), Line("open to read", userFile));
        EXPECT_EQ(ui.asked,
                  Lines{"message|Error:|Failed to open reaction package template file " + Utf8FromUtf16(userFile) +
                        " for writing. The current state of the reaction package templates cannot be "
                        "stored.|16"});
        EXPECT_EQ(files.entries[userFile].bytes, mine);
        source.Store().LoadTemplates();
    }
}

TEST_F(TemplateManager, CanDoLittleWithoutTemplates) {
    Open({});
    dialog->Select(0);
    EXPECT_FALSE(dialog->IsEditEnabled());
    EXPECT_FALSE(dialog->IsDeleteEnabled());
}

TEST_F(TemplateManager, CreatesATemplateAtTheEnd) {
    Open({u"B", u"A"});
    dialog->Select(0);
    const ReactionPackDefinition stale(nullptr);
    source.Store().templateUnderEdit = &stale;
    ui.inTemplate = [&](ReactionPackDefinition& definition, ITemplateSource& templates) {
        EXPECT_TRUE(definition.name.IsAbsent());
        EXPECT_TRUE(definition.compounds.empty());
        EXPECT_EQ(&templates.Store(), &source.Store());
        EXPECT_EQ(templates.Store().templateUnderEdit, nullptr);
        definition.name = CBstr::Make(u"New");
        return true;
    };
    EXPECT_TRUE(dialog->Create());
    EXPECT_EQ(dialog->Names(), (Names{u"B", u"A", u"New"}));
    EXPECT_EQ(dialog->Selection(), -1);
    EXPECT_EQ(NamesInFile(), (Names{u"B", u"A", u"New"}));
    EXPECT_EQ(dialog->Caret(), 2);
    EXPECT_EQ(ui.asked, Lines{"template|"});
}

TEST_F(TemplateManager, LeavesTheListAfterACancelledCreate) {
    Open({u"B", u"A"});
    dialog->Select(1);
    EXPECT_FALSE(dialog->Create());
    EXPECT_EQ(dialog->Names(), (Names{u"B", u"A"}));
    EXPECT_EQ(Templates(), (Names{u"B", u"A"}));
    EXPECT_EQ(dialog->Selection(), 1);
    EXPECT_FALSE(IsFileWritten());
}

TEST_F(TemplateManager, GivesTemplatesTheContextOfTheManager) {
    CFakeObject context;
    Open({u"A"});
    source.Store().simulationContext = CComRef<IDispatch>(&context);
    ui.inTemplate = [&](ReactionPackDefinition& definition, ITemplateSource&) {
        EXPECT_EQ(definition.simulationContext.Get(), &context);
        return false;
    };
    dialog->Create();
    dialog->Select(0);
    dialog->Edit();
    EXPECT_EQ(ui.asked.size(), 2U);
    source.Store().simulationContext.Reset();
    source.Store().DiscardTemplates();
    EXPECT_EQ(context.references.Held(), 0);
}

TEST_F(TemplateManager, EditsACopy) {
    Open({u"B", u"A", u"C"});
    dialog->Select(1);
    ui.inTemplate = [&](ReactionPackDefinition& definition, ITemplateSource& templates) {
        EXPECT_EQ(definition.name.View(), u"A");
        const ReactionPackDefinition* const original = source.Store().templates[1].get();
        EXPECT_NE(&definition, original);
        EXPECT_EQ(templates.Store().templateUnderEdit, original);
        definition.name = CBstr::Make(u"A2");
        EXPECT_EQ(Templates(), (Names{u"B", u"A", u"C"}));
        return true;
    };
    EXPECT_TRUE(dialog->Edit());
    EXPECT_EQ(dialog->Names(), (Names{u"B", u"A2", u"C"}));
    EXPECT_EQ(NamesInFile(), (Names{u"B", u"A2", u"C"}));
    EXPECT_EQ(dialog->Caret(), 1);
    EXPECT_EQ(dialog->Selection(), -1);
    EXPECT_EQ(source.Store().templateUnderEdit, nullptr);
    EXPECT_EQ(ui.asked, Lines{"template|A"});
}

TEST_F(TemplateManager, LeavesTheTemplateAfterACancelledEdit) {
    Open({u"B", u"A"});
    dialog->Select(1);
    ui.inTemplate = [](ReactionPackDefinition& definition, ITemplateSource&) {
        definition.name = CBstr::Make(u"half edited");
        return false;
    };
    EXPECT_FALSE(dialog->Edit());
    EXPECT_EQ(Templates(), (Names{u"B", u"A"}));
    EXPECT_EQ(dialog->Selection(), 1);
    EXPECT_EQ(source.Store().templateUnderEdit, nullptr);
    EXPECT_FALSE(IsFileWritten());
}

TEST_F(TemplateManager, KnowsTheTemplateUnderEditAfterTheListWasReadAgain) {
    Open({u"B", u"A"});
    dialog->Select(1);
    ui.inTemplate = [&](ReactionPackDefinition&, ITemplateSource& templates) {
        CVariant names;
        EXPECT_EQ(templates.GetListOfReactionsPackages(&names.Get()), S_OK);  // as the shell does to load one
        EXPECT_EQ(Show(names.Get()), "['B', 'A']");
        EXPECT_EQ(templates.Store().templateUnderEdit, source.Store().templates[1].get());
        PutTemplates({u"B"});  // another program has made the file shorter
        source.Store().LoadTemplates();
        EXPECT_EQ(templates.Store().templateUnderEdit, nullptr);
        return false;
    };
    EXPECT_FALSE(dialog->Edit());
    EXPECT_EQ(source.timesListed, 1);
}

TEST_F(TemplateManager, ReadsTheFileBeforeTheShellOpens) {
    Open({u"B", u"A"});
    PutTemplates({u"X", u"a", u"Z"});
    dialog->Select(1);
    ui.inTemplate = [&](ReactionPackDefinition& definition, ITemplateSource&) {
        EXPECT_EQ(Templates(), (Names{u"X", u"a", u"Z"}));
        EXPECT_EQ(definition.name.View(), u"A");  // the copy was made before
        return true;
    };
    EXPECT_TRUE(dialog->Edit());
    EXPECT_EQ(NamesInFile(), (Names{u"X", u"A", u"Z"}));  // in the place that it had
}

TEST_F(TemplateManager, KeepsWhatWasEditedIfItsPlaceGoesMeanwhile) {
    Open({u"B", u"A", u"C"});
    dialog->Select(2);
    ui.inTemplate = [&](ReactionPackDefinition& definition, ITemplateSource& templates) {
        PutTemplates({u"X"});
        templates.Store().LoadTemplates();
        definition.name = CBstr::Make(u"C2");
        return true;
    };
    EXPECT_TRUE(dialog->Edit());
    EXPECT_EQ(NamesInFile(), (Names{u"X", u"C2"}));
    EXPECT_EQ(dialog->Names(), (Names{u"X", u"C2"}));
}

TEST_F(TemplateManager, OpensNoShellForATemplateThatHasLeftItsRow) {
    const struct {
        Names inFile;
        const char* what;
    } cases[] = {{{u"B", u"C", u"A"}, "another name"}, {{u"B"}, "none"}, {{}, "none at all"}};
    for (const auto& moved : cases) {
        SCOPED_TRACE(moved.what);
        for (const bool isReadBefore : {false, true}) {  // by the simulator, while the window is open
            Open({u"B", u"A"});
            PutTemplates(moved.inFile);
            if (isReadBefore && moved.inFile.size() > 1) source.Store().LoadTemplates();
            dialog->Select(1);
            files.operations.clear();
            ui.asked.clear();
            EXPECT_TRUE(dialog->Edit());
            EXPECT_EQ(ui.asked, Lines{notInRowA});
            EXPECT_EQ(dialog->Names(), moved.inFile);
            EXPECT_EQ(dialog->Selection(), -1);
            EXPECT_FALSE(IsFileWritten());
        }
    }
}

TEST_F(TemplateManager, DoesNothingToATemplateThatIsNoLongerThere) {
    for (const bool isDeletion : {false, true}) {
        Open({u"B", u"A"});
        dialog->Select(1);
        PutTemplates({u"X"});
        source.Store().LoadTemplates();
        ui.asked.clear();
        EXPECT_TRUE(isDeletion ? dialog->Delete() : dialog->Edit());
        EXPECT_EQ(ui.asked, Lines{notInRowA});
        EXPECT_EQ(dialog->Names(), Names{u"X"});
        EXPECT_EQ(Templates(), Names{u"X"});
        EXPECT_FALSE(dialog->Delete());  // nothing is selected
    }
}

TEST_F(TemplateManager, DeletesAfterAQuestion) {
    Open({u"B", u"A", u"C"});
    dialog->Select(1);
    WillAnswer(MessageAnswer::Yes);
    EXPECT_TRUE(dialog->Delete());
    // yes or no 4, question 32, the second button is the default 256
    EXPECT_EQ(ui.asked, Lines{"message|Delete Reaction Package Definition:|Are you sure you want to permanently delete "
                              "the reaction package definition A?|292"});
    EXPECT_EQ(dialog->Names(), (Names{u"B", u"C"}));
    EXPECT_EQ(Templates(), (Names{u"B", u"C"}));
    EXPECT_EQ(dialog->Selection(), -1);
    EXPECT_FALSE(dialog->IsEditEnabled());
    EXPECT_FALSE(dialog->IsDeleteEnabled());
    EXPECT_EQ(files.operations, Lines{});  // the file waits for the end of the dialog
    EXPECT_EQ(NamesInFile(), (Names{u"B", u"A", u"C"}));
}

TEST_F(TemplateManager, GoesOnFromTheNeighbourOfADeletedRow) {
    Open({u"B", u"A", u"C"});
    EXPECT_EQ(dialog->Caret(), 0);
    WillAnswer(MessageAnswer::Yes);
    const std::pair<std::int32_t, std::int32_t> rows[] = {{1, 1}, {1, 0}, {0, -1}};  // deleted, and gone on from
    for (const auto& [deleted, next] : rows) {
        dialog->Select(deleted);
        EXPECT_TRUE(dialog->Delete());
        EXPECT_EQ(dialog->Caret(), next);
        EXPECT_EQ(dialog->Selection(), -1);
    }
}

TEST_F(TemplateManager, DeletesNothingOnAnyOtherAnswer) {
    Open({u"B", u"A"});
    dialog->Select(0);
    for (const MessageAnswer answer :
         {MessageAnswer::No, MessageAnswer::None, MessageAnswer::Cancel, MessageAnswer::Ok}) {
        WillAnswer(answer);
        EXPECT_FALSE(dialog->Delete());
    }
    EXPECT_EQ(Templates(), (Names{u"B", u"A"}));
    EXPECT_EQ(dialog->Selection(), 0);
}

TEST_F(TemplateManager, TakesAListThatChangesDuringTheQuestion) {
    Open({u"B", u"A"});
    dialog->Select(1);
    WillAnswer(MessageAnswer::Yes);
    ui.onMessage = [this] {
        PutTemplates({u"X"});
        source.Store().LoadTemplates();
    };
    EXPECT_TRUE(dialog->Delete());
    EXPECT_EQ(dialog->Names(), Names{u"X"});
}

TEST_F(TemplateManager, DeletesNothingElseWhereTheQuestionChangedTheRows) {
    Open({u"B", u"A"});
    dialog->Select(0);
    WillAnswer(MessageAnswer::Yes);
    ui.onMessage = [this] {
        PutTemplates({u"X", u"B"});
        source.Store().LoadTemplates();
    };
    EXPECT_TRUE(dialog->Delete());
    EXPECT_EQ(Templates(), (Names{u"X", u"B"}));
    EXPECT_EQ(dialog->Names(), (Names{u"X", u"B"}));
    WillName(u"New");
    ui.asked.clear();
    EXPECT_TRUE(dialog->Create());
    EXPECT_EQ(ui.asked, Lines{"template|"});  // nothing waits to be deleted
}

TEST_F(TemplateManager, DeletesNoTemplateThatTheWindowDoesNotShow) {
    Open({u"A", u"B"});
    dialog->Select(0);
    WillAnswer(MessageAnswer::Yes);
    PutTemplates({u"X"});
    source.Store().LoadTemplates();  // as the simulator does when it asks for the list
    EXPECT_TRUE(dialog->Delete());
    EXPECT_EQ(ui.asked, Lines{notInRowA});
    EXPECT_EQ(dialog->Names(), Names{u"X"});
    EXPECT_EQ(Templates(), Names{u"X"});
}

/// With templates of which the first was deleted.
class TemplateManagerAfterADeletion : public TemplateManager {
protected:
    TemplateManagerAfterADeletion() {
        Open({u"B", u"A", u"C"});
        dialog->Select(0);
        WillAnswer(MessageAnswer::Yes);
        EXPECT_TRUE(dialog->Delete());
        EXPECT_EQ(dialog->Names(), (Names{u"A", u"C"}));
        ui.asked.clear();
        files.operations.clear();
    }
};

// Yes or no 4, question 32, the second button is the default 256.
const char* const question =
    "message|Deleted templates:|Deleted templates stand in the file until this window is closed, and come back now; do "
    "you want to go on?|292";

TEST_F(TemplateManagerAfterADeletion, ReadsNothingWithoutAYes) {
    WillName(u"New");
    dialog->Select(1);
    for (const MessageAnswer answer :
         {MessageAnswer::No, MessageAnswer::None, MessageAnswer::Cancel, MessageAnswer::Ok}) {
        WillAnswer(answer);
        ui.asked.clear();
        EXPECT_FALSE(dialog->Create());
        EXPECT_FALSE(dialog->Edit());
        EXPECT_EQ(ui.asked, (Lines{question, question}));
    }
    EXPECT_EQ(files.operations, Lines{});
    EXPECT_EQ(Templates(), (Names{u"A", u"C"}));
    EXPECT_EQ(dialog->Names(), (Names{u"A", u"C"}));
    EXPECT_EQ(dialog->Selection(), 1);
}

TEST_F(TemplateManagerAfterADeletion, CreatesBesideWhatIsBack) {
    WillName(u"New");
    EXPECT_TRUE(dialog->Create());
    EXPECT_EQ(ui.asked, (Lines{question, "template|"}));
    EXPECT_EQ(dialog->Names(), (Names{u"B", u"A", u"C", u"New"}));
    EXPECT_EQ(NamesInFile(), (Names{u"B", u"A", u"C", u"New"}));
    ui.asked.clear();
    EXPECT_TRUE(dialog->Create());
    EXPECT_EQ(ui.asked, Lines{"template|"});  // nothing waits to be deleted any more
}

TEST_F(TemplateManagerAfterADeletion, ShowsWhatIsBackAfterACancelledShellToo) {
    dialog->Select(1);
    EXPECT_TRUE(dialog->Create());
    EXPECT_EQ(ui.asked, (Lines{question, "template|"}));
    EXPECT_EQ(dialog->Names(), (Names{u"B", u"A", u"C"}));
    EXPECT_EQ(dialog->Selection(), -1);
    EXPECT_FALSE(IsFileWritten());
    dialog->Select(1);
    EXPECT_FALSE(dialog->Edit());  // cancelled, with nothing that waits to be deleted
    EXPECT_EQ(ui.asked, (Lines{question, "template|", "template|A"}));
}

TEST_F(TemplateManagerAfterADeletion, EditsNoTemplateWhoseRowHasAnotherOne) {
    WillName(u"A2");
    dialog->Select(0);  // A, in the row that B has in the file
    EXPECT_TRUE(dialog->Edit());
    EXPECT_EQ(ui.asked, (Lines{question, notInRowA}));
    EXPECT_EQ(dialog->Names(), (Names{u"B", u"A", u"C"}));
    EXPECT_EQ(Templates(), (Names{u"B", u"A", u"C"}));
    EXPECT_FALSE(IsFileWritten());
    EXPECT_EQ(NamesInFile(), (Names{u"B", u"A", u"C"}));
}

TEST_F(TemplateManagerAfterADeletion, EditsATemplateThatKeepsItsRow) {
    dialog->Select(1);
    EXPECT_TRUE(dialog->Delete());  // C, too
    ui.asked.clear();
    PutTemplates({u"A", u"C"});  // another program has deleted B
    dialog->Select(0);
    WillName(u"A2");
    EXPECT_TRUE(dialog->Edit());
    EXPECT_EQ(ui.asked, (Lines{question, "template|A"}));
    EXPECT_EQ(dialog->Names(), (Names{u"A2", u"C"}));
    EXPECT_EQ(NamesInFile(), (Names{u"A2", u"C"}));
}

TEST_F(TemplateManagerAfterADeletion, ShowsNothingWhereTheFileCannotBeReadAgain) {
    dialog->Select(0);
    files.failAt = 7;
    EXPECT_TRUE(dialog->Edit());
    files.failAt = 0;
    EXPECT_EQ(dialog->Names(), Names{});
    EXPECT_EQ(NamesInFile(), (Names{u"B", u"A", u"C"}));
}

}  // namespace
}  // namespace reka::test
