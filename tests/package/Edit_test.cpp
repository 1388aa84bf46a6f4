// SPDX-License-Identifier: MIT
// What `Edit` of the objects hands to the editor, and what it does with the answer.

#include "package/Edit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "manager/CreateReactionPackManager.h"
#include "manager/ManagerTemplates.h"
#include "manager/StoreFixture.h"
#include "package/CReactionPack.h"
#include "platform/ThreadError.h"
#include "support/CountedFake.h"
#include "support/FakeBag.h"
#include "support/FakeEditor.h"
#include "support/FakeReactionObject.h"
#include "support/Values.h"

namespace reka::test {
namespace {

class EditOfAPackage : public testing::Test {
protected:
    EditOfAPackage() {
        definition = MakePackage({u"Ar", u"Xe"});
        AddKinetic(*definition, u"R1", u"2*T");
        holder = std::make_unique<CPackageHolder>(*definition);
        EXPECT_EQ(Package().Save(&bag, 1, 0), S_OK);
        EXPECT_FALSE(Package().IsDirty() == S_OK);
    }
    CReactionPack& Package() { return **holder; }

    CFakeEditor editor;
    CFakeBag bag;
    std::unique_ptr<ReactionPackDefinition> definition;
    std::unique_ptr<CPackageHolder> holder;
};

TEST_F(EditOfAPackage, OpensOnADeepCopy) {
    const ReactionPackDefinition* const own = Package().Definition();
    editor.inPackage = [own](ReactionPackDefinition& copy) {
        EXPECT_NE(&copy, own);
        EXPECT_NE(copy.reactions[0].get(), own->reactions[0].get());
        EXPECT_EQ(copy.name.View(), u"Test package");
        EXPECT_EQ(copy.compounds.size(), 2U);
        EXPECT_EQ(copy.reactions[0]->rateEquation, u"2*T");
        return false;
    };
    EXPECT_EQ(Package().Edit(), S_FALSE);
    EXPECT_EQ(editor.timesOpened, 1);
}

TEST_F(EditOfAPackage, TakesTheCopyOverAtOk) {
    editor.inPackage = [](ReactionPackDefinition& copy) {
        copy.name = CBstr::Make(u"Edited");
        copy.reactions[0]->rateEquation = u"3*T";
        return true;
    };
    EXPECT_EQ(Package().Edit(), S_OK);
    const ReactionPackDefinition& taken = *Package().Definition();
    EXPECT_EQ(taken.name.View(), u"Edited");
    EXPECT_EQ(taken.reactions[0]->rateEquation, u"3*T");
    EXPECT_EQ(taken.workArraySize, 2U);
    EXPECT_TRUE(taken.molarity);
    EXPECT_TRUE(Package().IsDirty() == S_OK);
    CBstr name;
    EXPECT_EQ(Package().get_ComponentName(name.Receive()), S_OK);
    EXPECT_EQ(name.View(), u"Edited");
}

TEST_F(EditOfAPackage, ThrowsTheCopyAwayAtCancel) {
    const ReactionPackDefinition* const own = Package().Definition();
    editor.inPackage = [](ReactionPackDefinition& copy) {
        copy.Clear();
        return false;
    };
    EXPECT_EQ(Package().Edit(), S_FALSE);
    EXPECT_EQ(Package().Definition(), own);
    EXPECT_EQ(own->reactions.size(), 1U);
    EXPECT_FALSE(Package().IsDirty() == S_OK);
}

TEST_F(EditOfAPackage, HandsTheSimulatorsContextOn) {
    CFakeObject first;
    CFakeObject second;
    Package().put_simulationContext(&first);
    editor.inPackage = [&](ReactionPackDefinition& copy) {
        EXPECT_EQ(copy.simulationContext.Get(), &first);
        Package().put_simulationContext(&second);  // while the dialog is open
        return true;
    };
    EXPECT_EQ(Package().Edit(), S_OK);
    EXPECT_EQ(Package().Definition()->simulationContext.Get(), &second);
    EXPECT_EQ(first.references.Held(), 0);
    Package().Terminate();
    EXPECT_EQ(second.references.Held(), 0);
}

TEST_F(EditOfAPackage, LetsTheSimulatorReadWhileTheDialogIsOpen) {
    editor.inPackage = [this](ReactionPackDefinition& copy) {
        copy.reactions.clear();
        LONG count = 0;
        EXPECT_EQ(Package().GetNumberOfReactions(&count), S_OK);
        EXPECT_EQ(count, 1);
        return true;
    };
    EXPECT_EQ(Package().Edit(), S_OK);
    LONG count = 1;
    EXPECT_EQ(Package().GetNumberOfReactions(&count), S_OK);
    EXPECT_EQ(count, 0);
}

TEST_F(EditOfAPackage, MayOutliveItsLastCount) {
    editor.inPackage = [this](ReactionPackDefinition&) {
        holder.reset();
        return true;
    };
    EXPECT_EQ(Package().Edit(), S_OK);
    EXPECT_EQ(holder, nullptr);
}

TEST_F(EditOfAPackage, MayBeOpenTwice) {
    editor.inPackage = [this](ReactionPackDefinition& copy) {
        const bool isOuter = editor.timesOpened == 1;
        if (isOuter) {
            EXPECT_EQ(Package().Edit(), S_OK);
            EXPECT_EQ(Package().Definition()->name.View(), u"inner");
        }
        copy.name = CBstr::Make(isOuter ? u"outer" : u"inner");
        return true;
    };
    EXPECT_EQ(Package().Edit(), S_OK);
    EXPECT_EQ(Package().Definition()->name.View(), u"outer");  // the last one wins
}

TEST_F(EditOfAPackage, WorksWithoutADefinition) {
    holder = std::make_unique<CPackageHolder>();
    CFakeObject context;
    Package().put_simulationContext(&context);
    editor.inPackage = [&](ReactionPackDefinition& copy) {
        EXPECT_TRUE(copy.name.IsAbsent());
        EXPECT_TRUE(copy.compounds.empty());
        EXPECT_EQ(copy.simulationContext.Get(), &context);
        copy.name = CBstr::Make(u"new");
        return true;
    };
    EXPECT_EQ(Package().Edit(), S_OK);
    EXPECT_EQ(Package().Definition()->name.View(), u"new");
    EXPECT_FALSE(Package().Initialize() == S_OK);
    EXPECT_EQ(Package().Initialize(), ECapeUnknownHR);
    Package().Terminate();
}

class EditOfTheManager : public StoreFixture {
protected:
    EditOfTheManager() {
        void* made = nullptr;
        EXPECT_EQ(CreateReactionPackManager(ICapeUtilities::iid, &made), S_OK);
        manager.Reset(static_cast<ICapeUtilities*>(made));
        files.operations.clear();
    }
    Names NamesInFile() {
        store.LoadTemplates();
        return Loaded();
    }

