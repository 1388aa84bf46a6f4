// SPDX-License-Identifier: MIT
// The benchmarks of a calculation that asks the material.

#pragma once

#include "bench/Times.h"

namespace reka::bench {

void RegisterMaterial();
void PrintMaterial(const CTimes& times);

}  // namespace reka::bench
