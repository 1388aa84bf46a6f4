// SPDX-License-Identifier: MIT
// The control library is looked for where the system's classes name it, and by its name where they don't. What was
// found, or that nothing was, is kept for as long as the module stays loaded.

#include "editor/win/HtmlHelp.h"

#include <array>

#include "platform/win/SystemModules.h"

namespace reka {

namespace {

constexpr UINT displayTopic = 0;  // the command HH_DISPLAY_TOPIC
constexpr WORD htmlHelpOrdinal = 15;
constexpr DWORD longestPath = 260;  // characters

// Not local to a function: the runtime's guard would hold handles that stay when the module is unloaded.
CHtmlHelp help;

// The library stays loaded: the windows of help live on after the call, and freeing a library while the process
// detaches isn't allowed.
HMODULE LoadHelpLibrary() {
    const std::u16string path = FindHelpLibrary();
    const HMODULE library = path.empty() ? nullptr : LoadLibraryW(reinterpret_cast<const wchar_t*>(path.c_str()));
    return library ? library : LoadSystemLibrary(L"hhctrl.ocx");
}

}  // namespace

CHtmlHelp& HtmlHelp() {
    return help;
}

CHtmlHelp::Function CHtmlHelp::Find() {
    if (isLookedFor) return htmlHelp;
    Function found = nullptr;
    if (const HMODULE library = LoadHelpLibrary()) {
        found = reinterpret_cast<Function>(
            reinterpret_cast<void*>(GetProcAddress(library, MAKEINTRESOURCEA(htmlHelpOrdinal))));
        if (!found) FreeLibrary(library);
    }
    htmlHelp = found;
    isLookedFor = true;
    return found;
}

bool CHtmlHelp::Show(HWND owner, const std::u16string& path, const std::u16string& topic) {
    const Function show = Find();
    return show && show(owner, reinterpret_cast<LPCWSTR>(path.c_str()), displayTopic,
                        reinterpret_cast<DWORD_PTR>(topic.c_str())) != nullptr;
}

std::u16string FindHelpLibrary() {
    constexpr const wchar_t* name = L"CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32";
    std::array<wchar_t, longestPath + 1> value = {};  // one more than is read, so that it always ends
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, name, 0, KEY_READ, &key) != ERROR_SUCCESS) return {};
    DWORD type = REG_NONE;
    DWORD size = longestPath * sizeof(wchar_t);
    const LSTATUS status = RegQueryValueExW(key, nullptr, nullptr, &type, reinterpret_cast<BYTE*>(value.data()), &size);
    RegCloseKey(key);
    if (status != ERROR_SUCCESS || (type != REG_SZ && type != REG_EXPAND_SZ)) return {};
    if (type == REG_SZ) return reinterpret_cast<const char16_t*>(value.data());
    std::array<wchar_t, longestPath> expanded = {};
    const DWORD length = ExpandEnvironmentStringsW(value.data(), expanded.data(), longestPath);
    if (length == 0 || length > longestPath) return {};
    return reinterpret_cast<const char16_t*>(expanded.data());
}

}  // namespace reka
