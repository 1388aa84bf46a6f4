// Where rekasim gets packages from: the one place that knows how the component is reached.

#pragma once

#include "platform/Automation.h"

namespace rekasim {

/// Makes a package manager and asks it for `iid`. The caller releases `*manager`.
HRESULT CreateManager(REFIID iid, void** manager);

}  // namespace rekasim
