// SPDX-License-Identifier: MIT
// The manager as a simulator calls it: lists, packages by name, new packages, and hosts that call in meanwhile.

#include "manager/CReactionPackManager.h"

#include "capeopen/ComObject.h"
#include "manager/CreateReactionPackManager.h"
#include "manager/StoreFixture.h"
#include "package/CReactionPack.h"
#include "support/AllocationCounter.h"
#include "support/CountedFake.h"
#include "support/FakeEditor.h"
#include "support/Values.h"

namespace reka::test {
namespace {

class Manager : public StoreFixture {
protected:
    Manager() {
        void* made = nullptr;
        EXPECT_EQ(CreateReactionPackManager(ICapeReactionsPackageManager::iid, &made), S_OK);
        manager.Reset(static_cast<ICapeReactionsPackageManager*>(made));
    }

    std::string List() {
        CVariant names;
        EXPECT_EQ(manager->GetListOfReactionsPackages(&names.Get()), S_OK);
        return Show(names.Get());
    }
    CComRef<IDispatch> Resolve(const char16_t* name) {
        CComRef<IDispatch> package;
        const CBstr wanted = name ? CBstr::Make(name) : CBstr();
        EXPECT_EQ(manager->ResolveReactionsPackage(wanted.Get(), package.Receive()), S_OK);
        return package;
    }
    static std::string NameOf(IUnknown* object) {
        CBstr name;
        const HRESULT result = Ask<ICapeIdentification>(object)->get_ComponentName(name.Receive());
        return result == S_OK ? Show(name.Get()) : "code " + std::to_string(result);
    }

