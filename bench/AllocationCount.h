// SPDX-License-Identifier: MIT
// How often the program has asked for memory, and how much of it is in use.

#pragma once

#include <cstddef>

namespace reka::bench {

std::size_t AllocationCount();

/// By the operator new: the strings of the platform aren't in it.
struct MemoryUse {
    std::size_t allocations = 0;  // so far
    std::size_t bytes = 0;        // with what the heap needs for itself
};
MemoryUse UsedMemory();
/// From here on bytes are counted, which takes time. What was allocated before must not be freed between two looks.
void StartMeasuringMemory();

}  // namespace reka::bench
