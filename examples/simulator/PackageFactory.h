// SPDX-License-Identifier: MIT
// Where rekasim gets packages from: the one place that knows how the component is reached. On Windows that is the
// registry and COM, as for any simulator; elsewhere the component is linked into the program.

#pragma once

#include <string>

#include "platform/Automation.h"

namespace rekasim {

/// Makes a package manager and asks it for `iid`. The caller releases `*manager`.
HRESULT CreateManager(REFIID iid, void** manager);

/// What a user can do when no manager can be made; empty if nothing.
std::string AdviceWithoutManager();

}  // namespace rekasim
