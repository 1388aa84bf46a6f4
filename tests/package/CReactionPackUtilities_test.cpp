// SPDX-License-Identifier: MIT
// The life of a package: identification, context, start and end, the reaction object, and its identity.

#include <gtest/gtest.h>

#include <optional>
#include <utility>

#include "capeopen/ComObject.h"
#include "capeopen/ErrorTexts.h"
#include "package/CreateReactionPack.h"
#include "support/Builders.h"
#include "support/FakeBag.h"
#include "support/FakeMaterial.h"
#include "support/FakeReactionObject.h"
#include "support/FakeStream.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

const ReportedError nothingReported = {"<null>", "<null>", "<null>", "<null>"};

TEST(ReactionPack, StartsWithoutADefinition) {
    const CPackageHolder package;
    EXPECT_EQ(package->Definition(), nullptr);
    EXPECT_FALSE(package->IsDirty() == S_OK);
    EXPECT_FALSE(package->Initialize() == S_OK);
}

TEST(ReactionPack, TakesADeepCopyThatAsksToBeSaved) {
    const auto definition = MakePackage({u"Ar"});
    const CPackageHolder package(*definition);
    EXPECT_NE(package->Definition(), definition.get());
    EXPECT_TRUE(package->IsDirty() == S_OK);
    EXPECT_TRUE(package->Initialize() == S_OK);
    package->AssignDefinition(nullptr);
    EXPECT_EQ(package->Definition(), nullptr);
    EXPECT_TRUE(package->Initialize() == S_OK);
}

TEST(ReactionPackIdentification, MarksThePackageChangedWhenItIsPut) {
    const auto definition = MakePackage({});
    const CPackageHolder package(*definition);
    CFakeBag bag;
    ASSERT_EQ(package->Save(&bag, 1, 0), S_OK);
    ASSERT_FALSE(package->IsDirty() == S_OK);
    package->put_ComponentName(nullptr);
    EXPECT_TRUE(package->IsDirty() == S_OK);
    ASSERT_EQ(package->Save(&bag, 1, 0), S_OK);
    ASSERT_FALSE(package->IsDirty() == S_OK);
    package->put_ComponentDescription(nullptr);
    EXPECT_TRUE(package->IsDirty() == S_OK);
}

TEST(ReactionPackIdentification, KeepsTheMarkOfAChangeMadeWhileItIsSaved) {
    const auto definition = MakePackage({});
    const CPackageHolder package(*definition);
    CFakeBag bag;
    bag.log.onCall = [&](const std::string&) { package->put_ComponentName(nullptr); };
    ASSERT_EQ(package->Save(&bag, 1, 0), S_OK);
    EXPECT_TRUE(package->IsDirty() == S_OK);
}

TEST(ReactionPackIdentification, IsThatOfTheDefinition) {
    const auto definition = MakePackage({});
    const CPackageHolder package(*definition);
    CBstr text;
    EXPECT_EQ(package->get_ComponentName(text.Receive()), S_OK);
    EXPECT_EQ(text.View(), u"Test package");
    EXPECT_EQ(package->get_ComponentDescription(text.Receive()), S_OK);
    EXPECT_TRUE(text.IsAbsent());
    EXPECT_EQ(package->put_ComponentName(CBstr::Make(u"other").Get()), S_OK);
    EXPECT_EQ(package->put_ComponentDescription(CBstr::Make(u"").Get()), S_OK);
    EXPECT_EQ(package->get_ComponentName(text.Receive()), S_OK);
    EXPECT_EQ(text.View(), u"other");
    EXPECT_EQ(package->get_ComponentDescription(text.Receive()), S_OK);
    EXPECT_FALSE(text.IsAbsent());
    EXPECT_EQ(package->put_ComponentName(nullptr), S_OK);
    EXPECT_EQ(package->get_ComponentName(text.Receive()), S_OK);
    EXPECT_TRUE(text.IsAbsent());
}

TEST(ReactionPackIdentification, ChecksTheOutputBeforeTheDefinition) {
    const CPackageHolder package;
    CBstr text;
    EXPECT_EQ(package->get_ComponentName(nullptr), E_POINTER);
    EXPECT_EQ(package->get_ComponentDescription(nullptr), E_POINTER);
    EXPECT_EQ(package->get_ComponentName(text.Receive()), E_UNEXPECTED);
    EXPECT_EQ(package->get_ComponentDescription(text.Receive()), E_UNEXPECTED);
    EXPECT_EQ(package->put_ComponentName(nullptr), E_UNEXPECTED);
    EXPECT_EQ(package->put_ComponentDescription(nullptr), E_UNEXPECTED);
}

