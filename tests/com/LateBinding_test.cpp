// SPDX-License-Identifier: MIT
// Calls by name and by identifier, as scripts and other late-bound clients make them.

#include <gtest/gtest.h>

#include <algorithm>

#include "HostObjects.h"
#include "LateCalls.h"

namespace host {
namespace {

/// The members of one interface with the identifiers that it publishes.
struct Published {
    const char* name;
    IID iid;
    std::vector<std::pair<const wchar_t*, DISPID>> members;
    bool isManagers;
};

const Published publishedInterfaces[] = {
    {"ICapeReactionsPackageManager",
     reka::ICapeReactionsPackageManager::iid,
     {{L"GetListOfReactionsPackages", 1}, {L"ResolveReactionsPackage", 2}},
     true},
    {"ICapeThermoNewPropertyPackage", reka::ICapeThermoNewPropertyPackage::iid, {{L"NewPropertyPackage", 1}}, true},
    {"ICapeUtilities",
     reka::ICapeUtilities::iid,
     {{L"parameters", 1}, {L"simulationContext", 2}, {L"Initialize", 3}, {L"Terminate", 4}, {L"Edit", 5}},
     true},
    {"ICapeIdentification",
     reka::ICapeIdentification::iid,
     {{L"ComponentName", 1}, {L"ComponentDescription", 2}},
     true},
    {"ECapeRoot", reka::ECapeRoot::iid, {{L"name", 1}}, true},
    {"ECapeUser",
     reka::ECapeUser::iid,
     {{L"code", 1}, {L"description", 2}, {L"scope", 3}, {L"interfaceName", 4}, {L"operation", 5}, {L"moreInfo", 6}},
     true},
    {"ICapeReactionsRoutine", reka::ICapeReactionsRoutine::iid, {{L"CalcReactionProp", 1}}, false},
    {"ICapeReactionChemistry",
     reka::ICapeReactionChemistry::iid,
     {{L"GetNumberOfReactions", 1},
      {L"GetReactionsIds", 2},
      {L"GetReactionType", 3},
      {L"GetNumberOfReactionCompounds", 4},
      {L"GetReactionCompoundIds", 5},
      {L"GetStoichiometricCoefficients", 6},
      {L"GetReactionPhase", 7},
      {L"GetReactionRateBasis", 8},
      {L"GetReactionConcBasis", 9},
      {L"GetBaseReactant", 10},
      {L"GetPhaseCompounds", 11},
      {L"GetReactionParameters", 12}},
     false},
    {"ICapeKineticReactionContext", reka::ICapeKineticReactionContext::iid, {{L"SetReactionObject", 1}}, false},
    {"ICapeThermoMaterialContext",
     reka::ICapeThermoMaterialContext::iid,
     {{L"SetMaterial", 1}, {L"UnsetMaterial", 2}},
     false},
    {"ICapeThermoContext10", reka::ICapeThermoContext10::iid, {{L"SetMaterial", 1}}, false},
};

class Interface : public testing::TestWithParam<Published> {};

TEST_P(Interface, AnswersWithItsOwnIdentifiers) {
    const auto manager = MakeManager<IUnknown>();
    const auto package = ResolvePackage(L"Ammonia synthesis");
    ASSERT_TRUE(manager);
    ASSERT_TRUE(package);
    IUnknown* const object = GetParam().isManagers ? manager.Get() : package.Get();
    void* found = nullptr;
    ASSERT_EQ(object->QueryInterface(GetParam().iid, &found), S_OK);
    const CRef<IDispatch> dispatch(static_cast<IDispatch*>(found));
    UINT count = 0;
    EXPECT_EQ(dispatch->GetTypeInfoCount(&count), S_OK);
    EXPECT_EQ(count, 1U);
    CRef<ITypeInfo> typeInfo;
    ASSERT_EQ(dispatch->GetTypeInfo(0, 0, typeInfo.Receive()), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(typeInfo->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->guid, GetParam().iid);
    typeInfo->ReleaseTypeAttr(attributes);
    EXPECT_EQ(dispatch->GetTypeInfo(1, 0, typeInfo.Receive()), DISP_E_BADINDEX);
    EXPECT_FALSE(typeInfo);
    for (const auto& [name, identifier] : GetParam().members) {
        DISPID member = 0;
        EXPECT_EQ(FindMember(dispatch.Get(), name, member), S_OK) << name;
        EXPECT_EQ(member, identifier) << name;
    }
    DISPID member = 0;
    EXPECT_EQ(FindMember(dispatch.Get(), L"NoSuchMember", member), DISP_E_UNKNOWNNAME);
}
INSTANTIATE_TEST_SUITE_P(Table, Interface, testing::ValuesIn(publishedInterfaces),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(OneReference, KnowsTheMembersOfAllInterfaces) {
    const auto manager = MakeManager<IDispatch>();
    const auto package = ResolvePackage(L"Ammonia synthesis").As<IDispatch>();
    for (const bool isManager : {true, false}) {
        std::vector<DISPID> identifiers;
        for (const Published& published : publishedInterfaces) {
            const bool isShared = published.iid == reka::ICapeUtilities::iid ||
                                  published.iid == reka::ICapeIdentification::iid ||
                                  published.iid == reka::ECapeRoot::iid || published.iid == reka::ECapeUser::iid;
            if (published.isManagers != isManager && !isShared) continue;
            for (const auto& [name, own] : published.members) {
                DISPID member = 0;
                EXPECT_EQ(FindMember(isManager ? manager.Get() : package.Get(), name, member), S_OK) << name;
                // The two ways to set a material are one.
                if (published.iid != reka::ICapeThermoContext10::iid) identifiers.push_back(member);
            }
        }
        std::sort(identifiers.begin(), identifiers.end());
        EXPECT_EQ(std::adjacent_find(identifiers.begin(), identifiers.end()), identifiers.end());
        EXPECT_GT(identifiers.front(), 0);
    }
}

TEST(OneReference, ListsResolvesAndTellsErrors) {
    const auto manager = MakeManager<IDispatch>();
    const CallResult names = Call(manager.Get(), L"GetListOfReactionsPackages", DISPATCH_METHOD);
    ASSERT_EQ(names.code, S_OK);
    EXPECT_EQ(names.value.Get().vt, VT_ARRAY | VT_VARIANT);  // which a script can read
    EXPECT_EQ(StringsOf(names.value.Get()).size(), 9U);
    CValue name(L"Water-gas shift");
    const CallResult resolved = Call(manager.Get(), L"ResolveReactionsPackage", DISPATCH_METHOD, {name.Get()});
    ASSERT_EQ(resolved.code, S_OK);
    ASSERT_EQ(resolved.value.Get().vt, VT_DISPATCH);
    IDispatch* const package = resolved.value.Get().pdispVal;
    EXPECT_EQ(Call(package, L"Initialize", DISPATCH_METHOD).code, S_OK);
    EXPECT_EQ(Call(package, L"getnumberofreactions", DISPATCH_METHOD).value.Get().lVal, 1);  // whatever the case
    CValue nobody(L"nobody");
    const CallResult failed = Call(package, L"GetReactionPhase", DISPATCH_METHOD, {nobody.Get()});
    EXPECT_EQ(failed.code, DISP_E_EXCEPTION);
    EXPECT_EQ(failed.failure, reka::ECapeUnknownHR);
    EXPECT_EQ(TextOf(Call(package, L"name", DISPATCH_PROPERTYGET)), L"Invalid ID");
    EXPECT_EQ(TextOf(Call(package, L"description", DISPATCH_PROPERTYGET)), L"Invalid reaction ID: nobody");
    EXPECT_EQ(TextOf(Call(package, L"scope", DISPATCH_PROPERTYGET)), L"GetReactionPhase");
    EXPECT_EQ(TextOf(Call(package, L"interfaceName", DISPATCH_PROPERTYGET)), L"ICapeReactionChemistry");
    EXPECT_EQ(Call(package, L"code", DISPATCH_PROPERTYGET).value.Get().lVal, 0);
}

/// By the one reference of a script and by an interface of its own.
std::vector<CRef<IDispatch>> WaysTo(IUnknown* object, REFIID iid) {
    std::vector<CRef<IDispatch>> ways;
    for (const IID& way : {IID_IDispatch, iid}) {
        void* found = nullptr;
        EXPECT_EQ(object->QueryInterface(way, &found), S_OK);
        ways.emplace_back(static_cast<IDispatch*>(found));
    }
    return ways;
}

TEST(LateBinding, TellsTheWordsOfAFailure) {
    const auto package = MakePackage(L"1");
    for (const CRef<IDispatch>& way : WaysTo(package.Get(), reka::ICapeReactionChemistry::iid)) {
        CValue nobody(L"nobody");
        for (const wchar_t* const method : {L"GetReactionPhase", L"GetReactionType"}) {
            const CallResult failed = Call(way.Get(), method, DISPATCH_METHOD, {nobody.Get()});
            EXPECT_EQ(failed.code, DISP_E_EXCEPTION);
            EXPECT_EQ(failed.failure, reka::ECapeUnknownHR);
            EXPECT_EQ(failed.description, L"Invalid reaction ID: nobody");
            EXPECT_EQ(failed.source, L"ICapeReactionChemistry." + std::wstring(method));
        }
    }
}

/// Which the thread keeps for whoever asks.
TEST(LateBinding, TellsNoWordsOfSomebodyElse) {
    CRef<ICreateErrorInfo> written;
    ASSERT_EQ(CreateErrorInfo(written.Receive()), S_OK);
    std::wstring words = L"of somebody else";
    ASSERT_EQ(written->SetDescription(words.data()), S_OK);
    void* found = nullptr;
    ASSERT_EQ(written->QueryInterface(IID_IErrorInfo, &found), S_OK);
    const CRef<IErrorInfo> stranger(static_cast<IErrorInfo*>(found));
    const auto manager = MakeManager<IDispatch>();
    CValue name(L"nobody");
    for (const bool isMerged : {true, false}) {
        const CallResult resolved = Call(manager.Get(), L"ResolveReactionsPackage", DISPATCH_METHOD, {name.Get()});
        ASSERT_EQ(resolved.code, S_OK);
        IDispatch* const package = resolved.value.Get().pdispVal;  // without a definition
        const auto ways = WaysTo(package, reka::ICapeReactionChemistry::iid);
        ASSERT_EQ(SetErrorInfo(0, stranger.Get()), S_OK);
        const CallResult wordless = Call(ways[isMerged ? 0 : 1].Get(), L"GetNumberOfReactions", DISPATCH_METHOD);
        EXPECT_EQ(wordless.code, DISP_E_EXCEPTION);
        EXPECT_EQ(wordless.failure, E_UNEXPECTED);
        EXPECT_EQ(wordless.description, L"");
        EXPECT_EQ(wordless.source, L"");
        ASSERT_EQ(SetErrorInfo(0, stranger.Get()), S_OK);
        const CallResult failed = Call(package, L"Initialize", DISPATCH_METHOD);
        EXPECT_EQ(failed.code, DISP_E_EXCEPTION);
        EXPECT_NE(failed.description, L"");
        EXPECT_NE(failed.description, words);
        EXPECT_EQ(failed.source, L"ICapeUtilitites.Initialize");
    }
    SetErrorInfo(0, nullptr);
}

TEST(LateBinding, FailsAlikeForACallerThatWantsNoWords) {
    const auto package = MakePackage(L"1").As<IDispatch>();
    DISPID member = 0;
    ASSERT_EQ(FindMember(package.Get(), L"GetReactionPhase", member), S_OK);
    CValue nobody(L"nobody");
    DISPPARAMS parameters = {&nobody.Get(), nullptr, 1, 0};
    CValue phase;
    EXPECT_EQ(package->Invoke(member, IID_NULL, 0, DISPATCH_METHOD, &parameters, &phase.Get(), nullptr, nullptr),
              DISP_E_EXCEPTION);
}

TEST(LateBinding, PutsAndGetsProperties) {
    for (const bool isMerged : {false, true}) {
        const auto package = MakePackage(L"1");
        CRef<IDispatch> dispatch = package.As<IDispatch>();
        if (!isMerged) {
            void* found = nullptr;
            ASSERT_EQ(package->QueryInterface(reka::ICapeIdentification::iid, &found), S_OK);
            dispatch = CRef<IDispatch>(static_cast<IDispatch*>(found));
        }
        CValue name(L"Renamed");
        EXPECT_EQ(Call(dispatch.Get(), L"ComponentName", DISPATCH_PROPERTYPUT, {name.Get()}, {DISPID_PROPERTYPUT}).code,
                  S_OK);
        EXPECT_EQ(TextOf(Call(dispatch.Get(), L"ComponentName", DISPATCH_PROPERTYGET)), L"Renamed");
    }
}

TEST(LateBinding, PutsObjectsBySetToo) {
    const auto package = MakePackage(L"1").As<IDispatch>();
    for (const bool isSet : {false, true}) {
        const WORD flags = isSet ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT;
        CMaterial context;
        CValue value(context.Dispatch());
        EXPECT_EQ(Call(package.Get(), L"simulationContext", flags, {value.Get()}, {DISPID_PROPERTYPUT}).code, S_OK);
        EXPECT_GT(context.calls.held, 1);  // not the value's alone
        EXPECT_EQ(Call(package.Get(), L"Terminate", DISPATCH_METHOD).code, S_OK);
        EXPECT_EQ(context.calls.held, 1);
    }
}

TEST(LateBinding, KeepsTheTypesOfAnInterfaceAskedForByItself) {
    void* found = nullptr;
    ASSERT_EQ(MakePackage(L"1")->QueryInterface(reka::ICapeReactionChemistry::iid, &found), S_OK);
    const CRef<IDispatch> chemistry(static_cast<IDispatch*>(found));
    EXPECT_EQ(Call(chemistry.Get(), L"GetReactionsIds", DISPATCH_METHOD).value.Get().vt, VT_ARRAY | VT_BSTR);
}

TEST(LateBinding, SurvivesCallsThatAreWrong) {
    for (const auto& object :
         {MakeManager<IDispatch>(), MakePackage(L"1").As<IDispatch>(), MakePackage(L"1").As<IDispatch>()}) {
        DISPID member = 0;
        std::wstring word = L"Initialize";
        LPOLESTR names[] = {word.data()};
        LPOLESTR none[] = {nullptr};
        EXPECT_EQ(object->GetIDsOfNames(IID_NULL, nullptr, 1, 0, &member), E_POINTER);
        EXPECT_EQ(object->GetIDsOfNames(IID_NULL, names, 1, 0, nullptr), E_POINTER);
        EXPECT_EQ(object->GetIDsOfNames(IID_NULL, none, 1, 0, &member), E_POINTER);
        EXPECT_EQ(object->GetIDsOfNames(IID_IUnknown, names, 1, 0, &member), DISP_E_UNKNOWNINTERFACE);
        EXPECT_EQ(object->GetTypeInfoCount(nullptr), E_POINTER);
        EXPECT_EQ(object->GetTypeInfo(0, 0, nullptr), E_POINTER);
        DISPPARAMS nothing = {};
        for (const DISPID wrong : {0, -1, 1, 0x10000, 0x1FFFF, 0x7FFF0001, 0x60000000, static_cast<int>(0x80000000)}) {
            EXPECT_EQ(object->Invoke(wrong, IID_NULL, 0, DISPATCH_METHOD, &nothing, nullptr, nullptr, nullptr),
                      DISP_E_MEMBERNOTFOUND)
                << wrong;
        }
        ASSERT_EQ(object->GetIDsOfNames(IID_NULL, names, 1, 0, &member), S_OK);
        EXPECT_EQ(object->Invoke(member, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr), E_POINTER);
        EXPECT_EQ(object->Invoke(member, IID_IUnknown, 0, DISPATCH_METHOD, &nothing, nullptr, nullptr, nullptr),
                  DISP_E_UNKNOWNINTERFACE);
        DISPPARAMS hollow = {nullptr, nullptr, 1, 0};
        EXPECT_EQ(object->Invoke(member, IID_NULL, 0, DISPATCH_METHOD, &hollow, nullptr, nullptr, nullptr), E_POINTER);
    }
}

/// The names of the keys below one of the classes root.
std::vector<std::wstring> KeysBelow(const wchar_t* path) {
    std::vector<std::wstring> names;
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, path, 0, KEY_READ, &key) != ERROR_SUCCESS) return names;
    wchar_t name[256];
    for (DWORD i = 0;; ++i) {
        DWORD length = 256;
        if (RegEnumKeyExW(key, i, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
        names.emplace_back(name, length);
    }
    RegCloseKey(key);
    std::sort(names.begin(), names.end());
    return names;
}

bool IsAmong(const std::vector<std::wstring>& names, std::wstring_view name) {
    return std::any_of(names.begin(), names.end(), [&](const std::wstring& other) {
        return CompareStringOrdinal(other.c_str(), static_cast<int>(other.size()), name.data(),
                                    static_cast<int>(name.size()), TRUE) == CSTR_EQUAL;
    });
}

TEST(LateBinding, WorksWithoutATypeLibraryAndRegistersNone) {
    const std::vector<std::wstring> libraries = KeysBelow(L"TypeLib");
    const std::vector<std::wstring> interfaces = KeysBelow(L"Interface");
    EXPECT_FALSE(libraries.empty());  // those of the system
    EXPECT_FALSE(interfaces.empty());
    EXPECT_FALSE(IsAmong(libraries, L"{6F471C15-E012-496B-9563-5EFD98C25862}"));
    for (const Published& published : publishedInterfaces) {
        wchar_t identifier[64] = {};
        StringFromGUID2(published.iid, identifier, 64);
        EXPECT_FALSE(IsAmong(interfaces, identifier)) << published.name;
    }
    CoFreeUnusedLibrariesEx(0, 0);  // so that the module looks its types up once more
    ASSERT_EQ(GetModuleHandleW(ModulePath().c_str()), nullptr);
    {
        const auto package = MakePackage(L"1");
        for (const Published& published : publishedInterfaces) {
            if (published.isManagers) continue;
            void* found = nullptr;
            ASSERT_EQ(package->QueryInterface(published.iid, &found), S_OK);
            const CRef<IDispatch> dispatch(static_cast<IDispatch*>(found));
            CRef<ITypeInfo> typeInfo;
            EXPECT_EQ(dispatch->GetTypeInfo(0, 0, typeInfo.Receive()), S_OK);
        }
        const CallResult count = Call(package.As<IDispatch>().Get(), L"GetNumberOfReactions", DISPATCH_METHOD);
        EXPECT_EQ(count.code, S_OK);
        EXPECT_EQ(count.value.Get().lVal, 1);
    }
    EXPECT_EQ(KeysBelow(L"TypeLib"), libraries);
    EXPECT_EQ(KeysBelow(L"Interface"), interfaces);
}

}  // namespace
}  // namespace host
