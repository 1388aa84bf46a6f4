// SPDX-License-Identifier: MIT
// The benchmarks of a whole calculation, from the simulator's call to the last number that it receives.

#pragma once

#include "bench/Times.h"

namespace reka::bench {

void RegisterCall();
void PrintCall(const CTimes& times);

}  // namespace reka::bench
