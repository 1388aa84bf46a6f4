// SPDX-License-Identifier: MIT
// The module that holds this code, and libraries of the system.

#pragma once

#include <windows.h>

namespace reka {

/// The module whose resources the dialogs are: what was set last, null before.
HINSTANCE ModuleHandle() noexcept;
/// Sets it as the module is attached, and gives the one before. Tests set another one.
HINSTANCE SetModuleHandle(HINSTANCE module) noexcept;

/// The module that holds this code: a DLL, or a program that has it linked in. It isn't held by that, since a count
/// would keep it from ever being unloaded. Null where the system can't tell.
HMODULE OwnModule() noexcept;

/// Loads a library out of the system's own folder, and none of that name that lies beside the program. Null if there is
/// none.
HMODULE LoadSystemLibrary(const wchar_t* name) noexcept;

}  // namespace reka
