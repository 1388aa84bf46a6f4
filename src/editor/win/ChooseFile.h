// SPDX-License-Identifier: MIT
// The system's dialog that opens a file.

#pragma once

#include <string>

#include <windows.h>

#include "editor/EditorUi.h"

namespace reka {

/// Asks for a file, `path` to begin with, which may be empty. `path` changes for a chosen one alone. Where the system
/// has no such dialog it counts as cancelled. The process stays in the folder that it works in.
OpenFileAnswer ChooseFile(HWND owner, const OpenFileRequest& request, std::u16string& path);

}  // namespace reka