TEST(ReactionPackUtilities, HasNoParameters) {
    const auto definition = MakePackage({});
    const CPackageHolder package(*definition);
    CFakeObject object;
    IDispatch* parameters = &object;
    EXPECT_EQ(package->get_parameters(&parameters), S_OK);
    EXPECT_EQ(parameters, nullptr);
    EXPECT_EQ(package->get_parameters(nullptr), E_POINTER);
    const CPackageHolder empty;
    EXPECT_EQ(empty->get_parameters(nullptr), E_UNEXPECTED);
}

TEST(ReactionPackUtilities, RefusesToInitializeWithoutADefinitionOfItsOwn) {
    const CPackageHolder package;
    LONG count = -1;
    EXPECT_EQ(package->GetNumberOfReactions(&count), E_UNEXPECTED);
    EXPECT_EQ(package->Initialize(), ECapeUnknownHR);
    EXPECT_EQ(ErrorOf(package.Unknown()),
              (ReportedError{"Reaction package was not resolved or loaded",
                             "Reaction package was not resolved or loaded", "Initialize", "ICapeUtilitites"}));
    EXPECT_EQ(package->GetNumberOfReactions(&count), S_OK);  // the empty definition stays
    EXPECT_EQ(count, 0);
    EXPECT_EQ(package->Initialize(), ECapeUnknownHR);
    EXPECT_FALSE(package->IsDirty() == S_OK);
}

TEST(ReactionPackUtilities, InitializesAsOftenAsOneLikes) {
    const auto definition = MakePackage({u"Ar"});
    const CPackageHolder package(*definition);
    const ReactionPackDefinition* const before = package->Definition();
    EXPECT_EQ(package->Initialize(), S_OK);
    EXPECT_EQ(package->Initialize(), S_OK);
    EXPECT_EQ(package->Definition(), before);
    EXPECT_EQ(ErrorOf(package.Unknown()), nothingReported);
}

TEST(ReactionPackUtilities, GivesTheContextToADefinitionMadeLater) {
    CFakeObject context;
    {
        const CPackageHolder package;
        EXPECT_EQ(package->put_simulationContext(&context), S_OK);
        EXPECT_EQ(context.references.Held(), 1);
        package->Initialize();
        EXPECT_EQ(package->Definition()->simulationContext.Get(), &context);
        EXPECT_EQ(context.references.Held(), 2);
        EXPECT_EQ(package->put_simulationContext(nullptr), S_OK);
        EXPECT_EQ(context.references.Held(), 0);
        EXPECT_FALSE(package->Definition()->simulationContext);
        CFakeObject other;
        package->put_simulationContext(&context);
        package->put_simulationContext(&other);
        EXPECT_EQ(context.references.Held(), 0);
        EXPECT_EQ(other.references.Held(), 2);
        package->put_simulationContext(&context);
        EXPECT_EQ(other.references.Held(), 0);
    }
    EXPECT_EQ(context.references.Held(), 0);
}

TEST(ReactionPackUtilities, TerminateDropsAllOutsideReferences) {
    CFakeObject context;
    CFakeMaterial material({u"Ar"});
    CFakeReactionObject results;
    const auto definition = MakePackage({u"Ar"});
    const CPackageHolder package(*definition);
    IDispatch* resultsPointer = results.Dispatch();
    package->put_simulationContext(&context);
    ASSERT_EQ(package->SetMaterial(material.Dispatch()), S_OK);
    ASSERT_EQ(package->SetReactionObject(&resultsPointer), S_OK);
    EXPECT_EQ(package->Terminate(), S_OK);
    EXPECT_EQ(context.references.Held(), 0);
    EXPECT_EQ(material.references.Held(), 0);
    EXPECT_EQ(results.references.Held(), 0);
    EXPECT_NE(package->Definition(), nullptr);
    EXPECT_TRUE(package->Initialize() == S_OK);
    EXPECT_TRUE(package->IsDirty() == S_OK);
    EXPECT_EQ(package->CalcReactionProp({}, nullptr, {}, nullptr), ECapeUnknownHR);
    EXPECT_EQ(ErrorOf(package.Unknown()).name, "No reaction object");
    const CPackageHolder empty;
    EXPECT_EQ(empty->Terminate(), S_OK);
}

