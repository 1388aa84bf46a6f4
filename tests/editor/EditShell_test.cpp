// SPDX-License-Identifier: MIT
// The buttons of the edit shell: what is checked, loaded, stored, shown and told.

#include "editor/EditShell.h"

#include <gtest/gtest.h>

#include <tuple>

#include "editor/TemplateFixture.h"
#include "platform/SameText.h"

namespace reka::test {
namespace {

/// A definition that passes every check: two of First make one of Second.
std::unique_ptr<ReactionPackDefinition> MakeValid(const char16_t* name = u"Mine") {
    auto definition = MakePackage({u"First", u"Second"});
    definition->name = CBstr::Make(name);
    definition->description = CBstr::Make(u"About it");
    definition->compounds[0]->molecularWeight = 14.0;
    definition->compounds[1]->molecularWeight = 28.0;
    AddKinetic(*definition, u"R1", u"2*T").stoichiometry = {-2.0, 1.0};
    return definition;
}

class EditShell : public TemplateFixture {
protected:
    EditShell() {
        definition->description = CBstr::Make(u"My words");
        definition->pcdFile = u"D:/mine.pcd";
        shell = std::make_unique<CEditShell>(
            *definition,
            [this]() -> std::unique_ptr<ITemplateSource> {
                ++managersMade;
                if (!hasManagers) return nullptr;
                auto made = std::make_unique<CManagerTemplates>();
                made->Store().simulationContext = CComRef<IDispatch>(context);
                return made;
            },
            ui);
        files.operations.clear();
    }

    /// The user chooses that name in the dialog of the names, which reads them.
    void WillChoose(const char16_t* name) {
        ui.inTemplateNames = [name](ITemplateSource& templates, std::u16string& templateName) {
            CVariant names;
            EXPECT_EQ(templates.GetListOfReactionsPackages(&names.Get()), S_OK);
            templateName = name;
            return true;
        };
    }
    /// Makes the user's file hold these definitions.
    void PutDefinitions(const std::vector<const ReactionPackDefinition*>& definitions) {
        TemplateStore stored;
        for (const ReactionPackDefinition* source : definitions) {
            stored.templates.push_back(std::make_unique<ReactionPackDefinition>(nullptr));
            stored.templates.back()->CopyFrom(*source);
        }
        stored.StoreTemplates();
        files.operations.clear();
    }
    std::unique_ptr<ReactionPackDefinition> FromFile(const char16_t* name) {
        TemplateStore stored;
        stored.LoadTemplates();
        for (auto& candidate : stored.templates) {
            if (SameText(candidate->name.View(), std::u16string_view(name))) return std::move(candidate);
        }
        return nullptr;
    }

