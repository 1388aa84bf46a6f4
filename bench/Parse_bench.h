// SPDX-License-Identifier: MIT
// The benchmarks of parsing: from a text to its tree.

#pragma once

#include "bench/Times.h"

namespace reka::bench {

void RegisterParse();
void PrintParse(const CTimes& times);

}  // namespace reka::bench
