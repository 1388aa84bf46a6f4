// SPDX-License-Identifier: MIT
// A library is loaded by its full path in the system's folder: by its name alone the loader would look beside the
// program first, where anybody who may write there could put one of the same name.

#include "platform/win/SystemModules.h"

#include <utility>

namespace reka {

namespace {

HINSTANCE moduleHandle = nullptr;

}  // namespace

HINSTANCE ModuleHandle() noexcept {
    return moduleHandle;
}

HINSTANCE SetModuleHandle(HINSTANCE module) noexcept {
    return std::exchange(moduleHandle, module);
}

HMODULE OwnModule() noexcept {
    HMODULE module = nullptr;
    const DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (!GetModuleHandleExW(flags, reinterpret_cast<LPCWSTR>(&OwnModule), &module)) return nullptr;
    return module;
}

HMODULE LoadSystemLibrary(const wchar_t* name) noexcept {
    wchar_t path[2 * MAX_PATH];
    const UINT length = GetSystemDirectoryW(path, MAX_PATH);
    if (length == 0 || length >= MAX_PATH || lstrlenW(name) >= MAX_PATH - 1) return nullptr;
    path[length] = L'\\';
    lstrcpyW(path + length + 1, name);
    return LoadLibraryW(path);
}

}  // namespace reka
