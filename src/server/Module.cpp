// SPDX-License-Identifier: MIT
// The start and the end of the module. The system calls here while it holds the lock under which libraries are loaded,
// so little happens: no COM, no threads, no question to the user. What the module has for all of its parts is one
// record that no destructor runs for, since another module may call in after this one has ended.

#include "server/Module.h"

#include <algorithm>
#include <iterator>
#include <type_traits>

#include <commctrl.h>

#include "capeopen/ClassIds.h"
#include "editor/win/ExpressionField.h"
#include "editor/win/WindowsEditor.h"
#include "platform/TypeLibrary.h"
#include "platform/win/SystemModules.h"
#include "server/ClassTable.h"

namespace reka {

namespace {

Module theModule;
static_assert(std::is_trivially_destructible_v<Module>);

void StartControls() {
    INITCOMMONCONTROLSEX classes = {};
    classes.dwSize = sizeof classes;
    classes.dwICC = ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES | ICC_TAB_CLASSES;
    InitCommonControlsEx(&classes);
    LoadExpressionControl();
}

/// Notes the version as far as there is room for it.
void SetVersion(const std::u16string& version) {
    const std::size_t length = std::min(version.size(), std::size(theModule.version) - 1);
    std::copy_n(version.begin(), length, theModule.version);
    theModule.version[length] = 0;
}

}  // namespace

Module& TheModule() {
    return theModule;
}

std::u16string ReadFileVersion(const wchar_t* path) {
    constexpr DWORD blockSize = 1024;
    alignas(8) unsigned char block[blockSize] = {};
    if (!GetFileVersionInfoW(path, 0, blockSize, block)) return {};
    void* found = nullptr;
    UINT size = 0;
    if (!VerQueryValueW(block, L"\\", &found, &size) || !found || size < sizeof(VS_FIXEDFILEINFO)) return u"<unknown>";
    const auto* fixed = static_cast<const VS_FIXEDFILEINFO*>(found);
    wchar_t text[128] = {};
    wsprintfW(text, L"%d.%d.%d.%d", HIWORD(fixed->dwFileVersionMS), LOWORD(fixed->dwFileVersionMS),
              HIWORD(fixed->dwFileVersionLS), LOWORD(fixed->dwFileVersionLS));
    return reinterpret_cast<const char16_t*>(text);
}

void StartModule(HINSTANCE instance) noexcept {
    try {
        SetModuleHandle(instance);
        wchar_t path[1024];
        const DWORD length = GetModuleFileNameW(instance, path, 1024);
        SetVersion(length > 0 && length < 1024 ? ReadFileVersion(path) : std::u16string());
        theModule.typeLibraryId = typeLibraryId;
        if (!InitializeCriticalSectionAndSpinCount(&theModule.lists, 0)) return;
        DisableThreadLibraryCalls(instance);
        StartControls();
        ReplaceEditor(&WindowsEditor());
        theModule.hasStarted = true;
    } catch (...) {
    }
}

void EndModule(bool isProcessEnding) noexcept {
    if (!theModule.hasStarted) return;
    theModule.hasStarted = false;
    EndClassTable();
    ReplaceEditor(nullptr);
    if (isProcessEnding) return;
    ForgetTypeLibrary();
    DeleteCriticalSection(&theModule.lists);
}

}  // namespace reka
