// SPDX-License-Identifier: MIT
// Icons told by what they look like: each loading gives another handle.

#pragma once

#include <windows.h>

namespace reka::test {

/// Expects that `icon` (a handle, as messages give it) is the one of that number among the module's resources, as wide
/// as that measure of the system; and that the module's icons differ from each other.
void ExpectIcon(LRESULT icon, int resource, int widthMetric);

}  // namespace reka::test
