// SPDX-License-Identifier: MIT
// Registration of the benchmarks of evaluation.

#pragma once

namespace reka::bench {

/// False if the sides that are compared don't give the same numbers, or the component's allocates memory, which
/// standard error then tells.
bool RegisterEvaluation();

}  // namespace reka::bench