TEST(ReactionPackUtilities, GivesEverythingBackWhenItGoes) {
    CFakeObject context;
    CFakeMaterial material({u"Ar"});
    CFakeReactionObject results;
    {
        const auto definition = MakePackage({u"Ar"});
        const CPackageHolder package(*definition);
        IDispatch* resultsPointer = results.Dispatch();
        package->put_simulationContext(&context);
        package->SetMaterial(material.Dispatch());
        package->SetReactionObject(&resultsPointer);
        EXPECT_EQ(material.references.Held(), 1);
        EXPECT_EQ(results.references.Held(), 1);
    }
    EXPECT_EQ(context.references.Held() + material.references.Held() + results.references.Held(), 0);
}

/// A simulator whose objects tell in which order they are given back.
struct ReturnOrder {
    ReturnOrder() {
        IDispatch* pointer = results.Dispatch();
        (*package)->put_simulationContext(&context);
        EXPECT_EQ((*package)->SetMaterial(material.Dispatch()), S_OK);
        EXPECT_EQ((*package)->SetReactionObject(&pointer), S_OK);
        context.onReturn = [this] { returned.emplace_back("context"); };
        material.onReturn = [this] { returned.emplace_back("material"); };
        results.onReturn = [this] { returned.emplace_back("reaction object"); };
    }

    std::vector<std::string> returned;
    CReturning<CFakeObject> context;
    CReturning<CFakeMaterial> material{u"Ar"};
    CReturning<CFakeReactionObject> results;
    std::optional<CPackageHolder> package{std::in_place, *MakePackage({u"Ar"})};
};

TEST(ReactionPackUtilities, TerminateGivesBackTheContextFirst) {
    ReturnOrder simulator;
    EXPECT_EQ((*simulator.package)->Terminate(), S_OK);
    // The context once more for the definition, which has a count of its own.
    EXPECT_EQ(simulator.returned, (std::vector<std::string>{"context", "material", "reaction object", "context"}));
}

TEST(ReactionPackUtilities, GivesBackTheContextLastWhenItGoes) {
    ReturnOrder simulator;
    simulator.package.reset();
    EXPECT_EQ(simulator.returned, (std::vector<std::string>{"reaction object", "material", "context", "context"}));
}

/// A context that counts who asks it for anything.
class CAskedContext : public CFakeObject {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        ++calls;
        return CFakeObject::QueryInterface(iid, object);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        ++calls;
        return CFakeObject::GetTypeInfoCount(count);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
        ++calls;
        return CFakeObject::GetTypeInfo(index, locale, info);
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* members) override {
        ++calls;
        return CFakeObject::GetIDsOfNames(iid, names, count, locale, members);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID iid, LCID locale, WORD flags, DISPPARAMS* arguments,
                                     VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) override {
        ++calls;
        return CFakeObject::Invoke(member, iid, locale, flags, arguments, result, exception, wrongArgument);
    }
    int calls = 0;
};

TEST(ReactionPackUtilities, NeverAsksTheContextForAnything) {
    CAskedContext context;
    CFakeMaterial material({u"Ar"});
    CFakeReactionObject results;
    CFakeBag bag;
    CFakeStream stream;
    {
        auto definition = MakePackage({u"Ar"});
        AddKinetic(*definition, u"r", u"1");
        const CPackageHolder package(*definition);
        IDispatch* pointer = results.Dispatch();
        const CVariant props = Strings({u"ReactionRate"});
        const CVariant all;
        CVariant ids;
        EXPECT_EQ(package->put_simulationContext(&context), S_OK);
        EXPECT_EQ(package->Initialize(), S_OK);
        EXPECT_EQ(package->GetReactionsIds(&ids.Get()), S_OK);
        EXPECT_EQ(package->SetReactionObject(&pointer), S_OK);
        EXPECT_EQ(package->SetMaterial(material.Dispatch()), S_OK);
        EXPECT_EQ(package->CalcReactionProp(props.Get(), CBstr::Make(u"Liquid").Get(), all.Get(), nullptr), S_OK);
        EXPECT_EQ(package->Save(&stream, 1), S_OK);
        EXPECT_EQ(package->Load(&stream), S_OK);
        EXPECT_EQ(package->Save(&bag, 1, 1), S_OK);
        EXPECT_EQ(package->Load(&bag, nullptr), S_OK);
        EXPECT_EQ(package->Edit(), S_FALSE);
        EXPECT_EQ(context.references.Held(), 2);
        EXPECT_EQ(package->Terminate(), S_OK);
    }
    EXPECT_EQ(context.calls, 0);
    EXPECT_EQ(context.references.Held(), 0);
}

