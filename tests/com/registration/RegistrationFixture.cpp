// SPDX-License-Identifier: MIT
// A test compares the whole registry before and after with what is expected in words: what is written besides, or left
// behind, is seen as well.

#include "RegistrationFixture.h"

#include <utility>
#include <vector>

#include "Host.h"

namespace host {

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

Entries ExpectedEntries(const std::wstring& classes, const std::wstring& module) {
    const std::wstring manager = L"{95E42661-1916-4261-8FCC-6F598A19E544}";
    const std::wstring ownKey = classes + L"\\CLSID\\" + manager;
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
    add(ownKey, L"", L"REKA Reaction Package Manager");
    add(ownKey + L"\\ProgID", L"", L"NAVO_REKA.ReactionPackManager.1");
    add(ownKey + L"\\VersionIndependentProgID", L"", L"NAVO_REKA.ReactionPackManager");
    add(ownKey + L"\\Programmable");
    add(ownKey + L"\\InprocServer32", L"", module);
    add(ownKey + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
    add(ownKey + L"\\TypeLib", L"", L"{6F471C15-E012-496B-9563-5EFD98C25862}");
    add(ownKey + L"\\Implemented Categories");
    for (const wchar_t* category :
         {L"{678C09AA-0100-11D2-A67D-00105A42887F}", L"{678C09A1-7D66-11D2-A67D-00105A42887F}",
          L"{4150C28A-EE06-403f-A871-87AFEC38A249}", L"{0D562DC8-EA8E-4210-AB39-B66513C0CD09}",
          L"{4667023A-5A8E-4CCA-AB6D-9D78C5112FED}"}) {
        add(ownKey + L"\\Implemented Categories\\" + category);
    }
    const std::wstring description = ownKey + L"\\CapeDescription";
    add(description, L"Name", L"REKA Reaction Package Manager");
    add(description, L"Description", L"Manager for REKA; the NAVO Cape-Open ReactionPack Numerics");
    add(description, L"CapeVersion", L"1.0");
    add(description, L"ComponentVersion", FileVersionOf(module));
    add(description, L"VendorURL", L"https://navo.example/reka");
    add(description, L"About", L"REKA - CAPE-OPEN Reaction Numerics. Copyright (c) 2026 The REKA developers.");
    return entries;
}

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

Registration::Registration() : module(ModulePath()) {
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\NAVO");
    HKEY classes = nullptr;  // which a system always has, and a new prefix hasn't
    EXPECT_EQ(RegCreateKeyW(HKEY_CURRENT_USER, L"Software\\Classes", &classes), ERROR_SUCCESS);
    RegCloseKey(classes);
    EXPECT_EQ(RunRegsvr32(L"/u", module), 0U);
    before = ReadRegistry();
}

Registration::~Registration() {
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\NAVO");
    EXPECT_EQ(RunRegsvr32(L"", module), 0U);
}

void Registration::SetCurrentUser(DWORD type, const void* data, DWORD size) {
    ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\NAVO", L"CurrentUser", type, data, size), ERROR_SUCCESS);
    before = ReadRegistry();
}

void Registration::SetCurrentUser(const std::wstring& text) {
    SetCurrentUser(REG_SZ, text.c_str(), static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

void Registration::ExpectRegistrationIn(const std::wstring& classes, bool isThorough) {
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

}  // namespace host
