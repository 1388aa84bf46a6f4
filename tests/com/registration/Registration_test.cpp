// SPDX-License-Identifier: MIT
// Registration by the system's own program and by the module's exports: where it goes, what it writes, and what of it
// the user decides. These tests run alone, since the other ones need the component registered, as which they leave it.

#include <gtest/gtest.h>

#include <algorithm>

#include "Host.h"
#include "LoadedModule.h"
#include "RegistrationFixture.h"

namespace host {
namespace {

TEST_F(Registration, GoesToTheMachine) {
    ExpectRegistrationIn(L"HKLM\\Classes", true);
}

TEST_F(Registration, GoesToTheUserWhoWantsItSo) {
    SetCurrentUser(L"1");
    ExpectRegistrationIn(L"HKCU\\Classes");
}

TEST_F(Registration, GoesToTheMachineForAnyOtherValue) {
    SetCurrentUser(L"0");
    ExpectRegistrationIn(L"HKLM\\Classes");
}

TEST_F(Registration, GoesToTheUserBesideTheMachines) {
    ASSERT_EQ(RunRegsvr32(L"", module), 0U);
    SetCurrentUser(L"1");  // from here on the machine's entries belong to what was before
    ASSERT_EQ(RunRegsvr32(L"", module), 0U);
    const Entries registered = ReadRegistry();
    Entries found = Difference(registered, before);
    found.erase(L"HKCU\\Classes\\CLSID");
    EXPECT_EQ(found, ExpectedEntries(L"HKCU\\Classes", module));
    EXPECT_EQ(Difference(before, registered), Entries());
}

/// While it lives, the classes root of this process leads to the user's classes, as the system's does for every key
/// that the user has.
class CUsersClassesRoot {
public:
    CUsersClassesRoot() {
        HKEY classes = nullptr;
        EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Classes", 0, KEY_ALL_ACCESS, &classes), ERROR_SUCCESS);
        EXPECT_EQ(RegOverridePredefKey(HKEY_CLASSES_ROOT, classes), ERROR_SUCCESS);
        RegCloseKey(classes);
    }
    ~CUsersClassesRoot() { RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr); }
    CUsersClassesRoot(const CUsersClassesRoot&) = delete;
    CUsersClassesRoot& operator=(const CUsersClassesRoot&) = delete;
};

/// Who has the component for himself and registers it for all users keeps what he has.
TEST_F(Registration, GoesToTheMachineBesideTheUsers) {
    SetCurrentUser(L"1");
    ASSERT_EQ(RunRegsvr32(L"", module), 0U);
    NameModule(HKEY_CURRENT_USER, L"C:\\mine\\REKA.dll");
    SetCurrentUser(L"0");
    const CLoadedModule loaded(module);
    ASSERT_TRUE(loaded);
    {
        const CUsersClassesRoot merged;
        EXPECT_EQ(loaded.RegisterServer(), S_OK);
    }
    const Entries registered = ReadRegistry();
    EXPECT_EQ(Difference(registered, before), ExpectedEntries(L"HKLM\\Classes", module));
    EXPECT_EQ(Difference(before, registered), Entries());
    {
        const CUsersClassesRoot merged;
        EXPECT_EQ(loaded.UnregisterServer(), S_OK);
    }
    EXPECT_EQ(ReadRegistry(), before);
    NameModule(HKEY_CURRENT_USER, module);
    EXPECT_EQ(RunRegsvr32(L"/u", module), 0U);
}

TEST_F(Registration, TwiceIsLikeOnce) {
    ASSERT_EQ(RunRegsvr32(L"", module), 0U);
    const Entries once = ReadRegistry();
    ASSERT_EQ(RunRegsvr32(L"", module), 0U);
    EXPECT_EQ(ReadRegistry(), once);
}

TEST_F(Registration, CleansTheClassKeyFirst) {
    ASSERT_EQ(
        RegSetKeyValueW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\CLSID\\{95E42661-1916-4261-8FCC-6F598A19E544}\\Old",
                        L"Value", REG_SZ, L"x", 4),
        ERROR_SUCCESS);
    ASSERT_EQ(RunRegsvr32(L"", module), 0U);
    const Entries after = ReadRegistry();
    EXPECT_EQ(after.count(L"HKLM\\Classes\\CLSID\\{95E42661-1916-4261-8FCC-6F598A19E544}\\Old"), 0U);
    EXPECT_EQ(Difference(after, before).size(), ExpectedEntries(L"HKLM\\Classes", module).size());
}

