// SPDX-License-Identifier: MIT
// Identity, aggregation and the class factories.

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>

#include "HostObjects.h"
#include "LateCalls.h"

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

CRef<IClassFactory> FactoryOf(REFCLSID classId) {
    CRef<IClassFactory> factory;
    CoGetClassObject(classId, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                     reinterpret_cast<void**>(factory.Receive()));
    return factory;
}

constexpr CLSID managerClass = {0x95E42661, 0x1916, 0x4261, {0x8F, 0xCC, 0x6F, 0x59, 0x8A, 0x19, 0xE5, 0x44}};
constexpr CLSID packageClass = {0xDB0E17E9, 0x7D36, 0x48C4, {0xAB, 0xA9, 0x8E, 0x74, 0xD0, 0xB5, 0xFE, 0x07}};

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

TEST(ClassFactory, MakesManagersThatShareNothing) {
    const auto factory = FactoryOf(managerClass);
    ASSERT_TRUE(factory);
    CRef<reka::ICapeIdentification> first;
    CRef<reka::ICapeIdentification> second;
    for (auto* made : {&first, &second}) {
        ASSERT_EQ(
            factory->CreateInstance(nullptr, reka::ICapeIdentification::iid, reinterpret_cast<void**>(made->Receive())),
            S_OK);
    }
    ASSERT_EQ(first->put_ComponentName(CText(L"Mine").Get()), S_OK);
    CText name;
    ASSERT_EQ(second->get_ComponentName(name.Receive()), S_OK);
    EXPECT_EQ(name.Read(), L"REKA");
}

TEST(ClassFactory, RefusesWhatItDoesNotKnow) {
    const auto factory = FactoryOf(managerClass);
    void* made = this;
    EXPECT_EQ(factory->CreateInstance(nullptr, reka::ICapeThermoMaterial::iid, &made), E_NOINTERFACE);
    EXPECT_EQ(made, nullptr);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
}

/// A package of one reaction "R" with that rate, as a part of `outer`.
void MakePart(COuter& outer, const wchar_t* rate) {
    const auto factory = FactoryOf(managerClass);  // which loads the module
    const HMODULE module = GetModuleHandleW(ModulePath().c_str());
    using Function = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    const auto getClassObject =
        reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
    CRef<IClassFactory> packages;
    ASSERT_EQ(getClassObject(packageClass, IID_IClassFactory, reinterpret_cast<void**>(packages.Receive())), S_OK);
    ASSERT_EQ(packages->CreateInstance(&outer, IID_IUnknown, reinterpret_cast<void**>(outer.inner.Receive())), S_OK);
    CBag bag;
    FillBag(bag, rate, L"1", L"1.1");
    ASSERT_EQ(outer.inner.As<IPersistPropertyBag>()->Load(&bag, nullptr), S_OK);
}

TEST(Aggregation, TellsErrorsThroughTheOuterObject) {
    COuter outer;
    ASSERT_NO_FATAL_FAILURE(MakePart(outer, L"2*T"));
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
    COuter outer;
    CMaterial material;
    CReactionObject results;
    ASSERT_NO_FATAL_FAILURE(MakePart(outer, L"2*T"));
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

using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
using CanUnloadNow = HRESULT(STDAPICALLTYPE*)();

template <class Function>
Function ExportOf(HMODULE module, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

class Exports : public testing::Test {
protected:
    Exports() : module(LoadLibraryW(ModulePath().c_str())) {
        getClassObject = ExportOf<GetClassObject>(module, "DllGetClassObject");
        canUnloadNow = ExportOf<CanUnloadNow>(module, "DllCanUnloadNow");
    }
    ~Exports() override { FreeLibrary(module); }

    HMODULE module;
    GetClassObject getClassObject = nullptr;
    CanUnloadNow canUnloadNow = nullptr;
};

TEST_F(Exports, GiveFactoriesOfBothClasses) {
    for (const CLSID& classId : {managerClass, packageClass}) {
        CRef<IClassFactory> factory;
        ASSERT_EQ(getClassObject(classId, IID_IClassFactory, reinterpret_cast<void**>(factory.Receive())), S_OK);
        CRef<IUnknown> again;
        ASSERT_EQ(getClassObject(classId, IID_IUnknown, reinterpret_cast<void**>(again.Receive())), S_OK);
        EXPECT_EQ(Query(factory.Get(), IID_IUnknown).Get(), again.Get());
    }
}

TEST_F(Exports, RefuseUnknownClasses) {
    void* factory = this;
    EXPECT_EQ(getClassObject(IID_IUnknown, IID_IClassFactory, &factory), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(factory, nullptr);
    EXPECT_EQ(getClassObject(managerClass, IID_IClassFactory, nullptr), E_POINTER);
    factory = this;
    EXPECT_EQ(getClassObject(managerClass, reka::ICapeUtilities::iid, &factory), E_NOINTERFACE);
    EXPECT_EQ(factory, nullptr);
}

TEST_F(Exports, MakeAPackagePlainOrAggregated) {
    CRef<IClassFactory> factory;
    ASSERT_EQ(getClassObject(packageClass, IID_IClassFactory, reinterpret_cast<void**>(factory.Receive())), S_OK);
    CRef<IUnknown> plain;
    ASSERT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, reinterpret_cast<void**>(plain.Receive())), S_OK);
    ExpectOneIdentity(plain.Get(), PackageInterfaces(), plain.Get());
    COuter outer;
    ASSERT_EQ(factory->CreateInstance(&outer, IID_IUnknown, reinterpret_cast<void**>(outer.inner.Receive())), S_OK);
    ExpectOneIdentity(&outer, PackageInterfaces(), &outer);
    outer.inner.Reset();
    EXPECT_EQ(outer.held, 0);
}

TEST_F(Exports, SayWhetherTheModuleCanGo) {
    EXPECT_EQ(canUnloadNow(), S_OK);
    {
        const auto manager = MakeManager<IUnknown>();
        EXPECT_EQ(canUnloadNow(), S_FALSE);
    }
    EXPECT_EQ(canUnloadNow(), S_OK);
    {
        CRef<IClassFactory> factory;
        ASSERT_EQ(getClassObject(packageClass, IID_IClassFactory, reinterpret_cast<void**>(factory.Receive())), S_OK);
        CRef<IUnknown> package;
        ASSERT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, reinterpret_cast<void**>(package.Receive())), S_OK);
        factory.Reset();
        EXPECT_EQ(canUnloadNow(), S_FALSE);
    }
    EXPECT_EQ(canUnloadNow(), S_OK);
}

