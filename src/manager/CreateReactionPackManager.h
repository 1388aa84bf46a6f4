// SPDX-License-Identifier: MIT
// How a host in the same program gets a manager without a class factory.

#pragma once

#include "platform/Automation.h"

namespace reka {

/// Makes a new manager and asks it for `iid`. The caller releases `*manager`.
HRESULT CreateReactionPackManager(REFIID iid, void** manager) noexcept;

}  // namespace reka
