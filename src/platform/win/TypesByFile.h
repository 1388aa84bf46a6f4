// SPDX-License-Identifier: MIT
// The type library in a module whose file the system's loader of type libraries can't open: it takes paths of up to 259
// characters, while the module's own may be longer.

#pragma once

#include "platform/Automation.h"
#include "platform/Holders.h"

namespace reka {

/// Loads the first type library among the resources of `module`. It goes through a file in the user's temporary folder,
/// which is deleted as soon as the system allows it. May throw std::bad_alloc.
HRESULT LoadTypesByFile(HMODULE module, CComRef<ITypeLib>& library);

}  // namespace reka
