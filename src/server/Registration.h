// SPDX-License-Identifier: MIT
// Registration of the component, for the machine or for the current user.

#pragma once

#include <windows.h>

namespace reka {

/// Whether this user's registry says that registration goes to the user: the value "CurrentUser" of the key
/// "Software\NAVO" is "1". Anything else, or a value too long for that, means the machine.
bool IsRegistrationForUser() noexcept;

/// Has the system's registrar run the script of the module, which writes the keys of the manager or removes them. Goes
/// to the classes of the machine, or of the current user if the module says so. Returns the registrar's result.
HRESULT RunRegistryScript(bool isRegistering) noexcept;

}  // namespace reka
