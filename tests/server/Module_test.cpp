// SPDX-License-Identifier: MIT
// The module's start and end, in parts that the loaded module doesn't show.

#include "server/Module.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>

#include <unknwn.h>

#include "capeopen/CapeOpenInterfaces.h"
#include "capeopen/ClassIds.h"
#include "platform/Automation.h"
#include "platform/TypeLibrary.h"
#include "server/ClassTable.h"

namespace reka::test {
namespace {

std::wstring OwnPath() {
    wchar_t path[1024] = {};
    GetModuleFileNameW(nullptr, path, 1024);
    return path;
}

TEST(Module, GivesNoFactoryBeforeItHasStarted) {
    void* factory = &factory;
    EXPECT_EQ(GetClassFactory(reactionPackManagerClassId, IID_IClassFactory, &factory), E_UNEXPECTED);
    EXPECT_EQ(factory, nullptr);
}

TEST(Module, StartsAndEnds) {
    StartModule(GetModuleHandleW(nullptr));
    EXPECT_TRUE(TheModule().hasStarted);
    EXPECT_EQ(std::u16string(TheModule().version), u"<unknown>");  // that of this program
    EXPECT_EQ(TheModule().typeLibraryId, typeLibraryId);
    for (const wchar_t* const library : {L"riched32.dll", L"riched20.dll"}) EXPECT_TRUE(GetModuleHandleW(library));
    void* factory = nullptr;
    EXPECT_EQ(GetClassFactory(reactionPackManagerClassId, IID_IClassFactory, &factory), S_OK);
    static_cast<IClassFactory*>(factory)->Release();
    EndModule(false);
    EXPECT_FALSE(TheModule().hasStarted);
    EXPECT_EQ(GetClassFactory(reactionPackManagerClassId, IID_IClassFactory, &factory), E_UNEXPECTED);
    EXPECT_EQ(factory, nullptr);
}

TEST(Module, StartsAgain) {
    for (int i = 0; i < 3; ++i) {
        StartModule(GetModuleHandleW(nullptr));
        EXPECT_TRUE(TheModule().hasStarted);
        EndModule(false);
    }
}

TEST(Module, MakesOneFactoryForTwoWhoAskAtOnce) {
    for (int round = 0; round < 20; ++round) {
        StartModule(GetModuleHandleW(nullptr));
        std::atomic<int> ready = 0;
        void* factories[2] = {};
        HRESULT results[2] = {E_FAIL, E_FAIL};
        const auto ask = [&](int who) {
            ++ready;
            while (ready < 2) {
            }
            results[who] = GetClassFactory(reactionPackClassId, IID_IClassFactory, &factories[who]);
        };
        std::thread other(ask, 1);
        ask(0);
        other.join();
        EXPECT_EQ(results[0], S_OK);
        EXPECT_EQ(results[1], S_OK);
        EXPECT_EQ(factories[0], factories[1]);
        // The table's own count is left when both are given back.
        EXPECT_EQ(static_cast<IUnknown*>(factories[0])->Release(), 2U);
        EXPECT_EQ(static_cast<IUnknown*>(factories[1])->Release(), 1U);
        EndModule(false);
    }
}

/// References on a type that the module keeps, this one's included.
ULONG CountReferences(ITypeInfo* typeInfo) {
    typeInfo->AddRef();
    return typeInfo->Release();
}

TEST(Module, CallsNobodyWhenTheProcessEnds) {
    for (const bool isProcessEnding : {true, false}) {
        StartModule(GetModuleHandleW(nullptr));
        ITypeInfo* typeInfo = nullptr;
        ASSERT_EQ(FindTypeOfInterface(ICapeUtilities::iid, &typeInfo), S_OK);
        const ULONG references = CountReferences(typeInfo);
        EndModule(isProcessEnding);
        EXPECT_FALSE(TheModule().hasStarted);
        EXPECT_EQ(CountReferences(typeInfo), isProcessEnding ? references : references - 1);
        typeInfo->Release();
    }
}

TEST(FileVersion, IsEmptyWithoutABlock) {
    EXPECT_EQ(ReadFileVersion(L"no such file"), u"");
}

TEST(FileVersion, IsUnknownWithoutTheFixedRecord) {
    EXPECT_EQ(ReadFileVersion(OwnPath().c_str()), u"<unknown>");
}

TEST(FileVersion, HasFourParts) {
    const std::u16string version = ReadFileVersion(L"kernel32.dll");
    EXPECT_EQ(std::count(version.begin(), version.end(), u'.'), 3) << testing::PrintToString(version);
}

}  // namespace
}  // namespace reka::test
