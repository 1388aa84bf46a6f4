// SPDX-License-Identifier: MIT
// What the runtime's mathematics is good for here.

#pragma once

namespace reka {

/// The compiler's runtime is off by hundreds of units in the last place in powers, and the system's differs from
/// version to version.
constexpr bool hasGoodExponentials = false;

}  // namespace reka