/// An object that calls the package back when its last count is given back.
class CFarewell : public CFakeReactionObject {
public:
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = CFakeReactionObject::Release();
        if (left == 0 && package) {
            IUnknown* const called = std::exchange(package, nullptr);
            called->AddRef();
            if (const auto utilities = Ask<ICapeUtilities>(called)) utilities->put_simulationContext(nullptr);
            ++calls;
            called->Release();
        }
        return left;
    }
    IUnknown* package = nullptr;
    int calls = 0;
};

TEST(ReactionPackUtilities, SurvivesAnObjectThatCallsWhenItIsGivenBack) {
    CFarewell results;
    {
        const auto definition = MakePackage({u"Ar"});
        const CPackageHolder package(*definition);
        IDispatch* pointer = results.Dispatch();
        ASSERT_EQ(package->SetReactionObject(&pointer), S_OK);
        results.package = package.Unknown();
    }
    EXPECT_EQ(results.calls, 1);
    EXPECT_EQ(results.references.Held(), 0);
}

/// A package whose only count is `held`, which a callback gives back in the middle of a call.
class LastCount : public testing::Test {
protected:
    LastCount() : definition(MakePackage({u"Ar"})) {
        const CPackageHolder package(*definition);
        held = CComRef<IUnknown>(package.Unknown());
        bare = &*package;
    }
    void GiveBack() { held.Reset(); }

    std::unique_ptr<ReactionPackDefinition> definition;
    CComRef<IUnknown> held;
    CReactionPack* bare = nullptr;
};

TEST_F(LastCount, MayGoWhileAMaterialIsBound) {
    CFakeMaterial material({u"Ar"});
    material.log.onCall = [this](const std::string&) { GiveBack(); };
    EXPECT_EQ(bare->SetMaterial(material.Dispatch()), S_OK);
    EXPECT_EQ(material.references.Held(), 0);
}

TEST_F(LastCount, MayGoWhileThePackageIsSavedOrLoaded) {
    CFakeBag bag;
    bag.log.onCall = [this](const std::string&) { GiveBack(); };
    EXPECT_EQ(bare->Save(&bag, 1, 0), S_OK);
    CPackageHolder* other = new CPackageHolder();
    CReactionPack& loaded = **other;
    bag.log.onCall = [&](const std::string&) { delete std::exchange(other, nullptr); };
    EXPECT_EQ(loaded.Load(&bag, nullptr), S_OK);
    EXPECT_EQ(other, nullptr);
}

TEST(ReactionPackUtilities, EditWithoutADialogChangesNothing) {
    const CPackageHolder package;
    EXPECT_EQ(package->Edit(), S_FALSE);
    EXPECT_EQ(package->Definition(), nullptr);
    EXPECT_FALSE(package->IsDirty() == S_OK);
}

TEST(SetReactionObject, NeedsADefinitionAndAReference) {
    CFakeReactionObject results;
    IDispatch* pointer = results.Dispatch();
    const CPackageHolder empty;
    EXPECT_EQ(empty->SetReactionObject(&pointer), E_UNEXPECTED);
    EXPECT_EQ(empty->SetReactionObject(nullptr), E_UNEXPECTED);
    const auto definition = MakePackage({});
    const CPackageHolder package(*definition);
    EXPECT_EQ(package->SetReactionObject(nullptr), E_POINTER);
    EXPECT_EQ(ErrorOf(package.Unknown()), nothingReported);
}

TEST(SetReactionObject, ReplacesAndClearsTheObject) {
    CFakeReactionObject first;
    CFakeReactionObject second;
    const auto definition = MakePackage({});
    const CPackageHolder package(*definition);
    IDispatch* pointer = first.Dispatch();
    EXPECT_EQ(package->SetReactionObject(&pointer), S_OK);
    EXPECT_EQ(first.references.Held(), 1);
    pointer = second.Dispatch();
    EXPECT_EQ(package->SetReactionObject(&pointer), S_OK);
    EXPECT_EQ(first.references.Held(), 0);
    EXPECT_EQ(second.references.Held(), 1);
    EXPECT_EQ(pointer, second.Dispatch());  // the caller's pointer isn't written
    pointer = nullptr;
    EXPECT_EQ(package->SetReactionObject(&pointer), S_OK);
    EXPECT_EQ(second.references.Held(), 0);
}

