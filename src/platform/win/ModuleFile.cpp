// SPDX-License-Identifier: MIT
// The module is found by the address of this very routine, so the same code tells the path of a DLL and that of a
// program that has it linked in. It isn't held by that: a count taken here would keep the module from ever being
// unloaded.

#include "platform/ModuleFile.h"

#include <windows.h>

namespace reka {

const char16_t pathSeparator = u'\\';

std::u16string ModuleFilePath() {
    HMODULE module = nullptr;
    const DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (!GetModuleHandleExW(flags, reinterpret_cast<LPCWSTR>(&ModuleFilePath), &module)) return {};
    wchar_t path[2048];
    const DWORD length = GetModuleFileNameW(module, path, 2048);
    if (length == 0 || length >= 2048) return {};
    return std::u16string(reinterpret_cast<const char16_t*>(path), length);
}

}  // namespace reka
