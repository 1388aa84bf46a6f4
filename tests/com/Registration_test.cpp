// SPDX-License-Identifier: MIT
// Registration and its removal by the system's own program, seen in the registry before and after. These tests run
// alone, since the other ones need the component registered, as which they leave it.

#include <gtest/gtest.h>

#include <algorithm>
#include <cwctype>
#include <functional>
#include <iterator>
#include <set>

#include "Host.h"

namespace host {
namespace {

using Entries = std::set<std::wstring>;

/// Whether the names of the keys below are all that counts: other classes' keys are many, and slow to read.
bool IsOfOthers(const std::wstring& path) {
    const std::wstring classes = L"HKLM\\Classes\\";
    if (path.compare(0, classes.size(), classes) != 0 || path == classes + L"CLSID") return false;
    return path.find(L"NAVO") == std::wstring::npos && path.find(L"{95E42661") == std::wstring::npos;
}

/// What a service of the system notes when it gets round to it.
bool IsOfSession(const std::wstring& path) {
    return path == L"HKLM\\Microsoft\\Windows NT\\CurrentVersion\\NetworkCards";
}

/// Adds all keys and values below `key`, which is written as `path`.
void AddEntries(HKEY key, const std::wstring& path, bool isThorough, Entries& entries) {
    if (IsOfSession(path)) return;
    entries.insert(path);
    if (!isThorough && IsOfOthers(path)) return;
    std::vector<wchar_t> name(16384);
    std::vector<BYTE> data(1 << 16);
    for (DWORD i = 0;; ++i) {
        auto nameLength = static_cast<DWORD>(name.size());
        auto size = static_cast<DWORD>(data.size());
        DWORD type = 0;
        const LSTATUS status = RegEnumValueW(key, i, name.data(), &nameLength, nullptr, &type, data.data(), &size);
        if (status == ERROR_MORE_DATA) continue;
        if (status != ERROR_SUCCESS) break;
        std::wstring text(data.begin(), data.begin() + static_cast<std::ptrdiff_t>(size));
        if (type == REG_SZ) text = std::wstring(reinterpret_cast<const wchar_t*>(data.data()), size / 2);
        while (!text.empty() && text.back() == 0) text.pop_back();
        entries.insert(path + L" | " + std::wstring(name.data(), nameLength) + L" (" + std::to_wstring(type) + L") = " +
                       text);
    }
    for (DWORD i = 0;; ++i) {
        auto nameLength = static_cast<DWORD>(name.size());
        if (RegEnumKeyExW(key, i, name.data(), &nameLength, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
        HKEY below = nullptr;
        const std::wstring belowPath = path + L"\\" + std::wstring(name.data(), nameLength);
        if (RegOpenKeyExW(key, name.data(), 0, KEY_READ, &below) != ERROR_SUCCESS) continue;
        AddEntries(below, belowPath, isThorough, entries);
        RegCloseKey(below);
    }
}

Entries ReadRegistry(bool isThorough = false) {
    Entries entries;
    for (const auto& [root, name] : {std::pair{HKEY_LOCAL_MACHINE, L"HKLM"}, std::pair{HKEY_CURRENT_USER, L"HKCU"}}) {
        HKEY software = nullptr;
        if (RegOpenKeyExW(root, L"Software", 0, KEY_READ, &software) != ERROR_SUCCESS) continue;
        AddEntries(software, name, isThorough, entries);
        RegCloseKey(software);
    }
    return entries;
}

Entries Difference(const Entries& more, const Entries& fewer) {
    Entries difference;
    std::set_difference(more.begin(), more.end(), fewer.begin(), fewer.end(),
                        std::inserter(difference, difference.end()));
    return difference;
}

/// Exit status of the system's program, with a path in quotes and no questions.
DWORD RunRegsvr32(const std::wstring& options, const std::wstring& module) {
    std::wstring command = L"regsvr32.exe /s " + options + L" \"" + module + L"\"";
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    // A busy machine now and then can't start a process at once, which says nothing of the module.
    bool isStarted = false;
    for (int tries = 0; tries < 5 && !isStarted; ++tries) {
        if (tries > 0) Sleep(500);
        isStarted = CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                                   &process) != 0;
    }
    if (!isStarted) return 99;
    DWORD status = 98;
    if (WaitForSingleObject(process.hProcess, 60000) == WAIT_OBJECT_0) GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return status;
}

/// The version that the module file itself tells.
std::wstring FileVersionOf(const std::wstring& module) {
    DWORD ignored = 0;
    std::vector<char> block(GetFileVersionInfoSizeW(module.c_str(), &ignored));
    void* found = nullptr;
    UINT size = 0;
    if (!GetFileVersionInfoW(module.c_str(), 0, static_cast<DWORD>(block.size()), block.data()) ||
        !VerQueryValueW(block.data(), L"\\", &found, &size)) {
        return L"none";
    }
    const auto* fixed = static_cast<const VS_FIXEDFILEINFO*>(found);
    std::wstring text;
    for (const DWORD part : {fixed->dwFileVersionMS >> 16, fixed->dwFileVersionMS & 0xFFFF,
                             fixed->dwFileVersionLS >> 16, fixed->dwFileVersionLS & 0xFFFF}) {
        text += (text.empty() ? L"" : L".") + std::to_wstring(part);
    }
    return text;
}

/// What registration writes below the classes in `classes`, such as "HKLM\Classes".
Entries ExpectedEntries(const std::wstring& classes, const std::wstring& module) {
    const std::wstring manager = L"{95E42661-1916-4261-8FCC-6F598A19E544}";
    const std::wstring classKey = classes + L"\\CLSID\\" + manager;
    Entries entries;
    const auto add = [&](const std::wstring& key, const std::wstring& name = L"", const std::wstring& value = L"") {
        entries.insert(key);
        if (!value.empty()) entries.insert(key + L" | " + name + L" (1) = " + value);
    };
    add(classes + L"\\NAVO_REKA.ReactionPackManager.1", L"", L"REKA Reaction Package Manager");
    add(classes + L"\\NAVO_REKA.ReactionPackManager.1\\CLSID", L"", manager);
    add(classes + L"\\NAVO_REKA.ReactionPackManager", L"", L"REKA Reaction Package Manager");
    add(classes + L"\\NAVO_REKA.ReactionPackManager\\CLSID", L"", manager);
    add(classes + L"\\NAVO_REKA.ReactionPackManager\\CurVer", L"", L"NAVO_REKA.ReactionPackManager.1");
    add(classKey, L"", L"REKA Reaction Package Manager");
    add(classKey + L"\\ProgID", L"", L"NAVO_REKA.ReactionPackManager.1");
    add(classKey + L"\\VersionIndependentProgID", L"", L"NAVO_REKA.ReactionPackManager");
    add(classKey + L"\\Programmable");
    add(classKey + L"\\InprocServer32", L"", module);
    add(classKey + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
    add(classKey + L"\\TypeLib", L"", L"{6F471C15-E012-496B-9563-5EFD98C25862}");
    add(classKey + L"\\Implemented Categories");
    for (const wchar_t* category :
         {L"{678C09AA-0100-11D2-A67D-00105A42887F}", L"{678C09A1-7D66-11D2-A67D-00105A42887F}",
          L"{4150C28A-EE06-403f-A871-87AFEC38A249}", L"{0D562DC8-EA8E-4210-AB39-B66513C0CD09}",
          L"{4667023A-5A8E-4CCA-AB6D-9D78C5112FED}"}) {
        add(classKey + L"\\Implemented Categories\\" + category);
    }
    const std::wstring description = classKey + L"\\CapeDescription";
    add(description, L"Name", L"REKA Reaction Package Manager");
    add(description, L"Description", L"Manager for REKA; the NAVO Cape-Open ReactionPack Numerics");
    add(description, L"CapeVersion", L"1.0");
    add(description, L"ComponentVersion", FileVersionOf(module));
    add(description, L"VendorURL", L"https://navo.example/reka");
    add(description, L"About", L"REKA - CAPE-OPEN Reaction Numerics. Copyright (c) 2026 The REKA developers.");
    return entries;
}

class Registration : public testing::Test {
protected:
    Registration() : module(ModulePath()) {
        RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\NAVO");
        HKEY classes = nullptr;  // which a system always has, and a new prefix hasn't
        EXPECT_EQ(RegCreateKeyW(HKEY_CURRENT_USER, L"Software\\Classes", &classes), ERROR_SUCCESS);
        RegCloseKey(classes);
        EXPECT_EQ(RunRegsvr32(L"/u", module), 0U);
        before = ReadRegistry();
    }
    ~Registration() override {
        RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\NAVO");
        EXPECT_EQ(RunRegsvr32(L"", module), 0U);
    }

    void SetCurrentUser(DWORD type, const void* data, DWORD size) {
        ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\NAVO", L"CurrentUser", type, data, size),
                  ERROR_SUCCESS);
        before = ReadRegistry();
    }
    void SetCurrentUser(const std::wstring& text) {
        SetCurrentUser(REG_SZ, text.c_str(), static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    }

    /// Registers, compares, removes, compares.
    void ExpectRegistrationIn(const std::wstring& classes, bool isThorough = false) {
        if (isThorough) before = ReadRegistry(true);
        ASSERT_EQ(RunRegsvr32(L"", module), 0U);
        Entries expected = ExpectedEntries(classes, module);
        expected.insert(classes + L"\\CLSID");  // which stays
        const Entries registered = ReadRegistry(isThorough);
        Entries found = Difference(registered, before);
        if (before.count(classes + L"\\CLSID")) found.insert(classes + L"\\CLSID");
        EXPECT_EQ(found, expected);
        EXPECT_EQ(Difference(before, registered), Entries());

        ASSERT_EQ(RunRegsvr32(L"/u", module), 0U);
        const Entries after = ReadRegistry(isThorough);
        found = Difference(after, before);
        found.erase(classes + L"\\CLSID");
        EXPECT_EQ(found, Entries());
        EXPECT_EQ(Difference(before, after), Entries());
        EXPECT_EQ(after.count(classes + L"\\CLSID"), 1U);
    }

    std::wstring module;
    Entries before;
};

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

const wchar_t classKey[] = L"Software\\Classes\\CLSID\\{95E42661-1916-4261-8FCC-6F598A19E544}";

/// The keys below the classes of `hive` that registration writes: the class, and the names that both widths share.
Entries KeysIn(HKEY hive) {
    Entries keys;
    for (const wchar_t* path : {classKey, L"Software\\Classes\\NAVO_REKA.ReactionPackManager.1",
                                L"Software\\Classes\\NAVO_REKA.ReactionPackManager"}) {
        HKEY key = nullptr;
        if (RegOpenKeyExW(hive, path, 0, KEY_READ, &key) != ERROR_SUCCESS) continue;
        keys.insert(path);
        RegCloseKey(key);
    }
    return keys;
}

void NameModule(HKEY hive, const std::wstring& file) {
    ASSERT_EQ(RegSetKeyValueW(hive, (std::wstring(classKey) + L"\\InprocServer32").c_str(), nullptr, REG_SZ,
                              file.c_str(), static_cast<DWORD>((file.size() + 1) * sizeof(wchar_t))),
              ERROR_SUCCESS);
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
    const HMODULE loaded = LoadLibraryW(module.c_str());
    ASSERT_TRUE(loaded);
    using Register = HRESULT(STDAPICALLTYPE*)();
    const auto call = [&](const char* name) {
        const CUsersClassesRoot merged;
        return reinterpret_cast<Register>(reinterpret_cast<void*>(GetProcAddress(loaded, name)))();
    };
    EXPECT_EQ(call("DllRegisterServer"), S_OK);
    const Entries registered = ReadRegistry();
    EXPECT_EQ(Difference(registered, before), ExpectedEntries(L"HKLM\\Classes", module));
    EXPECT_EQ(Difference(before, registered), Entries());
    EXPECT_EQ(call("DllUnregisterServer"), S_OK);
    EXPECT_EQ(ReadRegistry(), before);
    FreeLibrary(loaded);
    NameModule(HKEY_CURRENT_USER, module);
    EXPECT_EQ(RunRegsvr32(L"/u", module), 0U);
}

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
    using Register = HRESULT(STDAPICALLTYPE*)();
    const HMODULE loaded = LoadLibraryW(module.c_str());
    ASSERT_TRUE(loaded);
    const auto registerServer =
        reinterpret_cast<Register>(reinterpret_cast<void*>(GetProcAddress(loaded, "DllRegisterServer")));
    const auto unregisterServer =
        reinterpret_cast<Register>(reinterpret_cast<void*>(GetProcAddress(loaded, "DllUnregisterServer")));
    const std::wstring userKey = L"Software\\Classes\\CLSID\\{95E42661-1916-4261-8FCC-6F598A19E544}";
    const auto isForUser = [&] {
        EXPECT_EQ(registerServer(), S_OK);
        HKEY key = nullptr;
        const bool isThere = RegOpenKeyExW(HKEY_CURRENT_USER, userKey.c_str(), 0, KEY_READ, &key) == ERROR_SUCCESS;
        if (isThere) RegCloseKey(key);
        EXPECT_EQ(unregisterServer(), S_OK);
        EXPECT_NE(RegOpenKeyExW(HKEY_CURRENT_USER, userKey.c_str(), 0, KEY_READ, &key), ERROR_SUCCESS);
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
    FreeLibrary(loaded);
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
    const HMODULE loaded = LoadLibraryW(module.c_str());
    ASSERT_TRUE(loaded);
    using Register = HRESULT(STDAPICALLTYPE*)();
    const auto registerServer =
        reinterpret_cast<Register>(reinterpret_cast<void*>(GetProcAddress(loaded, "DllRegisterServer")));
    EXPECT_EQ(registerServer(), HRESULT_FROM_WIN32(ERROR_CHILD_MUST_BE_VOLATILE));
    FreeLibrary(loaded);
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