TEST(SetReactionObject, RefusesAnObjectOfAnotherKind) {
    CFakeReactionObject results;
    CFakeObject other;
    const auto definition = MakePackage({});
    const CPackageHolder package(*definition);
    IDispatch* pointer = results.Dispatch();
    package->SetReactionObject(&pointer);
    pointer = &other;
    EXPECT_EQ(package->SetReactionObject(&pointer), ECapeUnknownHR);
    const ReportedError error = ErrorOf(package.Unknown());
    EXPECT_EQ(error.name,
              "Failed to obtain ICapeReactionProperties pointer: " + Utf8FromUtf16(GetSystemErrorText(E_NOINTERFACE)));
    EXPECT_EQ(error.description, error.name);
    EXPECT_EQ(error.scope, "SetReactionObject");
    EXPECT_EQ(error.interfaceName, "ICapeKineticReactionContext");
    EXPECT_EQ(results.references.Held(), 0);
    EXPECT_EQ(other.references.Held(), 0);
    package->CalcReactionProp({}, nullptr, {}, nullptr);
    EXPECT_EQ(ErrorOf(package.Unknown()).name, "No reaction object");
}

// By the rules of the platform a failed question has no answer; not every host knows them.
TEST(SetReactionObject, UsesNothingThatAFailedQuestionLeaves) {
    CRefusing<CFakeReactionObject> results;
    results.refused = ICapeReactionProperties::iid;
    const auto definition = MakePackage({});
    const CPackageHolder package(*definition);
    IDispatch* pointer = results.Dispatch();
    EXPECT_EQ(package->SetReactionObject(&pointer), ECapeUnknownHR);
    EXPECT_EQ(results.references.Held(), 0);
    EXPECT_EQ(package->CalcReactionProp({}, nullptr, {}, nullptr), ECapeUnknownHR);
    EXPECT_EQ(ErrorOf(package.Unknown()).name, "No reaction object");
}

const IID offeredInterfaces[] = {IID_IUnknown,
                                 IID_IDispatch,
                                 ECapeRoot::iid,
                                 ECapeUser::iid,
                                 ECapeUnknown::iid,
                                 ICapeIdentification::iid,
                                 ICapeUtilities::iid,
                                 ICapeKineticReactionContext::iid,
                                 ICapeReactionChemistry::iid,
                                 ICapeReactionsRoutine::iid,
                                 ICapeThermoMaterialContext::iid,
                                 ICapeThermoContext10::iid,
                                 IID_IPersist,
                                 IID_IPersistPropertyBag};

TEST(ReactionPackIdentity, OffersEveryInterfaceFromEveryOther) {
    IUnknown* created = nullptr;
    ASSERT_EQ(CreateReactionPack(IID_IUnknown, reinterpret_cast<void**>(&created)), S_OK);
    CComRef<IUnknown> package;
    package.Reset(created);
    for (const IID& from : offeredInterfaces) {
        CComRef<IUnknown> source;
        ASSERT_EQ(package->QueryInterface(from, reinterpret_cast<void**>(source.Receive())), S_OK);
        for (const IID& to : offeredInterfaces) {
            CComRef<IUnknown> target;
            ASSERT_EQ(source->QueryInterface(to, reinterpret_cast<void**>(target.Receive())), S_OK);
            CComRef<IUnknown> identity;
            ASSERT_EQ(target->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(identity.Receive())), S_OK);
            EXPECT_EQ(identity.Get(), package.Get());
        }
    }
    void* object = &package;
    EXPECT_EQ(package->QueryInterface(ICapeThermoMaterialObject::iid, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(package->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST(ReactionPackIdentity, IsThatOfTheOuterObjectWhenAggregated) {
    CFakeObject outer;
    IUnknown* inner = nullptr;
    ASSERT_EQ(CreateObject<CReactionPack>(&outer, IID_IUnknown, reinterpret_cast<void**>(&inner)), S_OK);
    EXPECT_EQ(outer.references.Held(), 0);
    ICapeUtilities* utilities = nullptr;
    ASSERT_EQ(inner->QueryInterface(ICapeUtilities::iid, reinterpret_cast<void**>(&utilities)), S_OK);
    EXPECT_EQ(outer.references.Held(), 1);
    IUnknown* identity = nullptr;
    ASSERT_EQ(utilities->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&identity)), S_OK);
    EXPECT_EQ(identity, static_cast<IUnknown*>(&outer));
    identity->Release();
    EXPECT_EQ(utilities->Initialize(), ECapeUnknownHR);
    utilities->Release();
    EXPECT_EQ(outer.references.Held(), 0);
    EXPECT_EQ(inner->Release(), 0U);
}

TEST(ReactionPackIdentity, IsAggregatedThroughIUnknownAlone) {
    CFakeObject outer;
    void* object = &outer;
    EXPECT_EQ(CreateObject<CReactionPack>(&outer, IID_IDispatch, &object), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(CreateReactionPack(ICapeThermoMaterial::iid, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(CreateReactionPack(IID_IUnknown, nullptr), E_POINTER);
}

}  // namespace
}  // namespace reka::test