    CFakeEditor editor;
    CComRef<ICapeUtilities> manager;
};

TEST_F(EditOfTheManager, OpensOnTheTemplatesOfTheFile) {
    Put(userFile, FileOf({u"A", u"B"}), 100);
    Names shown;
    editor.inTemplates = [&](ITemplateSource& templates) {
        for (const auto& definition : templates.Store().templates) shown.emplace_back(definition->name.View());
    };
    EXPECT_EQ(manager->Edit(), S_OK);
    EXPECT_EQ(shown, (Names{u"A", u"B"}));
}

TEST_F(EditOfTheManager, StoresWhatTheDialogLeaves) {
    Put(userFile, FileOf({u"A", u"B"}), 100);
    editor.inTemplates = [](ITemplateSource& templates) { templates.Store().templates.pop_back(); };
    EXPECT_EQ(manager->Edit(), S_OK);
    EXPECT_EQ(NamesInFile(), Names{u"A"});
}

TEST_F(EditOfTheManager, StoresWithoutAChangeToo) {
    Put(userFile, FileOf({u"A"}), 100);
    EXPECT_EQ(manager->Edit(), S_OK);
    EXPECT_EQ(editor.timesOpened, 1);
    const std::string rename = Line("rename", temporaryFile, userFile);
    EXPECT_EQ(std::count(files.operations.begin(), files.operations.end(), rename), 1);
}

TEST_F(EditOfTheManager, WritesAnEmptyFileInPlaceOfADamagedOne) {
    Put(systemFile, FileOf({u"System"}), 50);
    Put(userFile, {1}, 100);
    EXPECT_EQ(manager->Edit(), S_OK);
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(files.entries.at(userFile).bytes, (std::vector<std::uint8_t>{0, 0, 0, 0}));
    EXPECT_EQ(NamesInFile(), Names{});  // the system's file doesn't come back
}

TEST_F(EditOfTheManager, KeepsTheReasonWhyNoDialogWasShown) {
    editor.inTemplates = [](ITemplateSource&) { SetThreadError(12); };
    files.onWritten = [] { SetThreadError(7); };
    EXPECT_EQ(manager->Edit(), S_OK);
    EXPECT_EQ(ThreadError(), 12U);
    EXPECT_TRUE(files.entries.contains(userFile));
}

TEST_F(EditOfTheManager, ListsAfreshForTheDialogs) {
    editor.inTemplates = [this](ITemplateSource& templates) {
        Put(userFile, FileOf({u"Later"}), 100);
        CVariant names;
        EXPECT_EQ(templates.GetListOfReactionsPackages(&names.Get()), S_OK);
        EXPECT_EQ(Show(names.Get()), "['Later']");
        EXPECT_EQ(templates.Store().templates.size(), 1U);
    };
    EXPECT_EQ(manager->Edit(), S_OK);
}

TEST_F(EditOfTheManager, MayOutliveItsLastCount) {
    Put(userFile, FileOf({u"A"}), 100);
    ICapeUtilities* const bare = manager.Get();
    editor.inTemplates = [this](ITemplateSource& templates) {
        manager.Reset();
        EXPECT_EQ(templates.Store().templates.size(), 1U);
    };
    EXPECT_EQ(bare->Edit(), S_OK);
    EXPECT_EQ(NamesInFile(), Names{u"A"});
}

TEST_F(EditOfTheManager, IsDoneWithoutWindowsToo) {
    Put(userFile, FileOf({u"A"}), 100);
    IEditor* const replaced = ReplaceEditor(nullptr);
    EXPECT_EQ(replaced, &editor);
    EXPECT_EQ(manager->Edit(), S_OK);
    ReplaceEditor(replaced);
    EXPECT_EQ(NamesInFile(), Names{u"A"});
}

TEST_F(StoreFixture, IsReadByAManagerForOneAction) {
    Put(userFile, FileOf({u"A", u"B"}), 100);
    const auto source = MakeManagerTemplates();
    EXPECT_TRUE(source->Store().templates.empty());
    CVariant names;
    EXPECT_EQ(source->GetListOfReactionsPackages(&names.Get()), S_OK);
    EXPECT_EQ(Show(names.Get()), "['A', 'B']");
    EXPECT_EQ(source->Store().templates.size(), 2U);
    EXPECT_FALSE(source->Store().simulationContext);
}

}  // namespace
}  // namespace reka::test