/// Values of "CurrentUser" beside the plain ones, by the exports themselves.
TEST_F(Registration, ReadsOddValuesAsNotSet) {
    const CLoadedModule loaded(module);
    ASSERT_TRUE(loaded);
    const auto isForUser = [&] {
        EXPECT_EQ(loaded.RegisterServer(), S_OK);
        HKEY key = nullptr;
        const bool isThere = RegOpenKeyExW(HKEY_CURRENT_USER, classKey, 0, KEY_READ, &key) == ERROR_SUCCESS;
        if (isThere) RegCloseKey(key);
        EXPECT_EQ(loaded.UnregisterServer(), S_OK);
        EXPECT_NE(RegOpenKeyExW(HKEY_CURRENT_USER, classKey, 0, KEY_READ, &key), ERROR_SUCCESS);
        return isThere;
    };
    EXPECT_FALSE(isForUser());
    SetCurrentUser(L"1");
    EXPECT_TRUE(isForUser());
    for (const wchar_t* text : {L"", L"0", L"11", L" 1", L"yes", L"1234567890"}) {
        SetCurrentUser(text);
        EXPECT_FALSE(isForUser()) << text;
    }
    wchar_t padded[10] = L"1";  // 20 bytes: just fits
    SetCurrentUser(REG_SZ, padded, sizeof padded);
    EXPECT_TRUE(isForUser());
    wchar_t longer[11] = L"1";
    SetCurrentUser(REG_SZ, longer, sizeof longer);
    EXPECT_FALSE(isForUser());
    SetCurrentUser(REG_SZ, L"1", 2);  // without an end
    EXPECT_TRUE(isForUser());
}

TEST_F(Registration, TellsTheVersionOfTheModuleFile) {
    ASSERT_EQ(RunRegsvr32(L"", module), 0U);
    wchar_t told[64] = {};
    DWORD size = sizeof told;
    ASSERT_EQ(RegGetValueW(HKEY_CLASSES_ROOT, L"CLSID\\{95E42661-1916-4261-8FCC-6F598A19E544}\\CapeDescription",
                           L"ComponentVersion", RRF_RT_REG_SZ, nullptr, told, &size),
              ERROR_SUCCESS);
    EXPECT_EQ(told, FileVersionOf(module));
    EXPECT_EQ(std::count(told, told + 64, L'.'), 3);
}

/// A key that goes with the session can't hold one that stays, so the script fails below it.
TEST_F(Registration, GivesBackTheFailureOfItsScript) {
    const wchar_t* name = L"Software\\Classes\\NAVO_REKA.ReactionPackManager.1";
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, name, 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, &key,
                              nullptr),
              ERROR_SUCCESS);
    RegCloseKey(key);
    const CLoadedModule loaded(module);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded.RegisterServer(), HRESULT_FROM_WIN32(ERROR_CHILD_MUST_BE_VOLATILE));
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, name);  // some registrars have removed it by now
    EXPECT_EQ(RunRegsvr32(L"/u", module), 0U);
    EXPECT_EQ(ReadRegistry(), before);
}

/// The module in a folder of that name.
class RegistrationFromFolder : public Registration, public testing::WithParamInterface<const wchar_t*> {
protected:
    RegistrationFromFolder() {
        wchar_t temporary[MAX_PATH] = {};
        GetTempPathW(MAX_PATH, temporary);
        folder = std::wstring(temporary) + GetParam() + L" " + std::to_wstring(GetCurrentProcessId());
        copy = folder + L"\\REKA.dll";
        EXPECT_TRUE(CreateDirectoryW(folder.c_str(), nullptr));
        EXPECT_TRUE(CopyFileW(module.c_str(), copy.c_str(), TRUE));
    }
    ~RegistrationFromFolder() override {
        EXPECT_TRUE(DeleteFileW(copy.c_str()));
        EXPECT_TRUE(RemoveDirectoryW((folder + L"\\data").c_str()));  // which a manager makes
        EXPECT_TRUE(RemoveDirectoryW(folder.c_str()));
    }

    std::wstring folder;
    std::wstring copy;
};

TEST_P(RegistrationFromFolder, NamesTheFileAndLeavesNothing) {
    ASSERT_EQ(RunRegsvr32(L"", copy), 0U);
    Entries expected = ExpectedEntries(L"HKLM\\Classes", copy);
    const Entries registered = ReadRegistry();
    EXPECT_EQ(Difference(registered, before), expected);
    EXPECT_EQ(ModulePath(), copy);
    {
        const CApartment apartment;
        EXPECT_TRUE(MakeManager<IUnknown>());
        EXPECT_TRUE(GetModuleHandleW(copy.c_str()));
        CoFreeUnusedLibrariesEx(0, 0);
    }
    ASSERT_EQ(RunRegsvr32(L"/u", copy), 0U);
    EXPECT_EQ(ReadRegistry(), before);
}
INSTANTIATE_TEST_SUITE_P(Names, RegistrationFromFolder,
                         testing::Values(L"two words", L"user's", L"''quoted''", L"100% of %MODULE%", L"%%",
                                         L"Gr\u00F6\u00DFe \u0412\u043E\u0434\u0430 \u6C34"));

}  // namespace
}  // namespace host
