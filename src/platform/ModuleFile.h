// SPDX-License-Identifier: MIT
// Where the module that holds this code lies.

#pragma once

#include <string>

namespace reka {

/// Separates folders in a path of this platform.
extern const char16_t pathSeparator;

/// Full path of the loaded module file; empty if the system doesn't tell.
std::u16string ModuleFilePath();

}  // namespace reka
