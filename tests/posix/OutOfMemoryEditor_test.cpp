// SPDX-License-Identifier: MIT
// Allocations fail in turn in the dialogs that change a definition or the templates. What a user edits further is
// whole.

#include <gtest/gtest.h>

#include <new>

#include "editor/AddCompounds.h"
#include "editor/CompoundsOfMaterial.h"
#include "editor/EditShell.h"
#include "editor/ExpressionEditor.h"
#include "editor/RateWizard.h"
#include "editor/TemplateFixture.h"
#include "editor/TemplateManager.h"
#include "editor/TemplateNames.h"
#include "package/CReactionPack.h"
#include "posix/AllocationFailures.h"
#include "support/FakeEditor.h"
#include "support/PcdBytes.h"

namespace reka::test {
namespace {

/// The result of a dialog's action, which may run out of memory.
template <class Action>
HRESULT Attempt(Action&& action) {
    try {
        return action() ? S_OK : S_FALSE;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}

/// Templates in memory alone: reading them is not what is tested here.
class CStillTemplates : public ITemplateSource {
public:
    HRESULT GetListOfReactionsPackages(VARIANT* names) override { return CopyVariant(names, list.Get()); }
    TemplateStore& Store() override { return store; }
    CVariant list;
    TemplateStore store;
};

class OutOfMemoryEditor : public TemplateFixture {
protected:
    static std::unique_ptr<ReactionPackDefinition> MakeTemplate() {
        auto made = MakePackage({u"A1", u"B1"});
        made->name = CBstr::Make(u"Template");
        made->compounds[0]->molecularWeight = made->compounds[1]->molecularWeight = 10.0;
        AddKinetic(*made, u"r", u"T*C(A1)").stoichiometry = {-1.0, 1.0};
        return made;
    }
    static void ExpectWhole(const ReactionPackDefinition& definition) {
        for (const auto& compound : definition.compounds) EXPECT_NE(compound, nullptr);
        for (const auto& reaction : definition.reactions) {
            ASSERT_NE(reaction, nullptr);
            EXPECT_EQ(reaction->stoichiometry.size(), definition.compounds.size());
        }
    }
};

TEST_F(OutOfMemoryEditor, LoadsATemplateWholeOrNotAtAll) {
    CStillTemplates templates;
    templates.store.templates.push_back(MakeTemplate());
    ui.inTemplateNames = [](ITemplateSource&, std::u16string& name) {
        name = u"Template";
        return true;
    };
    std::unique_ptr<ReactionPackDefinition> definition;
    std::unique_ptr<CEditShell> shell;
    const GeneralPageFields general = {u"Mine", u"", 0};
    ForEachFailure(
        [&] {
            definition = MakePackage({u"X"});
            AddKinetic(*definition, u"mine", u"").stoichiometry = {2.0};
            shell = std::make_unique<CEditShell>(*definition, templates, ui);
        },
        [&] { return Attempt([&] { return shell->Load(general); }); },
        [&](HRESULT result, bool isReached) {
            ExpectWhole(*definition);
            // A copy of a string that can't be made may be left out, and then nothing has failed.
            EXPECT_TRUE(isReached || result == S_OK);
            EXPECT_EQ(definition->compounds.size(), result == S_OK ? 2U : 1U);
            EXPECT_EQ(definition->reactions[0]->id.View(), result == S_OK ? u"r" : u"mine");
        });
}

TEST_F(OutOfMemoryEditor, AddsAllCompoundsOfAFileOrNone) {
    PcdBytes bytes;
    for (const char* const name : {"Water", "Methane", "Argon"}) AddPcdRecord(bytes, name, "X", 1.0F, "");
    files.entries[u"/pure.pcd"] = {bytes, 1};
    std::unique_ptr<ReactionPackDefinition> definition;
    std::unique_ptr<CAddCompounds> dialog;
    const std::vector<std::size_t> three = {0, 1, 2};
    const auto accept = [&] { return Attempt([&] { return dialog->Accept(three); }); };
    bool isReached = true;
    std::size_t n = 1;
    for (; isReached; ++n) {
        definition = MakeTemplate();
        definition->pcdFile = u"/pure.pcd";
        dialog = std::make_unique<CAddCompounds>(*definition, ui);
        ASSERT_EQ(dialog->LoadFile(), u"");
        FailAllocation(n);
        const HRESULT result = accept();
        isReached = !IsAllocationToFail();
        FailAllocation(0);
        EXPECT_EQ(result, isReached ? E_OUTOFMEMORY : S_OK);
        EXPECT_EQ(definition->compounds.size(), isReached ? 2U : 5U);
        ExpectWhole(*definition);
        if (isReached) {
            EXPECT_EQ(accept(), S_OK);  // OK once more
        }
        ASSERT_EQ(definition->compounds.size(), 5U);
        EXPECT_EQ(definition->compounds[2]->id.View(), u"Water");
        EXPECT_EQ(definition->compounds[4]->id.View(), u"Argon");
        ExpectWhole(*definition);
    }
    EXPECT_GT(n, 2U);
}

TEST_F(OutOfMemoryEditor, AddsAllCompoundsOfAMaterialOrNone) {
    MaterialCompounds offered;
    offered.names = offered.ids = offered.formulas = offered.casNumbers = {u"Water", u"Methane", u"Argon"};
    offered.molecularWeights = offered.charges = {1.0, 2.0, 3.0};
    std::unique_ptr<ReactionPackDefinition> definition;
    const std::vector<std::size_t> three = {0, 1, 2};
    ForEachFailure([&] { definition = MakeTemplate(); },
                   [&] {
                       CCompoundsOfMaterial dialog(offered, *definition);
                       return Attempt([&] { return dialog.Accept(three, ui); });
                   },
                   [&](HRESULT result, bool isReached) {
                       EXPECT_EQ(result, isReached ? E_OUTOFMEMORY : S_OK);
                       EXPECT_EQ(definition->compounds.size(), isReached ? 2U : 5U);
                       ExpectWhole(*definition);
                   });
}

TEST_F(OutOfMemoryEditor, TakesAnInhibitionConstantWithItsRateOrNotAtAll) {
    const auto definition = MakeTemplate();
    bool isReached = true;
    std::size_t n = 1;
    for (; isReached; ++n) {
        CRateWizard wizard(*definition->reactions[0], *definition);
        wizard.fields.forward = {true, u"123456", false, u""};
        const std::u16string before = wizard.UpdatePreview();
        FailAllocation(n);
        const HRESULT result = Attempt([&] { return wizard.EditInhibitionConstant(0, u"0.123456+1"); });
        isReached = !IsAllocationToFail();
        FailAllocation(0);
        EXPECT_EQ(result, isReached ? E_OUTOFMEMORY : S_OK);
        EXPECT_EQ(wizard.RateText() == before, isReached);
        EXPECT_EQ(wizard.UpdatePreview() == before, isReached);  // the constant is as it was
    }
    EXPECT_GT(n, 3U);
}

TEST_F(OutOfMemoryEditor, KeepsTheListOfTemplatesWhole) {
    TemplateStore stored;
    stored.templates.push_back(MakeTemplate());
    stored.StoreTemplates();
    CManagerTemplates source;
    std::unique_ptr<CTemplateManager> dialog;
    ui.inTemplate = [](ReactionPackDefinition&, ITemplateSource&) { return true; };
    ui.messageAnswer = MessageAnswer::Yes;
    const auto entries = files.entries;
    const auto expectWhole = [&](HRESULT result, bool isReached) {
        EXPECT_TRUE(isReached || result == S_OK);
        EXPECT_EQ(source.Store().templateUnderEdit, nullptr);
        for (const auto& definition : source.Store().templates) {
            ASSERT_NE(definition, nullptr);
            ExpectWhole(*definition);
        }
    };
    const auto open = [&] {
        files.entries = entries;
        messages.shown.clear();
        source.Store().LoadTemplates();
        dialog = std::make_unique<CTemplateManager>(source, ui);
        dialog->Select(0);
    };
    for (bool (CTemplateManager::*const action)() : {&CTemplateManager::Create, &CTemplateManager::Edit}) {
        ForEachFailure(
            open, [&] { return Attempt([&] { return (dialog.get()->*action)(); }); }, expectWhole);
    }
}

TEST_F(OutOfMemoryEditor, EditsAPackageOrLeavesItAsItWas) {
    CFakeEditor editor;
    editor.inPackage = [](ReactionPackDefinition& copy) {
        copy.thermoVersion = ThermoVersion::Version11;
        return true;
    };
    const auto source = MakeTemplate();
    std::unique_ptr<CPackageHolder> package;
    const ReactionPackDefinition* own = nullptr;
    ForEachFailure(
        [&] {
            package = std::make_unique<CPackageHolder>(*source);
            own = (*package)->Definition();
        },
        [&] { return (*package)->Edit(); },
        [&](HRESULT result, bool isReached) {
            EXPECT_TRUE(result == S_OK || (isReached && result == ECapeUnknownHR));
            const ReactionPackDefinition& left = *(*package)->Definition();
            ExpectWhole(left);
            EXPECT_EQ(left.thermoVersion, result == S_OK ? ThermoVersion::Version11 : ThermoVersion::Version10);
            EXPECT_EQ(&left == own, result != S_OK);
        });
}

TEST_F(OutOfMemoryEditor, ListsAllNamesOrNone) {
    CStillTemplates templates;
    templates.list = Strings({u"a name that is too long for a small string", u"another name that is too long for it"});
    std::unique_ptr<CTemplateNames> dialog;
    for (std::size_t n = 1;; ++n) {
        CTemplateNames names(TemplateNamePurpose::Load, u"", ui);
        FailAllocation(n);
        const HRESULT result = Attempt([&] {
            names.Fill(templates);
            return true;
        });
        const bool isReached = !IsAllocationToFail();
        FailAllocation(0);
        EXPECT_EQ(result, isReached ? E_OUTOFMEMORY : S_OK);
        if (isReached) continue;
        EXPECT_EQ(names.Names().size(), 2U);
        EXPECT_GT(n, 2U);
        break;
    }
}

TEST_F(OutOfMemoryEditor, ColoursTheTextAgainAfterAFailure) {
    class CStillField : public IExpressionField {
    public:
        std::u16string Text() override { return u"T+C(A1)*(2+unknown)"; }
        TextRange Selection() override { return {0, 0}; }
        void Show(const ExpressionRun&) override { ++runs; }
        void Select(TextRange) override {}
        void ShowStatus(const std::u16string&, const std::u16string&) override {}
        int runs = 0;
    };
    const auto definition = MakeTemplate();
    CStillField field;
    CExpressionEditor editor(*definition, field);
    for (std::size_t n = 1; n < 200; ++n) {
        FailAllocation(n);
        const HRESULT result = Attempt([&] {
            editor.TextChanged();
            return true;
        });
        const bool isReached = !IsAllocationToFail();
        FailAllocation(0);
        field.runs = 0;
        editor.SelectionChanged();
        EXPECT_GT(field.runs, 0);  // events count
        if (isReached) continue;
        EXPECT_EQ(result, S_OK);
        EXPECT_GT(n, 3U);
        return;
    }
    FAIL() << "never succeeds";
}

}  // namespace
}  // namespace reka::test
