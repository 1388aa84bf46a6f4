// SPDX-License-Identifier: MIT
// The type library of this program, which is that of the module, by way of a file.

#include "platform/win/TypesByFile.h"

#include <gtest/gtest.h>

#include "capeopen/CapeOpenInterfaces.h"

namespace reka::test {
namespace {

std::wstring TemporaryFolder() {
    wchar_t folder[MAX_PATH + 1] = {};
    GetTempPathW(MAX_PATH, folder);
    return folder;
}

bool IsAnyLeft() {
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW((TemporaryFolder() + L"REKA-types-*.tlb").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return false;
    FindClose(search);
    return true;
}

TEST(TypesByFile, AreThoseOfTheModule) {
    CComRef<ITypeLib> library;
    ASSERT_EQ(LoadTypesByFile(GetModuleHandleW(nullptr), library), S_OK);
    CComRef<ITypeInfo> typeInfo;
    EXPECT_EQ(library->GetTypeInfoOfGuid(ICapeUtilities::iid, typeInfo.Receive()), S_OK);
}

TEST(TypesByFile, LeaveNoFiles) {
    const HANDLE leftover = CreateFileW((TemporaryFolder() + L"REKA-types-1-2.tlb").c_str(), GENERIC_WRITE, 0, nullptr,
                                        CREATE_ALWAYS, 0, nullptr);
    ASSERT_NE(leftover, INVALID_HANDLE_VALUE);
    CloseHandle(leftover);
    EXPECT_TRUE(IsAnyLeft());
    for (int i = 0; i < 3; ++i) {
        CComRef<ITypeLib> library;
        EXPECT_EQ(LoadTypesByFile(GetModuleHandleW(nullptr), library), S_OK);
    }
    EXPECT_FALSE(IsAnyLeft());
}

TEST(TypesByFile, FailWhereThereAreNone) {
    CComRef<ITypeLib> library;
    EXPECT_EQ(LoadTypesByFile(GetModuleHandleW(L"kernel32.dll"), library),
              HRESULT_FROM_WIN32(ERROR_RESOURCE_TYPE_NOT_FOUND));
    EXPECT_EQ(library.Get(), nullptr);
}

}  // namespace
}  // namespace reka::test
