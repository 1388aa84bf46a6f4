// SPDX-License-Identifier: MIT
// Why a call of somebody else's object failed, as a text for the user.

#pragma once

#include <string>

#include "platform/Automation.h"

namespace reka {

/// The reason of a failed call: what the object itself says through `ECapeUser` or `ECapeRoot` when `resultCode` is one
/// of the CAPE-OPEN codes, otherwise the system's text. `outsideObject` is any interface of the object whose call
/// failed and may be null. Never empty. Calls out to the object.
std::u16string GetCapeErrorText(IUnknown* outsideObject, HRESULT resultCode);

/// The system's text for `resultCode` without its line end, or the code in hexadecimal digits. Never empty.
std::u16string GetSystemErrorText(HRESULT resultCode);

}  // namespace reka
