// How often the program has asked for memory, and how much of it is in use.

#pragma once

#include <cstddef>

namespace reka::bench {

std::size_t AllocationCount();

struct MemoryUse {
    std::size_t allocations = 0;  // by the operator new alone, so far
    std::size_t bytes = 0;        // of the heap, with what it needs for itself
};
MemoryUse UsedMemory();

}  // namespace reka::bench