TEST_F(Exports, KeepALockedServer) {
    {
        CRef<IClassFactory> factory;
        ASSERT_EQ(getClassObject(managerClass, IID_IClassFactory, reinterpret_cast<void**>(factory.Receive())), S_OK);
        EXPECT_EQ(factory->LockServer(TRUE), S_OK);
        factory.Reset();
        EXPECT_EQ(canUnloadNow(), S_FALSE);
        ASSERT_EQ(getClassObject(managerClass, IID_IClassFactory, reinterpret_cast<void**>(factory.Receive())), S_OK);
        EXPECT_EQ(factory->LockServer(FALSE), S_OK);
    }
    EXPECT_EQ(canUnloadNow(), S_OK);
}

TEST_F(Exports, IgnoreAnUnlockTooMany) {
    CRef<IClassFactory> managers;
    CRef<IClassFactory> packages;
    ASSERT_EQ(getClassObject(managerClass, IID_IClassFactory, reinterpret_cast<void**>(managers.Receive())), S_OK);
    ASSERT_EQ(getClassObject(packageClass, IID_IClassFactory, reinterpret_cast<void**>(packages.Receive())), S_OK);
    EXPECT_EQ(managers->LockServer(FALSE), S_OK);
    EXPECT_EQ(managers->LockServer(FALSE), S_OK);
    EXPECT_EQ(canUnloadNow(), S_FALSE);  // both are held still
    EXPECT_EQ(managers->LockServer(TRUE), S_OK);
    EXPECT_EQ(managers->LockServer(TRUE), S_OK);
    EXPECT_EQ(packages->LockServer(FALSE), S_OK);  // the lock isn't this one's
    EXPECT_EQ(managers->LockServer(FALSE), S_OK);
    managers.Reset();
    packages.Reset();
    EXPECT_EQ(canUnloadNow(), S_FALSE);  // by the lock that is left
    ASSERT_EQ(getClassObject(managerClass, IID_IClassFactory, reinterpret_cast<void**>(managers.Receive())), S_OK);
    EXPECT_EQ(managers->LockServer(FALSE), S_OK);
    managers.Reset();
    EXPECT_EQ(canUnloadNow(), S_OK);
}

/// Handles of this process, tried one by one: not every system counts them.
int CountHandles() {
    int count = 0;
    for (std::uintptr_t value = 4; value < 0x4000; value += 4) {
        DWORD flags = 0;
        if (GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags)) ++count;
    }
    return count;
}

