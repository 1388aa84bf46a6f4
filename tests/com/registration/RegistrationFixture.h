// SPDX-License-Identifier: MIT
// What the tests of registration and of its removal share: the system's program that does both, and the registry
// before and after.

#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "RegistryEntries.h"

namespace host {

const wchar_t classKey[] = L"Software\\Classes\\CLSID\\{95E42661-1916-4261-8FCC-6F598A19E544}";

/// Exit status of the system's program, with a path in quotes and no questions.
DWORD RunRegsvr32(const std::wstring& options, const std::wstring& module);

/// The version that the module file itself tells.
std::wstring FileVersionOf(const std::wstring& module);

/// What registration writes below the classes in `classes`, such as "HKLM\Classes".
Entries ExpectedEntries(const std::wstring& classes, const std::wstring& module);

/// The keys below the classes of `hive` that registration writes: the class, and the names that both widths share.
Entries KeysIn(HKEY hive);

/// Writes `file` where the class of `hive` names its module.
void NameModule(HKEY hive, const std::wstring& file);

/// Starts without a registration and leaves the component registered for the machine, as the other tests need it.
class Registration : public testing::Test {
protected:
    Registration();
    ~Registration() override;

    /// Sets the user's "CurrentUser", from which on the registry counts as what was before.
    void SetCurrentUser(DWORD type, const void* data, DWORD size);
    void SetCurrentUser(const std::wstring& text);

    /// Registers, compares, removes, compares.
    void ExpectRegistrationIn(const std::wstring& classes, bool isThorough = false);

    std::wstring module;
    Entries before;
};

}  // namespace host
