// SPDX-License-Identifier: MIT
// Libraries of the system, and the handle of the module.

#include "platform/win/SystemModules.h"

#include <gtest/gtest.h>

#include <string>

namespace reka::test {
namespace {

std::wstring OwnPath() {
    wchar_t path[1024] = {};
    GetModuleFileNameW(nullptr, path, 1024);
    return path;
}

std::wstring SystemFolder() {
    wchar_t folder[MAX_PATH] = {};
    GetSystemDirectoryW(folder, MAX_PATH);
    return folder;
}

TEST(ModuleHandle, IsWhatWasSetLast) {
    const HINSTANCE kernel = GetModuleHandleW(L"kernel32.dll");
    const HINSTANCE before = SetModuleHandle(kernel);
    EXPECT_EQ(ModuleHandle(), kernel);
    EXPECT_EQ(SetModuleHandle(before), kernel);
    EXPECT_EQ(ModuleHandle(), before);
}

TEST(SystemLibraries, ComeFromTheSystemsFolder) {
    const HMODULE library = LoadSystemLibrary(L"atl.dll");
    ASSERT_TRUE(library);
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(library, path, MAX_PATH);
    EXPECT_EQ(lstrcmpiW(path, (SystemFolder() + L"\\atl.dll").c_str()), 0) << path;
    FreeLibrary(library);
    EXPECT_FALSE(LoadSystemLibrary(L"no such library.dll"));
    EXPECT_FALSE(LoadSystemLibrary(std::wstring(MAX_PATH, L'x').c_str()));
}

/// One that lies beside the program is not taken.
TEST(SystemLibraries, DoNotComeFromTheProgramsFolder) {
    std::wstring own = OwnPath();
    const std::wstring beside = own.substr(0, own.rfind(L'\\') + 1) + L"reka-beside.dll";
    ASSERT_TRUE(CopyFileW((SystemFolder() + L"\\atl.dll").c_str(), beside.c_str(), FALSE));
    EXPECT_FALSE(LoadSystemLibrary(L"reka-beside.dll"));
    EXPECT_TRUE(DeleteFileW(beside.c_str()));
}

}  // namespace
}  // namespace reka::test
