// SPDX-License-Identifier: MIT
// How a host in the same program gets a package without a class factory.

#pragma once

#include "platform/Automation.h"

namespace reka {

/// Makes a new package without a definition and asks it for `iid`. The caller releases `*package`.
HRESULT CreateReactionPack(REFIID iid, void** package) noexcept;

}  // namespace reka
