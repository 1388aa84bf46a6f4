// SPDX-License-Identifier: MIT
// What registration wrote is removed wherever it stands, and nothing of another module's, nor what the other width of
// this one needs.

#include <gtest/gtest.h>

#include <algorithm>
#include <cwctype>

#include "RegistrationFixture.h"

namespace host {
namespace {

/// Where it was registered is what counts, and not what the user's setting has become.
TEST_F(Registration, IsRemovedWhereItWas) {
    for (const bool isForUser : {false, true}) {
        SetCurrentUser(isForUser ? L"1" : L"0");
        ASSERT_EQ(RunRegsvr32(L"", module), 0U);
        const HKEY hive = isForUser ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
        EXPECT_EQ(KeysIn(hive).size(), 3U);
        SetCurrentUser(isForUser ? L"0" : L"1");
        EXPECT_EQ(RunRegsvr32(L"/u", module), 0U);
        EXPECT_EQ(KeysIn(hive), Entries());
    }
}

TEST_F(Registration, IsRemovedFromUserAndMachine) {
    for (const wchar_t* setting : {L"0", L"1"}) {
        SetCurrentUser(L"0");
        ASSERT_EQ(RunRegsvr32(L"", module), 0U);
        SetCurrentUser(L"1");
        ASSERT_EQ(RunRegsvr32(L"", module), 0U);
        SetCurrentUser(setting);
        EXPECT_EQ(RunRegsvr32(L"/u", module), 0U);
        EXPECT_EQ(KeysIn(HKEY_CURRENT_USER), Entries());
        EXPECT_EQ(KeysIn(HKEY_LOCAL_MACHINE), Entries());
    }
}

TEST_F(Registration, IsRemovedUnderAnyNameOfItsFile) {
    std::wstring turned = module;
    std::replace(turned.begin(), turned.end(), L'\\', L'/');
    std::wstring capitals = module;
    std::transform(capitals.begin(), capitals.end(), capitals.begin(), [](wchar_t c) { return std::towupper(c); });
    for (const std::wstring& name : {L"\"" + module + L"\"", turned, capitals}) {
        ASSERT_EQ(RunRegsvr32(L"", module), 0U);
        NameModule(HKEY_LOCAL_MACHINE, name);
        EXPECT_EQ(RunRegsvr32(L"/u", module), 0U);
        EXPECT_EQ(KeysIn(HKEY_LOCAL_MACHINE), Entries());
    }
}

TEST_F(Registration, OfAnotherModuleStays) {
    ASSERT_EQ(RunRegsvr32(L"", module), 0U);
    for (const wchar_t* other : {L"C:\\elsewhere\\REKA.dll", L"REKA.dll", L""}) {
        NameModule(HKEY_LOCAL_MACHINE, other);
        SetCurrentUser(L"1");
        Entries others = ReadRegistry();
        others.erase(L"HKCU\\Classes\\CLSID");  // which stays behind a registration
        ASSERT_EQ(RunRegsvr32(L"", module), 0U);
        EXPECT_EQ(RunRegsvr32(L"/u", module), 0U);
        EXPECT_EQ(KeysIn(HKEY_CURRENT_USER), Entries());
        Entries after = ReadRegistry();
        after.erase(L"HKCU\\Classes\\CLSID");
        EXPECT_EQ(Difference(after, others), Entries());
        EXPECT_EQ(Difference(others, after), Entries());
    }
    NameModule(HKEY_LOCAL_MACHINE, module);
}

TEST_F(Registration, IsRemovedTwice) {
    ASSERT_EQ(RunRegsvr32(L"", module), 0U);
    EXPECT_EQ(RunRegsvr32(L"/u", module), 0U);
    EXPECT_EQ(RunRegsvr32(L"/u", module), 0U);
    EXPECT_EQ(ReadRegistry(), before);
}

/// A registry has a half for each width of programs on a system that runs both.
TEST_F(Registration, LeavesTheNamesToTheOtherWidth) {
    constexpr REGSAM otherWidth = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    ASSERT_EQ(RunRegsvr32(L"", module), 0U);
    HKEY other = nullptr;
    const std::wstring server = std::wstring(classKey) + L"\\InprocServer32";
    ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, server.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS | otherWidth, nullptr,
                              &other, nullptr),
              ERROR_SUCCESS);
    wchar_t own[1024] = {};
    DWORD size = sizeof own;
    const bool isShared = RegGetValueW(other, nullptr, nullptr, RRF_RT_REG_SZ, nullptr, own, &size) == ERROR_SUCCESS;
    if (!isShared) {
        constexpr wchar_t file[] = L"C:\\x86\\REKA.dll";
        ASSERT_EQ(RegSetValueExW(other, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(file), sizeof file),
                  ERROR_SUCCESS);
    }
    RegCloseKey(other);
    EXPECT_EQ(RunRegsvr32(L"/u", module), 0U);
    EXPECT_EQ(KeysIn(HKEY_LOCAL_MACHINE).count(classKey), 0U);
    EXPECT_EQ(KeysIn(HKEY_LOCAL_MACHINE).size(), isShared ? 0U : 2U);
    if (isShared) return;
    HKEY classes = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\CLSID", 0, KEY_ALL_ACCESS | otherWidth, &classes),
              ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteTreeW(classes, L"{95E42661-1916-4261-8FCC-6F598A19E544}"), ERROR_SUCCESS);
    RegCloseKey(classes);
    ASSERT_EQ(RunRegsvr32(L"", module), 0U);
    EXPECT_EQ(RunRegsvr32(L"/u", module), 0U);
    EXPECT_EQ(KeysIn(HKEY_LOCAL_MACHINE), Entries());
}

}  // namespace
}  // namespace host
