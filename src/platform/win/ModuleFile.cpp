// SPDX-License-Identifier: MIT
// The file of the module that holds this code, which is a DLL's or that of a program that has the code linked in. A
// path is told up to 2,047 characters.

#include "platform/ModuleFile.h"

#include "platform/win/SystemModules.h"

namespace reka {

const char16_t pathSeparator = u'\\';

std::u16string ModuleFilePath() {
    const HMODULE module = OwnModule();
    if (!module) return {};
    wchar_t path[2048];
    const DWORD length = GetModuleFileNameW(module, path, 2048);
    if (length == 0 || length >= 2048) return {};
    return std::u16string(reinterpret_cast<const char16_t*>(path), length);
}

}  // namespace reka
