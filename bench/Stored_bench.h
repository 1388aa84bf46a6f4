// SPDX-License-Identifier: MIT
// The benchmarks of stored forms and lists: blocks, the template file, compound files, the binding of a material; and
// what is kept in memory.

#pragma once

#include "bench/Times.h"

namespace reka::bench {

void RegisterStored();
void PrintStored(const CTimes& times);

}  // namespace reka::bench