    std::unique_ptr<ReactionPackDefinition> definition = MakeValid();
    GeneralPageFields general = {u"Mine", u"My words", 0};
    std::unique_ptr<CEditShell> shell;
    int managersMade = 0;
    bool hasManagers = true;
    IDispatch* context = nullptr;
};

/// The shell on a template, which sees the templates of the manager.
class EditShellOfTemplate : public EditShell {
protected:
    EditShellOfTemplate() { shell = std::make_unique<CEditShell>(*definition, source, ui); }
    CManagerTemplates source;
};

TEST(EditPages, FollowTheTabs) {
    const Names labels = {u"General", u"Compounds", u"Reactions"};
    for (std::size_t i = 0; i < labels.size(); ++i) EXPECT_EQ(std::u16string(editPageLabels[i]), labels[i]);
    EXPECT_EQ(PageOfTab(0), EditPage::General);
    EXPECT_EQ(PageOfTab(1), EditPage::Compounds);
    EXPECT_EQ(PageOfTab(2), EditPage::Reactions);
    EXPECT_EQ(PageOfTab(-1), EditPage::General);
    EXPECT_EQ(PageOfTab(3), EditPage::General);
}

TEST_F(EditShell, OpensOnTheFirstReactionAndNoCompound) {
    EXPECT_EQ(shell->reactionPage.Selection(), 0);
    EXPECT_EQ(shell->compoundPage.Selection(), -1);
    EXPECT_EQ(shell->reactionPage.Content().heading, u"R1");
    EXPECT_EQ(shell->compoundPage.Rows().size(), 2U);
}

// OK

TEST_F(EditShell, AcceptsWhatPassesTheCheck) {
    definition->reactions[0]->rateExpression.reset();
    general = {u"Other", u"", 1};
    EXPECT_TRUE(shell->Accept(general));
    EXPECT_EQ(ui.asked, Lines{});
    EXPECT_EQ(definition->name.View(), u"Other");
    EXPECT_TRUE(definition->description.IsAbsent());
    EXPECT_EQ(definition->thermoVersion, ThermoVersion::Version11);
    EXPECT_NE(definition->reactions[0]->rateExpression, nullptr);
    EXPECT_EQ(managersMade, 0);
}

TEST_F(EditShell, TakesAVersionThatIsNoneForTheFirst) {
    definition->thermoVersion = ThermoVersion::Version11;
    for (const std::int32_t index : {-1, 2}) {
        general.versionIndex = index;
        EXPECT_TRUE(shell->Accept(general));
        EXPECT_EQ(definition->thermoVersion, ThermoVersion::Version10);
    }
}

TEST_F(EditShell, StaysOpenAfterAFailedCheckAndChecksAgain) {
    general.name.clear();
    EXPECT_FALSE(shell->Accept(general));
    EXPECT_FALSE(shell->Accept(general));
    EXPECT_EQ(ui.asked, Lines(2, "message|Error:|Reaction package name cannot be empty|16"));
    general.name = u"Mine";
    EXPECT_TRUE(shell->Accept(general));
}

TEST_F(EditShell, KnowsWhatTheLastCheckHasComplainedOf) {
    EXPECT_EQ(shell->Complaint(), std::nullopt);
    definition->reactions[0]->phase.Reset();
    EXPECT_FALSE(shell->Accept(general));
    EXPECT_EQ(shell->Complaint(), (CheckSubject{CheckedPart::Phase, 0}));
    general.name.clear();
    shell->Store(general);
    EXPECT_EQ(shell->Complaint(), CheckSubject{CheckedPart::Name});
    general.name = u"Mine";
    definition->reactions[0]->phase = CBstr::Make(u"Liquid");
    EXPECT_TRUE(shell->Accept(general));
    EXPECT_EQ(shell->Complaint(), std::nullopt);
}

TEST(EditPages, AreARing) {
    const std::tuple<std::int32_t, std::int32_t, EditPage> steps[] = {
        {0, 1, EditPage::Compounds},  {1, 1, EditPage::Reactions},  {2, 1, EditPage::General},
        {0, -1, EditPage::Reactions}, {2, -1, EditPage::Compounds}, {1, -1, EditPage::General},
        {-1, 1, EditPage::Compounds},  // none is selected
    };
    for (const auto& [tab, step, page] : steps) EXPECT_EQ(PageBeside(tab, step), page) << tab;
}

TEST(EditPages, HoldThePartsThatAreChecked) {
    EXPECT_EQ(PageOfPart(CheckedPart::Name), EditPage::General);
    EXPECT_EQ(PageOfPart(CheckedPart::Compounds), EditPage::Compounds);
    for (const CheckedPart part : {CheckedPart::Phase, CheckedPart::Stoichiometry, CheckedPart::Rate,
                                   CheckedPart::EquilibriumConstant, CheckedPart::Heat}) {
        EXPECT_EQ(PageOfPart(part), EditPage::Reactions);
    }
}

TEST_F(EditShell, MayHaveTheNameOfATemplateAsAPackage) {
    PutTemplates({u"Mine"});
    EXPECT_TRUE(shell->Accept(general));
    EXPECT_EQ(files.operations, Lines{});
}

TEST_F(EditShellOfTemplate, NeedsANameThatNoOtherTemplateHas) {
    PutTemplates({u"Other", u"MINE"});
    source.Store().LoadTemplates();
    EXPECT_FALSE(shell->Accept(general));
    EXPECT_EQ(ui.asked, Lines{"message|Error:|Reaction package name \"Mine\"is already used, and must be unique|16"});
    source.Store().templateUnderEdit = source.Store().templates[1].get();
    EXPECT_TRUE(shell->Accept(general));
}

TEST_F(EditShell, AsksAndWarnsInBoxesOfTheCheck) {
    definition->compounds[0]->formula = CBstr::Make(u"no formula");
    definition->compounds[1]->formula = CBstr::Make(u"C2H4");
    definition->reactions[0]->heatEquation = u"C(First)";
    ui.messageAnswer = MessageAnswer::Ok;
    EXPECT_TRUE(shell->Accept(general));
    ASSERT_EQ(ui.asked.size(), 2U);
    // a warning with OK, 48; a question with OK and Cancel, 49
    EXPECT_EQ(ui.asked[0],
              "message|Warning:|Parse error in structure formula no formula for compound First; unable to perform "
              "element balance check.|48");
    EXPECT_EQ(ui.asked[1].substr(0, 8), "message|");
    EXPECT_EQ(ui.asked[1].substr(ui.asked[1].size() - 3), "|49");
    ui.messageAnswer = MessageAnswer::Cancel;
    EXPECT_FALSE(shell->Accept(general));
}

// Help

TEST_F(EditShell, ShowsItsTopicOfTheHelpFile) {
    const std::string path = Utf8FromUtf16(ComponentFolder()) + "NAVO.chm";
    shell->ShowHelp();
    EXPECT_EQ(ui.asked, Lines{"help|" + path + "|REKA/reka.htm"});
    ui.isHelpShown = false;
    ui.asked.clear();
    shell->ShowHelp();
    EXPECT_EQ(ui.asked, (Lines{"help|" + path + "|REKA/reka.htm",
                               "message|Error starting Help:|Failed to load HTML Help file " + path + "|16"}));
}

// Load

TEST_F(EditShell, LoadsAllButNameAndDescription) {
    auto other = MakePackage({u"A", u"B", u"Cc"});
    other->name = CBstr::Make(u"Template");
    other->description = CBstr::Make(u"Its words");
    other->thermoVersion = ThermoVersion::Version11;
    other->pcdFile = u"E:/its.pcd";
    AddKinetic(*other, u"T1", u"T").stoichiometry = {-1.0, 1.0, 0.0};
    AddEquilibrium(*other, u"T2", u"T").stoichiometry = {0.0, -1.0, 1.0};
    const ReactionPackDefinition empty(nullptr);
    PutDefinitions({&empty, other.get()});
    shell->compoundPage.Select(1);
    shell->reactionPage.Select(-1);
    WillChoose(u"tEMPLATE");  // found in letters of any case
    general.name = u"typed";
    EXPECT_TRUE(shell->Load(general));
    EXPECT_EQ(ui.asked, Lines{"load|typed"});
    EXPECT_EQ(definition->name.View(), u"typed");
    EXPECT_EQ(definition->description.View(), u"My words");
    EXPECT_EQ(definition->thermoVersion, ThermoVersion::Version11);
    EXPECT_EQ(definition->pcdFile, u"E:/its.pcd");
    ASSERT_EQ(definition->reactions.size(), 2U);
    EXPECT_EQ(definition->reactions[1]->stoichiometry, (std::vector<double>{0.0, -1.0, 1.0}));
    EXPECT_EQ(shell->compoundPage.Rows().size(), 3U);
    EXPECT_EQ(shell->compoundPage.Selection(), -1);
    EXPECT_EQ(shell->reactionPage.Selection(), 0);
    EXPECT_EQ(shell->reactionPage.Content().heading, u"T1");
    EXPECT_EQ(managersMade, 1);
    EXPECT_FALSE(IsFileWritten());
    // The page still shows the old version, and the check takes it.
    definition->compounds.resize(2);
    definition->reactions.clear();
    EXPECT_TRUE(shell->Accept(general));
    EXPECT_EQ(definition->thermoVersion, ThermoVersion::Version10);
}

TEST_F(EditShell, LoadsTheFirstOfEqualNames) {
    auto first = MakeValid(u"same");
    first->pcdFile = u"first";
    auto second = MakeValid(u"SAME");
    second->pcdFile = u"second";
    PutDefinitions({first.get(), second.get()});
    WillChoose(u"SAME");
    EXPECT_TRUE(shell->Load(general));
    EXPECT_EQ(definition->pcdFile, u"first");
}

TEST_F(EditShell, LoadsNothingIfTheUserCancels) {
    general.name = u"typed";
    EXPECT_FALSE(shell->Load(general));
    EXPECT_EQ(ui.asked, Lines{"load|typed"});
    EXPECT_EQ(definition->name.View(), u"typed");  // the field was read
    EXPECT_EQ(definition->reactions.size(), 1U);
    general.name.clear();
    EXPECT_FALSE(shell->Load(general));
    EXPECT_TRUE(definition->name.IsAbsent());
}

TEST_F(EditShell, TellsThatATemplateIsNotThere) {
    PutTemplates({u"A"});
    WillChoose(u"B");
    EXPECT_FALSE(shell->Load(general));
    EXPECT_EQ(ui.asked, (Lines{"load|Mine", "message|Error:|Error: specified template not found|16"}));
    EXPECT_EQ(definition->reactions.size(), 1U);
}

TEST_F(EditShell, TellsThatThereIsNoManagerToAsk) {
    hasManagers = false;
    EXPECT_FALSE(shell->Load(general));
    shell->Store(general);
    EXPECT_EQ(ui.asked, Lines(2, "message|Error:|out of memory|16"));
}

TEST_F(EditShell, LeavesTheOpenersDefinitionAsItWas) {
    const auto opener = MakeValid(u"Opener");
    const auto copy = std::make_unique<ReactionPackDefinition>(nullptr);
    copy->CopyFrom(*opener);
    CManagerTemplates templates;
    const ReactionPackDefinition empty(nullptr);
    PutDefinitions({&empty});
    CEditShell editor(*copy, templates, ui);
    WillChoose(u"");
    EXPECT_TRUE(editor.Load(general));
    EXPECT_TRUE(copy->reactions.empty());  // thrown away after Cancel
    EXPECT_EQ(opener->reactions.size(), 1U);
    EXPECT_EQ(opener->name.View(), u"Opener");
}

TEST_F(EditShellOfTemplate, LoadsFromTheTemplatesThatOpenedIt) {
    const auto other = MakeValid(u"Template");
    other->pcdFile = u"its";
    PutDefinitions({other.get()});
    WillChoose(u"Template");
    EXPECT_TRUE(shell->Load(general));
    EXPECT_EQ(definition->pcdFile, u"its");
    EXPECT_EQ(source.timesListed, 1);
    EXPECT_EQ(managersMade, 0);
}

// Store

TEST_F(EditShellOfTemplate, HasNoStore) {
    EXPECT_FALSE(shell->IsStoreShown());
    shell->Store(general);
    EXPECT_EQ(ui.asked, Lines{"message|Error:|Internal error.|0"});
    EXPECT_FALSE(IsFileWritten());
}

TEST_F(EditShell, StoresANewTemplate) {
    EXPECT_TRUE(shell->IsStoreShown());
    PutTemplates({u"A"});
    files.operations.clear();
    CFakeObject manager;
    context = &manager;
    const TemplateStore* templatesOfManager = nullptr;
    ui.inTemplateNames = [&](ITemplateSource& templates, std::u16string& templateName) {
        CVariant names;
        EXPECT_EQ(templates.GetListOfReactionsPackages(&names.Get()), S_OK);
        templatesOfManager = &templates.Store();
        templateName = u"Fresh";
        return true;
    };
    files.onWritten = [&] { EXPECT_EQ(templatesOfManager->templates.back()->simulationContext.Get(), context); };
    general.versionIndex = 1;
    shell->Store(general);
    EXPECT_EQ(ui.asked, Lines{"store|Mine"});
    EXPECT_TRUE(IsFileWritten());
    EXPECT_EQ(NamesInFile(), (Names{u"A", u"Fresh"}));
    const auto stored = FromFile(u"Fresh");
    ASSERT_NE(stored, nullptr);
    EXPECT_EQ(stored->description.View(), u"My words");
    EXPECT_EQ(stored->thermoVersion, ThermoVersion::Version11);
    ASSERT_EQ(stored->reactions.size(), 1U);
    EXPECT_NE(stored->reactions[0]->rateExpression, nullptr);
    EXPECT_EQ(definition->name.View(), u"Fresh");
    EXPECT_EQ(manager.references.Held(), 0);
    EXPECT_TRUE(shell->Accept(general));
    EXPECT_EQ(definition->name.View(), u"Mine");  // the field has kept its text
}

TEST_F(EditShell, OverwritesATemplateAfterAQuestion) {
    const auto other = MakePackage({u"A"});
    other->name = CBstr::Make(u"taken");
    const auto last = MakeValid(u"last");
    PutDefinitions({other.get(), last.get()});
    WillChoose(u"Taken");
    shell->Store(general);
    // OK and Cancel 1, without an icon
    EXPECT_EQ(ui.asked, (Lines{"store|Mine",
                               "message|Store template:|A reaction package template with the name Taken "
                               "already exists. Overwrite?|1"}));
    EXPECT_EQ(NamesInFile(), (Names{u"Taken", u"last"}));
    EXPECT_EQ(FromFile(u"Taken")->compounds.size(), 2U);
}

TEST_F(EditShell, LeavesATemplateThatIsNotOverwrittenAndWritesTheFile) {
    const auto other = MakePackage({u"A"});
    other->name = CBstr::Make(u"taken");
    PutDefinitions({other.get()});
    WillChoose(u"Taken");
    for (const MessageAnswer answer : {MessageAnswer::Cancel, MessageAnswer::None}) {
        ui.messageAnswer = answer;
        shell->Store(general);
        EXPECT_TRUE(IsFileWritten());
        EXPECT_EQ(NamesInFile(), Names{u"taken"});
        EXPECT_EQ(FromFile(u"taken")->compounds.size(), 1U);
    }
}

TEST_F(EditShell, StoresOnlyWhatPassesTheCheck) {
    definition->compounds.resize(1);
    definition->reactions.clear();
    shell->Store(general);
    EXPECT_EQ(ui.asked, Lines{"message|Cannot store:|At least two compounds must be present|16"});
    EXPECT_EQ(managersMade, 0);
    EXPECT_FALSE(IsFileWritten());
}

TEST_F(EditShell, StoresNothingIfTheUserCancels) {
    shell->Store(general);
    EXPECT_EQ(ui.asked, Lines{"store|Mine"});
    EXPECT_FALSE(IsFileWritten());
    EXPECT_EQ(definition->name.View(), u"Mine");
}

}  // namespace
}  // namespace reka::test