    CComRef<ICapeReactionsPackageManager> manager;
};

TEST_F(Manager, MakesTheFolderOfTheShippedFiles) {
    EXPECT_EQ(files.operations, Lines{Line("folder", ComponentFolder() + u"data" + Slash())});
}

TEST_F(Manager, IsMadeEvenIfTheFolderCanNotBe) {
    files.operations.clear();
    files.failAt = 1;
    void* made = nullptr;
    EXPECT_EQ(CreateReactionPackManager(IID_IUnknown, &made), S_OK);
    static_cast<IUnknown*>(made)->Release();
}

TEST_F(Manager, HasAnIdentityOfItsOwn) {
    EXPECT_EQ(NameOf(manager.Get()), "'REKA'");
    const auto identification = Ask<ICapeIdentification>(manager.Get());
    CBstr description;
    EXPECT_EQ(identification->get_ComponentDescription(description.Receive()), S_OK);
    EXPECT_EQ(description.View(), u"Reaction package manager for REKA - CAPE-OPEN Reaction Numerics");
    EXPECT_EQ(identification->put_ComponentName(CBstr::Make(u"mine").Get()), S_OK);
    EXPECT_EQ(NameOf(manager.Get()), "'mine'");
}

TEST_F(Manager, OffersItsInterfacesUnderOneIdentity) {
    const auto identity = Ask<IUnknown>(manager.Get());
    for (const IID& iid :
         {ICapeReactionsPackageManager::iid, ICapeUtilities::iid, ICapeThermoNewPropertyPackage::iid,
          ICapeIdentification::iid, ECapeRoot::iid, ECapeUnknown::iid, ECapeUser::iid, IID_IDispatch}) {
        CComRef<IUnknown> asked;
        void* found = nullptr;
        ASSERT_EQ(manager->QueryInterface(iid, &found), S_OK);
        asked.Reset(static_cast<IUnknown*>(found));
        EXPECT_EQ(Ask<IUnknown>(asked.Get()).Get(), identity.Get());
    }
    void* found = this;
    EXPECT_EQ(manager->QueryInterface(IID_IPersistPropertyBag, &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
}

TEST_F(Manager, ListsItsTemplatesInTheirOrder) {
    Put(userFile, FileOf({u"B", u"A", u""}), 100);
    EXPECT_EQ(List(), "['B', 'A', null]");
    Put(userFile, FileOf({u"C"}), 100);  // by somebody else meanwhile
    EXPECT_EQ(List(), "['C']");
}

TEST_F(Manager, ListsNothingAsNoArray) {
    EXPECT_EQ(List(), "empty");
    Put(userFile, {1}, 100);
    EXPECT_EQ(List(), "empty");
    EXPECT_EQ(messages.shown.size(), 1U);
}

TEST_F(Manager, WantsSomewhereToPutTheList) {
    EXPECT_EQ(manager->GetListOfReactionsPackages(nullptr), E_POINTER);
    EXPECT_EQ(manager->ResolveReactionsPackage(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(Ask<ICapeThermoNewPropertyPackage>(manager.Get())->NewPropertyPackage(nullptr), E_POINTER);
    EXPECT_EQ(Ask<ICapeUtilities>(manager.Get())->get_parameters(nullptr), E_POINTER);
}

TEST_F(Manager, ResolvesByNameWithoutCase) {
    Put(userFile, FileOf({u"Water", u"WATER", u"Other"}), 100);
    const auto package = Resolve(u"wAtEr");
    EXPECT_EQ(NameOf(package.Get()), "'Water'");  // the first of equal names
    EXPECT_EQ(NameOf(Resolve(u"OTHER").Get()), "'Other'");
    EXPECT_EQ(Ask<IPersistStream>(package.Get())->IsDirty(), S_OK);
    EXPECT_EQ(Ask<ICapeUtilities>(package.Get())->Initialize(), S_OK);
}

TEST_F(Manager, TakesAnAbsentNameForAnEmptyOne) {
    Put(userFile, FileOf({u"A", u""}), 100);
    EXPECT_EQ(NameOf(Resolve(nullptr).Get()), "null");
    EXPECT_EQ(NameOf(Resolve(u"").Get()), "null");
}

TEST_F(Manager, GivesAPackageForAnUnknownName) {
    Put(userFile, FileOf({u"A"}), 100);
    const auto package = Resolve(u"B");
    ASSERT_TRUE(package);
    EXPECT_EQ(Ask<IPersistStream>(package.Get())->IsDirty(), S_FALSE);
    EXPECT_EQ(Ask<ICapeUtilities>(package.Get())->Initialize(), ECapeUnknownHR);
    EXPECT_EQ(ErrorOf(package.Get()).description, "Reaction package was not resolved or loaded");
}

TEST_F(Manager, ReleasesThePackageThatItsCallerHeld) {
    Put(userFile, FileOf({u"A"}), 100);
    CFakeObject held;
    held.AddRef();
    IDispatch* package = &held;
    EXPECT_EQ(manager->ResolveReactionsPackage(CBstr::Make(u"A").Get(), &package), S_OK);
    EXPECT_EQ(held.references.Held(), 0);
    ASSERT_NE(package, &held);
    package->Release();
}

TEST_F(Manager, ReleasesMakesAndLoadsInThisOrder) {
    Put(userFile, FileOf({u"A"}), 100);
    const CBstr name = CBstr::Make(u"A");
    CFakeObject held;
    held.AddRef();
    held.onRelease = [&] { files.operations.push_back("release"); };
    IDispatch* package = &held;
    files.operations.clear();
    EXPECT_EQ(manager->ResolveReactionsPackage(name.Get(), &package), S_OK);
    package->Release();
    ASSERT_GT(files.operations.size(), 1U);
    EXPECT_EQ(files.operations[0], "release");
    // A package that can't be made leaves the file alone.
    held.AddRef();
    package = &held;
    files.operations.clear();
    FailAllocation(1);
    const HRESULT result = manager->ResolveReactionsPackage(name.Get(), &package);
    EXPECT_FALSE(IsAllocationToFail());
    FailAllocation(0);
    EXPECT_EQ(result, ECapeUnknownHR);
    EXPECT_EQ(package, nullptr);
    EXPECT_EQ(held.references.Held(), 0);
    EXPECT_EQ(files.operations, Lines{});
    EXPECT_TRUE(ErrorOf(manager.Get()).description.starts_with("Failed to create reaction package: "));
}

TEST_F(Manager, LetsAHostListWhileItsContextIsReleased) {
    Put(userFile, FileOf({u"A", u"B"}), 100);
    CFakeObject context;
    const auto utilities = Ask<ICapeUtilities>(manager.Get());
    utilities->put_simulationContext(&context);
    List();
    std::string listed;
    context.onRelease = [&] { listed = List(); };
    EXPECT_EQ(List(), "['A', 'B']");
    EXPECT_EQ(listed, "['A', 'B']");
    EXPECT_EQ(context.references.Held(), 3);
    listed.clear();
    context.onRelease = [&] { listed = List(); };
    utilities->Terminate();
    EXPECT_EQ(listed, "['A', 'B']");
    EXPECT_EQ(context.references.Held(), 0);  // what the host listed then has no context any more
}

TEST_F(Manager, TakesNothingOnceItEnds) {
    Put(userFile, FileOf({u"A"}), 100);
    CFakeEditor editor;
    CFakeObject context;
    CComRef<ICapeUtilities> utilities = Ask<ICapeUtilities>(manager.Get());
    utilities->put_simulationContext(&context);
    List();
    ICapeUtilities* const ending = utilities.Get();  // what a host calls that has lost count
    ICapeReactionsPackageManager* const templates = manager.Get();
    int releases = 0;
    const std::function<void()> comeBack = [&] {  // a host that comes back as often as it is given something back
        if (++releases == 100) return;
        context.onRelease = comeBack;
        const std::size_t operations = files.operations.size();
        EXPECT_EQ(ending->put_simulationContext(&context), E_UNEXPECTED);
        CVariant names;
        EXPECT_EQ(templates->GetListOfReactionsPackages(&names.Get()), E_UNEXPECTED);
        EXPECT_EQ(Show(names.Get()), "empty");
        CComRef<IDispatch> package;
        EXPECT_EQ(templates->ResolveReactionsPackage(nullptr, package.Receive()), E_UNEXPECTED);
        EXPECT_FALSE(package);
        EXPECT_EQ(ending->Edit(), E_UNEXPECTED);
        EXPECT_EQ(files.operations.size(), operations);
    };
    context.onRelease = comeBack;
    manager.Reset();
    utilities.Reset();
    EXPECT_EQ(releases, 2);  // the context's of the manager, and of the template
    EXPECT_EQ(editor.timesOpened, 0);
    EXPECT_EQ(context.references.Held(), 0);
}

TEST_F(Manager, SharesNothingWithItsPackages) {
    Put(userFile, FileOf({u"A"}), 100);
    CFakeObject context;
    Ask<ICapeUtilities>(manager.Get())->put_simulationContext(&context);
    const auto package = Resolve(u"A");
    Put(userFile, FileOf({u"B"}), 100);
    EXPECT_EQ(List(), "['B']");
    EXPECT_EQ(NameOf(package.Get()), "'A'");
    EXPECT_EQ(context.references.Held(), 2);  // the manager's and that of its template
    manager.Reset();
    EXPECT_EQ(context.references.Held(), 0);
    EXPECT_EQ(NameOf(package.Get()), "'A'");
}

TEST_F(Manager, ResolvesAPackageThatCalculates) {
    auto definition = MakePackage({u"A", u"B"});
    AddKinetic(*definition, u"R", u"2*T");
    store.templates.push_back(std::move(definition));
    store.StoreTemplates();
    const auto package = Resolve(u"Test package");
    LONG count = 0;
    EXPECT_EQ(Ask<ICapeReactionChemistry>(package.Get())->GetNumberOfReactions(&count), S_OK);
    EXPECT_EQ(count, 1);
}

TEST_F(Manager, MakesNewPackages) {
    class CCountedObject : public CFakeObject {
    public:
        ULONG STDMETHODCALLTYPE AddRef() override {
            ++asked;
            return CFakeObject::AddRef();
        }
        int asked = 0;
    };
    CCountedObject context;
    Ask<ICapeUtilities>(manager.Get())->put_simulationContext(&context);
    const int asked = context.asked;
    CComRef<IDispatch> package;
    EXPECT_EQ(Ask<ICapeThermoNewPropertyPackage>(manager.Get())->NewPropertyPackage(package.Receive()), S_OK);
    EXPECT_EQ(NameOf(package.Get()), "'New Reaction Package'");
    LONG count = -1;
    EXPECT_EQ(Ask<ICapeReactionChemistry>(package.Get())->GetNumberOfReactions(&count), S_OK);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(Ask<IPersistStream>(package.Get())->IsDirty(), S_OK);
    EXPECT_EQ(Ask<ICapeUtilities>(package.Get())->Initialize(), S_OK);
    EXPECT_EQ(files.operations.size(), 1U);  // without a look at the templates
    const auto* const made = dynamic_cast<CReactionPack*>(package.Get());
    ASSERT_NE(made, nullptr);
    const ReactionPackDefinition& definition = *made->Definition();
    EXPECT_TRUE(definition.compounds.empty());
    EXPECT_TRUE(definition.description.IsAbsent());
    EXPECT_EQ(definition.pcdFile, ComponentFolder() + u"data" + Slash() + u"Korvex1.pcd");
    EXPECT_EQ(definition.thermoVersion, ThermoVersion::Version10);
    EXPECT_FALSE(definition.simulationContext);
    EXPECT_EQ(context.asked, asked);  // the manager's context goes nowhere
    Ask<ICapeUtilities>(manager.Get())->Terminate();
}

TEST_F(Manager, HasNoParametersAndNoStates) {
    const auto utilities = Ask<ICapeUtilities>(manager.Get());
    CFakeObject object;
    IDispatch* parameters = &object;
    EXPECT_EQ(utilities->get_parameters(&parameters), S_OK);
    EXPECT_EQ(parameters, nullptr);
    EXPECT_EQ(utilities->Initialize(), S_OK);
    EXPECT_EQ(utilities->Terminate(), S_OK);
}

TEST_F(Manager, KeepsTheContextUntilItIsTerminated) {
    const auto utilities = Ask<ICapeUtilities>(manager.Get());
    CFakeObject first;
    CFakeObject second;
    EXPECT_EQ(utilities->put_simulationContext(&first), S_OK);
    EXPECT_EQ(first.references.Held(), 1);
    Put(userFile, FileOf({u"A"}), 100);
    List();
    EXPECT_EQ(first.references.Held(), 2);
    EXPECT_EQ(utilities->put_simulationContext(&second), S_OK);
    EXPECT_EQ(first.references.Held(), 1);  // the template read before keeps what it had
    List();
    EXPECT_EQ(first.references.Held(), 0);
    EXPECT_EQ(second.references.Held(), 2);
    EXPECT_EQ(utilities->Terminate(), S_OK);
    EXPECT_EQ(second.references.Held(), 1);  // the templates stay
    EXPECT_EQ(utilities->put_simulationContext(nullptr), S_OK);
    List();
    EXPECT_EQ(second.references.Held(), 0);
}

}  // namespace
}  // namespace reka::test
