// SPDX-License-Identifier: MIT
// The editor as the module's objects reach it.

#pragma once

#include "package/Edit.h"

namespace reka {

/// Shows the dialogs, each for the window that is active on the thread of the call.
IEditor& WindowsEditor();

}  // namespace reka
