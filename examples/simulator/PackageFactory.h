// Where rekasim gets a package from: the one place that knows how the component is reached.

#pragma once

#include "platform/Automation.h"

namespace rekasim {

/// Makes a new package and asks it for `iid`. The caller releases `*package`.
HRESULT CreatePackage(REFIID iid, void** package);

}  // namespace rekasim
