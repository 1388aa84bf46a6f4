// SPDX-License-Identifier: MIT
// The classes that the server gives out.

#pragma once

#include <windows.h>

#include <objbase.h>

namespace reka {

/// Asks the factory of `classId` for `iid`; the factory is made at the first request. `CLASS_E_CLASSNOTAVAILABLE` for a
/// class that isn't the server's and `E_UNEXPECTED` before the module has started; `*factory` is null then.
HRESULT GetClassFactory(REFCLSID classId, REFIID iid, void** factory) noexcept;

/// Runs the registration step of each class, up to the first failure, which is the result.
HRESULT RegisterClasses(bool isRegistering) noexcept;

/// Lets go of all factories.
void EndClassTable() noexcept;

}  // namespace reka
