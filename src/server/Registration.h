// SPDX-License-Identifier: MIT
// Registration of the component, for the machine or for the current user.

#pragma once

#include <windows.h>

namespace reka {

/// Whether this user's registry says that registration goes to the user: the value "CurrentUser" of the key
/// "Software\NAVO" is "1". Anything else, or a value too long for that, means the machine.
bool IsRegistrationForUser() noexcept;

/// Has the system's registrar run the script of the module, which writes the keys of the manager or removes them.
///
/// Registering goes to the classes of the machine, or of the current user if the module says so, whatever the other
/// ones hold, and returns the registrar's result.
///
/// Removing goes through both, and takes away what was written where the class names this module. Another module's
/// registration stays, and the ProgIDs stay as long as the class of the other width stands beside them. Succeeds if no
/// registration of this module is left, also if there was none.
HRESULT RunRegistryScript(bool isRegistering) noexcept;

}  // namespace reka
