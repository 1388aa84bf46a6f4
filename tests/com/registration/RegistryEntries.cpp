// SPDX-License-Identifier: MIT
// The registry is walked key by key. What the system's own services write into it when they get round to it is left
// out, so that two pictures of it differ by nothing but the component.

#include "RegistryEntries.h"

#include <windows.h>

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "support/win/UnderWine.h"

namespace host {

namespace {

/// Whether the names of the keys below are all that counts: other classes' keys are many, and slow to read.
bool IsOfOthers(const std::wstring& path) {
    const std::wstring classes = L"HKLM\\Classes\\";
    if (path.compare(0, classes.size(), classes) != 0 || path == classes + L"CLSID") return false;
    return path.find(L"NAVO") == std::wstring::npos && path.find(L"{95E42661") == std::wstring::npos;
}

/// Whether the component writes there, or above: nobody else writes beside it while a test runs.
bool IsOfComponent(const std::wstring& path) {
    const std::wstring classes = L"\\Classes\\CLSID";
    const std::wstring below = path.substr(4);  // behind the name of the hive
    return classes.starts_with(below) || path.find(L"NAVO") != std::wstring::npos ||
           path.find(L"{95E42661") != std::wstring::npos;
}

/// What a service of the system notes when it gets round to it.
bool IsOfSession(const std::wstring& path) {
    return path == L"HKLM\\Microsoft\\Windows NT\\CurrentVersion\\NetworkCards";
}

/// How much of the registry is told.
enum class Extent { Component, Software, AllClasses };

/// Adds all keys and values below `key`, which is written as `path`.
void AddEntries(HKEY key, const std::wstring& path, Extent extent, Entries& entries) {
    if (IsOfSession(path) || (extent == Extent::Component && !IsOfComponent(path))) return;
    entries.insert(path);
    if (extent == Extent::Software && IsOfOthers(path)) return;
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
        AddEntries(below, belowPath, extent, entries);
        RegCloseKey(below);
    }
}

}  // namespace

Entries ReadRegistry(bool isThorough) {
    Entries entries;
    Extent extent = isThorough ? Extent::AllClasses : Extent::Software;
    if (!reka::test::HoldsUnderWineAlone("nothing beside the component's keys changes in the registry")) {
        extent = Extent::Component;
    }
    for (const auto& [root, name] : {std::pair{HKEY_LOCAL_MACHINE, L"HKLM"}, std::pair{HKEY_CURRENT_USER, L"HKCU"}}) {
        HKEY software = nullptr;
        if (RegOpenKeyExW(root, L"Software", 0, KEY_READ, &software) != ERROR_SUCCESS) continue;
        AddEntries(software, name, extent, entries);
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

}  // namespace host
