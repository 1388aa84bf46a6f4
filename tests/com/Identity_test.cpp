// SPDX-License-Identifier: MIT
// Identity and aggregation: whichever interface of an object a client has, it leads to the same one, and to the outer
// object's where there is one.

#include <gtest/gtest.h>

#include "HostObjects.h"
#include "LateCalls.h"
#include "LoadedModule.h"

namespace host {
namespace {

const std::vector<IID>& ManagerInterfaces() {
    static const std::vector<IID> list = {IID_IUnknown,
                                          IID_IDispatch,
                                          reka::ICapeReactionsPackageManager::iid,
                                          reka::ICapeUtilities::iid,
                                          reka::ICapeThermoNewPropertyPackage::iid,
                                          reka::ICapeIdentification::iid,
                                          reka::ECapeRoot::iid,
                                          reka::ECapeUnknown::iid,
                                          reka::ECapeUser::iid};
    return list;
}

const std::vector<IID>& PackageInterfaces() {
    static const std::vector<IID> list = {IID_IUnknown,
                                          IID_IDispatch,
                                          IID_IPersist,
                                          IID_IPersistStream,
                                          IID_IPersistPropertyBag,
                                          reka::ICapeReactionsRoutine::iid,
                                          reka::ICapeReactionChemistry::iid,
                                          reka::ICapeKineticReactionContext::iid,
                                          reka::ICapeThermoMaterialContext::iid,
                                          reka::ICapeThermoContext10::iid,
                                          reka::ICapeUtilities::iid,
                                          reka::ICapeIdentification::iid,
                                          reka::ECapeRoot::iid,
                                          reka::ECapeUnknown::iid,
                                          reka::ECapeUser::iid};
    return list;
}

CRef<IUnknown> Query(IUnknown* object, REFIID iid) {
    void* found = nullptr;
    return FAILED(object->QueryInterface(iid, &found)) ? CRef<IUnknown>()
                                                       : CRef<IUnknown>(static_cast<IUnknown*>(found));
}

/// Each interface leads to each other one, to the same `identity` and to the same `IDispatch`.
void ExpectOneIdentity(IUnknown* object, const std::vector<IID>& interfaces, const IUnknown* identity) {
    const CRef<IUnknown> dispatch = Query(object, IID_IDispatch);
    for (const IID& from : interfaces) {
        const CRef<IUnknown> start = Query(object, from);
        ASSERT_TRUE(start);
        for (const IID& to : interfaces) {
            const CRef<IUnknown> end = Query(start.Get(), to);
            ASSERT_TRUE(end);
            EXPECT_EQ(Query(end.Get(), IID_IUnknown).Get(), identity);
            EXPECT_EQ(Query(end.Get(), IID_IDispatch).Get(), dispatch.Get());
        }
        void* missing = start.Get();
        EXPECT_EQ(start->QueryInterface(reka::ICapeThermoMaterial::iid, &missing), E_NOINTERFACE);
        EXPECT_EQ(missing, nullptr);
        EXPECT_EQ(start->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
    }
}

TEST(Identity, OfTheManagerIsOne) {
    const auto manager = MakeManager<IUnknown>();
    ASSERT_TRUE(manager);
    ExpectOneIdentity(manager.Get(), ManagerInterfaces(), manager.Get());
}

TEST(Identity, OfAPackageIsOne) {
    const auto package = ResolvePackage(L"Ammonia synthesis");
    ASSERT_TRUE(package);
    const CRef<IUnknown> identity = Query(package.Get(), IID_IUnknown);
    ExpectOneIdentity(identity.Get(), PackageInterfaces(), identity.Get());
}

/// An object that takes one of the component's as a part of it.
class COuter : public IUnknown {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        if (!object) return E_POINTER;
        if (iid != IID_IUnknown) return inner ? inner->QueryInterface(iid, object) : E_NOINTERFACE;
        *object = this;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++held); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--held); }

    int held = 0;
    CRef<IUnknown> inner;
};

TEST(Identity, OfAPackageOfTheModuleIsOneOrTheOuterObjects) {
    const CLoadedModule module;
    const CRef<IClassFactory> factory = module.FactoryOf(packageClass);
    ASSERT_TRUE(factory);
    CRef<IUnknown> plain;
    ASSERT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, reinterpret_cast<void**>(plain.Receive())), S_OK);
    ExpectOneIdentity(plain.Get(), PackageInterfaces(), plain.Get());
    COuter outer;
    ASSERT_EQ(factory->CreateInstance(&outer, IID_IUnknown, reinterpret_cast<void**>(outer.inner.Receive())), S_OK);
    ExpectOneIdentity(&outer, PackageInterfaces(), &outer);
    outer.inner.Reset();
    EXPECT_EQ(outer.held, 0);
}