TEST(Module, LoadsAndGoesAThousandTimes) {
    CoFreeUnusedLibrariesEx(0, 0);
    const std::wstring path = ModulePath();
    ASSERT_EQ(GetModuleHandleW(path.c_str()), nullptr);
    int handles = CountHandles();
    const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    EXPECT_EQ(CountHandles(), handles + 1);  // the count tells something
    CloseHandle(event);
    for (int i = 0; i < 1000; ++i) {
        if (i == 100) handles = CountHandles();  // by now the system has what it keeps for itself
        const HMODULE loaded = LoadLibraryW(path.c_str());
        ASSERT_TRUE(loaded);
        {
            CRef<IClassFactory> factory;
            ASSERT_EQ(ExportOf<GetClassObject>(loaded, "DllGetClassObject")(
                          managerClass, IID_IClassFactory, reinterpret_cast<void**>(factory.Receive())),
                      S_OK);
            CRef<IDispatch> manager;
            ASSERT_EQ(factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(manager.Receive())),
                      S_OK);
            wchar_t name[] = L"Terminate";
            LPOLESTR names[] = {name};
            DISPID member = 0;
            // A call by name has the module keep its type library, which takes long to load.
            if (i % 50 == 0) {
                ASSERT_EQ(manager->GetIDsOfNames(IID_NULL, names, 1, 0, &member), S_OK);
            }
        }
        ASSERT_EQ(ExportOf<CanUnloadNow>(loaded, "DllCanUnloadNow")(), S_OK);
        FreeLibrary(loaded);
        ASSERT_EQ(GetModuleHandleW(path.c_str()), nullptr);
    }
    EXPECT_EQ(CountHandles(), handles);
}

/// The system's loader of type libraries takes no such path.
TEST(Module, AnswersLateBoundCallsFromALongPath) {
    const std::wstring path = ModulePath();
    wchar_t temporary[MAX_PATH + 1] = {};
    ASSERT_GT(GetTempPathW(MAX_PATH, temporary), 0U);
    const std::wstring top =
        L"\\\\?\\" + std::wstring(temporary) + L"reka-long-" + std::to_wstring(GetCurrentProcessId());
    std::vector<std::wstring> folders = {top};
    while (folders.back().size() < 300) folders.push_back(folders.back() + L"\\" + std::wstring(100, L'x'));
    for (const std::wstring& folder : folders) ASSERT_TRUE(CreateDirectoryW(folder.c_str(), nullptr)) << folder;
    const std::wstring copy = folders.back() + L"\\REKA.dll";
    ASSERT_TRUE(CopyFileW(path.c_str(), copy.c_str(), TRUE));
    const HMODULE loaded = LoadLibraryW(copy.c_str());
    EXPECT_TRUE(loaded);
    if (loaded) {
        CRef<IClassFactory> factory;
        EXPECT_EQ(ExportOf<GetClassObject>(loaded, "DllGetClassObject")(managerClass, IID_IClassFactory,
                                                                        reinterpret_cast<void**>(factory.Receive())),
                  S_OK);
        CRef<IDispatch> manager;
        ASSERT_EQ(factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(manager.Receive())), S_OK);
        wchar_t name[] = L"Terminate";
        LPOLESTR names[] = {name};
        DISPID member = 0;
        EXPECT_EQ(manager->GetIDsOfNames(IID_NULL, names, 1, 0, &member), S_OK);
    }
    if (loaded) FreeLibrary(loaded);
    EXPECT_TRUE(DeleteFileW(copy.c_str()));
    folders.push_back(folders.back() + L"\\data");  // which a manager makes
    for (; !folders.empty(); folders.pop_back()) EXPECT_TRUE(RemoveDirectoryW(folders.back().c_str()));
}

/// What is allocated from all heaps of this process, in bytes.
std::size_t CountHeap() {
    HANDLE heaps[64] = {};
    const DWORD count = GetProcessHeaps(64, heaps);
    EXPECT_LE(count, 64U);
    std::size_t bytes = 0;
    for (DWORD i = 0; i < count && i < 64; ++i) {
        PROCESS_HEAP_ENTRY entry = {};
        HeapLock(heaps[i]);
        while (HeapWalk(heaps[i], &entry)) {
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += entry.cbData;
        }
        HeapUnlock(heaps[i]);
    }
    return bytes;
}

TEST(Module, LeavesNothingOnTheHeap) {
    CoFreeUnusedLibrariesEx(0, 0);
    const std::wstring path = ModulePath();
    ASSERT_EQ(GetModuleHandleW(path.c_str()), nullptr);
    const std::size_t empty = CountHeap();
    const auto block = std::make_unique<char[]>(5000);
    EXPECT_GE(CountHeap(), empty + 5000);  // the count tells something
    std::size_t before = 0;
    constexpr int rounds = 200;
    constexpr int warm = 20;  // by then the system has what it keeps for itself
    for (int i = 0; i < rounds; ++i) {
        if (i == warm) before = CountHeap();
        const HMODULE loaded = LoadLibraryW(path.c_str());
        ASSERT_TRUE(loaded);
        {
            CRef<IClassFactory> factory;
            ASSERT_EQ(ExportOf<GetClassObject>(loaded, "DllGetClassObject")(
                          managerClass, IID_IClassFactory, reinterpret_cast<void**>(factory.Receive())),
                      S_OK);
            CRef<IDispatch> manager;
            ASSERT_EQ(factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(manager.Receive())),
                      S_OK);
        }
        FreeLibrary(loaded);
        ASSERT_EQ(GetModuleHandleW(path.c_str()), nullptr);
    }
    EXPECT_LT(CountHeap(), before + (rounds - warm) * sizeof(void*));  // less than the smallest block a load
}

}  // namespace
}  // namespace host