TEST(Aggregation, GivesTheManagerTheIdentityOfTheOuterObject) {
    COuter outer;
    void* made = nullptr;
    ASSERT_EQ(CreateManager(IID_IUnknown, &made, &outer), S_OK);
    outer.inner = CRef<IUnknown>(static_cast<IUnknown*>(made));
    EXPECT_EQ(outer.held, 0);
    ExpectOneIdentity(&outer, ManagerInterfaces(), &outer);
    EXPECT_EQ(outer.held, 0);
    outer.inner.Reset();
    EXPECT_EQ(outer.held, 0);
}

TEST(Aggregation, WantsIUnknownFirst) {
    COuter outer;
    void* made = &outer;
    EXPECT_EQ(CreateManager(reka::ICapeUtilities::iid, &made, &outer), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(made, nullptr);
    EXPECT_EQ(outer.held, 0);
}

/// A package of one reaction "R" with that rate, as a part of `outer`.
void MakePart(const CLoadedModule& module, COuter& outer, const wchar_t* rate) {
    const CRef<IClassFactory> packages = module.FactoryOf(packageClass);
    ASSERT_TRUE(packages);
    ASSERT_EQ(packages->CreateInstance(&outer, IID_IUnknown, reinterpret_cast<void**>(outer.inner.Receive())), S_OK);
    CBag bag;
    FillBag(bag, rate, L"1", L"1.1");
    ASSERT_EQ(outer.inner.As<IPersistPropertyBag>()->Load(&bag, nullptr), S_OK);
}

TEST(Aggregation, TellsErrorsThroughTheOuterObject) {
    const CLoadedModule module;
    COuter outer;
    ASSERT_NO_FATAL_FAILURE(MakePart(module, outer, L"2*T"));
    {
        CRef<IUnknown> identity(&outer);
        outer.AddRef();
        const auto chemistry = identity.As<reka::ICapeReactionChemistry>();
        reka::CapeReactionType type = reka::CAPE_EQUILIBRIUM;
        EXPECT_EQ(chemistry->GetReactionType(CText(L"nobody").Get(), &type), reka::ECapeUnknownHR);
        CText text;
        EXPECT_EQ(chemistry.As<reka::ECapeRoot>()->get_name(text.Receive()), S_OK);
        EXPECT_EQ(text.Read(), L"Invalid ID");
        EXPECT_EQ(identity.As<reka::ECapeUser>()->get_description(text.Receive()), S_OK);
        EXPECT_EQ(text.Read(), L"Invalid reaction ID: nobody");
        EXPECT_EQ(identity.As<reka::ECapeUser>()->get_scope(text.Receive()), S_OK);
        EXPECT_EQ(text.Read(), L"GetReactionType");
        EXPECT_EQ(chemistry->GetReactionType(CText(L"R").Get(), &type), S_OK);
        EXPECT_EQ(type, reka::CAPE_KINETIC);
    }
    EXPECT_EQ(outer.held, 0);
}

TEST(Aggregation, CalculatesAndIsCalledByNameThroughTheOuterObject) {
    const CLoadedModule module;
    COuter outer;
    CMaterial material;
    CReactionObject results;
    ASSERT_NO_FATAL_FAILURE(MakePart(module, outer, L"2*T"));
    {
        CRef<IUnknown> identity(&outer);
        outer.AddRef();
        const auto package = identity.As<reka::ICapeUtilities>();
        EXPECT_EQ(package->Initialize(), S_OK);
        EXPECT_EQ(Bind(package, material, results), S_OK);
        EXPECT_EQ(Calculate(package), S_OK);
        EXPECT_EQ(results.values[L"ReactionRate R"], 600);  // 2 * 300 K
        const auto dispatch = identity.As<IDispatch>();
        const CValue nobody(L"nobody");
        const CallResult failed = Call(dispatch.Get(), L"GetReactionPhase", DISPATCH_METHOD, {nobody.Get()});
        EXPECT_EQ(failed.code, DISP_E_EXCEPTION);
        EXPECT_EQ(failed.failure, reka::ECapeUnknownHR);
        EXPECT_EQ(TextOf(Call(dispatch.Get(), L"description", DISPATCH_PROPERTYGET)), L"Invalid reaction ID: nobody");
        const CallResult count = Call(dispatch.Get(), L"GetNumberOfReactions", DISPATCH_METHOD);
        EXPECT_EQ(count.code, S_OK);
        EXPECT_EQ(count.value.Get().lVal, 1);
        EXPECT_EQ(package->Terminate(), S_OK);
    }
    EXPECT_EQ(outer.held, 0);
    EXPECT_EQ(material.calls.held, 0);
    EXPECT_EQ(results.calls.held, 0);
}

}  // namespace
}  // namespace host
